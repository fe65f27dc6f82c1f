#!/usr/bin/env bash
# Back and forward in a pane, by keys and by a mouse's side buttons; the menus stay closed.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/one/two/three" "$base/other"
write_settings "$base/one" "$base/other"
start_desktop 1280x800 wm || fail "no desktop"
start_norvane

# The pane's header tells its folder.
header() { look Norvane 500x20+0+30; }
header_is() { [ "$(header)" = "$1" ]; }
header_is_not() { [ "$(header)" != "$1" ]; }
# enters LETTER: the folder of that letter, and waits for its header
enters() {
    local before
    before=$(header)
    key "$1" Return
    expect "$1 is not entered" header_is_not "$before"
    expect "the header is still being painted" still "$(window_id Norvane)"
}

one=$(header)
enters t
two=$(header)
enters t
three=$(header)
key alt+Left
expect "Alt+Left does not go back" header_is "$two"
key alt+Left
expect "Alt+Left does not go back twice" header_is "$one"
shot "places-back"
key alt+Right alt+Right
expect "Alt+Right does not go forward" header_is "$three"
expect "a menu is open" menu_closed
xdotool mousemove --window "$(window_id Norvane)" 200 300 click 8
expect "the mouse's back button does not go back" header_is "$two"
xdotool click 9
expect "the mouse's forward button does not go forward" header_is "$three"
# The other pane has a way of its own, which begins here.
key ctrl+2 alt+Left ctrl+1
expect "the other pane's key went here" header_is "$three"
quit_norvane
[ "$(setting Pane0)" = "$base/one/two/three" ] || fail "the pane is not where it was shown to be"
[ "$(setting Pane1)" = "$base/other" ] || fail "the other pane went elsewhere"
