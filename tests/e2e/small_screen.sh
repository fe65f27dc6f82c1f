#!/usr/bin/env bash
# At twice the size on a small screen no question is broader than the screen, and its buttons work.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/a-folder-whose-name-is-long/and-another-one-inside-of-it" "$base/to"
from=$base/from/a-folder-whose-name-is-long/and-another-one-inside-of-it
printf 'new\n' >"$from/a"
printf 'old\n' >"$base/to/a"
export QT_SCALE_FACTOR=2
start_desktop 800x600 wm || fail "no desktop"
write_settings "$from" "$base/to"
start_norvane

key a F5
question_ready
shot small-screen-question
info=$(xwininfo -id "$(window_id 'Item Exists')")
left=$(awk '/Absolute upper-left X/ { print $NF }' <<<"$info")
width=$(awk '/Width:/ { print $NF }' <<<"$info")
[ "$left" -ge 0 ] && [ $((left + width)) -le 800 ] ||
    fail "the question reaches from $left to $((left + width))"
# "Skip All", the last button, in the right corner.
press_button $((width - 40)) 270
expect "the last button cannot be pressed" window_gone "Item Exists"
expect "the operation window stayed" window_gone Copy
[ "$(cat "$base/to/a")" = old ] || fail "another button was pressed"
expect "no focus" window_focused Norvane
quit_norvane
