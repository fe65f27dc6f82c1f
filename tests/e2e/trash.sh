#!/usr/bin/env bash
# F8 and Delete: the question, the Trash and its records, other tools that restore, deletion for good.
. "$(dirname "$0")/lib.sh"

odd=$'new\nline' bad=$'bad \xff name' spaced=$'two words %41'
mkdir -p "$base/left/folder" "$base/right"
for name in plain "$odd" "$bad" "$spaced" -dash; do
    printf 'of %s\n' "$name" >"$base/left/$name"
done
printf 'inside\n' >"$base/left/folder/inside"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane
trash=$XDG_DATA_HOME/Trash
in_trash() { [ -e "$trash/files/$1" ] && [ -e "$trash/info/$1.trashinfo" ]; }
gone() { [ ! -e "$base/left/$1" ]; }

what="Cancel"
key p F8
answerable "Sir?"
shot trash-question
key Escape
expect "$what: the question stays" window_gone "Sir?"
[ -e "$base/left/plain" ] || fail "$what: it is gone all the same"
expect "$what: no focus" window_focused Norvane

what="F8"
key p F8
dismiss "Sir?"
expect "$what: it is not in the Trash" in_trash plain
gone plain || fail "$what: it is still there"
expect "the operation window stayed" window_gone Delete
expect "$what: no focus" window_focused Norvane

what="Delete, all marked"
key plus Delete
dismiss "Sir?"
for name in "$odd" "$bad" "$spaced" -dash folder; do
    expect "$what: '$name' is not in the Trash" in_trash "$name"
done
expect "the operation window stayed" window_gone Delete
[ -z "$(ls -A "$base/left")" ] || fail "$what: $(ls -A "$base/left") stayed"

what="the same name again"
printf 'second\n' >"$base/left/plain"
key F2 p F8
dismiss "Sir?"
expect "$what: no other name" in_trash "plain copy"
expect "the operation window stayed" window_gone Delete

# Any other tool of the desktop brings everything back where it was.
what="restoring"
grep -qx "Path=$base/left/bad%20%FF%20name" "$trash/info/$bad.trashinfo" ||
    fail "$what: the record of '$bad'"
for _ in 1 2 3 4 5 6 7; do
    rm -f "$base/left/plain" # two are to come back under this name
    (cd "$base/left" && echo 0 | trash-restore >/dev/null 2>&1)
done
for name in "$odd" "$spaced" -dash; do
    [ "$(cat "$base/left/$name")" = "of $name" ] || fail "$what: '$name' is not back"
done
# That tool makes U+FFFD of bytes that are not UTF-8; the record had them all.
[ "$(cat "$base"/left/bad*name)" = "of $bad" ] || fail "$what: the name that is not UTF-8 is not back"
[ "$(cat "$base/left/folder/inside")" = inside ] || fail "$what: the folder is not back"

# What another tool trashes is seen in the pane that shows the Trash.
what="in the Trash"
quit_norvane
rm -rf "$trash"
mkdir -p "$trash/files"
printf 'by another\n' >"$base/left/foreign"
write_settings "$trash/files" "$base/right"
start_norvane
trash-put "$base/left/foreign"
# What is moved in from elsewhere is listed at the next listing.
key F2 f F8
answerable "Sir?"
shot trash-for-good
key Return
expect "$what: the question stays" window_gone "Sir?"
emptied() { [ -z "$(ls -A "$trash/files")" ] && [ -z "$(ls -A "$trash/info")" ]; }
expect "$what: it is still there: $(ls -A "$trash/files" "$trash/info")" emptied
expect "the operation window stayed" window_gone Delete
quit_norvane
