#!/usr/bin/env bash
# Broken settings, folders that cannot be shown: a message or a safe refusal, and the program goes on.
. "$(dirname "$0")/lib.sh"

start_desktop 1280x800 wm || fail "no desktop"
mkdir -p "$base/fine" "$(dirname "$settings_file")"
printf 'a file\n' >"$base/file"

dismiss_alerts() {
    local title
    for title in Err foo Foo Hey; do
        while window_shown $title; do
            sleep 0.9
            key Return
            wait_for 3 window_gone $title || fail "the alert $title stays"
        done
    done
}

# Lines of 5,000 bytes, NUL bytes, no final line feed.
{
    printf 'Left=%05000d\n' 7
    printf 'Pane0=%s\n' "$(head -c 5000 /dev/zero | tr '\0' x)"
    printf 'Top\0=12\0\nWidth=\0\n\0\0\n'
    printf 'NumPanes=99999999999999999999'
} >"$settings_file"
start_program "$norvane"
expect "no window with broken settings" window_shown Norvane
sleep 1
dismiss_alerts
shot broken-settings
quit_norvane

# A pane folder that is a file, and one that is gone.
write_settings "$base/file" "$base/gone"
start_program "$norvane"
expect "no window with folders that are none" window_shown Norvane
expect "nobody was told of the folder that is a file" window_shown Err
sleep 1
shot folder-is-a-file
dismiss_alerts
quit_norvane
[ "$(setting Pane0)" = "$HOME" ] || fail "the pane is not on the home folder but on $(setting Pane0)"

# A shown folder that vanishes.
mkdir "$base/vanishing"
touch "$base/vanishing/x"
write_settings "$base/vanishing" "$base/fine"
start_norvane
rm -rf "$base/vanishing"
sleep 0.5
key F2 x F5
sleep 0.5
dismiss_alerts
quit_norvane
