#!/usr/bin/env bash
# A search is given up where a volume does not answer, and says so; what was found before stays.
. "$(dirname "$0")/lib.sh"

own=silent-$$
hang_at=$base/zz-hangs gate=$base/gate
mkdir -p "$hang_at/below" "$base/from"
touch "$base/from/$own-one" "$gate"
write_settings "$base/from" "$base/from"

start_desktop 1280x800 wm || fail "no desktop"
launcher=(env "LD_PRELOAD=$(dirname "$norvane")/libhang.so" "HANG_AT=$hang_at" "HANG_WHILE=$gate")
start_norvane

# Both windows are called "Norvane": they differ in their sizes.
query_open() { xwininfo -id "$(xdotool getactivewindow)" | grep -q 'Width: 441'; }
# The pane's header tells what its rows are.
header() { look "$main" 600x20+0+30; }
header_is_new() { [ "$(header)" != "$1" ]; }

main=$(xdotool search --onlyvisible --name '^Norvane$' | head -n 1)
before=$(header)
key ctrl+u
expect "no query window" query_open
expect "the query window stays empty" still "$(xdotool getactivewindow)"
xdotool type --delay 15 -- "$own"
key Return
wait_for 60 window_shown foo || fail "nobody says that a volume does not answer"
shot "silent-volume"
expect "what was found is not shown" header_is_new "$before"
answerable foo
key Return
expect "the alert stayed" window_gone foo
key Escape
main_focused() { [ "$(xdotool getactivewindow)" = "$main" ]; }
expect "the main window has no focus" main_focused
key ctrl+q
wait_for 5 program_ended || fail "the program does not end"
wait "$program_pid" || fail "the program ended with status $?"
program_pid=
