#!/usr/bin/env bash
# Properties by real keys and mouse: what is shown, permissions that are changed by "OK" alone and by
# nothing else, of one entry, of several, and of all that is in a folder.
. "$(dirname "$0")/lib.sh"

one=$base/one
mkdir -p "$one/folder/deep" "$base/two"
printf 'hello\n' >"$one/a.txt"
printf '#!/bin/sh\n' >"$one/b.sh"
echo x >"$one/folder/plain"
echo x >"$one/folder/program"
echo x >"$base/outside"
ln -s ../../outside "$one/folder/link"
chmod 644 "$one/a.txt" "$one/folder/plain" "$base/outside"
chmod 755 "$one/b.sh"
chmod 744 "$one/folder/program"
chmod 744 "$one/folder" "$one/folder/deep"
write_settings "$one" "$base/two"

mode() { stat -c %a "$1"; }
has_mode() { [ "$(mode "$1")" = "$2" ]; }

# open_properties NAME: of what is chosen, until it can be worked
open_properties() {
    key alt+Return
    expect "no properties window" window_focused "Properties of $1"
    expect "the properties window stays empty" painted "Properties of $1"
    expect "the properties window is still being painted" still "$(window_id "Properties of $1")"
}
gone() { expect "the properties window of $1 stays" window_gone "Properties of $1"; }

start_desktop 1280x800 wm || fail "no desktop"
start_norvane
expect "the panes are still being painted" still "$(window_id Norvane)"

# A file: looking changes nothing, nor does Escape after a change
key a
open_properties a.txt
shot properties-file
key Escape
gone a.txt
open_properties a.txt
key Tab Tab Tab space # the owner's right to execute
key Escape
gone a.txt
has_mode "$one/a.txt" 644 || fail "Escape changed a mode"

# Return is "OK": the one bit, and no other that somebody changed meanwhile
open_properties a.txt
key Tab Tab Tab space
shot properties-touched
chmod 606 "$one/a.txt"
key Return
gone a.txt
expect "the mode is $(mode "$one/a.txt")" has_mode "$one/a.txt" 706

# Another file under the same name stays as it is, and that is told
open_properties a.txt
key Tab Tab Tab space
printf 'other\n' >"$one/new"
chmod 755 "$one/new"
mv "$one/new" "$one/a.txt"
key Return
dismiss Err
gone a.txt
has_mode "$one/a.txt" 755 || fail "another file's mode was changed"

# Several that differ: a mixed box stays as it is, and one that is touched counts for all
chmod 644 "$one/a.txt"
key a Insert b Insert
open_properties "2 entries"
shot properties-several
key Tab Tab Tab Tab Tab space # the group's right to write
key Return
gone "2 entries"
expect "a.txt has $(mode "$one/a.txt")" has_mode "$one/a.txt" 664
expect "b.sh has $(mode "$one/b.sh")" has_mode "$one/b.sh" 775
key minus

# A folder with what is in it: to execute goes to folders and programs
key f
open_properties folder
key Tab Tab Tab Tab Tab space Tab space # the group's rights to write and to execute
key Tab space space                     # that of others to read, and as it was
key Tab Tab Tab Tab Tab Tab space       # also what is in the folders
shot properties-inside
key Return
gone folder
expect "folder has $(mode "$one/folder")" has_mode "$one/folder" 774
expect "deep has $(mode "$one/folder/deep")" has_mode "$one/folder/deep" 774
expect "plain has $(mode "$one/folder/plain")" has_mode "$one/folder/plain" 664
expect "program has $(mode "$one/folder/program")" has_mode "$one/folder/program" 774
has_mode "$base/outside" 644 || fail "a link was followed"

# By the mouse: "Cancel" changes nothing
open_properties folder
read -r width height < <(xwininfo -id "$(window_id "Properties of folder")" |
    awk '/Width:/ { w = $2 } /Height:/ { print w, $2 }')
xdotool mousemove --window "$(window_id "Properties of folder")" $((width - 40)) $((height - 22)) click 1
gone folder
quit_norvane
