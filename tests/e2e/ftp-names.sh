#!/usr/bin/env bash
# Names that a server's commands and listings could trip over, sent as chosen rows and as a tree, and
# fetched back.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/ftp_lib.sh"

# shellcheck disable=SC2016 # the signs of a shell are meant as they are
names=(' both ends ' 'in  side' "it's" '"quoted" twice ""' '%41%s%n%' '-dash' '~tilde' '~' '*?[a]' 'a;b&c|d$e`f' 'back\slash'
    'Grüße – 日本 🙂' $'e\u0301 apart' $'no \xff\xfe utf' ' ' '...' '-> arrow' '12:00 x')
folders=(' a folder ' '~home' '-rf' '"' '%20' 'Ünï' $'\xc3(' ' "" ')
# fill FOLDER: files of all these names, each with its own bytes
fill() {
    local name
    for name in "${names[@]}"; do
        { printf '%s\n' "$name"; head -c 500 /dev/urandom; } >"$1/$name"
    done
}
mkdir -p "$base/here" "$base/back" "$base/empty"
fill "$base/here"
for name in "${folders[@]}"; do
    mkdir -p "$base/here/$name/$name"
    printf 'deep in %s\n' "$name" >"$base/here/$name/$name/$name"
done
fill "$base/here/ a folder "
cp -r "$base/here" "$base/original"
printf 'of the server' >"$served/beside"

start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/here" "$base/empty"
serve
printf 'first' >"$served/pub/first"
start_norvane
connect
expect "the server's folder is not shown" rows_shown
key ctrl+1 plus F5
arrived() { diff -r -x first "$base/original" "$served/pub"; }
wait_for 10 arrived || fail "the names did not go: $(arrived 2>&1 | head -5)"
idle Upload
[ "$(ls -A "$served")" = $'beside\npub' ] || fail "made elsewhere: $(ls -A "$served")"
quit_norvane

rm "$served/pub/first"
write_settings "$base/back" "$base/empty"
start_norvane
connect
expect "the server's folder is not shown again" rows_shown
key ctrl+2 plus F5
returned() { same_trees "$base/original" "$base/back"; }
wait_for 10 returned || fail "the names did not come: $(returned 2>&1 | head -5)"
idle Download
same_trees "$base/original" "$base/here" || fail "the sources were changed"
same_trees "$base/original" "$served/pub" || fail "the server's files were changed"
quit_norvane
