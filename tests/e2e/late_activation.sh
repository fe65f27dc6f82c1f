#!/usr/bin/env bash
# A window manager that is slow to show an operation window: the operation goes on meanwhile, and
# who chooses its window then is understood, though it never had the activation before.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from" "$base/to"
head -c 700000000 /dev/zero >"$base/from/large"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane
manager=${desktop_pids[1]}

kill -STOP "$manager"
key l F5
copying() { [ -s "$base/to/large" ]; }
expect "the copy waits for the window manager" copying
# Held, or it could be ready too soon.
kill -STOP "$program_pid"
# What a window manager gives to a window because it was shown, it is taken to give within a second.
hold 1100
kill -CONT "$manager"
expect "no operation window" window_shown Copy
xdotool windowactivate --sync "$(window_id Copy)"
key Escape
kill -CONT "$program_pid"
answerable "Sir?"
key Return
expect "the question stays" window_gone "Sir?"
whole() { same_files "$base/from/large" "$base/to/large"; }
wait_for 60 whole || fail "not copied whole"
expect "the operation window stayed" window_gone Copy
expect "no focus" window_focused Norvane
quit_norvane
