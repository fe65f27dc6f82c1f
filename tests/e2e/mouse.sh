#!/usr/bin/env bash
# What the buttons of the mouse do in a pane: marks with Ctrl and Shift, seen by what F5 then copies;
# the secondary button, double clicks, the strips above and below, the edge of a column.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/folder" "$base/to"
for name in a b c d e; do
    printf '%s\n' $name >"$base/from/$name"
done
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane
main=$(window_id Norvane)

# The rows of the left pane; 0 leads up.
folder=1 a=2 b=3 c=4 d=5 e=6
point() { xdotool mousemove --window "$main" "$1" "$2"; }
# click ROW [BUTTON]
click() { point 120 $((73 + 21 * $1)) && xdotool click "${2:-1}"; }
# click_with KEY ROW [BUTTON]
click_with() {
    xdotool keydown "$1"
    click "${@:2}"
    xdotool keyup "$1"
}
# The secondary button opens a menu.
leave_menu() {
    expect "$what: no menu" menu_open
    key Escape
    expect "$what: the menu stays" menu_closed
}
# move DISTANCE...: from where the pointer is, to the right
move() {
    local distance
    for distance in "$@"; do xdotool mousemove_relative -- "$distance" 0; done
}
copied() { [ "$(ls "$base/to" | tr '\n' ' ')" = "$* " ]; }
# copies NAME...: F5 copies exactly these
copies() {
    key F5
    expect "$what: expected $* in the right folder, found: $(ls "$base/to" | tr '\n' ' ')" copied "$@"
    expect "the operation window stayed" window_gone Copy
    expect "the main window did not get the focus back" window_focused Norvane
    copied "$@" || fail "$what: expected $*, found: $(ls "$base/to" | tr '\n' ' ')"
    rm -rf "$base/to/"*
}

what="Shift without an anchor"
click_with shift $c
copies c
what="a click"
click $b
copies b
what="Ctrl, with the row clicked before"
click $a
click_with ctrl $c
shot mouse-marked
copies a c
what="Ctrl on a marked row"
click_with ctrl $a
click $e 3
leave_menu
copies c
what="a click in place"
click $e
copies e
what="Shift, upwards from the row clicked last"
click_with shift $b
copies b c d e
what="Shift, from the row that Ctrl has marked"
click $e
click_with ctrl $b
click_with shift $c
copies b c e
what="Shift, from the row that leads up"
click 0
click_with shift $a
copies a folder
what="Ctrl in a folder just entered"
key f Return BackSpace
click_with ctrl $b
click_with ctrl $d
copies b d

what="a press that moves away a little"
click $a
click_with ctrl $c
click $e 3
leave_menu
point 120 $((73 + 21 * b)) && xdotool mousedown 1
move 5 4
xdotool mouseup 1
copies b
what="a press that moves away and comes back"
click $a
click_with ctrl $c
point 120 $((73 + 21 * e)) && xdotool mousedown 1
move 6 8 10 -10 -8 -6
hold 200 # the picture of what is dragged, a window without a title
xdotool mouseup 1
copies a c
what="a row that was dragged"
click 0
point 120 $((73 + 21 * e)) && xdotool mousedown 1
move 6 8 10
point 670 400
hold 200
xdotool mouseup 1
expect "$what: it did not come" copied e
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane
rm "$base/to/e"
key a
copies a

what="the secondary button"
click $a
click_with ctrl $c
click $d 3
leave_menu
copies a c
key minus
copies d
what="the secondary button on a marked row"
click $a
click_with ctrl $c
click $a 3
leave_menu
key minus
copies c
what="the secondary button with Ctrl or Shift"
click $a
click_with ctrl $c
click_with ctrl $e 3
leave_menu
click_with shift $e 3
leave_menu
copies a c
click 0

# is_at FOLDER: the pane that has the focus shows it
is_at() {
    key F7
    expect "$what: the focus is not in $1" test -d "$1/New Folder"
    key Escape
    rmdir "$1/New Folder"
}
what="a double click"
point 120 $((73 + 21 * folder)) && xdotool click --repeat 2 --delay 60 1
expect "$what: it leads nowhere" still "$main"
is_at "$base/from/folder"
what="a double click on the row that leads up"
point 120 73 && xdotool click --repeat 2 --delay 60 1
expect "$what: it leads nowhere" still "$main"
is_at "$base/from"

right_path=100x10+900+28
unfocused=$(look "$main" $right_path)
# The button is still down when it has the focus.
for place in "the header:33" "the footer:588" "the room below the rows:400"; do
    what="a press on ${place%:*}"
    key ctrl+1
    expect "$what: the right pane has the focus" looks "$unfocused" "$main" $right_path
    point 670 "${place#*:}" && xdotool mousedown 1
    expect "$what: the header shows no focus" looks_new "$unfocused" "$main" $right_path
    is_at "$base/to"
    xdotool mouseup 1
done

what="the edge of a column"
right_labels=200x16+645+46
before=$(look "$main" $right_labels)
point 130 54 && xdotool mousedown 1
move 15 15 10
xdotool mouseup 1
expect "$what: the other pane shows its columns as before" looks_new "$before" "$main" $right_labels
shot mouse-columns
quit_norvane
[ "$(setting Column1)" = 148 ] || fail "$what: the width is $(setting Column1)"
stop_desktop

# Nothing goes to the root of the file system, by the mouse or by a key. Its pane has room below the
# rows.
start_desktop 1280x1500 wm || fail "no desktop"
printf 'Left=40\nTop=60\nWidth=1100\nHeight=1400\nNumPanes=2\nPane0=%s\nPane1=/\n' "$base/from" \
    >"$settings_file"
mv "$base/from/e" "$base/from/ends-in-no-root"
start_norvane
main=$(window_id Norvane)
what="a drop on the root"
point 120 $((73 + 21 * e)) && xdotool mousedown 1
move 6 8 10
point 670 1300
hold 200
xdotool mouseup 1
answerable Warning
shot mouse-root
dismiss Warning
what="a copy to the root"
key e F5
dismiss Warning
what="a move to the root"
key e F6
dismiss Warning
window_gone Copy || fail "$what: an operation window came"
[ -e "$base/from/ends-in-no-root" ] || fail "$what: it is gone"
[ ! -e /ends-in-no-root ] || fail "$what: it is there"
quit_norvane
