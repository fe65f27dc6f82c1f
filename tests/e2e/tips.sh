#!/usr/bin/env bash
# Tips: what a cell has no room for, exact bytes, the whole path; they go with the pointer and at a key.
. "$(dirname "$0")/lib.sh"

long=$base/left/"a folder with a long name that has no room in the header of its pane/and another one below it"
mkdir -p "$long" "$base/right"
head -c 1234567 /dev/zero >"$long/a very long name of a file that is cut by its column.tar.gz"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$long" "$base/right"
start_norvane
expect "never rests" still root

# tips: how many windows of the program are seen
tips() { xdotool search --onlyvisible --class norvane 2>/dev/null | wc -l; }
before=$(tips)
comes() { [ "$(tips)" -gt "$before" ]; }
goes() { [ "$(tips)" -le "$before" ]; }

# rest X Y NAME: a tip comes there
rest() {
    xdotool mousemove "$1" "$2"
    expect "no tip of the $3" comes
    shot "tip-$3"
}
rest 80 158 name
xdotool mousemove 80 500 # no row
expect "the tip of the name stays" goes
rest 180 158 size
key Down
expect "the tip of the size stays at a key" goes
rest 200 93 header
xdotool mousemove 1200 780 # out of the window
expect "the tip of the header stays" goes
window_focused Norvane || fail "a tip took the focus"

# Keys beside a tip work.
rest 80 158 name-again
key ctrl+g
answerable GoTo
key Escape
expect "the main window did not get the focus back" window_focused Norvane
quit_norvane
