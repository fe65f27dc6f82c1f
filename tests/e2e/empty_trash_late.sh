#!/usr/bin/env bash
# Emptying the Trash shows a window only when it lasts for more than a second.
. "$(dirname "$0")/lib.sh"

trash=$XDG_DATA_HOME/Trash
mkdir -p "$base/left" "$trash/files" "$trash/info"
fill() { (mkdir "$trash/files/tree" && cd "$trash/files/tree" && seq "$1" | xargs touch); }
remaining() { find "$trash/files" | wc -l; }
emptied() { [ ! -e "$trash/files/tree" ]; }
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/left"
start_norvane
# Every window that comes or goes is written down, however short its life.
xprop -root -spy _NET_CLIENT_LIST >>"$base/windows" 2>/dev/null &
desktop_pids+=($!)
expect "no list of windows" test -s "$base/windows"

empty_trash() {
    : >"$base/windows"
    key F10 e Return
}

what="a short one"
fill 20
empty_trash
expect "$what: it is not emptied" emptied
# Nor does one come when the second is over after which a longer one would show it.
no_window_came() { [ ! -s "$base/windows" ]; }
stays 1200 no_window_came || fail "$what: a window came: $(cat "$base/windows")"

# Held while it runs, it has lasted for more than a second when it goes on.
what="a long one"
fill 60000
empty_trash
end=$((SECONDS + 10))
until [ "$(remaining)" -lt 60000 ] || [ $SECONDS -ge $end ]; do :; done
kill -STOP "$program_pid"
[ "$(remaining)" -gt 2000 ] || fail "$what: it was over before it was held"
hold 1100
kill -CONT "$program_pid"
expect "$what: it is not emptied" emptied
window_came() { [ -s "$base/windows" ]; }
expect "$what: no window came" window_came
expect "$what: the window stays" window_gone "Empty Trash"
expect "$what: no focus" window_focused Norvane
quit_norvane
