#!/usr/bin/env bash
# A key pressed when the window has the focus, but the program has not noticed yet, is not lost; one
# that was down before does nothing.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from" "$base/to"
printf 'a\n' >"$base/from/a"
printf 'b\n' >"$base/from/b"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
xset r off
start_norvane
main_window=$(window_id Norvane)
focus_at_main() { [ "$(xdotool getwindowfocus)" = "$main_window" ]; }

# choose NAME: selects its row
choose() {
    xdotool windowfocus --sync "$main_window"
    key "$1"
}

# leave: another window has the focus, for longer than it may be nobody's between two windows of one
# program; then the program is held
leave() {
    xdotool windowfocus --sync "$other"
    hold 1000
    kill -STOP "$program_pid"
}
come_back() {
    xdotool windowfocus "$main_window"
    expect "the focus does not come" focus_at_main
}
# A second program with a window of its own.
first_pid=$program_pid
mkdir -p "$base/second"
HOME=$base/second XDG_CONFIG_HOME=$base/second "$norvane" &
second_pid=$!
others() { [ "$(xdotool search --onlyvisible --name '^Norvane$' | wc -l)" = 2 ]; }
expect "no second window" others
other=$(xdotool search --onlyvisible --name '^Norvane$' | grep -vx "$main_window")
program_pid=$first_pid

choose a
leave
come_back
# It is down still when the program notices.
xdotool keydown F5
kill -CONT "$program_pid"
arrived() { same_files "$base/from/$1" "$base/to/$1"; }
expect "the key was lost" arrived a
xdotool keyup F5
expect "the operation window stayed" window_gone Copy

# Only its repeats reach the window.
choose b
xset r on r rate 150 30
leave
xdotool keydown F6
come_back
kill -CONT "$program_pid"
untouched() { [ -e "$base/from/b" ] && [ ! -e "$base/to/b" ]; }
stays 600 untouched || fail "a key that was down before has acted"
xdotool keyup F6
kill "$second_pid"
wait "$second_pid" 2>/dev/null
expect "no focus" window_focused Norvane
quit_norvane
