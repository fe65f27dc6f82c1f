#!/usr/bin/env bash
# Queries by real keys: by name, by content, refused ones; what a pane does with the hits.
. "$(dirname "$0")/lib.sh"

one=$base/one two=$base/two
own=query-$$
mkdir -p "$one/below/$own-folder" "$two"
echo "hay and a needle" >"$one/$own-first.txt"
echo "a needle, too" >"$one/below/$own-second.txt"
echo "only hay" >"$one/below/$own-third.txt"
mkfifo "$one/$own-pipe"
write_settings "$one" "$two"

type_text() { xdotool type --delay 15 -- "$1"; }
# Both windows are called "Norvane": they differ in their sizes.
query_id() {
    local id
    for id in $(xdotool search --onlyvisible --name '^Norvane$'); do
        xwininfo -id "$id" | grep -q 'Width: 441' && echo "$id" && return
    done
    return 1
}
query_open() { [ -n "$(query_id)" ] && [ "$(xdotool getactivewindow)" = "$(query_id)" ]; }
query_closed() { ! query_id >/dev/null; }
open_query() {
    key ctrl+u
    expect "no query window" query_open
    expect "the query window stays empty" still "$(query_id)"
}
# The pane's header tells what its rows are.
header() { look "$main" 600x20+0+30; }
header_is_new() { [ "$(header)" != "$1" ]; }
main_focused() { [ "$(xdotool getactivewindow)" = "$main" ]; }
# search: starts it, and waits for the hits in the pane
search() {
    local before
    before=$(header)
    key Return
    expect "no hits came" header_is_new "$before"
    key Escape
    expect "the query window stays" query_closed
    expect "the main window has no focus" main_focused
    expect "the rows are still being painted" still "$main"
}

start_desktop 1280x800 wm || fail "no desktop"
start_norvane
main=$(xdotool search --onlyvisible --name '^Norvane$' | head -n 1)

# By name and content, the box reached by Tab. What is found is copied to the other pane; the row at
# the top is the one that keys never mean.
open_query
shot "query-general"
type_text "$own"
key Tab Tab Tab space Tab
type_text "needle"
search
shot "query-hits"
key Down Down F5
copied() { same_files "$one/$own-first.txt" "$two/$own-first.txt" ||
    same_files "$one/below/$own-second.txt" "$two/$own-second.txt"; }
expect "no hit was copied" copied
[ "$(find "$two" -type f | wc -l)" = 1 ] || fail "copied: $(ls "$two")"

# Entries do not go among hits.
key Tab Down Down F5
dismiss Foo

# Another operator, by the keys of its menu
key Tab
open_query
key shift+Tab space
expect "no menu" menu_open
key End Return
expect "the menu stays" menu_closed
key Tab
type_text "$own-folder"
search
hits=$(header)
key Down Return
expect "the folder is not entered" header_is_new "$hits"
quit_norvane
[ "$(setting Pane0)" = "$one/below/$own-folder" ] || fail "entered: $(setting Pane0)"
write_settings "$one" "$two"
start_norvane
main=$(xdotool search --onlyvisible --name '^Norvane$' | head -n 1)

# Nothing to search for
open_query
key Return
dismiss Foo
expect "the query window has no focus" query_open

# Dates in no order: both alerts, one after the other
key ctrl+Next
expect "the page does not come" still "$(query_id)"
shot "query-advanced"
key Tab space Tab
for part in 1 1 2000 1 1 2000; do
    type_text "$part"
    key Tab
done
key Return
dismiss foo
dismiss Foo
expect "the query window has no focus" query_open

# It closes by Escape, and with the program.
key Escape
expect "the query window stays" query_closed
open_query
xdotool windowactivate --sync "$main"
expect "the main window has no focus" main_focused
quit_norvane
