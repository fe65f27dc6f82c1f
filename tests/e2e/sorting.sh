#!/usr/bin/env bash
# Rows sorted by the column clicked, where the preferences say so, by real keys and mouse: files that come go to their
# place, another click turns the order round, and all is as listed when the preference is taken back.
. "$(dirname "$0")/lib.sh"

title="Norvane Preferences Dialog"
mkdir -p "$base/one/folder" "$base/two"
for name in f10 f9; do echo "$name" >"$base/one/$name"; done
write_settings "$base/one" "$base/two"
start_desktop 1280x800 wm || fail "no desktop"
start_norvane
main=$(window_id Norvane)
expect "the panes are still being painted" still "$main"

stored() { [ "$(setting "$1")" = "$2" ]; }

# switch_sorting VALUE: by the third box of the last page
switch_sorting() {
    key ctrl+r
    expect "no preferences window" window_focused "$title"
    expect "the preferences window is still being painted" still "$(window_id "$title")"
    key ctrl+Next ctrl+Next Tab Tab Tab space Return
    expect "the switch is not stored" stored SortByColumns "$1"
    key Escape
    expect "the preferences window stays" window_gone "$title"
    expect "the main window has no focus" window_focused Norvane
}

# The left pane's strip of columns, at "Name".
click_name() {
    local before
    before=$(look "$main")
    xdotool mousemove --window "$main" 100 57 click 1
    expect "nothing is seen of the click" looks_new "$before" "$main"
}

# third_is NAME: what stands below ".." and the folder in the left pane
third_is() {
    key ctrl+1 Home Down Down F5
    expect "$1 is not the third row, but $(ls "$base/two")" same_files "$base/one/$1" "$base/two/$1"
    expect "the operation window stayed" window_gone Copy
    expect "the main window did not get the focus back" window_focused Norvane
    rm "$base/two/$1"
}

click_name
third_is f10
switch_sorting 1
shot sorted
third_is f9
settled=$(look "$main")
echo 8 >"$base/one/f8"
expect "what came is not seen" looks_new "$settled" "$main"
third_is f8
click_name
third_is f10
shot sorted-down
switch_sorting 0
third_is f10
quit_norvane
