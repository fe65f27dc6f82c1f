#!/usr/bin/env bash
# Entries that travel between Norvane and another file manager, by the mouse and by the clipboard,
# both ways. Usage: programs.sh NORVANE-BINARY thunar|pcmanfm-qt
. "$(dirname "$0")/lib.sh"

other=$2
for needed in "$other" dbus-run-session; do
    command -v "$needed" >/dev/null || {
        echo "skipped: no $needed here"
        exit 77
    }
done
odd=$(printf 'odd \303\251 %%20#')
mkdir -p "$base/ours" "$base/theirs"
printf 'odd\n' >"$base/ours/$odd"
printf 'ours\n' >"$base/ours/z"
start_desktop 1280x800 wm || fail "no desktop"
mkdir -p "$(dirname "$settings_file")"
printf 'Left=5\nTop=30\nWidth=600\nHeight=500\nNumPanes=1\nPane0=%s\n' "$base/ours" >"$settings_file"
start_norvane
main=$(window_id Norvane)

# What the other program needs of a session ends with it.
dbus-run-session -- "$other" "$base/theirs" >/dev/null 2>&1 &
session=$!
end_session() {
    local status=$?
    pkill -P "$session"
    kill "$session" 2>/dev/null
    return $status
}
trap 'end_session; finish' EXIT
other_window() { xdotool search --onlyvisible --class "$other" | tail -n 1 | grep .; }
wait_for 30 other_window || fail "$other did not come"
theirs=$(other_window)
xdotool windowsize --sync "$theirs" 560 500
xdotool windowmove "$theirs" 660 30
wait_for 10 still root || fail "$other never rests"

# Where its first entry is: what changes in the folder's part of its window when there is one. The
# text below tells the count, and is left out.
folder=380x300+840+140
look_there() { import -window root -crop $folder +repage "$1"; }
look_there "$base/empty.png"
printf 'theirs\n' >"$base/theirs/their-file"
changed() {
    look_there "$base/filled.png"
    ! cmp -s "$base/empty.png" "$base/filled.png"
}
expect "$other did not show the new file" changed
wait_for 10 still root || fail "$other never rests"
look_there "$base/filled.png"
box=$(convert "$base/empty.png" "$base/filled.png" -compose difference -composite -colorspace gray \
    -threshold 4% -format '%@' info:)
read -r width height left top <<<"$(tr 'x+' '  ' <<<"$box")"
x=$((840 + left + width / 2)) y=$((140 + top + height * 4 / 5)) # its name: the theme may have no icons

step() {
    xdotool mousemove "$1" "$2"
    hold 100
}
away() { # from where the pointer is pressed to a place, slowly enough for anybody
    xdotool mousemove_relative -- 6 3
    hold 60
    xdotool mousemove_relative -- 12 3
    hold 60
    step $(((630 + $1) / 2)) 400
    step "$1" "$2"
    step $(($1 + 3)) $(($2 + 2))
    hold 300
}
there() { [ "$(ls "$base/$1" | tr '\n' ' ')" = "$2" ]; }
ls_of() { printf '%s\n' "$@" | sort | tr '\n' ' '; }
holds() { wait_for 10 there "$1" "$2" || fail "$1 holds: $(ls "$base/$1" | tr '\n' ' ')"; }

# repeated COMMAND WANTED-FOLDER WANTED: does it until the folder holds that, three times at most. A
# machine that does much else may give the other program a click and the key behind it too late, and
# nothing outside tells when it has taken them.
repeated() {
    for _ in 1 2 3; do
        "$1"
        wait_for 6 there "$2" "$3" && return
    done
    fail "$1: $2 holds: $(ls "$base/$2" | tr '\n' ' ')"
}

# The first row is the odd name. The other program may ask what to do, copying first.
drag_ours() {
    xdotool mousemove --window "$main" 100 $((73 + 21)) mousedown 1
    away 1000 400
    shot "$other-ours"
    xdotool mouseup 1
    wait_for 2 there theirs "$(ls_of "$odd" their-file)" || key Down Return
}
repeated drag_ours theirs "$(ls_of "$odd" their-file)"
[ -e "$base/ours/$odd" ] || fail "what was dragged to $other is gone here"
rm "$base/theirs/$odd"
wait_for 10 still root || fail "$other never rests"

drag_theirs() {
    step $x $y
    xdotool mousedown 1
    hold 150
    away 300 400
    shot "$other-theirs"
    xdotool mouseup 1
}
repeated drag_theirs ours "$(ls_of their-file "$odd" z)"
[ -e "$base/theirs/their-file" ] || fail "what was dragged from $other is gone there"
rm "$base/ours/their-file"

cut_theirs() {
    xdotool windowactivate --sync "$theirs"
    step $x $y
    xdotool click 1
    hold 300
    key ctrl+x
    hold 500
    xdotool windowactivate --sync "$main"
    expect "the main window did not get the focus back" window_focused Norvane
    key ctrl+v
}
repeated cut_theirs ours "$(ls_of their-file "$odd" z)"
holds theirs ""
expect "the operation window stayed" window_gone Copy

cut_ours() {
    xdotool windowactivate --sync "$main"
    expect "the main window did not get the focus back" window_focused Norvane
    key Home t ctrl+x
    hold 300
    shot "$other-cut"
    xdotool windowactivate --sync "$theirs"
    step 1000 400
    xdotool click 1
    hold 300
    key ctrl+v
}
repeated cut_ours theirs "their-file "
holds ours "$(ls_of "$odd" z)"
xdotool windowactivate --sync "$main"
quit_norvane
