#!/usr/bin/env bash
# Leaving a server by the menu's item, by mouse and by letters; quitting while a listing is on its way,
# and in the middle of a folder's deletion.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/ftp_lib.sh"

mkdir -p "$base/here" "$base/empty" "$served/pub/doomed/deeper" "$served/pub/kept"
printf 'from here\n' >"$base/here/here"
count=40
for ((number = 100; number < 100 + count; number++)); do
    printf 'doomed %s\n' $number >"$served/pub/doomed/$number"
done
printf 'deeper\n' >"$served/pub/doomed/deeper/file"
printf 'kept\n' >"$served/pub/kept/file"
printf 'beside\n' >"$served/beside"
cp -r "$served" "$base/original"

start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/here" "$base/empty"
serve
start_norvane
main=$(window_id Norvane)

# The right pane is on this machine again: what is copied there arrives in the folder it had shown.
back() { key ctrl+1 h F5 && wait_for 2 same_files "$base/here/here" "$base/empty/here"; }
has_left() { grep -qx left "$base/server.log"; }
no_rows_shown() { ! rows_shown; }
connected() {
    connect
    expect "$what: the server's folder is not shown" rows_shown
    stays 300 rows_shown || fail "$what: the server's folder does not stay"
    ! has_left || fail "$what: it has left before it was to"
    key ctrl+2
}
left() {
    expect "$what: the server was not left" has_left
    expect "$what: the server's rows are still shown" no_rows_shown
    expect "$what: the pane does not lead back" back
    idle Copy
    rm "$base/empty/here"
    expect "$what: the pane still shows the file" no_rows_shown
    same_trees "$base/original" "$served" || fail "$what: changed on the server"
    : >"$base/server.log"
}

what="the menu's item by mouse"
connected
xdotool mousemove --window "$main" 133 11 click 1
expect "$what: no menu" menu_open
xdotool mousemove --window "$main" 160 126 click 1
expect "$what: the menu stays" menu_closed
left

what="the menu's item by letters"
connected
key F10
expect "$what: no menu" menu_open
key Right Right Home d Return
expect "$what: the menu stays" menu_closed
left

# ends SECONDS: by the key that quits, with nothing asked
ends() {
    key ctrl+q
    ended "$1"
}
ended() {
    wait_for "$1" program_ended || fail "$what: the program does not end"
    wait "$program_pid" || fail "$what: the program ended with status $?"
    program_pid=
}
quit_norvane

what="half a listing"
serve half-listings
start_norvane
connect
halved() { grep -qx "half a listing" "$base/server.log"; }
expect "$what: it was not asked for" halved
# The window lives meanwhile.
key ctrl+1 ctrl+g
expect "$what: no prompt" window_shown GoTo
answerable GoTo
key Escape
idle GoTo
no_rows_shown || fail "$what: it is shown though it has not ended"
! has_left || fail "$what: it was given up"
ends 10
expect "$what: the server was not left" has_left
same_trees "$base/original" "$served" || fail "$what: changed on the server"

what="a deletion"
serve slow-deletion
start_norvane
connect
expect "$what: the server's folder is not shown" rows_shown
key ctrl+2 Home d F8
dismiss "Sir?"
dismiss "Sir?" # it is not empty
files_left() { find "$served/pub/doomed" -type f | wc -l; }
under_way() { [ "$(files_left)" -lt $((count - 2)) ]; }
expect "$what: it does not begin" under_way
ends 10
expect "$what: the server was not left" has_left
left_over=$(files_left)
[ "$left_over" -gt 5 ] || fail "$what: it went on to its end: $left_over files are left"
same_number() { [ "$(files_left)" = "$left_over" ]; }
stays 1000 same_number || fail "$what: it goes on"
# What is left is as it was; outside of that folder all is as it was.
diff -r -q "$base/original" "$served" | grep -v "^Only in $base/original/pub/doomed: " >"$base/other"
[ ! -s "$base/other" ] || fail "$what: $(cat "$base/other")"

# Asked to end, as by the end of a desktop's session, while a question about the server is open: nobody
# has to answer it first.
# ends_beside TITLE: the question of that title is there
ends_beside() {
    answerable "$1"
    kill -TERM "$program_pid"
    ended 10
    same_trees "$base/expected" "$served" || fail "$what: changed on the server"
}
rm -rf "$base/expected"
cp -r "$served" "$base/expected"

what="a wrong password"
serve
write_session wrong
start_norvane
connect
ends_beside "Connect Failed"

what="a question for the password"
write_session ""
start_norvane
connect
ends_beside Password

what="a refused connection"
write_session secret
end_servers
start_norvane
connect
ends_beside "Connect Failed"

what="a server that has gone"
serve
start_norvane
connect
expect "$what: the server's folder is not shown" rows_shown
end_servers
key ctrl+2 F2
ends_beside foo

what="a transfer whose server has gone"
head -c 3000000 /dev/urandom >"$served/pub/big"
cp "$served/pub/big" "$base/expected/pub/big"
serve 300000
start_norvane
connect
expect "$what: the server's folder is not shown" rows_shown
key ctrl+2 b F5
coming() { [ -n "$(find "$base/here" -name '.norvane-*' -size +50k)" ]; }
expect "$what: the file does not come" coming
end_servers
ends_beside Err
