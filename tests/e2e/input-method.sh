#!/usr/bin/env bash
# An input method's daemon and the Compose key: what they make of several keys goes into names, and the
# shortcuts stay the program's.
. "$(dirname "$0")/lib.sh"

command -v ibus-daemon >/dev/null && command -v dbus-daemon >/dev/null && command -v setxkbmap >/dev/null || {
    echo "skipped: no ibus here"
    exit 77
}
mkdir -p "$base/left" "$base/right"
start_desktop 1280x800 wm || fail "no desktop"

daemons=()
finish_here() { # the bus and the daemon go before the desktop
    local status=$?
    [ ${#daemons[@]} -eq 0 ] || kill "${daemons[@]}" 2>/dev/null
    (exit $status)
    finish
}
trap finish_here EXIT
mapfile -t bus < <(dbus-daemon --session --fork --print-address=1 --print-pid=1)
export DBUS_SESSION_BUS_ADDRESS=${bus[0]}
daemons+=("${bus[1]}")
ibus-daemon --replace --panel disable --config disable >"$base/ibus.log" 2>&1 &
daemons+=($!)
engine() { # its status tells nothing
    timeout 5 ibus engine "$1" >"$base/engine.log" 2>&1
    [ "$(timeout 5 ibus engine 2>>"$base/engine.log")" = "$1" ]
}
expect "the daemon does not answer" engine xkb:us::eng

export QT_IM_MODULE=ibus
write_settings "$base/left" "$base/right"
start_norvane
exists() { [ -e "$base/left/$1" ]; }

# new_folder NAME KEY...: a folder that is named by these keys
new_folder() {
    key F7
    expect "F7 made nothing" exists "New Folder"
    expect "never rests" still root
    key ctrl+a "${@:2}"
    expect "never rests" still root
    shot "input-method-$2"
    key Return
    expect "$2...: there is $(ls "$base/left")" exists "$1"
}

# What is typed is underlined until it is whole; a shortcut is none of the method's.
expect "no Hindi" engine m17n:hi:itrans
new_folder नमस्ते n a m a s t e
key ctrl+g
answerable GoTo
key Escape
expect "no focus" window_focused Norvane
expect "no Latin" engine xkb:us::eng
new_folder plain p l a i n
quit_norvane

# Without a daemon a Compose key does it.
export QT_IM_MODULE=compose
setxkbmap -layout us -option compose:ralt
start_norvane
new_folder éß— Multi_key apostrophe e Multi_key s s Multi_key minus minus minus
quit_norvane
