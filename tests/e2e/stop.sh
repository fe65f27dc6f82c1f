#!/usr/bin/env bash
# Escape in the operation window, or in the pane that started it: asked once, goes on or stops, and nothing more is
# deleted then.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from" "$base/to"
printf 'small\n' >"$base/from/a"
head -c 700000000 /dev/zero >"$base/from/b"
printf 'small\n' >"$base/from/z"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane

# ask_to_stop: activates the operation window and presses Escape. The program is held meanwhile, or
# it could be ready too soon; and what comes in the window's first moments is nobody's wish.
ask_to_stop() {
    expect "no operation window" painted Copy
    kill -STOP "$program_pid"
    reading_time
    xdotool windowactivate --sync "$(window_id Copy)"
    key Escape
    kill -CONT "$program_pid"
    answerable "Sir?"
    expect "the question is not the focused window" window_focused "Sir?"
}

what="Stop"
key plus F6
ask_to_stop
shot stop-question
key Escape # neither button is meant by it
stays 300 window_shown "Sir?" || fail "$what: Escape answered"
key Tab
key Return
expect "$what: the question stays" window_gone "Sir?"
ended() { window_gone Copy || window_shown Err; }
expect "$what: the operation goes on" ended
# What was moved before is gone when the medium had it in time; else it is in both places, and told.
if [ -e "$base/from/a" ]; then
    same_files "$base/from/a" "$base/to/a" || fail "$what: what was copied before is not there"
    dismiss Err
    rm "$base/to/a"
fi
expect "$what: the operation window stays" window_gone Copy
[ -e "$base/from/b" ] && [ -e "$base/from/z" ] || fail "$what: something was deleted"
[ ! -e "$base/to/b" ] || fail "$what: half a file is left"
[ ! -e "$base/to/z" ] || fail "$what: it went on"
[ -z "$(ls -A "$XDG_DATA_HOME/Trash/files" 2>/dev/null)" ] || fail "$what: something is in the Trash"
expect "$what: no focus" window_focused Norvane

what="Continue"
key plus F6
ask_to_stop
key Return
expect "$what: the question stays" window_gone "Sir?"
moved() { [ -e "$base/to/z" ] && [ ! -e "$base/from/z" ]; }
wait_for 60 moved || fail "$what: it did not go on"
wait_for 20 window_gone Copy || fail "$what: the operation window stayed"
[ "$(stat -c %s "$base/to/b")" = 700000000 ] || fail "$what: b is not whole"
[ -z "$(ls -A "$base/from")" ] || fail "$what: $(ls -A "$base/from") stayed"

# From the pane that started it, which has the keys.
what="Escape in the pane"
rm "$base/to/"*
head -c 700000000 /dev/zero >"$base/from/b"
key F2 b F5
expect "no operation window" painted Copy
# A window manager may give a new window the focus for a moment; the program has to run to give it back.
expect "$what: the operation has the keys" window_focused Norvane
kill -STOP "$program_pid"
key Escape
kill -CONT "$program_pid"
answerable "Sir?"
key Tab
key Return
expect "$what: the question stays" window_gone "Sir?"
expect "$what: the operation goes on" window_gone Copy
[ ! -e "$base/to/b" ] || fail "$what: half a file is left"
key Escape # nothing is left to stop
stays 300 window_gone "Sir?" || fail "$what: it asked about nothing"
quit_norvane
