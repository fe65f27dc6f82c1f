#!/usr/bin/env bash
# Drags by a real mouse: a row and marked rows to the other pane, with Shift, onto a folder's row, and
# drags that change nothing; then the same entries by the clipboard's keys.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/folder" "$base/to/sub"
for name in a b c d e; do
    printf '%s\n' $name >"$base/from/$name"
done
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane
main=$(window_id Norvane)

# point PANE ROW: moves the pointer there; rows count from 0, the one that leads up
point() { xdotool mousemove --window "$main" $(($1 * 550 - 430)) $((73 + 21 * $2)); }
# drag PANE ROW [OFFSET]: presses the row and moves away from it a little
drag() {
    point "$1" "$2"
    xdotool mousedown 1
    for step in 6 12 20; do
        xdotool mousemove_relative -- $step 1
    done
    # What is dragged has a picture of its own, a window that no title names.
    hold 200
}
over() {
    point "$1" "$2"
    xdotool mousemove_relative -- 3 1
    hold 200
}
drop() { xdotool mouseup 1; }
there() { [ "$(ls "$base/$1" | tr '\n' ' ')" = "$2" ]; }
settled() {
    wait_for 10 there "$1" "$2" || fail "$1 holds: $(ls "$base/$1" | tr '\n' ' ')"
    expect "the operation window stayed" window_gone Copy
    expect "the main window did not get the focus back" window_focused Norvane
}

drag 1 3 # b
over 2 8
shot dragged
drop
settled to "b sub "
settled from "a b c d e folder "

# With Shift it is moved.
drag 1 2 # a
over 2 8
xdotool keydown shift
over 2 9
drop
xdotool keyup shift
settled to "a b sub "
settled from "b c d e folder "

# A folder's row takes it, wherever it is shown.
drag 1 2 # b
over 1 1
shot folder
drop
settled from/folder "b "
settled to "a b sub "

# All that is marked goes, whichever row is dragged; the row clicked last was marked with the first.
point 1 3 && xdotool keydown ctrl click 1 keyup ctrl
point 1 4 && xdotool keydown ctrl click 1 keyup ctrl
drag 1 2
over 2 1 # sub
shot marked
drop
settled to/sub "b c d "

# Nothing changes: by Escape, on the desktop, on itself, in its own folder, and by a click in place.
before=$(find "$base/from" "$base/to" | sort)
drag 1 2
over 2 8
key Escape
drop
drag 1 2
xdotool mousemove 1200 780
hold 200
drop
drag 1 1 # folder
over 1 1
drop
drag 1 2
over 1 9
drop
point 1 2 && xdotool click 1
hold 500
[ "$before" = "$(find "$base/from" "$base/to" | sort)" ] || fail "a drag without a target changed something"
window_gone Copy || fail "an operation window came"

# By the clipboard: a copy may be pasted again, what was cut only once.
key Home e ctrl+c ctrl+2 ctrl+v
settled to "a b e sub "
key ctrl+1 Home e ctrl+x ctrl+2 s Return
expect "the folder was not entered" still "$main"
key ctrl+v
settled to/sub "b c d e "
settled from "b c d folder "
shot pasted
quit_norvane
