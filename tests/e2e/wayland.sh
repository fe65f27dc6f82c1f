#!/usr/bin/env bash
# On Wayland: keys, menus, questions, drags between panes, the clipboard, and the end. Windows cannot
# be asked for from outside there: what is seen on the screen and on the disk counts.
. "$(dirname "$0")/lib.sh"

command -v weston >/dev/null || {
    echo "skipped: no weston here"
    exit 77
}
mkdir -p "$base/left/folder" "$base/right"
for name in one three two; do printf '%s\n' $name >"$base/left/$name"; done
start_wayland || fail "no desktop"
mkdir -p "$(dirname "$settings_file")"
printf 'Left=300\nTop=300\nWidth=800\nHeight=500\nNumPanes=2\nPane0=%s\nPane1=%s\n' "$base/left" "$base/right" \
    >"$settings_file"
start_program "$norvane"

# Where the focused pane's path is, in its own blue: the window lies where the compositor puts it.
header() {
    import -window root "$base/screen.png"
    convert "$base/screen.png" -fill black -fuzz 1% +opaque '#4b609a' -fill white -opaque '#4b609a' \
        -trim -format '%w %h %X %Y' info: 2>/dev/null | tr -d + | grep -E '^[1-9][0-9]{2,} [1-9]'
}
read_header() {
    read -r width height left top <<<"$(header)"
    [ "${width:-0}" -gt 300 ] && [ "${height:-0}" -lt 40 ]
}
expect "the window did not come" read_header
expect "the window never rests" still root
read_header
# The compositor adds up movements: in the corner both pointers are at one place.
xdotool mousemove 640 400 sleep 0.1 mousemove 0 0 sleep 0.1 mousemove 640 400

# rests: nothing moves for longer than it takes the window of an operation to come and go
quiet() {
    local before
    before=$(look root) && stays 700 looks "$before" root
}
rests() { expect "never rests" quiet; }

# row NUMBER [PANE]: the middle of a name; row 0 is ".."
row() { echo $((left + 60 + ${2:-0} * 400)) $((top + 53 + $1 * 21)); }
there() { [ "$(ls "$base/$1" | tr '\n' ' ')" = "$2" ]; }
holds() { expect "$1 holds: $(ls "$base/$1" | tr '\n' ' ')" there "$1" "$2"; }

key o F5
holds right "one "
rests

key F10 Down Down Return
holds left "New Folder folder one three two "
rests
shot wayland-rename
key ctrl+a
xdotool type made
key Return
holds left "folder made one three two "

# By the mouse: the menu's item is where the menu is.
before=$(look root)
xdotool mousemove $((left + 20)) $((top - 12)) click 1
expect "no menu" looks_new "$before" root
rests
shot wayland-menu
xdotool mousemove_relative 20 85 click 1 # "Calculate Occupied Space" or what is there: none asks
rests
key Escape

# A click beside an open menu closes it.
closed=$(look root)
xdotool mousemove $((left + 20)) $((top - 12)) click 1
expect "no menu" looks_new "$closed" root
read -r x y <<<"$(row 12)"
xdotool mousemove "$x" "$y"
rests
xdotool click 1
hold 300
rests

# A row's menu, by a key and by the secondary button.
key Home o
rests
before=$(look root)
key Menu
expect "no menu by a key" looks_new "$before" root
rests
shot wayland-row-menu
key Escape
expect "the menu of a key stays" looks "$before" root
read -r x y <<<"$(row 3)"
xdotool mousemove "$x" "$y" click 3
expect "no menu by the mouse" looks_new "$before" root
rests
shot wayland-row-menu-mouse
key m m # Move to Next Pane, Mark
before=$(look root)
key Return
expect "the menu of the mouse stays" looks_new "$before" root
rests
key minus

# Rows in order: .., folder, made, one, three, two
drag() {
    local x y
    read -r x y <<<"$(row "$1")"
    xdotool mousemove "$x" "$y" mousedown 1
    hold 100
    for _ in 1 2 3 4 5 6; do
        xdotool mousemove_relative 8 4
        hold 50
    done
    read -r x y <<<"$(row 9 1)"
    xdotool mousemove "$x" "$y"
    hold 200
    xdotool mousemove_relative 4 2
    hold 300
    shot wayland-drag
    xdotool mouseup 1
}
drag 4
holds right "one three "
rests

# The clipboard, within the program and through the compositor.
key Home t t ctrl+c
hold 300
key ctrl+2 ctrl+v
holds right "one three two "
rests

# A question, answered by Return.
printf 'changed\n' >"$base/left/one"
key ctrl+1 Home o
rests
before=$(look root)
key F5
expect "no question" looks_new "$before" root
hold 1200
shot wayland-question
key Return
replaced() { [ "$(cat "$base/right/one")" = changed ]; }
expect "the question was not answered" replaced

# Each window of the program comes, takes keys and goes.
for keys in "ctrl+g" "ctrl+u" "ctrl+r" "ctrl+f" "t F3"; do
    rests
    before=$(look root)
    # shellcheck disable=SC2086
    key $keys
    expect "$keys: nothing came" looks_new "$before" root
    reading_time # its caret blinks: it never rests
    shot "wayland-${keys// /-}"
    key Escape
    expect "$keys: it stays" read_header
done
key ctrl+q
wait_for 10 program_ended || fail "Ctrl+Q did not end the program"
wait "$program_pid" || fail "the program ended with status $?"
program_pid=
[ "$(setting NumPanes)" = 2 ] || fail "the settings were not kept"
