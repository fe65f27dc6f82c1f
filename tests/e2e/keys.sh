#!/usr/bin/env bash
# Marks by Space, Insert, *, + and -, seen by what F5 then copies; Enter, Backspace, the arrows, and
# what is typed to find a row.
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
# At the last row Insert stays where it is.
key minus End Insert Insert Home F5 End Insert Home F5
after_copy d

# Typed again, a letter goes on to the next row, and from the last of them to the first.
printf 'b2\n' >"$base/from/b2"
head -c 4096 /dev/zero >"$base/from/7"
head -c 4096 /dev/zero >"$base/from/folder/inside"
printf 'dot\n' >"$base/from/.dot"
key minus F2 Home b b F5
after_copy b2
key b F5
after_copy b
key shift+b F5
after_copy b2
key b q F9 F5 # without a row of that letter it stays
after_copy b
key 7 F5
after_copy 7
# The row that leads up is the first one with a dot.
key Home period F5
expect "the name with a dot did not come" test -e "$base/to/.dot"
expect "the operation window stayed" window_gone Copy
rm "$base/to/.dot"

# Space measures a folder besides: what is in it is as long as the file in the third row.
main=$(window_id Norvane)
key 7
expect "the row is not painted" still "$main" 60x16+132+129
size=$(look "$main" 60x16+132+129)
key f
looks "$size" "$main" 60x16+132+87 && fail "the folder is measured already"
key space minus
expect "Space did not measure the folder" looks "$size" "$main" 60x16+132+87
shot measured
quit_norvane
