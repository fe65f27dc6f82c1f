#!/usr/bin/env bash
# The other commands in a pane that shows the Trash: moves in and out, new folders, new names.
. "$(dirname "$0")/lib.sh"

trash=$XDG_DATA_HOME/Trash
mkdir -p "$base/left" "$trash/files/tree" "$trash/info"
printf 'from the left\n' >"$base/left/into"
printf 'deep\n' >"$trash/files/tree/deep"
printf 'old\n' >"$trash/files/name"
for name in tree name; do
    printf '[Trash Info]\nPath=%s/was/%s\nDeletionDate=2026-01-01T00:00:00\n' "$base" $name \
        >"$trash/info/$name.trashinfo"
done
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$trash/files"
start_norvane
gone() { [ ! -e "$1" ]; }

what="F6 into the Trash"
key i F6
expect "$what: it stays" gone "$base/left/into"
expect "the operation window stayed" window_gone Copy
[ "$(cat "$trash/files/into")" = "from the left" ] || fail "$what: it is not there"
grep -qx "Path=$base/left/into" "$trash/info/into.trashinfo" || fail "$what: no record of its origin"

what="Shift+F6 in the Trash"
key ctrl+2 n shift+F6
xdotool type --delay 15 -- "other"
key Return
renamed() { [ -e "$trash/files/other" ]; }
expect "$what: it was not renamed" renamed
grep -qx "Path=$base/was/name" "$trash/info/other.trashinfo" || fail "$what: its origin is lost"
gone "$trash/info/name.trashinfo" || fail "$what: the old record stays"

what="F7 in the Trash"
key F7
made() { [ -d "$trash/files/New Folder" ]; }
expect "$what: it was not made" made
key Escape

what="F6 out of the Trash"
key t F6
expect "$what: it stays" gone "$trash/files/tree"
expect "the operation window stayed" window_gone Copy
[ "$(cat "$base/left/tree/deep")" = deep ] || fail "$what: it is not whole"
gone "$trash/info/tree.trashinfo" || fail "$what: its record stays"

what="Delete, what is left"
key plus Delete
dismiss "Sir?"
emptied() { [ -z "$(ls -A "$trash/files")" ] && [ -z "$(ls -A "$trash/info")" ]; }
expect "$what: $(ls -A "$trash/files")" emptied
expect "the operation window stayed" window_gone Delete
quit_norvane
