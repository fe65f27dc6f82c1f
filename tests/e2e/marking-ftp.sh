#!/usr/bin/env bash
# Marks by pattern, and the filter, in a pane on a server: only what is seen is fetched and deleted; reading again keeps
# the filter, another folder ends it.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/ftp_lib.sh"

mkdir -p "$base/here" "$base/empty" "$served/pub/sub"
for name in one.c two.c two.h three.txt; do
    printf '%s' "$name" >"$served/pub/$name"
done
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/here" "$base/empty"
serve
start_norvane
connect
expect "the server's folder is not shown" rows_shown
main=$(window_id Norvane)

here() { [ "$(ls "$base/here" | tr '\n' ' ')" = "$1" ]; }

key slash
xdotool type 'two'
key Return plus
expect "never rests" still "$main"
shot filter-ftp
key F5
expect "fetched were $(ls "$base/here" | tr '\n' ' ')" here "two.c two.h "
idle Download

# The rows are read again after it is deleted, and the filter is still there: "+" marks what it shows.
key minus Home Down F8
answerable "Sir?"
key Return
gone() { [ ! -e "$served/pub/two.c" ]; }
expect "it is still there" gone
expect "the question stays" window_gone "Sir?"
expect "never rests" still "$main"
rm -f "$base/here/"*
key plus F5
expect "fetched were $(ls "$base/here" | tr '\n' ' ')" here "two.h "
idle Download

rm -f "$base/here/"*
key Escape minus ctrl+KP_Add
answerable Mark
xdotool type 'o*; *.txt'
key Return
expect "the question stays" window_gone Mark
expect "the main window has no focus" window_focused Norvane
key F5
expect "fetched were $(ls "$base/here" | tr '\n' ' ')" here "one.c three.txt "
idle Download
quit_norvane
