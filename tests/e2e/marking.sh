#!/usr/bin/env bash
# Marks by pattern, by Shift and the arrows and by Ctrl+A; and the filter that "/" opens: seen by what F5 then copies.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/folder" "$base/to"
odd=$'odd\n\u202e\xff.c'
for name in a.c b.c c.h D.TXT e.txt note "$odd"; do
    printf '%s\n' "$name" >"$base/from/$name"
done
long=$(printf 'l%.0s' {1..253}).h
printf 'long\n' >"$base/from/$long"
write_settings "$base/from" "$base/to"
start_desktop 1280x800 wm || fail "no desktop"
start_norvane

there() { (cd "$base/to" && printf '%s|' *); }
copied() { [ "$(there)" = "$(printf '%s|' "$@")" ]; }

# after_copy NAME...: F5 copies them alone; then the right folder is empty again, and no mark is left
after_copy() {
    key F5
    expect "expected $*, found: $(there)" copied "$@"
    expect "the operation window stayed" window_gone Copy
    expect "the main window did not get the focus back" window_focused Norvane
    copied "$@" || fail "expected $*, found: $(there)"
    rm -rf "$base/to/"*
    key minus
}

# ask KEY TITLE: the window that asks for a pattern
ask() {
    key "$1"
    answerable "$2"
}

# told TITLE: it is answered
told() {
    key Return
    expect "the question stays" window_gone "$1"
    expect "the main window has no focus" window_focused Norvane
}

ask ctrl+KP_Add Mark
shot mark-first
xdotool type '*.c; *.h'
told Mark
after_copy a.c b.c c.h "$long" "$odd"
# What is marked stays when another pattern is unmarked; the last one is there, selected.
ask ctrl+KP_Add Mark
shot mark-last
told Mark
ask ctrl+KP_Subtract Unmark
xdotool type '?.[a-c]; l*'
told Unmark
after_copy c.h "$odd"
# The ones before come back by the arrow; the main keys ask, too. Small letters mean both cases.
ask ctrl+plus Mark
key Up
shot mark-older
told Mark
after_copy a.c b.c c.h "$long" "$odd"
ask ctrl+plus Mark
xdotool type '*.txt, f*/'
told Mark
after_copy D.TXT e.txt folder
ask ctrl+plus Mark
xdotool type '*.TXT'
told Mark
after_copy D.TXT
ask ctrl+plus Mark
xdotool type ';'
key Return
shot mark-nothing
expect "it was taken for a pattern" window_focused Mark
key Escape
expect "the question stays" window_gone Mark
expect "the main window has no focus" window_focused Norvane

# Shift marks from where the cursor is, and takes back what it leaves.
key a shift+Down shift+Down shift+Down shift+Up
after_copy a.c b.c c.h
key n shift+End
after_copy note "$odd"
key ctrl+a
after_copy D.TXT a.c b.c c.h e.txt folder "$long" note "$odd"

# The filter narrows with every key; what is marked and not seen stays behind.
key ctrl+a slash
xdotool type 'TX'
shot filter
key Return
shot filter-kept
after_copy D.TXT
key Escape
after_copy a.c b.c c.h e.txt folder "$long" note "$odd"
# While it is typed arrows move, and Backspace brings rows back; without marks the selected row is meant.
key slash
xdotool type '.c'
key Down Return
after_copy b.c
key slash BackSpace
xdotool type 'T'
key Escape # ends it, from the field; the row stays selected
after_copy D.TXT
# The folder's changes come and go.
key slash
xdotool type 'new'
key Return ctrl+a
printf 'n\n' >"$base/from/new1"
printf 'n\n' >"$base/from/other"
mv "$base/from/note" "$base/from/new2"
main=$(window_id Norvane)
expect "never rests" still "$main"
key ctrl+a
after_copy new1 new2
# Another folder ends it.
key BackSpace
expect "never rests" still "$main"
key ctrl+Down
expect "never rests" still "$main"
key ctrl+a
after_copy D.TXT a.c b.c c.h e.txt folder "$long" new1 new2 "$odd" other
quit_norvane
