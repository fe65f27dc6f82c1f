#!/usr/bin/env bash
# F5 copies a tree with every kind of name into the next pane, byte for byte.
. "$(dirname "$0")/lib.sh"

tree=$base/from/tree
mkdir -p "$tree" "$base/to"
printf 'plain\n' >"$tree/plain"
printf 'blanks\n' >"$tree/name with  blanks "
printf 'utf-8\n' >"$tree/grün-日本-файл"
printf 'invalid\n' >"$tree/"$'bad-\xff\xfe-\xc3'
printf 'newline\n' >"$tree/"$'two\nlines'
printf 'dash\n' >"$tree/-rf"
printf 'long\n' >"$tree/$(printf 'n%.0s' $(seq 255))"
: >"$tree/empty"
head -c 4096 /dev/urandom >"$tree/one chunk"
head -c 4097 /dev/urandom >"$tree/one chunk and a byte"
head -c 9000000 /dev/urandom >"$tree/large"
mkdir -p "$tree/deep/deeper/"$'odd \xf0 folder' "$tree/tree" "$tree/no files"
printf 'inside\n' >"$tree/deep/deeper/"$'odd \xf0 folder'/inside
printf 'same name as its folder\n' >"$tree/tree/leaf"
ln -s "$tree/plain" "$tree/link to a file"
ln -s "$tree/deep" "$tree/link to a folder"

start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane

key t F5
expect "the tree was not copied whole" same_trees "$tree" "$base/to/tree"
expect "the operation window stayed" window_gone Copy
[ "$(readlink "$base/to/tree/link to a file")" = "$tree/plain" ] || fail "the link changed"
expect "the main window lost the focus" window_focused Norvane
same_trees "$tree" "$base/to/tree" || fail "the trees differ at the end"
[ -z "$(find "$base/to" -name '.norvane-*')" ] || fail "a temporary name stayed behind"
quit_norvane
