#!/usr/bin/env bash
# The program's end while an alert stands open: by a signal at once, by its window's close button
# once the alert is answered. The settings are saved each time.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/sub" "$base/to"
without_file_rights
start_desktop 1280x800 wm || fail "no desktop"

# begin: two files to work on, a program with settings of its own time
begin() {
    rm -rf "$base/from" "$base/to"
    mkdir -p "$base/from" "$base/to"
    printf 'a\n' >"$base/from/a"
    printf 'b\n' >"$base/from/b"
    write_settings "$base/from" "$base/to"
    start_norvane
    rm "$settings_file"
}

# ended WHAT: in order, with its settings
ended() {
    wait_for 10 program_ended || fail "$1: the program does not end"
    wait "$program_pid" || fail "$1: the program ended with status $?"
    program_pid=
    [ "$(setting Pane0)" = "$base/from" ] || fail "$1: the settings were not saved"
}

# ask_deletion: the question whether the first file is to be deleted
ask_deletion() {
    key a Delete
    expect "no question" window_shown "Sir?"
    expect "the question stays empty" painted "Sir?"
}

# press_close: the main window's close button, the rightmost of its title bar
press_close() {
    local info left top width
    info=$(xwininfo -id "$(window_id Norvane)")
    left=$(awk '/Absolute upper-left X/ { print $NF }' <<<"$info")
    top=$(awk '/Absolute upper-left Y/ { print $NF }' <<<"$info")
    width=$(awk '/Width:/ { print $NF }' <<<"$info")
    xdotool mousemove --sync $((left + width - 11)) $((top - 10)) click 1
}

begin
ask_deletion
kill -TERM "$program_pid"
ended "SIGTERM at a question"
[ -e "$base/from/a" ] || fail "the file was deleted without an answer"

begin
ask_deletion
press_close
stays 500 window_shown "Sir?" || fail "closing took the question away"
program_ended && fail "closing did not wait for the answer"
dismiss "Sir?"
ended "a closed window"
expect "the file was not deleted" test ! -e "$base/from/a"

# An operation that tells something of each item: nothing more is done once nobody answers.
begin
chmod 000 "$base/from/a" "$base/from/b"
printf 'c\n' >"$base/from/c"
key plus F5
expect "no alert" window_shown foo
kill -TERM "$program_pid"
ended "SIGTERM at an operation's alert"
[ -z "$(ls -A "$base/to")" ] || fail "the operation went on: $(ls -A "$base/to")"

# Before the first window there are alerts too, where the settings have no place.
rm -rf "$XDG_CONFIG_HOME"
chmod 500 "$HOME"
start_program "${launcher[@]}" "$norvane"
expect "no alert" window_shown Hey
kill -TERM "$program_pid"
wait_for 10 program_ended || fail "the program does not end"
wait "$program_pid" || fail "the program ended with status $?"
program_pid=
