#!/usr/bin/env bash
# Every command of the menus that works, chosen in one of three ways. What it did is seen on disk, in
# the panes' paths and in the settings.
# Usage: commands.sh NORVANE-BINARY shortcuts|letters|mouse
. "$(dirname "$0")/lib.sh"

way=${2:-shortcuts}

# Each menu with the middle of its title, and its lines.
bar=("18|Open|Rename|New Folder|Empty Trash|-|Calculate Occupied Space|-|About|-|Quit"
    "74|Up a Level|Open in Left Pane|Open in Right Pane|Down a Level|GoTo Directory"
    "133|Add Pane|Remove Pane|Revert to Default"
    "195|Open Tracker"
    "269|Pane 1|Pane 2|Pane 3|Pane 4|Pane 5|Pane 6|Pane 7|Pane 8|Pane 9|Pane 10")
# Two commands have none: they are chosen by letters then.
declare -A shortcuts=([Open]=ctrl+o [Rename]=ctrl+e ["New Folder"]=ctrl+n
    ["Calculate Occupied Space"]=ctrl+s [Quit]=ctrl+q ["Up a Level"]=ctrl+Up
    ["Open in Left Pane"]=ctrl+Left ["Open in Right Pane"]=ctrl+Right ["Down a Level"]=ctrl+Down
    ["GoTo Directory"]=ctrl+g ["Add Pane"]=ctrl+p ["Remove Pane"]=ctrl+shift+p
    ["Revert to Default"]=ctrl+d ["Open Tracker"]=ctrl+t ["Pane 1"]=ctrl+1 ["Pane 2"]=ctrl+2
    ["Pane 3"]=ctrl+3 ["Pane 4"]=ctrl+4 ["Pane 5"]=ctrl+5 ["Pane 6"]=ctrl+6 ["Pane 7"]=ctrl+7
    ["Pane 8"]=ctrl+8 ["Pane 9"]=ctrl+9 ["Pane 10"]=ctrl+0)

at() { xdotool mousemove --window "$main" "$1" "$2" mousedown 1 mouseup 1; }

# find_line LABEL: its menu, the middle of its title and of the line, and the keys that lead from the
# menu's first line to it
find_line() {
    local lines line
    for menu in "${!bar[@]}"; do
        IFS='|' read -ra lines <<<"${bar[menu]}"
        title=${lines[0]} height=30 steps=()
        for line in "${lines[@]:1}"; do
            [ "$height" = 30 ] || [ "${line:0:1}" != "${1:0:1}" ] || steps+=("${1:0:1}")
            [ "$line" != "$1" ] || return 0
            [ "$line" = - ] && ((height += 8)) || ((height += 19))
        done
    done
    fail "no line $1"
}

# order LABEL
order() {
    local menu title height steps
    find_line "$1"
    if [ "$way" = shortcuts ] && [ -n "${shortcuts[$1]:-}" ]; then
        key "${shortcuts[$1]}"
    elif [ "$way" = mouse ]; then
        at "$title" 11
        # A busy machine may move the pointer after the click.
        wait_for 4 menu_open || at "$title" 11
        expect "$what: no menu" menu_open
        at $((title + 25)) "$height"
    else
        local rights=()
        for ((; menu > 0; menu--)); do rights+=(Right); done
        key F10 "${rights[@]}" Home "${steps[@],,}" Return
    fi
}

# begin FOLDER...: a pane for each
begin() {
    local pane=0 folder
    mkdir -p "$(dirname "$settings_file")"
    printf 'Left=15\nTop=60\nWidth=1200\nHeight=600\nNumPanes=%s\n' $# >"$settings_file"
    for folder in "$@"; do
        printf 'Pane%s=%s\n' $((pane++)) "$folder" >>"$settings_file"
    done
    start_norvane
    main=$(window_id Norvane)
}

# is_at FOLDER: the focused pane shows it, as the folder tells that is made there
is_at() {
    key F7
    expect "$what: the focused pane does not show $1" test -d "$1/New Folder"
    key Escape
    rmdir "$1/New Folder"
}

# brings PANE LABEL: the path over that pane, one of three, becomes another one
brings() {
    local path before
    path=300x16+$(($1 * 400 - 395))+25
    expect "$what: the path is not painted" still "$main" "$path"
    before=$(look "$main" "$path")
    order "$2"
    expect "$what: pane $1 shows the same as before" looks_new "$before" "$main" "$path"
}

# Where the Size of a row of the first pane is shown; they count from 0, the one that leads up.
size_of() { echo 60x16+132+$((66 + 21 * $1)); }

recorder=$(realpath "$(dirname "$norvane")")/program-recorder
export RECORD_FOLDER=$base/records
mkdir -p "$RECORD_FOLDER"
printf '[Desktop Entry]\nType=Application\nName=folders\nExec=%s %%u\n' "$recorder" \
    >"$XDG_DATA_DIRS/applications/folders.desktop"
printf '[Default Applications]\ninode/directory=folders.desktop\n' \
    >"$XDG_DATA_DIRS/applications/mimeapps.list"

one=$base/one two=$base/two three=$base/three
mkdir -p "$one/inside/deep" "$two/inner" "$three"
head -c 12345 /dev/zero >"$one/inside/deep/bytes"
head -c 12345 /dev/zero >"$one/file"
printf 'two\n' >"$two/file"
start_desktop 1280x800 wm || fail "no desktop"
begin "$one" "$two" "$three"

what="Open"
key i
brings 1 "Open"
is_at "$one/inside"
what="Up a Level"
brings 1 "Up a Level"
is_at "$one"
what="Down a Level"
brings 1 "Down a Level"
is_at "$one/inside"

what="Calculate Occupied Space"
brings 1 "Up a Level"
key i
expect "$what: the row is not painted" still "$main" "$(size_of 1)"
unmeasured=$(look "$main" "$(size_of 1)")
order "Calculate Occupied Space"
expect "$what: the same size is shown" looks_new "$unmeasured" "$main" "$(size_of 1)"
key Home
expect "$what: the folder has not the size of the file of as many bytes" \
    looks "$(look "$main" "$(size_of 2)")" "$main" "$(size_of 1)"
shot "commands-size"

what="Open in Left Pane, from the first one"
key i
brings 3 "Open in Left Pane"
is_at "$one"
order "Pane 3"
is_at "$one/inside"
what="Open in Right Pane, from the last one"
key d
brings 1 "Open in Right Pane"
order "Pane 1"
is_at "$one/inside/deep"
what="a pane that is not there"
order "Pane 4"
is_at "$one/inside/deep"
what="Open in Left Pane"
order "Pane 2"
key i
brings 1 "Open in Left Pane"
what="Open in Right Pane"
brings 3 "Open in Right Pane"
# The next pane takes the folder that the file is in.
what="beside, with a file"
key f
order "Open in Left Pane"
brings 3 "Open in Right Pane"
order "Pane 3"
is_at "$two"
order "Pane 1"
is_at "$two/inner"

what="GoTo Directory"
order "GoTo Directory"
answerable GoTo
shot "commands-goto-$way"
key Escape
expect "$what: the prompt stays" window_gone GoTo
is_at "$two/inner"
order "GoTo Directory"
answerable GoTo
xdotool type --delay 15 -- "$one"
key Return
expect "$what: the prompt stays" window_gone GoTo
expect "$what: no focus" window_focused Norvane
is_at "$one"

what="New Folder"
for name in "New Folder" "New Folder 2" "New Folder 3"; do
    order "New Folder"
    expect "$what: no $name" test -d "$one/$name"
    [ "$name" != "New Folder" ] || shot "commands-new-folder-$way"
    key Escape
done
rmdir "$one"/New*
order "New Folder"
expect "$what: it was not made" test -d "$one/New Folder"
key ctrl+a
xdotool type --delay 15 -- "made"
key Return
expect "$what: no field took the name" test -d "$one/made"
[ ! -e "$one/New Folder" ] || fail "$what: it kept its name"

what="Rename"
key f
order "Rename"
key ctrl+a
xdotool type --delay 15 -- "paper"
key Return
expect "$what: it has its former name" test -f "$one/paper"
[ ! -e "$one/file" ] || fail "$what: there are two"

what="Open Tracker"
order "Open Tracker"
records() { find "$RECORD_FOLDER" -name '*.whole'; }
recorded() { [ "$(records | wc -l)" = 1 ]; }
expect "$what: nothing was started" recorded
arguments() { tr '\0' '\n' <"$(records)" | sed -n 's/^argument=//p'; }
[ "$(arguments)" = "$recorder"$'\n'"$one" ] || fail "$what: it got $(arguments)"

what="Empty Trash"
trash=$XDG_DATA_HOME/Trash
mkdir -p "$trash/files/folder" "$trash/info"
printf 'x\n' >"$trash/files/plain"
order "Empty Trash"
emptied() { [ -z "$(ls -A "$trash/files")" ]; }
expect "$what: $(ls -A "$trash/files") stayed" emptied

what="About"
order "About"
dismiss "About Norvane"
expect "$what: no focus" window_focused Norvane

what="Remove Pane, the first of three"
order "Pane 3"
brings 3 "Up a Level"
order "Pane 1"
brings 1 "Remove Pane"
is_at "$base"
what="Add Pane"
order "Add Pane"
is_at "$HOME"
what="Remove Pane, the last one"
order "Remove Pane"
is_at "$two"
order "Pane 1"
is_at "$base"
what="Quit"
order "Quit"
wait_for 10 program_ended || fail "$what: it goes on"
wait "$program_pid" || fail "$what: it ended with status $?"
program_pid=
[ "$(setting NumPanes) $(setting Pane0) $(setting Pane1)" = "2 $base $two" ] ||
    fail "the panes saved: $(cat "$settings_file")"

what="Revert to Default"
mkdir "$HOME/first"
begin "$one" "$two" "$three"
key ctrl+3
order "Revert to Default"
expect "$what: the panes are still being painted" still "$main"
key f Return
quit_norvane
[ "$(setting NumPanes) $(setting Pane0) $(setting Pane1)" = "2 $HOME/first $HOME" ] ||
    fail "$what: $(cat "$settings_file")"

what="without a pane"
begin "$one"
order "Remove Pane"
for label in "Open" "Rename" "New Folder" "Calculate Occupied Space" "Up a Level" \
    "Open in Left Pane" "Open in Right Pane" "Down a Level" "Remove Pane" "Open Tracker" "Pane 1"; do
    order "$label"
done
quit_norvane
[ "$(setting NumPanes)" = 0 ] || fail "$what: $(cat "$settings_file")"
recorded || fail "$what: a program was started"

folders=()
for number in $(seq 10); do
    folders+=("$base/panes/$number")
    mkdir -p "$base/panes/$number"
done
begin "${folders[@]}"
for number in 10 2 9 1 8 3 7 4 6 5; do
    what="Pane $number"
    order "Pane $number"
    is_at "$base/panes/$number"
done
shot "commands-ten-$way"
what="an eleventh pane"
order "Add Pane"
is_at "$base/panes/5"
quit_norvane
[ "$(setting NumPanes)" = 10 ] || fail "$what: $(setting NumPanes)"
