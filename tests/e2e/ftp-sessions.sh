#!/usr/bin/env bash
# Saved FTP connections by real keys: one is made, edited, and deleted with both answers.
. "$(dirname "$0")/lib.sh"

sessions=$(dirname "$settings_file")
file=$sessions/home.ftp
mkdir -p "$base/one" "$base/two"
write_settings "$base/one" "$base/two"

type_text() { xdotool type --delay 15 -- "$1"; }
# has LINE: the session has that line
has() { grep -qxF -- "$1" "$file"; }

start_desktop 1280x800 wm || fail "no desktop"
start_norvane

key ctrl+f
expect "no sessions window" window_focused "Ftp Sessions"
sessions_window=$(window_id "Ftp Sessions")
expect "the sessions window stays empty" painted "Ftp Sessions"
expect "the empty list is still being painted" still "$sessions_window"
empty=$(look "$sessions_window" 200x150+16+36)
shot "ftp-sessions-empty"

# Without a selection
key Return
dismiss Hey
expect "the sessions window has no focus" window_focused "Ftp Sessions"

# A new one: from the list to "New Connection"
key Tab Tab space
expect "no editor" window_focused "Ftp Connection"
expect "the editor stays empty" painted "Ftp Connection"
key Return
dismiss Info
expect "the editor has no focus" window_focused "Ftp Connection"
type_text "home"
key Tab
type_text "ftp.example.org"
key Tab Tab space Tab
type_text "anna"
key Tab
type_text "secret"
key Tab
type_text "/pub"
shot "ftp-sessions-editor"
key Return
expect "the editor stays" window_gone "Ftp Connection"
expect "no file" test -f "$file"
[ "$(stat -c %a "$file")" = 600 ] || fail "others may read the file: $(stat -c %a "$file")"
[ "$(stat -c %a "$sessions")" = 700 ] || fail "others may read the folder"
expected=$'Host=ftp.example.org\nPort=21\nUser=anna\nPass=secret\nRemoteDir=/pub\nLocalDir=\nPassive=1'
[ "$(cat "$file")" = "$expected" ] || fail "the file has: $(cat "$file")"
expect "the list shows no new row" looks_new "$empty" "$sessions_window" 200x150+16+36
expect "the sessions window has no focus" window_focused "Ftp Sessions"

# Edited: back to the list, its row, and on to "Edit"
key shift+Tab shift+Tab Down
shot "ftp-sessions-list"
key Tab Tab Tab space
expect "no editor" window_focused "Ftp Connection"
expect "the editor stays empty" painted "Ftp Connection"
expect "the session is still being read" still "$(window_id "Ftp Connection")"
key Tab Tab
key ctrl+a
type_text "2121"
key Return
expect "the editor stays" window_gone "Ftp Connection"
expect "the port was not saved: $(cat "$file")" has "Port=2121"
has "Pass=secret" || fail "the password is lost: $(cat "$file")"
has "Passive=1" || fail "the mode is lost: $(cat "$file")"
expect "the sessions window has no focus" window_focused "Ftp Sessions"

# Deleted, with both answers; the focus is on "Edit", the next is "Delete"
key Tab space
answerable Hey
shot "ftp-sessions-delete"
key Escape
expect "the question stays" window_gone Hey
expect "the sessions window has no focus" window_focused "Ftp Sessions"
[ -f "$file" ] || fail "it was deleted all the same"
key space
answerable Hey
key Return
expect "the question stays" window_gone Hey
gone() { [ ! -e "$file" ]; }
expect "it was not deleted" gone
expect "the row stays" looks "$empty" "$sessions_window" 200x150+16+36

# What comes from elsewhere is listed; the main window takes the choice for now or later
printf 'Host=localhost\nUser=anna\n' >"$sessions/other.ftp"
expect "a new file is not listed" looks_new "$empty" "$sessions_window" 200x150+16+36
key Escape
expect "the sessions window stays" window_gone "Ftp Sessions"
expect "the main window has no focus" window_focused Norvane
quit_norvane
