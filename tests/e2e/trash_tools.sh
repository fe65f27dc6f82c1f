#!/usr/bin/env bash
# Other tools of the desktop and ours share one Trash: theirs restore what we trashed, and a pane
# that shows the Trash shows what they put there.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/left" "$base/volume"
for name in plain another second by-volume; do
    printf 'of %s\n' $name >"$base/left/$name"
done
with_mounts "mount -t tmpfs none '$base/volume'; printf x >'$base/volume/theirs'; printf y >'$base/volume/more'"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$XDG_DATA_HOME/Trash/files"
mkdir -p "$XDG_DATA_HOME/Trash/files"
start_norvane
trash=$XDG_DATA_HOME/Trash
uid=$(in_mounts id -u)
in_trash() { [ -e "$trash/files/$1" ] && [ -e "$trash/info/$1.trashinfo" ]; }
gone() { [ ! -e "$trash/files/$1" ] && [ ! -e "$trash/info/$1.trashinfo" ]; }

# The desktop's own tool restores through a service that only a full desktop has; it starts on
# demand on a bus of the session's.
restores_by_address() { dbus-run-session -- gio list trash:/// >/dev/null 2>&1; }

what="restored by the desktop's tool"
key p F8
dismiss "Sir?"
expect "$what: it is not in the Trash" in_trash plain
expect "the operation window stayed" window_gone Delete
if restores_by_address; then
    dbus-run-session -- gio trash --restore trash:///plain 2>/dev/null || fail "$what: it refused"
    [ "$(cat "$base/left/plain")" = "of plain" ] || fail "$what: it is not back"
    gone plain || fail "$what: it is in the Trash still"
else
    echo "gio trash --restore cannot be tried here: $(gio trash --list 2>&1)"
    (cd "$base/left" && echo 0 | trash-restore >/dev/null 2>&1)
fi
[ "$(cat "$base/left/plain")" = "of plain" ] || fail "$what: it is not back"

# The rows of the right pane.
trash_pane=540x500+552+45
window=$(window_id Norvane)
# foreign COMMAND...: runs another tool that puts something into the folder of the right pane
foreign() {
    expect "$what: the pane goes on changing" still "$window" "$trash_pane"
    before=$(look "$window" "$trash_pane")
    "$@"
}
# The window takes in what was moved from elsewhere when it is activated the next time, and lists
# at once what is made in the folder itself.
activate_again() {
    key ctrl+g
    answerable GoTo
    key Escape
    expect "the prompt stays" window_gone GoTo
    expect "no focus" window_focused Norvane
    expect "$what: the pane shows the same as before" looks_new "$before" "$window" "$trash_pane"
}

# deletes_for_good NAME: the pane that shows the Trash lists it, under its first letter
deletes_for_good() {
    key ctrl+2 "${1:0:1}" F8
    dismiss "Sir?"
    expect "$what: it is still there" gone "$1"
    expect "the operation window stayed" window_gone Delete
}

what="trashed by trash-put"
foreign trash-put "$base/left/another"
in_trash another || fail "$what: not there"
activate_again
shot trash-put-seen
deletes_for_good another

what="trashed by gio"
foreign gio trash "$base/left/second" || fail "$what: it refused"
in_trash second || fail "$what: not there"
activate_again
deletes_for_good second
[ -z "$(ls -A "$trash/files")" ] || fail "$what: $(ls -A "$trash/files") is left"

# The same in the Trash of a volume.
what="trashed on a volume"
in_mounts trash-put "$base/volume/theirs"
[ -e "$(inside "$base/volume")/.Trash-$uid/files/theirs" ] || fail "$what: not in the volume's Trash"
before=$(look "$window" "$trash_pane")
key ctrl+2 ctrl+g
answerable GoTo
xdotool type --delay 15 -- "$base/volume/.Trash-$uid/files"
key Return
expect "$what: the prompt stays" window_gone GoTo
expect "$what: no focus" window_focused Norvane
expect "$what: the pane does not go there" looks_new "$before" "$window" "$trash_pane"
foreign in_mounts trash-put "$base/volume/more"
activate_again
key plus F8
dismiss "Sir?"
volume_emptied() {
    [ -z "$(in_mounts find "$base/volume/.Trash-$uid" -mindepth 2)" ]
}
expect "$what: $(in_mounts find "$base/volume" -mindepth 1)" volume_emptied
expect "the operation window stayed" window_gone Delete
quit_norvane
