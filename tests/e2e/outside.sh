#!/usr/bin/env bash
# The terminal in the focused pane's folder, the help page, add-ons, and quitting while one is at
# work.
. "$(dirname "$0")/lib.sh"

tests=$(realpath "$(dirname "$norvane")")
recorder=$tests/program-recorder
export RECORD_FOLDER=$base/records
mkdir -p "$RECORD_FOLDER" "$base/left/a folder" "$base/right"
printf '[Desktop Entry]\nType=Application\nName=reader\nExec=%s page %%f\n' "$recorder" \
    >"$XDG_DATA_DIRS/applications/reader.desktop"
printf '[Default Applications]\ntext/html=reader.desktop\n' \
    >"$XDG_DATA_DIRS/applications/mimeapps.list"
add_ons=$XDG_DATA_HOME/norvane/add-ons/Tracker
mkdir -p "$add_ons"
cp "$tests/add-ons-of-tests/Sample" "$add_ons/zz sample"
printf 'no library\n' >"$add_ons/zy text"
printf 'alias nothing=true\n# no line end' >"$HOME/.profile"
printf '1\n' >"$base/left/a folder/one"
printf '1\n' >"$base/left/a folder/wait"

# shellcheck disable=SC2016 # for another shell
snippet='if [ "$FOLDER_PATH" != "" ]; then 
    cd "$FOLDER_PATH" 
    unset -v FOLDER_PATH 
 else 
    cd "$HOME" 
 fi '
has_snippet() { [ "$(cat "$HOME/.profile")" = $'alias nothing=true\n# no line end\n'"$snippet" ]; }

records() { find "$RECORD_FOLDER" -name '*.whole'; }
counts() { [ "$(records | wc -l)" = "$1" ]; }
fact() { tr '\0\n' '\n\1' <"$(records)" | sed -n "s/^$1=//p" | tr '\1' '\n'; }

start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left/a folder" "$base/right"
export TERMINAL="$recorder -T 'a b'" SHELL=/bin/bash
start_norvane
expect ".profile holds: $(cat "$HOME/.profile")" has_snippet

what="the terminal"
key ctrl+shift+t
expect "$what: it was not started" counts 1
[ "$(fact argument)" = "$recorder"$'\n-T\na b\n-e\n/bin/bash\n-l' ] || fail "$what: it got $(fact argument)"
[ "$(fact folder)" = "$base/left/a folder" ] || fail "$what: it began in $(fact folder)"
[ "$(fact descriptors)" = "0 1 2 " ] || fail "$what: it has descriptors: $(fact descriptors)"
[ "$(fact blocked)" = 0000000000000000 ] || fail "$what: signals are blocked: $(fact blocked)"
fact variable | grep -qx "FOLDER_PATH=$base/left/a folder" || fail "$what: no FOLDER_PATH"
rm -f "$RECORD_FOLDER"/*

# item NUMBER-FROM-THE-LEFT KEY...: an item of a menu, by arrows and letters
item() {
    key F10
    expect "no menu" menu_open
    local step
    for ((step = 1; step < $1; step++)); do key Right; done
    shift
    key "$@"
    expect "the menu stays" menu_closed
}

what="the help page"
item 6 Home Return
expect "$what: it was not opened" counts 1
[ "$(fact argument)" = "$recorder"$'\npage\n'"$tests/Help.html" ] || fail "$what: it got $(fact argument)"
rm -f "$RECORD_FOLDER"/*

what="an add-on"
key Home o
# The last of the menu.
item 7 Up Return
expect "$what: it did nothing" test -e "$base/left/record"
printf '%s\n' "$base/left/a folder" "$base/left/a folder/one" | cmp -s - "$base/left/record" ||
    fail "$what: it got $(cat "$base/left/record")"
rm "$base/left/record"

what="no add-on"
item 7 Up Up Return
key Home o
item 7 Up Return
expect "$what: nothing works any more" test -e "$base/left/record"
rm "$base/left/record"

what="nothing selected"
key ctrl+2
item 7 Up Return
dismiss foo
key ctrl+1

what="an add-on at work"
key Home w
item 7 Up Return
key F10
for _ in 1 2 3 4 5 6; do key Right; done
shot add-ons
key Escape Escape
expect "the menu stays" menu_closed
item 7 Up Return
dismiss Hey
key ctrl+q
answerable Hey
shot quit-with-add-on
key Return # goes on waiting
expect "$what: the question stays" window_gone Hey
program_ended && fail "$what: the program did not wait for it"
touch "$base/left/a folder/go"
wait_for 10 program_ended || fail "$what: the program does not end with it"
wait "$program_pid" || fail "$what: the program ended with status $?"
program_pid=
[ -e "$base/left/record" ] || fail "$what: it did not come to its end"
rm "$base/left/record" "$base/left/a folder/go"

what="an add-on that never ends"
start_norvane
expect ".profile was changed again" has_snippet
key Home w
item 7 Up Return
key ctrl+q
answerable Hey
key Tab space # "Quit now"
wait_for 10 program_ended || fail "$what: the program does not end"
wait "$program_pid" || fail "$what: the program ended with status $?"
program_pid=
[ ! -e "$base/left/record" ] || fail "$what: it went on"

# A real terminal with a real shell.
what="xterm"
command -v xterm >/dev/null || exit 0
export TERMINAL=xterm
start_norvane
key ctrl+shift+t
terminal() { xdotool search --onlyvisible --class xterm 2>/dev/null | grep .; }
expect "$what: it did not come" terminal
xdotool windowfocus --sync "$(terminal)"
in_folder() { [ "$(cat "$base/where" 2>/dev/null)" = "$base/left/a folder []" ]; }
typed() {
    xdotool type --window "$(terminal)" "echo \"\$PWD [\$FOLDER_PATH]\" >$base/where"
    xdotool key --window "$(terminal)" Return
    wait_for 2 in_folder
}
# It takes keys once its shell has begun; nothing tells when.
wait_for 20 typed || fail "$what: it began in $(cat "$base/where" 2>/dev/null)"
shot terminal
xdotool type "exit"
xdotool key Return
terminal_gone() { ! terminal >/dev/null; }
expect "$what: it stays" terminal_gone
expect "$what: no focus" window_focused Norvane
quit_norvane
