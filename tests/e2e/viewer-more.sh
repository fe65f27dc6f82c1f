#!/usr/bin/env bash
# A viewer shows any file as bytes and back, reads a text in another encoding, looks for regular
# expressions, and follows a file that grows.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/left" "$base/right"
for line in $(seq 1 300); do
    echo "Line $line of a text that says little, but is long enough"
done >"$base/left/a.txt"

start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane
expect "the main window has no focus" window_focused Norvane
key a F3
expect "no viewer" window_focused a.txt
expect "the viewer stays empty" painted a.txt
id=$(window_id a.txt)
expect "it moves" still "$id"
text=$(look "$id")

what="the bytes"
key h
expect "$what: H shows none" looks_new "$text" "$id"
expect "$what: they move" still "$id"
shot bytes
top=$(look "$id")
key Down
expect "$what: the down arrow does not scroll" looks_new "$top" "$id"
key Up
expect "$what: the up arrow does not scroll back" looks "$top" "$id"
key ctrl+l
expect "$what: nobody asks for an offset" window_focused GoTo
reading_time
xdotool type --delay 15 0x400
key Return
expect "$what: the question stays" window_gone GoTo
expect "$what: the offset is not gone to" looks_new "$top" "$id"
key h
expect "$what: H does not bring the text back" looks "$text" "$id"

what="an expression"
key ctrl+f
expect "$what: nobody asks what to find" window_focused Find
reading_time
xdotool type --delay 15 "ine 2.7 of("
key Tab space Return
expect "$what: a wrong one is taken" window_shown Find
shot wrong-expression
key BackSpace
xdotool type --delay 15 "ine 2.7 of"
key Return
expect "$what: the question stays" window_gone Find
expect "$what: it is not found" looks_new "$text" "$id"
expect "$what: it moves" still "$id"
shot expression

what="the encoding"
before=$(look "$id")
key F10 Right End Up Right Down Return
expect "$what: a menu stays open" menu_closed
expect "$what: the text stays as it was" looks_new "$before" "$id"
shot utf-16
key F10 Right End Up Right Home Return
expect "$what: a menu stays open" menu_closed

what="a file that grows"
key f
expect "$what: it moves" still "$id"
before=$(look "$id")
echo "One more line" >>"$base/left/a.txt"
expect "$what: nothing comes" looks_new "$before" "$id"
expect "$what: it moves" still "$id"
shot grown
before=$(look "$id")
echo "Begun anew" >"$base/left/a.txt"
expect "$what: it is not begun anew" looks_new "$before" "$id"
shot anew
