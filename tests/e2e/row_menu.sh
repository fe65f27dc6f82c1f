#!/usr/bin/env bash
# A row's menu by keys and by the mouse: where it opens and how it goes, what it does to what, and
# what it does not do once others were at work. Keys between panes; names that could not be given.
. "$(dirname "$0")/lib.sh"

odd=$'new\nline' bad=$'bad \xff name' turned=$'turned \u202e'
long=$(printf 'l%.0s' {1..255})
mkdir -p "$base/left/folder" "$base/right"
for name in apple berry cherry "$odd" "$bad" "$turned" "$long"; do
    printf 'of %s\n' "$name" >"$base/left/$name"
done
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane
main=$(window_id Norvane)
trash=$XDG_DATA_HOME/Trash/files

opens() { expect "$what: no menu" menu_open; }
closes() { expect "$what: the menu stays" menu_closed; }
# row_at NAME: its row, as the listing has it: folders, then files in the order of their bytes
row_at() {
    local names=(folder) name number=1
    while IFS= read -r -d '' name; do names+=("$name"); done \
        < <(cd "$base/left" && find . -maxdepth 1 -type f -printf '%P\0' | LC_ALL=C sort -z)
    for name in "${names[@]}"; do
        [ "$name" != "$1" ] || { echo $number && return; }
        number=$((number + 1))
    done
}
point() { xdotool mousemove --window "$main" 120 $((73 + 21 * $(row_at "$1"))); }
# menu_of NAME: by the mouse
menu_of() {
    key F2 # rows that were renamed have kept their places
    expect "$what: the pane never rests" still "$main"
    point "$1"
    xdotool click 3
    opens
}
# choose LETTERS...: from item to item; the last one does its work
choose() { key "$@" Return && closes; }
has() { [ "$(cat "$base/$1" 2>/dev/null)" = "of ${2:-${1##*/}}" ]; }
comes() { expect "$what: $1 did not come" has "$@"; }

what="the Menu key"
key a Menu
opens
shot row-menu
read -r top < <(xwininfo -id "$(menus)" | sed -n 's/.*Absolute upper-left Y: *//p')
read -r window_top < <(xwininfo -id "$main" | sed -n 's/.*Absolute upper-left Y: *//p')
row_bottom=$((window_top + 73 + 21 * $(row_at apple) + 10))
[ $((top - row_bottom)) -ge 0 ] && [ $((top - row_bottom)) -le 4 ] ||
    fail "$what: it is at $top, the row ends at $row_bottom"
key Escape
closes

what="Shift+F10, and a click outside"
key shift+F10
opens
xdotool mousemove --window "$main" 900 500 click 1
closes

what="the focus that goes"
key b shift+F10
opens
xmessage -name other -geometry 200x100+900+50 other 2>/dev/null &
other=$!
closes
kill $other
wait $other 2>/dev/null
expect "$what: it does not come back" window_focused Norvane

what="the first item, where the pointer rests below the menu"
point cherry
key f Menu
opens
expect "$what: the menu never rests" still root
key Return # Open
closes
key F7
expect "$what: the folder is not open" test -d "$base/left/folder/New Folder"
key Escape
rmdir "$base/left/folder/New Folder"
key BackSpace

what="moving to the next pane"
menu_of apple
choose m
comes right/apple
goes() { [ ! -e "$base/$1" ]; }
expect "$what: it is still there" goes left/apple
expect "the operation window stayed" window_gone Move
expect "$what: no focus" window_focused Norvane

what="copying and pasting"
menu_of berry
choose c c # Cut, Copy
key Tab Menu
opens
key Escape
xdotool mousemove --window "$main" 700 400 click 3 # below the rows of the other pane
opens
choose p
comes right/berry
expect "the operation window stayed" window_gone Copy
expect "$what: no focus" window_focused Norvane

what="Shift+Tab"
key shift+Tab F7
expect "$what: the focus is not in the left pane" test -d "$base/left/New Folder"
key Escape F2
rmdir "$base/left/New Folder"
expect "$what: the row stays" still "$main"

what="a name that could not be given"
key b b shift+F10 # "bad..." comes before "berry"
opens
choose r # Rename
key ctrl+a
xdotool type cherry
key Return
dismiss Foo
key End
xdotool type 2
key Return
expect "$what: what was typed is lost" has left/cherry2 berry
has left/cherry || fail "$what: cherry is another one"

what="a row that goes while its menu is open"
expect "$what: the pane never rests" still "$main"
menu_of cherry2
rm "$base/left/cherry2"
hold 300 # the row goes below the menu
choose m m m # Move to Next Pane, Mark, Move to Trash
dismiss "Oh Well"
has left/cherry || fail "$what: cherry went"

what="a name that another entry has by then"
menu_of cherry
mv "$base/left/cherry" "$base/left/kept"
printf 'of another\n' >"$base/left/cherry"
hold 300
choose m m m
dismiss "Oh Well"
has left/cherry another || fail "$what: the other one went"
has left/kept cherry || fail "$what: it went"

what="odd names, into the Trash and back"
for name in "$odd" "$bad" "$turned" "$long"; do
    menu_of "$name"
    choose m m m
    dismiss "Sir?"
    expect "$what: '$name' is still there" test ! -e "$base/left/$name"
    expect "the operation window stayed" window_gone Delete
    expect "$what: no focus" window_focused Norvane
done
[ "$(find "$trash" -mindepth 1 -printf x)" = xxxx ] || fail "$what: not all are in the Trash"
key ctrl+g
expect "$what: no prompt" window_focused GoTo
xdotool type "$trash"
key Return
expect "$what: the prompt stays" window_focused Norvane
expect "$what: the pane never rests" still "$main"
key plus Menu
opens
shot row-menu-trash
choose r r # Rename, Restore
for name in "$odd" "$bad" "$turned" "$long"; do comes "left/$name" "$name"; done
expect "$what: records stay" test -z "$(ls -A "${trash%files}info")"

quit_norvane
