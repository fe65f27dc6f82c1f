#!/usr/bin/env bash
# Ten restarts keep the frame, the panes, their folders and the column widths.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/one" "$base/two" "$base/three words"
mkdir -p "$(dirname "$settings_file")"
printf '%s\n' Left=70 Top=90 Width=901 Height=503 NumPanes=3 "Pane0=$base/one" "Pane1=$base/two" \
    "Pane2=$base/three words" Column1=131 Column2=64 Column3=150 Column4=99 >"$settings_file"
keys="Left Top Width Height NumPanes Pane0 Pane1 Pane2 Column1 Column2 Column3 Column4"
expected=$(for name in $keys; do echo "$name=$(setting "$name")"; done)

for manager in wm bare; do
    start_desktop 1280x800 $manager || fail "no desktop"
    for round in 1 2 3 4 5; do
        start_norvane
        quit_norvane
        found=$(for name in $keys; do echo "$name=$(setting "$name")"; done)
        [ "$found" = "$expected" ] ||
            fail "after start $round ($manager): $(diff <(echo "$expected") <(echo "$found"))"
    done
    stop_desktop
done

# Folders on the command line take the place of saved ones.
start_desktop 1280x800 wm || fail "no desktop"
start_norvane "$base/two" "$base/one"
quit_norvane
[ "$(setting Pane0)" = "$base/two" ] && [ "$(setting Pane1)" = "$base/one" ] &&
    [ "$(setting Pane2)" = "$base/three words" ] || fail "the folders given were not taken"

# A file that others could read is its owner's alone once something new is written to it.
chmod 666 "$settings_file"
chmod 777 "$(dirname "$settings_file")"
start_norvane "$base/one"
quit_norvane
[ "$(setting Pane0)" = "$base/one" ] || fail "the folder given was not taken"
[ "$(stat -c %a "$settings_file")" = 600 ] || fail "the settings stayed open to others"
[ "$(stat -c %a "$(dirname "$settings_file")")" = 700 ] || fail "their folder stayed open to others"
