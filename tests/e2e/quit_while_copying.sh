#!/usr/bin/env bash
# Quitting while an operation asks, and while one runs: the first is cancelled, the second ends first.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from" "$base/to"
for name in a b; do
    printf 'new %s\n' $name >"$base/from/$name"
done
printf 'old a\n' >"$base/to/a"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane

key plus F5
question_ready
xdotool windowactivate --sync "$(window_id Norvane)"
expect "the main window cannot be activated" window_focused Norvane
quit_norvane
[ "$(cat "$base/to/a")" = "old a" ] || fail "the file in question was replaced"
[ "$(ls -A "$base/to")" = a ] || fail "left over: $(ls -A "$base/to")"
[ "$(setting NumPanes)" = 2 ] || fail "the settings were not saved"

# A running copy is waited for, with its window shown.
head -c 300000000 /dev/zero >"$base/from/large"
start_norvane
key l F5
end=$((SECONDS + 10))
until [ -s "$base/to/large" ] || [ $SECONDS -ge $end ]; do :; done
kill -STOP "$program_pid"
[ "$(stat -c %s "$base/to/large")" -lt 300000000 ] || fail "the copy was over before it was stopped"
kill -TERM "$program_pid" # asks to quit, as the end of a session does
kill -CONT "$program_pid"
wait_for 30 program_ended || fail "the program does not end"
wait "$program_pid" || fail "the program ended with status $?"
program_pid=
same_files "$base/from/large" "$base/to/large" || fail "quitting cut a copy short"
