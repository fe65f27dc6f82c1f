#!/usr/bin/env bash
# A volume that is unmounted while panes show it: they go home, the others stay.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/volume" "$base/other"
printf 'left here\n' >"$base/volume/beneath"
with_mounts "mount -t tmpfs none '$base/volume'; mkdir -p '$base/volume/deep/inside'"
start_desktop 1280x800 wm || fail "no desktop"

# three_panes PATH PATH PATH: focuses the first
three_panes() {
    mkdir -p "$(dirname "$settings_file")"
    printf 'Left=40\nTop=60\nWidth=1100\nHeight=600\nNumPanes=3\n' >"$settings_file"
    printf 'Pane0=%s\nPane1=%s\nPane2=%s\n' "$@" >>"$settings_file"
}
is_free() { in_mounts umount "$base/volume"; }
# Where each pane shows its path.
paths=(340x18+4+23 340x18+372+23 340x18+740+23)
remember_paths() {
    window=$(window_id Norvane)
    before=()
    local path
    for path in "${paths[@]}"; do
        before+=("$(look "$window" "$path")")
    done
}
# moved_on PANE: it shows another path than before
moved_on() { looks_new "${before[$1]}" "$window" "${paths[$1]}"; }

what="unmounted from outside"
three_panes "$base/volume" "$base/volume/deep/inside" "$base/other"
start_norvane
shot volume-shown
remember_paths
# Folders that were just read are held open for some seconds.
expect "$what: the panes keep it busy" is_free
expect "$what: the pane at the top shows the same as before" moved_on 0
expect "$what: the pane inside shows the same as before" moved_on 1
moved_on 2 && fail "$what: the other pane moved"
shot volume-gone
# The folder that F7 makes tells which one is shown now.
key F7
expect "$what: the first pane is elsewhere" test -d "$HOME/New Folder"
key Escape
[ -z "$(in_mounts find "$base/volume" -name 'New*')" ] || fail "$what: it shows what lay beneath"
quit_norvane
[ "$(setting Pane0)" = "$HOME" ] || fail "$what: the pane at the top shows $(setting Pane0)"
[ "$(setting Pane1)" = "$HOME" ] || fail "$what: the pane inside shows $(setting Pane1)"
[ "$(setting Pane2)" = "$base/other" ] || fail "$what: the other pane shows $(setting Pane2)"

# Where a program keeps a folder busy it is let go lazily; the panes follow all the same.
what="detached while it is in use"
three_panes "$base/other" "$base/volume/deep" "$base/volume"
start_norvane
remember_paths
in_mounts umount --lazy "$base/volume" || fail "$what: not unmounted"
expect "$what: the pane inside shows the same as before" moved_on 1
expect "$what: the pane at the top shows the same as before" moved_on 2
quit_norvane
[ "$(setting Pane0)" = "$base/other" ] || fail "$what: the other pane shows $(setting Pane0)"
[ "$(setting Pane1)" = "$HOME" ] || fail "$what: the pane inside shows $(setting Pane1)"
[ "$(setting Pane2)" = "$HOME" ] || fail "$what: the pane at the top shows $(setting Pane2)"
