#!/usr/bin/env bash
# Settings that cannot be saved are told once, and the program ends all the same.
. "$(dirname "$0")/lib.sh"

start_desktop 1280x800 wm || fail "no desktop"
mkdir -p "$base/one" "$base/two"
without_file_rights

# quit_told: Ctrl+Q, one alert, the end; a second alert would keep the program
quit_told() {
    key ctrl+q
    dismiss Hey
    wait_for 10 program_ended || fail "the program did not end $1"
    wait "$program_pid" || fail "the program ended with status $? $1"
    program_pid=
}

# A file that may only be read is read.
write_settings "$base/one" "$base/two"
chmod 444 "$settings_file"
before=$(cat "$settings_file")
start_norvane
geometry=$(xdotool getwindowgeometry --shell "$(window_id Norvane)")
grep -qx WIDTH=1101 <<<"$geometry" || fail "the read-only settings were not read: $geometry"
quit_told "with a read-only file"
[ "$(cat "$settings_file")" = "$before" ] || fail "the read-only settings changed"

# A link that leads nowhere.
rm "$settings_file"
ln -s "$base/gone/Norvane.pref" "$settings_file"
start_norvane
quit_told "with a dangling link"
[ ! -e "$base/gone" ] || fail "something was made behind the link"

# A home that cannot be written: once at the start, before there is a window, and once at the end.
mkdir "$base/closed"
chmod 555 "$base/closed"
export XDG_CONFIG_HOME=$base/closed/config
start_program "${launcher[@]}" "$norvane"
answerable Hey
key Escape
expect "the main window did not come" window_shown Norvane
expect "the main window did not get the focus" window_focused Norvane
window_gone Hey || fail "there was another alert"
quit_told "without a settings directory"
