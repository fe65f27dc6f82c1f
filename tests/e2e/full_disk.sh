#!/usr/bin/env bash
# A volume that fills up while it is copied to: told, nothing lost, the program goes on.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from" "$base/to"
head -c 3000000 /dev/urandom >"$base/from/big"
head -c 3000000 /dev/urandom >"$base/from/replaced"
printf 'small\n' >"$base/from/small"
sums=$(cd "$base/from" && cksum ./*)
with_mounts "mount -t tmpfs -o size=1m none '$base/to'; printf 'old\\n' >'$base/to/replaced'"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane
to=$(inside "$base/to")

key b F5
answerable foo
shot out-of-space
dismiss foo
expect "the operation window stayed" window_gone Copy
[ -s "$to/big" ] || fail "the part that fitted is gone"
[ "$(stat -c %s "$to/big")" -lt 3000000 ] || fail "the volume was not full"

# With room again the next copy works.
rm "$to/big"
key s F5
small_arrived() { same_files "$base/from/small" "$to/small"; }
expect "a small file was not copied" small_arrived
expect "the operation window stayed" window_gone Copy

# The old contents stay when the new ones do not fit.
key r F5
question_ready
press_button 80 96
dismiss foo
expect "the operation window stayed" window_gone Copy
[ "$(cat "$to/replaced")" = old ] || fail "the old file was lost"
[ "$(ls -A "$to" | tr '\n' ' ')" = "replaced small " ] || fail "left over: $(ls -A "$to")"
[ "$(cd "$base/from" && cksum ./*)" = "$sums" ] || fail "a source changed"
quit_norvane
