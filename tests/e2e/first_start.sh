#!/usr/bin/env bash
# Without settings: the window fills the screen but for its margins, two panes on the home folder.
. "$(dirname "$0")/lib.sh"

start_desktop 1280x800 bare || fail "no desktop"
start_norvane
geometry=$(xdotool getwindowgeometry --shell "$(window_id Norvane)")
for line in X=10 Y=40 WIDTH=1250 HEIGHT=710; do
    grep -qx "$line" <<<"$geometry" || fail "expected $line, found $(tr '\n' ' ' <<<"$geometry")"
done
shot first-start
quit_norvane
for line in Left=10 Top=40 Width=1249 Height=709 NumPanes=2 "Pane0=$HOME" "Pane1=$HOME" \
    Column1=108 Column2=70 Column3=145 Column4=100; do
    grep -qxF "$line" "$settings_file" || fail "saved was not $line: $(cat "$settings_file")"
done
[ "$(stat -c %a "$settings_file")" = 600 ] || fail "the settings are open to others"
[ "$(stat -c %a "$(dirname "$settings_file")")" = 700 ] || fail "their folder is open to others"
