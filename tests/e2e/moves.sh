#!/usr/bin/env bash
# F6 within a volume and onto another one; what stays when an item is skipped, refused or changed.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/folder/below" "$base/to" "$base/other"
printf 'plain\n' >"$base/from/a"
chmod 640 "$base/from/a"
touch -d '2001-02-03 04:05:06' "$base/from/a"
printf 'inside\n' >"$base/from/folder/below/inside"
ln -s below/inside "$base/from/folder/link"
touch -d '2002-03-04 05:06:07' "$base/from/folder/below"
printf 'new\n' >"$base/from/clash"
printf 'old\n' >"$base/to/clash"
printf 'far\n' >"$base/from/far"
setfattr -n user.note -v kept "$base/from/far" 2>/dev/null
with_mounts "mount -t tmpfs none '$base/other'"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane

what="a file"
key a F6
gone() { [ ! -e "$base/from/$1" ]; }
expect "$what: the source stayed" gone a
expect "the operation window stayed" window_gone Copy
[ "$(cat "$base/to/a")" = plain ] || fail "$what: it is not there"
[ "$(stat -c '%a %y' "$base/to/a" | cut -c1-23)" = "640 2001-02-03 04:05:06" ] ||
    fail "$what: $(stat -c '%a %y' "$base/to/a")"

what="a folder"
key f F6
expect "$what: the source stayed" gone folder
expect "the operation window stayed" window_gone Copy
[ "$(cat "$base/to/folder/below/inside")" = inside ] || fail "$what: not whole"
[ "$(readlink "$base/to/folder/link")" = below/inside ] || fail "$what: the link became another one"
[ "$(stat -c %y "$base/to/folder/below" | cut -c1-19)" = "2002-03-04 05:06:07" ] ||
    fail "$what: the time of a folder"

# Skipped, the source leaves its place as it always did, but not the disk.
what="a skipped item"
key c F6
question_ready
press_button 370 96
expect "$what: the source stayed" gone clash
dismissed_summary() { window_gone Copy; }
expect "the operation window stayed" dismissed_summary
if window_shown Err; then dismiss Err; fi
[ "$(cat "$base/to/clash")" = old ] || fail "$what: the target was replaced"
[ "$(cat "$XDG_DATA_HOME/Trash/files/clash")" = new ] || fail "$what: the source is lost"
grep -qx "Path=$base/from/clash" "$XDG_DATA_HOME/Trash/info/clash.trashinfo" ||
    fail "$what: no record of its origin"

what="another volume"
quit_norvane
write_settings "$base/from" "$base/other"
start_norvane
key f F6
expect "$what: the source stayed" gone far
expect "the operation window stayed" window_gone Copy
[ "$(cat "$(inside "$base/other")/far")" = far ] || fail "$what: it is not there"
quit_norvane
