#!/usr/bin/env bash
# Copies to a volume that is read only: told once for all items, nothing lost.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/folder" "$base/to/folder"
for name in a b; do
    printf '%s\n' $name >"$base/from/$name"
done
printf 'inside\n' >"$base/from/folder/inside"
printf 'kept\n' >"$base/to/folder/kept"
with_mounts "mount --bind '$base/to' '$base/to'; mount -o remount,bind,ro '$base/to'"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane

key plus F5
answerable Err
shot read-only
dismiss Err
expect "the operation window stayed" window_gone Copy
window_gone Err || fail "it was told more than once"
[ "$(cd "$base/to" && find . | sort | tr '\n' ' ')" = ". ./folder ./folder/kept " ] ||
    fail "the target changed: $(find "$base/to")"
[ "$(cat "$base/from/a" "$base/from/b" "$base/from/folder/inside" | tr '\n' ' ')" = "a b inside " ] ||
    fail "a source changed"
expect "the main window did not get the focus back" window_focused Norvane
quit_norvane
