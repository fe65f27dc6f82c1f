#!/usr/bin/env bash
# Without a display the program says so in one line and ends with 1, settings untouched.
. "$(dirname "$0")/lib.sh"

unset DISPLAY WAYLAND_DISPLAY WAYLAND_SOCKET XDG_SESSION_TYPE QT_QPA_PLATFORM

# try MESSAGE VARIABLE...: starts it with these variables set
try() {
    local message=$1 status=0
    shift
    env "$@" timeout 20 "$norvane" >"$base/out" 2>"$base/said" || status=$?
    [ "$status" = 1 ] || fail "$message: it ended with $status: $(cat "$base/said")"
    [ "$(cat "$base/said")" = "norvane: there is no display to open windows on" ] ||
        fail "$message: it said: $(cat "$base/said")"
    [ ! -s "$base/out" ] || fail "$message: it printed: $(cat "$base/out")"
    [ ! -e "$settings_file" ] || fail "$message: it wrote settings"
}

try "no display is named"
try "nobody answers there" DISPLAY=:54321
try "nobody listens there" WAYLAND_DISPLAY="$base/nobody" XDG_SESSION_TYPE=wayland
try "a platform is wanted" QT_QPA_PLATFORM=xcb
