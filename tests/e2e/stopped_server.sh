#!/usr/bin/env bash
# A folder whose file system's own server is stopped, as one of the network that went away, holds up no start, no
# other pane and no end of the program; what is there shows itself when the server goes on.
. "$(dirname "$0")/lib.sh"

served=$base/served
server=
mkdir -p "$served" "$base/from" "$base/to"
for name in one two under; do printf '%s\n' "$name" >"$base/from/$name"; done
printf 'late\n' >"$base/late"

# The server ends with the program that it was started beside, stopped or not, and the mount with both.
trap 'exit 143' TERM INT HUP

now_ms() { echo $((${EPOCHREALTIME/[.,]/} / 1000)); }

# What runs beside the program starts the server, sees it answer and stops it. It ends with the program.
with_mounts "
    /usr/bin/python3 '$(dirname "$0")/file_server.py' '$served' >'$base/said' &
    echo \$! >'$base/server'
    until [ -e '$served/folder/late' ]; do
        kill -0 \$! 2>/dev/null || { wait \$! && true; echo \$? >'$base/status'; exit 1; }
        sleep 0.02
    done
    kill -STOP \$!
    until grep -q '^State:[[:space:]]*T' /proc/\$!/status; do sleep 0.01; done
    date +%s%3N >'$base/begin'"

# Only what the system itself refuses is left out.
"${launcher[@]}" true
status=$?
if [ $status -ne 0 ]; then
    [ "$(cat "$base/status" 2>/dev/null)" = 77 ] || fail "the file server did not start: $(cat "$base/said")"
    echo "skipped: this system allows no file system of a person's own: $(cat "$base/said")"
    exit 77
fi
start_desktop 1280x800 wm || fail "no desktop"

# copies LETTER NAME: the left pane's entry comes to the second pane's folder. The keys are pressed
# once: a second copy would ask, or wait for the server.
copies() {
    key ctrl+1 "$1" F5
    expect "$2 is not copied" same_files "$base/from/$2" "$base/to/$2"
    expect "the operation window stayed" window_gone Copy
    expect "the main window did not get the focus back" window_focused Norvane
}

# is_stopped: so that what was seen was seen without it
is_stopped() { grep -q '^State:[[:space:]]*T' "/proc/$server/status"; }

ends() {
    is_stopped || fail "the file server was not stopped"
    key ctrl+q
    wait_for 3 program_ended || fail "the program does not end"
    wait "$program_pid" || fail "the program ended with status $?"
    program_pid=
}

# starts FOLDER BEGIN-FILE: with that saved folder; took is how long after what is in the file it was shown
starts() {
    mkdir -p "$(dirname "$settings_file")"
    printf 'Left=40\nTop=60\nWidth=1100\nHeight=600\nNumPanes=3\nPane0=%s\nPane1=%s\nPane2=%s\n' \
        "$base/from" "$base/to" "$1" >"$settings_file"
    start_norvane
    took=$(($(now_ms) - $(cat "$2")))
}

# What a start takes here anyway, while the machine may have much to do.
stopping=("${launcher[@]}")
launcher=()
now_ms >"$base/usual"
starts "$base/from" "$base/usual"
usual=$took
quit_norvane
launcher=("${stopping[@]}")

# A start with a saved folder there: the window comes at once, the other panes work, and it ends at once.
starts "$served/folder" "$base/begin"
server=$(cat "$base/server")
[ "$took" -lt 1000 ] || [ "$took" -lt $((usual + usual / 2)) ] ||
    fail "the window came after $took ms, beside ordinary folders after $usual"
echo "the window came after $took ms, beside ordinary folders after $usual"
copies o one
ends

# When the server goes on, what it has is shown, and can be copied.
rm "$base/to/one"
starts "$served/folder" "$base/begin"
server=$(cat "$base/server")
copies o one
shot waiting
main=$(window_id Norvane)
rows=330x300+740+60 # of the third pane
expect "what the third pane shows does not come to rest" still "$main" $rows
before=$(look "$main" $rows)
kill -CONT "$server"
expect "the folder is not shown when its server goes on" looks_new "$before" "$main" $rows
key ctrl+3 l F5
expect "late is not copied" same_files "$base/late" "$base/from/late"
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane

# It stops while its folder is shown: the other panes go on, and the program ends at once.
kill -STOP "$server"
expect "the file server does not stop" is_stopped
copies t two
copies u under
ends
