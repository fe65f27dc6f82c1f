#!/usr/bin/env bash
# A pane on a real server: connecting, walking, trees both ways byte for byte, files that are there
# already, deleting, renaming, new folders, each way to leave, and servers that refuse, are silent or go
# away, with the window alive and the program ending at once meanwhile.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/ftp_lib.sh"

mkdir -p "$served/pub/deep/deeper" "$base/from/tree/sub/empty" "$base/to" "$base/other"
printf 'from there\n' >"$served/pub/w"
head -c 100000 /dev/urandom >"$served/pub/deep/bytes"
printf 'x' >"$served/pub/deep/deeper/ä b'c"
printf 'from here\n' >"$base/from/here"
head -c 300000 /dev/urandom >"$base/from/tree/bytes"
printf 'inner' >"$base/from/tree/sub/-dash"
: >"$base/from/tree/sub/none"

# A key that works once the server's folder is shown: probes with a rename, which only the server
# sees.
listed() {
    key ctrl+2 w shift+F6
    xdotool type --delay 15 "$1"
    key Return
    wait_for 1 test -e "$served/pub/$1"
}

start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
serve
start_norvane
main=$(window_id Norvane)

# Connecting and renaming.
connect
expect "the server's folder is not shown, or not renamed in" listed w2
hold 300 # it is listed again

# A tree from there, a tree to there.
fetched() { key ctrl+2 d F5 && wait_for 3 diff -r "$served/pub/deep" "$base/from/deep"; }
expect "the tree did not come" fetched
idle Download
sent() { key ctrl+1 t F5 && wait_for 4 diff -r "$base/from/tree" "$served/pub/tree"; }
expect "the tree did not go" sent
idle Upload

# Onto files that are there, both ways: skipped, then replaced.
printf 'mine, and older\n' >"$base/from/w2"
touch -d 2020-01-01 "$base/from/w2"
bring() {
    key ctrl+2 End F5
    question_ready
}
# The last row there is "w2", and here.
[ "$(ls "$served/pub" | tail -1) $(ls "$base/from" | tail -1)" = "w2 w2" ] || fail "other rows than expected"
bring
press_button 370 96 # Skip
idle Download
[ "$(cat "$base/from/w2")" = "mine, and older" ] || fail "replaced though it was to be skipped"
bring
key Return # Overwrite
idle Download
expect "not replaced by what is there" same_files "$served/pub/w2" "$base/from/w2"
printf 'mine again\n' >"$base/from/w2"
hold 300
send() {
    key ctrl+1 End F5
    question_ready
}
send
press_button 370 96
idle Upload
[ "$(cat "$served/pub/w2")" = "from there" ] || fail "replaced there though it was to be skipped"
send
key Return
idle Upload
expect "not replaced there" same_files "$base/from/w2" "$served/pub/w2"

# A new folder, its name, a folder that is not empty, and a file.
made() { key ctrl+2 F7 && hold 300 && xdotool type --delay 15 made && key Return && wait_for 2 test -d "$served/pub/made"; }
made || fail "no folder was made: $(ls "$served/pub")"
printf x >"$served/pub/made/x"
hold 300
key ctrl+2 m F8
answerable "Sir?"
key Return # Delete
answerable "Sir?" # it is not empty
key Return
gone() { [ ! -e "$served/pub/$1" ]; }
expect "the folder is still there" gone made
idle "Sir?"

# Leaving: by the button, by the menu, by another path with both answers.
leave_by_button() { xdotool mousemove --window "$main" 1050 33 click 1; }
back() { key ctrl+1 h F5 && wait_for 2 same_files "$base/from/here" "$base/to/here"; }
leave_by_button
expect "the button does not lead back" back
idle Copy
rm "$base/to/here"
connect
expect "no connection again" listed w3
hold 300
key ctrl+shift+f
expect "the menu's key does not lead back" back
idle Copy
rm "$base/to/here"
connect
expect "no connection again" listed w4
hold 300
go_to_other() {
    key ctrl+g
    expect "no prompt" window_shown GoTo
    answerable GoTo
    xdotool type --delay 15 "$base/other"
    key Return
    answerable "Sir?"
}
go_to_other
key Escape # Cancel
idle "Sir?"
expect "not on the server any more" listed w5
hold 300
go_to_other
key Return # Disconnect
idle "Sir?"
arrived() { rm -f "$base/other/here"; key ctrl+1 h F5 && wait_for 2 same_files "$base/from/here" "$base/other/here"; }
expect "the other path is not shown" arrived
idle Copy

# A wrong password, and a password that is asked for.
write_session wrong
connect
answerable "Connect Failed"
key Return
idle "Connect Failed"
write_session ""
connect
expect "no question for the password" window_focused Password
xdotool type --delay 15 secret
hold 250
key Return
idle Password
expect "the password that was typed is not sent" listed w6
hold 300
! grep -q secret "$(dirname "$settings_file")/test.ftp" || fail "the password was saved"

# A server that goes away while it is shown; one that refuses.
end_servers
key ctrl+2 F2
answerable foo
key Return
idle foo
key ctrl+shift+f
expect "a pane cannot leave a server that is gone" arrived
idle Copy
connect
answerable "Connect Failed"
key Return
idle "Connect Failed"

# One that says nothing: the window lives, and the program ends at once.
serve silent
connect
key ctrl+1 ctrl+g
expect "no prompt while a server is silent" window_shown GoTo
answerable GoTo
key Escape
idle GoTo
key ctrl+q
wait_for 3 program_ended || fail "the program does not end while a server is silent"
wait "$program_pid" || fail "the program ended with status $?"
program_pid=

# One that is slow: it goes away in the middle of a file, and the program is to end there.
head -c 3000000 /dev/urandom >"$served/pub/big"
serve 300000
start_norvane
connect
half() { [ -n "$(find "$base/from" -name '.norvane-*' -size +50k)" ] || [ -s "$base/from/big" ]; }
fetching() { key ctrl+2 b F5 && wait_for 2 half; }
expect "the file does not come" fetching
end_servers
told() { window_shown Err; }
expect "nothing is told of a file that was cut off" told
answerable Err
key Return
idle Download
rm -f "$base/from/big"
serve 300000
key ctrl+shift+f
connect
expect "the file does not come again" fetching
# The window that tells of it is just coming, and the window manager may move the focus to and fro.
key ctrl+q
wait_for 20 program_ended || fail "the program does not end after its download"
wait "$program_pid" || fail "the program ended with status $?"
program_pid=
# Quitting waits for operations.
same_files "$served/pub/big" "$base/from/big" || fail "the program ended in the middle of a file"
