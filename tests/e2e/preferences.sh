#!/usr/bin/env bash
# The preferences window by real keys: it shows what is stored, "OK" stores and is seen in the panes at
# once, "Cancel" stores nothing, "Help" says that there is none.
. "$(dirname "$0")/lib.sh"

title="Norvane Preferences Dialog"
mkdir -p "$base/one" "$base/two"
head -c 1536 /dev/zero >"$base/one/file"
echo more >"$base/one/.dot"
touch -d '2026-03-04 05:06:07' "$base/one/file" "$base/one/.dot" "$base/two" "$base/one"
write_settings "$base/one" "$base/two"
printf 'ShowFooter=1\n' >>"$settings_file"

# open_preferences: until it can be worked
open_preferences() {
    key ctrl+r
    expect "no preferences window" window_focused "$title"
    expect "the preferences window stays empty" painted "$title"
    expect "the preferences window is still being painted" still "$(window_id "$title")"
}
stored() { [ "$(setting "$1")" = "$2" ]; }

start_desktop 1280x800 wm || fail "no desktop"
start_norvane
main=$(window_id Norvane)
expect "the panes are still being painted" still "$main"
panes=$(look "$main")

# Nothing is stored by looking, nor by "Cancel" after changes
before=$(cat "$settings_file")
open_preferences
shot "preferences-open"
key space
expect "the field opens no menu" menu_open
shot "preferences-formats"
key Down Return
expect "the menu stays" menu_closed
key Tab space
key Escape
expect "the preferences window stays" window_gone "$title"
[ "$(cat "$settings_file")" = "$before" ] || fail "Cancel stored: $(cat "$settings_file")"
expect "the main window has no focus" window_focused Norvane
expect "Cancel changed the panes" looks "$panes" "$main"

# Another format, no progress bar, no header: stored, and seen in the panes
open_preferences
key space
expect "the field opens no menu" menu_open
key Down Return
expect "the menu stays" menu_closed
key Tab space Tab space
shot "preferences-changed"
key Return
expect "the format is not stored: $(cat "$settings_file")" stored DateFormat "%D %T"
expect "the progress bar is not stored" stored ShowProgressBar 0
expect "the header is not stored" stored ShowHeader 0
expect "the footer is not stored" stored ShowFooter 1
[ "$(setting Pane0)" = "$base/one" ] || fail "another setting is lost: $(cat "$settings_file")"
expect "the panes do not change" looks_new "$panes" "$main"
[ "$(window_id "$title")" != "" ] || fail "the window closed"
shot "preferences-stored"

# The other pages by arrows on their tabs, and back
window=$(window_id "$title")
general=$(look "$window")
key shift+Tab shift+Tab shift+Tab
expect "the tabs show no focus" looks_new "$general" "$window"
tabs=$(look "$window")
key Right
expect "the arrow changes no page" looks_new "$tabs" "$window"
shot "preferences-advanced"
key Left
expect "the arrow does not come back" looks "$tabs" "$window"

# Help: from the tabs to the last button
key Tab Tab Tab Tab Tab Tab Tab space
answerable foo
shot "preferences-help"
dismiss foo
expect "the preferences window has no focus" window_focused "$title"
key Escape
expect "the preferences window stays" window_gone "$title"

# All as it was: the panes show what they showed
open_preferences
key space
expect "the field opens no menu" menu_open
key Home Return
expect "the menu stays" menu_closed
key Tab space Tab space Return
expect "the format is not stored" stored DateFormat "%D %R"
expect "the header is not stored" stored ShowHeader 1
key Escape
expect "the preferences window stays" window_gone "$title"
expect "the main window has no focus" window_focused Norvane
expect "the panes are not as they were" looks "$panes" "$main"

# Extras, from within a page: sizes that people read, in rows and footers
[ -z "$(setting ReadableSizes)" ] || fail "an extra is stored without having been chosen"
open_preferences
key ctrl+Next ctrl+Next Tab space
shot "preferences-extras"
key Return
expect "the extra is not stored" stored ReadableSizes 1
key Escape
expect "the preferences window stays" window_gone "$title"
expect "the sizes do not change" looks_new "$panes" "$main"
shot "preferences-sizes"
open_preferences
key ctrl+Next ctrl+Next Tab space Return
expect "the extra is not stored" stored ReadableSizes 0
key Escape
expect "the preferences window stays" window_gone "$title"
expect "the panes are not as they were" looks "$panes" "$main"

# Names that begin with a dot: gone, also one that comes; back again
open_preferences
key ctrl+Next ctrl+Next Tab Tab space Return
expect "the extra is not stored" stored HideDotNames 1
key Escape
expect "the preferences window stays" window_gone "$title"
expect "the rows do not change" looks_new "$panes" "$main"
expect "the panes are still being painted" still "$main"
without=$(look "$main")
shot "preferences-without-dots"
echo even >"$base/one/.more"
mkdir "$base/one/seen"
expect "a new folder does not come" looks_new "$without" "$main"
rmdir "$base/one/seen"
expect "a name that begins with a dot came along" looks "$without" "$main"
rm "$base/one/.more"
open_preferences
key ctrl+Next ctrl+Next Tab Tab space Return
expect "the extra is not stored" stored HideDotNames 0
key Escape
expect "the preferences window stays" window_gone "$title"
expect "the panes are not as they were" looks "$panes" "$main"

# Larger letters, by a key in the menu's field: all panes, and all as it was again
open_preferences
key ctrl+Next ctrl+Next Tab Tab Tab Tab Tab Tab 2
shot "preferences-font"
key Return
expect "the size is not stored" stored FontSize 20
key Escape
expect "the preferences window stays" window_gone "$title"
expect "the rows do not change" looks_new "$panes" "$main"
expect "the panes are still being painted" still "$main"
shot "preferences-large"
open_preferences
key ctrl+Next ctrl+Next Tab Tab Tab Tab Tab Tab space
expect "the field opens no menu" menu_open
key Home Down Down Down Return
expect "the menu stays" menu_closed
key Return
expect "the size is not stored" stored FontSize 12
key Escape
expect "the preferences window stays" window_gone "$title"
expect "the panes are not as they were" looks "$panes" "$main"
quit_norvane
[ "$(setting DateFormat)" = "%D %R" ] || fail "the end of the program lost the format"
