#!/usr/bin/env bash
# Broken settings, folders that cannot be shown: a message or a safe refusal, and the program goes on.
. "$(dirname "$0")/lib.sh"

start_desktop 1280x800 wm || fail "no desktop"
mkdir -p "$base/fine" "$(dirname "$settings_file")"
printf 'a file\n' >"$base/file"

# Lines of 5,000 bytes, NUL bytes, no final line feed.
{
    printf 'Left=%05000d\n' 7
    printf 'Pane0=%s\n' "$(head -c 5000 /dev/zero | tr '\0' x)"
    printf 'Top\0=12\0\nWidth=\0\n\0\0\n'
    printf 'NumPanes=99999999999999999999'
} >"$settings_file"
start_norvane
shot broken-settings
quit_norvane
[ "$(setting NumPanes)" = 10 ] || fail "there were $(setting NumPanes) panes"
[ "$(setting Pane0)" = "$HOME" ] || fail "a path that is too long was used: $(setting Pane0)"

# A pane folder that is a file, and one that is gone.
write_settings "$base/file" "$base/gone"
start_program "$norvane"
expect "no window with folders that are none" window_shown Norvane
answerable Err
shot folder-is-a-file
dismiss Err
expect "the main window did not get the focus" window_focused Norvane
quit_norvane
[ "$(setting Pane0)" = "$HOME" ] || fail "the pane is not on the home folder but on $(setting Pane0)"

# Nothing that the program could keep its settings in: told once, and it ends all the same.
rm -r "$XDG_CONFIG_HOME/Norvane"
printf 'in the way\n' >"$XDG_CONFIG_HOME/Norvane"
start_norvane "$base/fine" "$base"
key ctrl+q
shot no-settings
dismiss Hey
expect "the program did not end" program_ended
wait "$program_pid" || fail "the program ended with status $?"
program_pid=
[ "$(cat "$XDG_CONFIG_HOME/Norvane")" = "in the way" ] || fail "a file was replaced by settings"

# A shown folder that is replaced by a file.
rm "$XDG_CONFIG_HOME/Norvane"
mkdir "$base/replaced"
write_settings "$base/replaced" "$base/fine"
start_norvane
rmdir "$base/replaced"
printf 'a file\n' >"$base/replaced"
key F2
dismiss Err
printf 'a note\n' >"$base/note"
key BackSpace n F5
arrived() { same_files "$base/note" "$base/fine/note"; }
expect "the pane is of no use after its folder went" arrived
expect "the operation window stayed" window_gone Copy
quit_norvane
