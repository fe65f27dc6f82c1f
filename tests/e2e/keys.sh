#!/usr/bin/env bash
# Marks by Space, Insert, *, + and -, seen by what F5 then copies; Enter, Backspace and the arrows.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/folder" "$base/to"
for name in a b c d; do
    printf '%s\n' $name >"$base/from/$name"
done
printf 'inside\n' >"$base/from/folder/inside"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane

# copied NAME...: the right folder holds exactly these
copied() { [ "$(ls "$base/to" | tr '\n' ' ')" = "$* " ]; }

# after_copy NAME...: waits for them, then empties the right folder
after_copy() {
    expect "expected $* in the right folder, found: $(ls "$base/to" | tr '\n' ' ')" copied "$@"
    expect "the operation window stayed" window_gone Copy
    expect "the main window did not get the focus back" window_focused Norvane
    copied "$@" || fail "expected $*, found: $(ls "$base/to" | tr '\n' ' ')"
    rm -rf "$base/to/"*
}

key b F5
after_copy b
key b space d space F5
after_copy b d
# The marks of b and d are still there; * turns every mark round, the folder's too.
key asterisk F5
after_copy a c folder
key minus a Insert Insert F5
after_copy a b
key minus plus F5
after_copy a b c d folder
shot marked
key minus Home Down Down Down F5
after_copy b
# Keys wait for each other: what Enter began is over when the next one is taken.
key f Return i F5
after_copy inside
key BackSpace End F5
after_copy d
# With only ".." selected Space and Insert mark nothing, and F5 does nothing.
key Home space Insert F5 c F5
after_copy c
key minus Home Next Prior b F5
after_copy b
quit_norvane
