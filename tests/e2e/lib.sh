# Sourced by every end-to-end test: the real program on a private desktop, real keys, real files.
# Usage of a test: SCRIPT NORVANE-BINARY

. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/desktop.sh"

norvane=$1
base=$(mktemp -d)
use_folders "$base"
settings_file=$XDG_CONFIG_HOME/Norvane/Norvane.pref
keep=${NORVANE_KEEP_PICTURES:-}

finish() {
    local status=$?
    if [ $status -ne 0 ] && [ -n "${DISPLAY:-}" ]; then
        mkdir -p "$(dirname "$norvane")/failed-pictures"
        picture "$(dirname "$norvane")/failed-pictures/$(basename "$0" .sh).png" 2>/dev/null
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

# shot NAME: kept only when NORVANE_KEEP_PICTURES names a folder
shot() { [ -z "$keep" ] || picture "$keep/$1.png"; }

# write_settings LEFT-FOLDER RIGHT-FOLDER
write_settings() {
    mkdir -p "$(dirname "$settings_file")"
    printf 'Left=40\nTop=60\nWidth=1100\nHeight=600\nNumPanes=2\nPane0=%s\nPane1=%s\n' "$1" "$2" \
        >"$settings_file"
}

# start_norvane [FOLDER...]
start_norvane() {
    start_program "$norvane" "$@"
    expect "the main window did not come" window_shown Norvane
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

# The question has opened and takes answers: those that come sooner are dropped on purpose.
question_ready() {
    expect "no overwrite question" window_shown "Item Exists"
    sleep 0.8
}

# press_button X Y: clicks into the overwrite question, in its own coordinates
press_button() {
    xdotool mousemove --sync --window "$(window_id 'Item Exists')" "$1" "$2" click 1
}
