# shellcheck shell=bash
# Usage: focus.sh FOCUS-PROCEDURE offscreen|bare|wm|wayland SCALE [ROUNDS]
# Typing ahead into dialogs with real keys: without a window manager, with one, on Wayland, and
# headless.

. "$(dirname "${BASH_SOURCE[0]}")/../../../scripts/desktop.sh"

procedure=$1
setting=$2
export QT_SCALE_FACTOR=$3
rounds=${4:-8}

base=$(mktemp -d)
use_folders "$base"
finish() {
    local status=$?
    stop_desktop
    rm -rf "$base"
    exit $status
}
trap finish EXIT

if [ "$setting" = offscreen ]; then
    export QT_QPA_PLATFORM=offscreen
elif [ "$setting" = wayland ]; then
    command -v weston >/dev/null || {
        echo "skipped: no weston here"
        exit 77
    }
    start_wayland || exit 1
else
    start_desktop 1280x800 "$setting" || exit 1
    # Repeats must come within the time the key is held.
    xset r rate 150 30
    # Without a window manager the pointer decides at first who gets the keys.
    xdotool mousemove 200 200
fi
"$procedure" "$rounds"
