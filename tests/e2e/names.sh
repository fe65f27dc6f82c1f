#!/usr/bin/env bash
# F7, Shift+F6, the rename field, and GoTo.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/left" "$base/right/deep/er"
printf 'one\n' >"$base/left/one"
printf 'two\n' >"$base/left/two"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane
# What is typed right behind a key goes where that key has brought the focus.
is_folder() { [ -d "$base/left/$1" ]; }
is_file() { [ -f "$base/left/$1" ]; }

what="New Folder"
key F7
expect "$what: it was not made" is_folder "New Folder"
shot rename-field
xdotool key ctrl+a
xdotool type --delay 15 -- "box"
key Return
expect "$what: it was not renamed" is_folder box
key F7
expect "$what: the second was not made" is_folder "New Folder"
key Escape
key F7
expect "$what: no number" is_folder "New Folder 2"
key Escape

what="Shift+F6"
key o shift+F6
xdotool key End
xdotool type --delay 15 -- "-more"
key Return
expect "$what: it was not renamed" is_file one-more

what="a name that is taken"
key t shift+F6
xdotool key ctrl+a
xdotool type --delay 15 -- "one-more"
key Return
answerable Foo
shot rename-refused
dismiss Foo
[ "$(cat "$base/left/one-more")" = one ] || fail "$what: the other file was replaced"
[ "$(cat "$base/left/two")" = two ] || fail "$what: it is gone"

what="Escape"
key t shift+F6
xdotool type --delay 15 -- "never"
key Escape

what="GoTo"
key ctrl+g
answerable GoTo
# The window had taken the Escape before it opened the prompt.
is_file two || fail "Escape: it was renamed"
shot goto
xdotool type --delay 15 -- "$base/right/deep/er/.."
key Return
expect "$what: the prompt stays" window_gone GoTo
expect "$what: no focus" window_focused Norvane
# The folder that the pane shows now is the one in which F7 makes another.
key F7
expect "$what: it went elsewhere" test -d "$base/right/deep/New Folder"
key Escape
quit_norvane
[ "$(setting Pane0)" = "$base/right/deep" ] || fail "$what: $(setting Pane0)"
