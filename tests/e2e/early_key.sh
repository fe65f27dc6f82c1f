#!/usr/bin/env bash
# A key pressed when the window has the focus, but the program has not noticed yet, is not lost; one
# that was down before does nothing.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from" "$base/to"
printf 'a\n' >"$base/from/a"
printf 'b\n' >"$base/from/b"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane
main_window=$(window_id Norvane)
focus_at_main() { [ "$(xdotool getwindowfocus)" = "$main_window" ]; }

# choose NAME: selects its row
choose() {
    xdotool windowfocus --sync "$main_window"
    sleep 0.2
    key "$1"
    sleep 0.2
}

# away: another window has the focus, then the program is held, then the focus is given to it
away() {
    xdotool windowfocus --sync "$other"
    sleep 1
    kill -STOP "$program_pid"
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
away
xdotool keydown F5
kill -CONT "$program_pid"
sleep 0.3
xdotool keyup F5
arrived() { same_files "$base/from/$1" "$base/to/$1"; }
expect "the key was lost" arrived a
expect "the operation window stayed" window_gone Copy

choose b
xdotool windowfocus --sync "$other"
sleep 0.3
kill -STOP "$program_pid"
xdotool keydown F6
xdotool windowfocus "$main_window"
expect "the focus does not come" focus_at_main
kill -CONT "$program_pid"
sleep 0.6
xdotool keyup F6
[ -e "$base/from/b" ] && [ ! -e "$base/to/b" ] || fail "a key that was down before has acted"
kill "$second_pid"
wait "$second_pid" 2>/dev/null
expect "no focus" window_focused Norvane
quit_norvane
