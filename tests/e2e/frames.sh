#!/usr/bin/env bash
# Sixty moves and resizes in quick succession end at the last one, also while a question is open;
# the first window fits its screen; a window comes back on the monitor where it was left.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/left" "$base/right"

# client: the place and size of the main window's client area, as the screen has them
client() {
    xwininfo -id "$(window_id Norvane)" |
        awk '/Absolute upper-left X/ { x = $NF } /Absolute upper-left Y/ { y = $NF }
             /Width:/ { w = $NF } /Height:/ { h = $NF } END { print x, y, w, h }'
}

# saved: the same from the settings
saved() {
    echo "$(setting Left) $(setting Top) $(($(setting Width) + 1)) $(($(setting Height) + 1))"
}

# shake LEFT TOP WIDTH HEIGHT: thirty moves and thirty resizes that end there
shake() {
    local window step steps=()
    window=$(window_id Norvane)
    for step in $(seq 29 -1 0); do
        steps+=(windowmove "$window" $(($1 + 3 * step)) $(($2 + 2 * step))
            windowsize "$window" $(($3 + 2 * step)) $(($4 + step)))
    done
    xdotool "${steps[@]}"
}

has_size() { [[ $(client) == *" $1 $2" ]]; }
within() { # LEFT TOP RIGHT BOTTOM: the client area lies there
    local x y w h
    read -r x y w h < <(client)
    [ "$x" -ge "$1" ] && [ "$y" -ge "$2" ] && [ $((x + w)) -le "$3" ] && [ $((y + h)) -le "$4" ]
}

# ends_at WIDTH HEIGHT: the program and the screen agree about the frame that was asked for last
ends_at() {
    expect "the size is $(client) and not $1 $2" has_size "$1" "$2"
    local shown
    shown=$(client)
    quit_norvane
    [ "$(saved)" = "$shown" ] || fail "the program takes $(saved) to be its frame and not $shown"
    [[ $shown == *" $1 $2" ]] || fail "the size became $shown"
}

start_desktop 1280x800 wm || fail "no desktop"

start_norvane
expect "the first window is no window of its screen: $(client)" within 0 0 1280 800
quit_norvane

write_settings "$base/left" "$base/right"
start_norvane
shake 100 120 700 420
ends_at 700 420

# The same while an alert stands open that the window's thread waits for.
start_norvane
rmdir "$base/left"
printf 'a file\n' >"$base/left"
key F2
answerable Err
shake 140 90 640 400
expect "the size is not the last one" has_size 640 400
dismiss Err
ends_at 640 400
rm "$base/left"
mkdir "$base/left"
stop_desktop

# Two monitors side by side.
start_desktop 1600x800 wm || fail "no desktop"
if xrandr --setmonitor left 800/200x800/200+0+0 screen 2>/dev/null &&
    xrandr --setmonitor right 800/200x800/200+800+0 none 2>/dev/null; then
    printf '%s\n' Left=900 Top=100 Width=500 Height=400 NumPanes=1 "Pane0=$base/right" \
        >"$settings_file"
    start_norvane
    [ "$(client)" = "900 100 501 401" ] || fail "it came back at $(client)"
    quit_norvane
    [ "$(saved)" = "900 100 501 401" ] || fail "saved was $(saved)"

    printf '%s\n' Left=4000 Top=100 Width=500 Height=400 NumPanes=1 "Pane0=$base/right" \
        >"$settings_file"
    start_norvane
    expect "a window that no monitor shows is at $(client)" within 800 0 1600 800
    quit_norvane
fi
