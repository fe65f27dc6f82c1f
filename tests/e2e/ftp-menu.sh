#!/usr/bin/env bash
# The menu of a row on a server: what is done there, and what cannot be.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/ftp_lib.sh"

mkdir -p "$base/from" "$base/to"
for name in one two; do printf '%s\n' $name >"$served/pub/$name"; done
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
serve
start_norvane
main=$(window_id Norvane)
connect
expect "the server's folder is not shown" rows_shown
expect "the pane never rests" still "$main"

# menu_of ROW: of the right pane
menu_of() {
    expect "the pane never rests" still "$main"
    xdotool mousemove --window "$main" 670 $((73 + 21 * $1)) click 3
    expect "$what: no menu" menu_open
}
choose() {
    key "$@" Return
    expect "$what: the menu stays" menu_closed
}

what="copying to the next pane"
menu_of 1
shot ftp-menu
choose c # the only one: Cut, Copy and Copy Path cannot be chosen
expect "$what: it did not come" same_files "$served/pub/one" "$base/from/one"
idle Download

what="renaming"
menu_of 1
choose r
key ctrl+a
xdotool type --delay 15 three
key Return
expect "$what: it is not renamed" test -e "$served/pub/three"

what="deleting"
hold 300 # it is listed again
menu_of 1
choose d # Delete: nothing of a server goes into a Trash
dismiss "Sir?"
deleted() { [ "$(ls "$served/pub" | wc -l)" = 1 ]; }
expect "$what: nothing went" deleted
quit_norvane
