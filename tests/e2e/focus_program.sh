#!/usr/bin/env bash
# Where the focus is after each dialog of the program: a letter, an arrow and F5 work at once, on the
# row and in the pane that had it before. Keys typed while a question opens do nothing.
# Usage: focus_program.sh NORVANE-BINARY wm|bare [ROUNDS]
. "$(dirname "$0")/lib.sh"

setting_up=${2:-wm}
rounds=${3:-2}

left=$base/left
right=$base/right
mkdir -p "$left" "$right"
# Each pane holds the names of the other's clashes; the rows below them are copied to see where the
# focus is.
for side in "$left" "$right"; do
    printf 'of %s\n' "$side" >"$side/clash"
done
for name in left right; do
    printf 'first\n' >"$base/$name/a-$name"
    printf 'below\n' >"$base/$name/d-$name"
    printf 'far\n' >"$base/$name/x-$name"
    # Copying it ends with an alert. It is listed before the files.
    mkfifo "$base/$name/pipe"
done

start_desktop 1280x800 "$setting_up" || fail "no desktop"
xset r rate 150 30
write_settings "$left" "$right"
# Without a window manager the pointer decides at first who gets the keys.
xdotool mousemove 300 300
start_norvane

here=left
there=right

# copies FILE KEYS...: these keys copy exactly this file to the other side
copies() {
    local file=$1
    shift
    local target=$base/$there/$file
    rm -f "$target"
    xdotool key --delay 0 "$@"
    expect "$what, round $round: $* in the $here pane did not copy $file" \
        same_files "$base/$here/$file" "$target"
    expect "the operation window stayed" window_gone Copy
    rm -f "$target"
}

# back_in_place ROW-BELOW FAR-ROW: the main window has the focus, on the row that it was on
back_in_place() {
    expect "$what, round $round: the main window did not get the focus" window_focused Norvane
    if [ $((round / 2 % 2)) = 0 ]; then
        copies "$1" Down F5
    else
        copies "$2" "${2:0:1}" F5
    fi
}

# change_panes: every second round plays in the right pane. It is listed anew: the rows of what was
# removed behind it may be there still.
change_panes() {
    if [ $((round % 2)) = 0 ]; then
        here=left there=right
        key ctrl+1 F2
    else
        here=right there=left
        key ctrl+2 F2
    fi
}

# Space and Return answer a question whose button has the focus, and would mark or open a row of the
# main window; in the question's first moments, and as long as they follow each other, they may do
# neither.
type_into_opening_question() {
    cp "$base/$there/clash" "$base/kept"
    printf 'changed in round %s\n' "$round" >"$base/$here/clash"
    key c
    xdotool key --delay 0 F5
    # No row begins with this letter.
    until window_shown "Item Exists"; do
        xdotool key --delay 20 q q
    done
    xdotool key --delay 25 Return space Return space Return space Return space Return space \
        Return space Return space Return space Return space Return space Return space
    window_shown "Item Exists" || fail "$what, round $round: the question was answered"
}

gone() { window_gone "$1" && window_gone Copy; }

for round in $(seq 0 $((rounds - 1))); do
    change_panes

    what="a question"
    key c F5
    question_ready
    key Return
    expect "$what stayed" gone "Item Exists"
    back_in_place "d-$here" "x-$here"

    what="an alert"
    key p F5
    dismiss Err
    expect "$what stayed" gone Err
    back_in_place "a-$here" "d-$here"

    what="the about box"
    key d F10 a Return
    dismiss "About Norvane"
    back_in_place "x-$here" "x-$here"

    what="typing while a question opens"
    type_into_opening_question
    question_ready
    key Escape
    expect "$what stayed" gone "Item Exists"
    same_files "$base/kept" "$base/$there/clash" || fail "$what, round $round: the question was answered"
    window_gone "Item Exists" || fail "$what, round $round: a second question came"
    expect "$what, round $round: the main window did not get the focus" window_focused Norvane
    copies "x-$here" x F5

    what="F5 held down"
    key c
    xdotool keydown F5 sleep 0.8 keyup F5
    question_ready
    key Escape
    expect "$what stayed" gone "Item Exists"
    stays 700 gone "Item Exists" || fail "$what, round $round: it started another copy"
    copies "d-$here" Down F5
done

quit_norvane
