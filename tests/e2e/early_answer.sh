#!/usr/bin/env bash
# A key pressed in the first moments of a question answers nothing, also where the program is so busy
# that it takes the key only when those are over.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from" "$base/to"
printf 'new\n' >"$base/from/a"
printf 'old, longer\n' >"$base/to/a"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane
# Its key events show how late each is.
key a

# answer_early: whether the key was in time, by what had passed since the key that led to the question
answer_early() {
    local begin=${EPOCHREALTIME/[.,]/}
    xdotool key F5
    wait_for 5 window_focused "Item Exists" || fail "no question"
    kill -STOP "$program_pid"
    xdotool key Return
    [ $((${EPOCHREALTIME/[.,]/} - begin)) -lt 480000 ]
}

answered=no
for _ in 1 2 3 4 5 6; do
    answer_early && in_time=yes || in_time=no
    reading_time
    kill -CONT "$program_pid"
    if [ "$in_time" = yes ]; then
        stays 500 window_shown "Item Exists" || fail "the question was answered by a key that came too early"
        answered=yes
        break
    fi
    # Too slow this time: as it may be answered by that key, it is asked anew.
    hold 300
    if window_shown "Item Exists"; then
        question_ready
        key Escape
    fi
    expect "the operation window stayed" window_gone Copy
    expect "no focus" window_focused Norvane
    printf 'old, longer\n' >"$base/to/a"
done
[ $answered = yes ] || fail "this machine is too slow to press a key within half a second"
question_ready
key Escape
expect "the question stays" window_gone "Item Exists"
expect "the operation window stayed" window_gone Copy
[ "$(cat "$base/to/a")" = "old, longer" ] || fail "the file was replaced"
quit_norvane
