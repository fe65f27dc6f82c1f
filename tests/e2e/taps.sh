#!/usr/bin/env bash
# Short taps of Return, one for each alert of a row: a release that falls between two windows, where
# nobody hears it, does not make the next tap look like the same press.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/left/sub" "$base/right"
without_file_rights
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"

windows() { xdotool search --onlyvisible --class norvane 2>/dev/null | sort | tr '\n' ' '; }
changed() { [ "$(windows)" != "$before" ]; }

# tap SECONDS: one that an alert takes must take it away
tap() {
    before=$(windows)
    xdotool keydown Return sleep "$1" keyup Return
    wait_for 2 changed || fail "a tap after one of $last was lost"
    last=$1
}

# Without a place for its settings the program says so before its first window. The first alert has
# no window to give the focus back to.
last=nothing
for length in 0.002 0.004 0.006 0.008 0.012 0.016 0.020; do
    rm -rf "$XDG_CONFIG_HOME"
    chmod 500 "$HOME"
    start_program "${launcher[@]}" "$norvane"
    expect "no alert" window_shown Hey
    until window_shown Norvane; do
        answerable Hey
        tap "$length"
        shown() { window_shown Hey || window_shown Norvane; }
        expect "neither an alert nor the main window" shown
    done
    expect "the main window did not get the focus" window_focused Norvane
    chmod 700 "$HOME"
    stop_program
done
