#!/usr/bin/env bash
# Empty Trash: everything in it goes, its records too, nothing that a link there leads to.
. "$(dirname "$0")/lib.sh"

trash=$XDG_DATA_HOME/Trash
mkdir -p "$base/left" "$base/right/kept" "$trash/files/folder/below" "$trash/info"
printf 'kept\n' >"$base/right/kept/file"
printf 'x\n' >"$trash/files/plain"
printf 'x\n' >"$trash/files/folder/below/deep"
ln -s "$base/right/kept" "$trash/files/folder/link"
for name in plain folder; do
    printf '[Trash Info]\nPath=%s/left/%s\nDeletionDate=2026-01-01T00:00:00\n' "$base" $name \
        >"$trash/info/$name.trashinfo"
done
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane

key F10 e
shot empty-trash-menu
key Return
emptied() { [ -z "$(ls -A "$trash/files")" ] && [ -z "$(ls -A "$trash/info")" ]; }
expect "left: $(ls -A "$trash/files" "$trash/info")" emptied
[ "$(cat "$base/right/kept/file")" = kept ] || fail "it followed a link"
expect "no focus" window_focused Norvane
quit_norvane
