# shellcheck shell=bash
# Sourced by the demonstration, the end-to-end tests and the benchmarks: a private desktop to play on.
#
# start_desktop [SIZE] [wm|bare]   an X server of our own (and openbox); sets DISPLAY
# start_wayland [SIZE]             a Wayland compositor in a window of an X server of our own; what is
#                                  started then has QT_QPA_PLATFORM set, and DISPLAY is for the keys
# use_folders DIR                  HOME and every XDG folder below DIR
# start_program COMMAND...         in the background; its pid in program_pid
# program_ended                    succeeds when it has
# wait_for SECONDS COMMAND...      until the command succeeds
# window_shown TITLE               succeeds while a window of that title is mapped
# key KEY...                       real key presses, as xdotool names them
# picture FILE [TITLE]             the screen, or one window, as PNG
# stop_program, stop_desktop       end what was started here, by its pid

desktop_pids=()

start_desktop() {
    local size=${1:-1280x800} manager=${2:-wm} number_file ready_file
    number_file=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp -noreset 3>"$number_file" 2>/dev/null &
    desktop_pids+=($!)
    wait_for 20 test -s "$number_file" || { echo "no X server" >&2; return 1; }
    DISPLAY=":$(cat "$number_file")"
    export DISPLAY
    rm -f "$number_file"
    unset WAYLAND_DISPLAY QT_QPA_PLATFORM
    if [ "$manager" = wm ]; then
        # Its startup command runs last: once it has looked for windows that are there already, to
        # which it gives no focus.
        ready_file=$(mktemp -u)
        openbox --startup "touch $ready_file" >/dev/null 2>&1 &
        desktop_pids+=($!)
        wait_for 20 test -e "$ready_file" || { echo "no window manager" >&2; return 1; }
        rm -f "$ready_file"
    fi
}

start_wayland() {
    local size=${1:-1280x800}
    start_desktop "$size" bare || return 1
    export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
    # Windows that fade out keep the keyboard from the next one for a second.
    mkdir -p "$XDG_RUNTIME_DIR/weston"
    printf '[core]\nidle-time=0\n[shell]\nclose-animation=none\nanimation=none\nstartup-animation=none\nfocus-animation=none\n' \
        >"$XDG_RUNTIME_DIR/weston/weston.ini"
    weston --config="$XDG_RUNTIME_DIR/weston/weston.ini" --backend=x11-backend.so --width="${size%x*}" --height="${size#*x}" \
        --socket=play >/dev/null 2>&1 &
    desktop_pids+=($!)
    wait_for 20 test -S "$XDG_RUNTIME_DIR/play" || { echo "no compositor" >&2; return 1; }
    export WAYLAND_DISPLAY=play QT_QPA_PLATFORM=wayland
    # Its window gets the keys while the pointer is over it.
    xdotool mousemove $((${size%x*} / 2)) $((${size#*x} / 2))
}

stop_desktop() {
    local pid
    for pid in "${desktop_pids[@]}"; do
        kill "$pid" 2>/dev/null
        wait "$pid" 2>/dev/null
    done
    desktop_pids=()
}

use_folders() {
    export HOME="$1/home"
    export XDG_CONFIG_HOME="$HOME/.config" XDG_DATA_HOME="$HOME/.local/share"
    export XDG_CACHE_HOME="$HOME/.cache" XDG_STATE_HOME="$HOME/.local/state"
    export XDG_RUNTIME_DIR="$1/run"
    mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
}

start_program() {
    "$@" &
    program_pid=$!
}

stop_program() {
    [ -n "${program_pid:-}" ] || return 0
    kill "$program_pid" 2>/dev/null
    wait "$program_pid" 2>/dev/null
    program_pid=
}

# Succeeds once the program has ended, also while nobody has asked for its status yet.
program_ended() {
    ! kill -0 "$program_pid" 2>/dev/null || grep -q '^State:[[:space:]]*Z' "/proc/$program_pid/status"
}

wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt "$end" ] || return 1
        sleep 0.03
    done
}

# The id of the newest mapped window with this title, alone or with its progress ("Copy - 42 %").
# Asks again before it says that there is none: a search that meets a window just going away finds
# nothing at all.
window_id() {
    local title found
    # shellcheck disable=SC2001 # a list of signs is beyond ${variable//...}
    title=$(sed 's/[]\$*.^+?(){}|[]/\\&/g' <<<"$1")
    for _ in 1 2 3; do
        found=$(xdotool search --onlyvisible --name "^$title( - .*)?\$" 2>/dev/null | tail -n 1)
        [ -z "$found" ] || { echo "$found" && return 0; }
        sleep 0.03
    done
    return 1
}

window_shown() { window_id "$1" >/dev/null; }
window_gone() { ! window_shown "$1"; }

window_focused() {
    [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = "$1" ] ||
        [ "$(xdotool getwindowfocus getwindowname 2>/dev/null)" = "$1" ]
}

key() { xdotool key --delay 15 "$@"; }

picture() {
    local target=root
    # Without a window's number import would wait for a click.
    [ -z "${2:-}" ] || target=$(window_id "$2") || return 1
    import -window "$target" "$1"
}
