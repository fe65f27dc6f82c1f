#!/usr/bin/env bash
# The main menu by mouse and by keys. What an item did is seen in what is on the screen and on disk.
# Usage: menus.sh NORVANE-BINARY wm|bare
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/left/sub" "$base/right"
printf 'a file\n' >"$base/left/file"

# A program without add-ons beside it: one menu is empty.
build=$(realpath "$(dirname "$norvane")")
mkdir -p "$base/bin" "$build/failed-pictures"
cp "$norvane" "$base/bin"
ln -s "$build"/libnorvane-kits.so* "$build/failed-pictures" "$base/bin"
norvane=$base/bin/norvane

start_desktop 1280x800 "${2:-wm}" || fail "no desktop"
write_settings "$base/left" "$base/right"
xdotool mousemove 700 500
start_norvane

place_of_menu() { xdotool getwindowgeometry --shell "$(menus)" | grep -E '^(X|Y|WIDTH)='; }
# another_menu PLACE: the one menu that is open is not the one that was there
another_menu() { menu_open && [ "$(place_of_menu)" != "$1" ]; }
about_shown() { window_shown "About Norvane"; }
about_gone() { window_gone "About Norvane"; }
at() { xdotool mousemove --window "$(window_id Norvane)" "$1" "$2"; }
press() { xdotool mousedown 1; }
release() { xdotool mouseup 1; }
# point X Y: onto an item of the open menu, which shows that
point() {
    local menu before
    menu=$(menus)
    before=$(look "$menu")
    at "$1" "$2"
    expect "$what: the item at $1,$2 is not shown as chosen" looks_new "$before" "$menu"
}

file=(18 11)
navigation=(74 11)
about=(40 142)
add_ons=(375 11)
help_left=342 # on the screen
row_of_file=(400 116)

what="click, click"
at "${file[@]}"; press; release
expect "$what: no menu" menu_open
shot menus-file
at "${about[@]}"; press; release
expect "$what: no about box" about_shown
menu_closed || fail "$what: the menu stayed"
dismiss "About Norvane"
expect "$what: no focus" window_focused Norvane

what="press, drag, release"
at "${file[@]}"; press
expect "$what: no menu" menu_open
for y in 50 88 115; do point 40 $y; done
point "${about[@]}"
release
expect "$what: no about box" about_shown
dismiss "About Norvane"
expect "$what: no focus" window_focused Norvane

what="drag through the bar and out"
at "${file[@]}"; press
expect "$what: no menu" menu_open
place=$(place_of_menu)
at "${navigation[@]}"
expect "$what: the next menu is not open, or not alone" another_menu "$place"
shot menus-navigation
at 600 400; release
expect "$what: the menu stayed" menu_closed

# Without anything in it a menu is disabled, whatever leads there.
what="an empty menu"
at "${add_ons[@]}"; press; release
stays 300 menu_closed || fail "$what: it opened"
key F10
expect "$what: no menu" menu_open
place=$(place_of_menu)
key Left
expect "$what: the menu before it is not open" another_menu "$place"
[[ $(place_of_menu) == X=$help_left* ]] || fail "$what: open is the one at $(place_of_menu)"
shot menus-help
key Escape
expect "$what: the menu stayed" menu_closed

# The press that closes a menu does nothing else: the row below it is not selected, the next one is.
what="a click outside"
key Home
at "${file[@]}"; press; release
expect "$what: no menu" menu_open
at "${row_of_file[@]}"; press; release
expect "$what: the menu stayed" menu_closed
key F5
nothing_arrived() { [ -z "$(ls "$base/right")" ]; }
stays 500 nothing_arrived || fail "$what: it selected a row"
at "${row_of_file[@]}"; press; release
key F5
arrived() { same_files "$base/left/file" "$base/right/file"; }
expect "$what: the next click selected nothing" arrived
expect "the operation window stayed" window_gone Copy
rm "$base/right/file"

what="F10, letters, Return"
key F10
expect "$what: no menu" menu_open
key a
shot menus-letter
key Return
expect "$what: no about box" about_shown
dismiss "About Norvane"
expect "$what: no focus" window_focused Norvane

what="Alt alone, arrows"
key alt
expect "$what: no menu" menu_open
key Right Left
expect "$what: not one menu is open" menu_open
# Over the separators: Open, Rename, New Folder, Empty Trash, Calculate, About.
key Home Down Down Down Down Down Return
expect "$what: no about box" about_shown
dismiss "About Norvane"
expect "$what: no focus" window_focused Norvane

what="Escape"
key F10 Down
expect "$what: no menu" menu_open
key Escape
expect "$what: the menu stayed" menu_closed
key End F5
expect "$what: the list has no keys" arrived
expect "the operation window stayed" window_gone Copy

what="Alt with a letter"
xdotool keydown alt key x keyup alt
stays 300 menu_closed || fail "$what: a menu opened"

# A window manager moves, raises or rolls up windows by Alt and a button: the program sees of it that
# the pointer was taken.
if [ "${2:-wm}" = wm ]; then
    for what in "Alt with a drag" "Alt with a click" "Alt with a resizing drag"; do
        button=1
        [ "$what" = "Alt with a resizing drag" ] && button=3
        at 600 400
        xdotool keydown alt sleep 0.05 mousedown $button sleep 0.05
        [ "$what" = "Alt with a click" ] || xdotool mousemove_relative -- 20 10 sleep 0.05
        xdotool mouseup $button sleep 0.05 keyup alt
        stays 300 menu_closed || fail "$what: a menu opened"
    done
    key alt
    expect "Alt after a drag: no menu" menu_open
    key alt
    expect "Alt twice: the menu stayed" menu_closed
fi

what="fast drags"
for round in $(seq 4); do
    at "${file[@]}"; press; at 40 40; at "${about[@]}"; release
    expect "$what, $round: no about box" about_shown
    dismiss "About Norvane"
    expect "$what, $round: the box stayed" about_gone
done
menu_closed || fail "$what: a menu stayed"

# At the screen's edge the menu is moved onto it.
what="the edge"
xdotool windowmove "$(window_id Norvane)" 1000 700
moved_there() {
    local X Y
    eval "$(xdotool getwindowgeometry --shell "$(window_id Norvane)" | grep -E '^[XY]=')"
    [ "$X" -ge 1000 ] && [ "$Y" -ge 700 ]
}
expect "$what: the window is not there" moved_there
at "${navigation[@]}"; press; release
expect "$what: no menu" menu_open
shot menus-edge
eval "$(xdotool getwindowgeometry --shell "$(menus)")"
[ "$X" -ge 0 ] && [ "$Y" -ge 0 ] && [ $((X + WIDTH)) -le 1280 ] && [ $((Y + HEIGHT)) -le 800 ] ||
    fail "$what: the menu is at $X,$Y, ${WIDTH}x$HEIGHT"
key Escape
expect "$what: the menu stayed" menu_closed
quit_norvane
