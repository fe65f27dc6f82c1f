#!/usr/bin/env bash
# What may not be read or written is told, the rest goes on, and the pane stays where it was.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/closed" "$base/from/tree/shut" "$base/to"
printf 'plain\n' >"$base/from/plain"
printf 'secret\n' >"$base/from/secret"
printf 'inside\n' >"$base/from/closed/inside"
printf 'open\n' >"$base/from/tree/open"
printf 'locked\n' >"$base/from/tree/shut/locked"
chmod 000 "$base/from/closed" "$base/from/secret" "$base/from/tree/shut"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
without_file_rights
start_norvane

copied() { same_files "$base/from/$1" "$base/to/$1"; }

# A folder that may not be read cannot be entered.
key c Return
shot folder-closed
dismiss Err
expect "the main window did not get the focus back" window_focused Norvane
key p F5
expect "the pane did not stay in its folder" copied plain
expect "the operation window stayed" window_gone Copy

# A file that may not be read.
key s F5
dismiss foo
expect "the operation window stayed" window_gone Copy
[ ! -e "$base/to/secret" ] || fail "something was made of a file that cannot be read"

# A tree that can be read in part.
key t F5
shot tree-in-part
dismiss Err
expect "the operation window stayed" window_gone Copy
[ "$(cd "$base/to/tree" && find . | sort | tr '\n' ' ')" = ". ./open " ] ||
    fail "the readable part is not what arrived: $(find "$base/to/tree")"

# A target that may not be written.
rm -rf "$base/to/"*
chmod 555 "$base/to"
key p F5
dismiss Err
expect "the operation window stayed" window_gone Copy
[ -z "$(ls "$base/to")" ] || fail "something was made in a folder that may not be written"
[ "$(cat "$base/from/plain")" = plain ] || fail "the source changed"
quit_norvane

# A saved folder that may no longer be read is told at the start; the pane is on the home folder.
write_settings "$base/from/closed" "$base/to"
start_program "${launcher[@]}" "$norvane"
expect "no main window" window_shown Norvane
dismiss Err
expect "the main window did not get the focus" window_focused Norvane
quit_norvane
[ "$(setting Pane0)" = "$HOME" ] || fail "the pane is on $(setting Pane0)"
