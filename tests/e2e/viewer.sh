#!/usr/bin/env bash
# F3 shows a text and an image, each in a window of its own, with what its menus do; what is no file
# is refused and never opened.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/left" "$base/right"
for line in $(seq 1 200); do
    echo "Line $line of a text that says little, but is long enough to be scrolled to and fro, and wide"
done >"$base/left/a.txt"
echo "echo a script" >"$base/left/b.sh"
convert -size 640x480 gradient:red-blue "$base/left/c.png"
mkfifo "$base/left/d-pipe"
echo secret >"$base/left/f.txt"
chmod 0 "$base/left/f.txt"
without_file_rights
printf '\x89PNG\r\n\x1a\nnothing' >"$base/left/e.png"

# width_of TITLE, height_of TITLE: of a window's inside
width_of() { xwininfo -id "$(window_id "$1")" | sed -n 's/^ *Width: //p'; }
height_of() { xwininfo -id "$(window_id "$1")" | sed -n 's/^ *Height: //p'; }
is_as_wide() { [ "$(width_of "$1")" = "$2" ] && [ "$(height_of "$1")" = "$3" ]; }

# view KEY TITLE: shows the row that the key finds
view() {
    expect "the main window has no focus" window_focused Norvane
    key "$1" F3
    expect "no viewer of $2" window_focused "$2"
    expect "the viewer of $2 stays empty" painted "$2"
}

# choose KEY...: in the second of the viewer's menus, from its first item on
choose() {
    key F10 Right Home "$@" Return
    expect "a menu stays open" menu_closed
}

# close_viewer TITLE
close_viewer() {
    key ctrl+w
    expect "Ctrl+W left the viewer of $1" window_gone "$1"
    expect "the main window did not get the focus back" window_focused Norvane
}

start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane

what="a text"
view a a.txt
is_as_wide a.txt 251 451 || fail "$what: the window is $(width_of a.txt) by $(height_of a.txt)"
id=$(window_id a.txt)
expect "$what: it moves" still "$id"
shot text
before=$(look "$id")
key End
expect "$what: End does not scroll" looks_new "$before" "$id"
key Home
expect "$what: Home does not scroll back" looks "$before" "$id"
key Next
expect "$what: Page Down does not scroll" looks_new "$before" "$id"
key Home
expect "$what: Home does not scroll back" looks "$before" "$id"
key Right
expect "$what: the right arrow does not scroll" looks_new "$before" "$id"
key Left
expect "$what: the left arrow does not scroll back" looks "$before" "$id"
key ctrl+f
expect "$what: nobody asks what to find" window_focused Find
reading_time
xdotool type --delay 15 "line 150 of"
key Return
expect "$what: the question stays" window_gone Find
expect "$what: what is sought is not found" looks_new "$before" "$id"
expect "$what: it moves" still "$id"
shot found
key Home
choose
expect "$what: it is not wrapped" looks_new "$before" "$id"
expect "$what: it moves" still "$id"
shot wrapped
choose
expect "$what: it stays wrapped" looks "$before" "$id"
close_viewer a.txt

what="a script"
view b b.sh
shot script
close_viewer b.sh

what="an image"
view c c.png
# As large as fits beside the window's own frame, of the same shape.
largest=$(height_of c.png)
id=$(window_id c.png)
expect "$what: it moves" still "$id"
shot image-largest
[ "$largest" -gt 600 ] || fail "$what: the window is only $largest high"
choose Down Right Home
expect "$what: half its size is $(width_of c.png) by $(height_of c.png)" \
    is_as_wide c.png 334 $((239 + 14 + 20 + 2))
expect "$what: it moves" still "$id"
shot image-half
choose
expect "$what: it moves" still "$id"
xdotool windowsize --sync "$id" 700 300
expect "$what: a stretched image keeps the window's size" is_as_wide c.png 700 300
expect "$what: it moves" still "$id"
shot image-stretched
close_viewer c.png

what="a pipe"
expect "the main window has no focus" window_focused Norvane
key d F3
answerable "Error!"
shot pipe
dismiss "Error!"
expect "$what: no empty viewer" window_focused d-pipe
close_viewer d-pipe

what="a damaged image"
view e e.png
expect "$what: it moves" still "$(window_id e.png)"
shot image-damaged
close_viewer e.png

what="a file that nobody may read"
view f f.txt
expect "$what: it moves" still "$(window_id f.txt)"
shot unreadable
close_viewer f.txt

# A drop where the other window does not cover it: the notice first, then a viewer.
what="a dropped file"
view a a.txt
xdotool windowmove --sync "$(window_id a.txt)" 1000 100
# The row of the script, the third one below "..".
xdotool mousemove --sync --window "$(window_id Norvane)" 120 $((73 + 21 * 3)) mousedown 1
for step in 6 12 20; do
    xdotool mousemove_relative -- $step 1
done
hold 200
xdotool mousemove --sync --window "$(window_id a.txt)" 200 200
xdotool mousemove_relative -- 3 1
hold 200
xdotool mouseup 1
dismiss Hrere
expect "$what: no viewer" window_shown b.sh
expect "$what: it has no focus" window_focused b.sh
shot dropped
key ctrl+w
expect "Ctrl+W left the viewer of b.sh" window_gone b.sh
xdotool windowactivate --sync "$(window_id a.txt)"
close_viewer a.txt

# Another file is found by the keyboard alone.
what="the open panel"
mkdir -p "$HOME/texts"
echo "another text" >"$HOME/texts/other.txt"
echo "a third one" >"$HOME/texts/some.txt"
view a a.txt
key ctrl+o
expect "$what: it does not come" window_focused Open
expect "$what: it stays empty" painted Open
expect "$what: it is still being painted" still "$(window_id Open)"
shot open-panel
xdotool type --delay 20 texts
key Return
panel=$(window_id Open)
expect "$what: it is still being painted" still "$panel"
key Down
expect "$what: it is still being painted" still "$panel"
shot open-panel-folder
key Return
expect "$what: it stays" window_gone Open
dismiss Hrere
expect "$what: no viewer" window_focused some.txt
key ctrl+o
expect "$what: it does not come again" window_focused Open
key Escape
expect "$what: Escape leaves it" window_gone Open
expect "$what: the viewer has no focus" window_focused some.txt
key ctrl+w
expect "Ctrl+W left the viewer of some.txt" window_gone some.txt
xdotool windowactivate --sync "$(window_id a.txt)"
key ctrl+o
expect "$what: the first one does not come again" window_focused Open

what="the end"
key Escape
expect "$what: Escape leaves the panel" window_gone Open
close_viewer a.txt
view a a.txt
key ctrl+o
expect "$what: the panel does not come" window_focused Open
xdotool windowactivate --sync "$(window_id a.txt)"
expect "$what: the viewer has no focus" window_focused a.txt
key ctrl+q
wait_for 10 program_ended || fail "$what: Ctrl+Q in a viewer did not end the program"
program_pid=
