#!/usr/bin/env bash
# What others do in the folder is followed in the list: seen by copying what the list now offers.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from" "$base/to"
printf 'kept\n' >"$base/from/kept"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane

# copy_by_key LETTER NAME: type-ahead finds the row only when it is listed
copy_by_key() {
    key "$1" F5
    wait_for 5 same_files "$base/from/$2" "$base/to/$2"
}

printf 'created\n' >"$base/from/created"
copied_after_creation() { copy_by_key c created; }
expect "a created file is not listed" copied_after_creation
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane

mv "$base/from/created" "$base/from/renamed"
copied_after_rename() { copy_by_key r renamed; }
expect "a renamed file is not listed under its new name" copied_after_rename
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane

# An editor saves: a temporary file takes the place of the old one.
printf 'saved by an editor\n' >"$base/from/.kept.tmp"
mv "$base/from/.kept.tmp" "$base/from/kept"
rm -f "$base/to/kept"
copied_after_save() { copy_by_key k kept; }
expect "a file saved by temporary file and rename is not listed" copied_after_save
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane

# A removed file can no longer be found: the key keeps the selection where it was.
rm "$base/from/renamed" "$base/to/renamed"
printf 'later\n' >"$base/from/later"
# As long as the list has not followed, F5 copies the file that is selected: without a question.
copied_after_removal() {
    rm -f "$base/to/kept"
    copy_by_key l later
}
expect "a file created after a removal is not listed" copied_after_removal
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane
rm -f "$base/to/kept"
key k r F5
expect "the selection moved to a removed file" same_files "$base/from/kept" "$base/to/kept"
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane
[ ! -e "$base/to/renamed" ] || fail "a removed file was copied"
quit_norvane
