# shellcheck shell=bash
# Sourced by every end-to-end test: the real program on a private desktop, real keys, real files.
# Usage of a test: SCRIPT NORVANE-BINARY

. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/desktop.sh"

# use_own_programs DIR: a desktop without this machine's programs, so that what a test opens by
# mistake starts nothing. A test adds programs to $XDG_DATA_DIRS/applications.
use_own_programs() {
    mkdir -p "$1/applications" "$1/etc"
    # Everything else is there: the window manager looks for its settings, too.
    find /usr/share/* -maxdepth 0 ! -name applications -exec ln -s -t "$1" {} +
    [ ! -d /etc/xdg ] || find /etc/xdg/* -maxdepth 0 ! -name '*mimeapps.list' -exec ln -s -t "$1/etc" {} +
    export XDG_DATA_DIRS=$1 XDG_CONFIG_DIRS=$1/etc DBUS_SESSION_BUS_ADDRESS=disabled:
    unset VISUAL EDITOR TERMINAL
}

norvane=$1
base=$(mktemp -d)
use_folders "$base"
use_own_programs "$base/programs"
settings_file=$XDG_CONFIG_HOME/Norvane/Norvane.pref
keep=${NORVANE_KEEP_PICTURES:-}

finish() {
    local status=$?
    if [ $status -ne 0 ] && [ -n "${DISPLAY:-}" ]; then
        mkdir -p "$(dirname "$norvane")/failed-pictures"
        picture "$(dirname "$norvane")/failed-pictures/$(basename "$0" .sh).png" 2>/dev/null
    fi
    if [ -n "$program_pid" ]; then
        kill "$program_pid" 2>/dev/null
        # Asked to end it waits for its operations, and those for an answer that nobody gives.
        wait_for 3 program_ended || kill -KILL "$program_pid"
    fi
    stop_program
    stop_desktop
    chmod -R u+rwx "$base" 2>/dev/null
    rm -rf "$base"
    exit $status
}
trap finish EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# expect MESSAGE COMMAND...: within ten seconds, or the test fails
expect() {
    local message=$1
    shift
    wait_for 10 "$@" || fail "$message"
}

# hold MILLISECONDS: for a time that is itself a part of what is tested, as its caller says. Whatever
# shows itself is waited for instead.
hold() { sleep "$(printf '%d.%03d' $(($1 / 1000)) $(($1 % 1000)))"; }

# stays MILLISECONDS COMMAND...: the command succeeds again and again for so long
stays() {
    local end=$((${EPOCHREALTIME/[.,]/} + $1 * 1000))
    shift
    while [ "${EPOCHREALTIME/[.,]/}" -lt $end ]; do
        "$@" >/dev/null 2>&1 || return 1
        sleep 0.03
    done
    "$@" >/dev/null 2>&1
}

# look WINDOW [AREA]: what the window of that number shows now, or WIDTHxHEIGHT+LEFT+TOP of it, as a
# sum
look() {
    local sum
    # shellcheck disable=SC2086
    sum=$(import -window "$1" ${2:+-crop "$2"} rgb:- 2>/dev/null | cksum)
    [ "${sum##* }" != 0 ] && echo "$sum"
}

# looks LOOK WINDOW [AREA], looks_new LOOK WINDOW [AREA]: it shows the same as when LOOK was taken, or
# something else
looks() { [ "$(look "${@:2}")" = "$1" ]; }
looks_new() {
    local now
    now=$(look "${@:2}") && [ "$now" != "$1" ]
}

# still WINDOW [AREA]: nothing moves there
still() {
    local before
    before=$(look "$@") && stays 100 looks "$before" "$@"
}

# shot NAME: kept only when NORVANE_KEEP_PICTURES names a folder, once nothing moves any more
shot() {
    [ -n "$keep" ] || return 0
    wait_for 2 still root
    picture "$keep/$1.png"
}

# write_settings LEFT-FOLDER RIGHT-FOLDER
write_settings() {
    mkdir -p "$(dirname "$settings_file")"
    printf 'Left=40\nTop=60\nWidth=1100\nHeight=600\nNumPanes=2\nPane0=%s\nPane1=%s\n' "$1" "$2" \
        >"$settings_file"
}

# Put before the program's name when it is started, see the next two functions.
launcher=()

# As root everybody may read everything: takes that right from the program.
without_file_rights() {
    [ "$(id -u)" != 0 ] ||
        launcher=(setpriv "--bounding-set=-dac_override,-dac_read_search"
            "--inh-caps=-dac_override,-dac_read_search")
}

# with_mounts COMMANDS: runs them, then the program, where they may mount what nobody else sees.
# What the program sees at PATH is then at "$(inside PATH)". Skips where that is not allowed.
with_mounts() {
    local private
    if unshare -Urm --propagation private true 2>/dev/null; then
        private=(unshare -Urm --propagation private)
        entry=(--user --preserve-credentials)
    elif unshare -m --propagation private true 2>/dev/null; then
        private=(unshare -m --propagation private)
        entry=()
    elif "$(dirname "$norvane")/own-mounts" true 2>/dev/null; then
        private=("$(dirname "$norvane")/own-mounts") # in a root folder that is no mount point
        entry=()
    else
        echo "skipped: this system allows no private mounts"
        exit 77
    fi
    launcher=("${private[@]}" sh -ec "$1"$'\nexec "$@"' sh)
}

inside() { echo "/proc/$program_pid/root$1"; }

# in_mounts COMMAND...: runs it where the program's mounts are seen
# With its root folder: it may not be that of the system.
in_mounts() { nsenter --target "$program_pid" "${entry[@]}" --mount --root --wd "$@"; }

# What a program that does not show itself is doing, for whoever reads the log.
describe_program() {
    if program_ended; then
        wait "$program_pid"
        echo "the program ended with status $?" >&2
        return
    fi
    local task
    for task in /proc/"$program_pid"/task/*; do
        echo "thread $(cat "$task/comm") waits in $(cat "$task/wchan" 2>/dev/null)" >&2
    done
}

# start_norvane [FOLDER...]
start_norvane() {
    start_program "${launcher[@]}" "$norvane" "$@"
    wait_for 20 window_shown Norvane || {
        describe_program
        fail "the main window did not come"
    }
    expect "the main window did not get the focus" window_focused Norvane
}

quit_norvane() {
    key ctrl+q
    wait_for 10 program_ended || fail "Ctrl+Q did not end the program"
    wait "$program_pid" || fail "the program ended with status $?"
    program_pid=
}

# setting KEY: its value in the settings file
setting() { sed -n "s/^$1=//p" "$settings_file" | head -n 1; }

same_trees() { diff -r --no-dereference "$1" "$2"; }
same_files() { cmp -s "$1" "$2"; }

# painted TITLE: the window shows more than one plain colour
painted() {
    local window colors
    window=$(window_id "$1") || return 1
    colors=$(import -window "$window" -format %k info:- 2>/dev/null) && [ "$colors" -gt 3 ]
}

# An open menu is a window without a title, over the main window.
menus() {
    local id
    for id in $(xdotool search --onlyvisible --class norvane 2>/dev/null); do
        xwininfo -id "$id" | grep -q 'Override Redirect State: yes' && echo "$id"
    done
}
count_menus() { menus | wc -l; }
menu_open() { [ "$(count_menus)" = 1 ]; }
menu_closed() { [ "$(count_menus)" = 0 ]; }

# What comes in the half second after a question's first frame, or after a key, is dropped on
# purpose; nothing outside tells when that ends.
reading_time() { hold 800; }

# answerable TITLE: the question is there and can be answered
answerable() {
    expect "no window '$1'" window_shown "$1"
    expect "the window '$1' stays empty" painted "$1"
    reading_time
}

question_ready() { answerable "Item Exists"; }

# dismiss TITLE: answers the alert by Enter; another one of that title may come next
dismiss() {
    answerable "$1"
    expect "the alert '$1' is not the focused window" window_focused "$1"
    local alert
    alert=$(window_id "$1")
    key Return
    expect "the alert '$1' stays" id_gone "$alert"
}

id_gone() { ! xwininfo -id "$1" 2>/dev/null | grep -q 'Map State: IsViewable'; }

# press_button X Y: clicks into the overwrite question, in its own coordinates
press_button() {
    xdotool mousemove --sync --window "$(window_id 'Item Exists')" "$1" "$2" click 1
}
