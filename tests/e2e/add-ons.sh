#!/usr/bin/env bash
# The add-ons that come along, by real keys: an archive is made and taken out again.
. "$(dirname "$0")/lib.sh"

tests=$(realpath "$(dirname "$norvane")")
mkdir -p "$base/left/stuff/deep" "$base/right"
printf 'one\n' >"$base/left/stuff/one"
head -c 3000000 /dev/urandom >"$base/left/stuff/deep/big"
ln -s ../one "$base/left/stuff/deep/l"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane

# The names in the menu, from the top: letters choose them.
[ -e "$tests/add-ons/Tracker/MakeArchive" ] || fail "no add-ons beside the program"
run_add_on() { # NAME
    local step down
    reading_time # the one before has shown what it made a moment before its end
    down=$(find "$tests/add-ons/Tracker" -type f -printf '%f\n' | LC_ALL=C sort | grep -nx "$1" | cut -d: -f1)
    key F10 Left
    for ((step = 1; step < down; step++)); do key Down; done
    key Return
}

key s
key ctrl+k # the shortcut of MakeArchive
answerable MakeArchive
shot make-archive
key Escape
expect "the question stays" window_gone MakeArchive
expect "no focus" window_focused Norvane
[ ! -e "$base/left/stuff.tar.gz" ] || fail "an archive was made all the same"

run_add_on MakeArchive
answerable MakeArchive
key Tab Down Down Return # the format: a menu opens, and the next one is chosen
hold 300
shot make-archive-format
key Escape
hold 200
window_gone MakeArchive || key Escape
expect "the question stays" window_gone MakeArchive

run_add_on MakeArchive
answerable MakeArchive
key Return
expect "no archive" test -e "$base/left/stuff.tar.gz"
tar tzf "$base/left/stuff.tar.gz" >/dev/null || fail "tar cannot read it"
expect "no focus" window_focused Norvane

# Again: the first is not replaced, by another name of the person's.
run_add_on MakeArchive
answerable MakeArchive
key ctrl+a
xdotool type "other"
key Return
expect "no archive" test -e "$base/left/other.tar.gz"
expect "no focus" window_focused Norvane

reading_time # the row comes
key o
run_add_on Extract
expect "nothing was taken out" same_trees "$base/left/stuff" "$base/left/other/stuff"
expect "no focus" window_focused Norvane
# One whose only folder has its own name is not put into a second one.
rm -r "$base/left/stuff"
reading_time # the row goes
key Home s
run_add_on Extract
expect "nothing was taken out" same_trees "$base/left/stuff" "$base/left/other/stuff"

# Several files at once get other names, and theirs back.
mkdir "$base/right/many"
for name in b a c; do printf '%s\n' $name >"$base/right/many/$name.txt"; done
key ctrl+2 Home m Return
expect "never rests" still root
key plus
run_add_on RenameMany
expect "no window" window_focused RenameMany
reading_time
key ctrl+a
xdotool type "file [C][E]"
hold 500
shot rename-many
key Return
renamed() { [ "$(cat "$base/right/many/file 1.txt" "$base/right/many/file 3.txt" 2>/dev/null)" = a$'\n'c ]; }
expect "the names are $(ls "$base/right/many")" renamed
reading_time
shot rename-many-done
key Tab space # "Undo"
back() { [ "$(ls "$base/right/many" | tr '\n' ' ')" = "a.txt b.txt c.txt " ]; }
expect "the names are $(ls "$base/right/many")" back
key Escape
expect "the window stays" window_gone RenameMany
expect "no focus" window_focused Norvane
key ctrl+1

# A pasted sum marks its file, and all are saved as the tool checks them.
key ctrl+2 Home plus
run_add_on Checksums
expect "no window" window_focused Checksums
reading_time
xdotool type "$(sha256sum <"$base/right/many/b.txt" | cut -d' ' -f1)"
hold 500
shot checksums
key Tab Tab Tab space # "Save"
saved() { (cd "$base/right/many" && sha256sum --status -c SHA256SUMS && [ "$(wc -l <SHA256SUMS)" = 3 ]); }
expect "no sums are saved: $(ls "$base/right/many")" saved
key Escape
expect "the window stays" window_gone Checksums
expect "no focus" window_focused Norvane
key ctrl+1

# Something hostile is told, and harms nothing.
python3 - "$base/left/zz.tar" <<'END'
import io, sys, tarfile
with tarfile.open(sys.argv[1], "w") as tar:
    for name in ("../evil", "good"):
        entry = tarfile.TarInfo(name)
        entry.size = 1
        tar.addfile(entry, io.BytesIO(b"x"))
END
reading_time # the row comes
key z z
run_add_on Extract
answerable Extract
shot extract-hostile
dismiss Extract
[ ! -e "$base/left/evil" ] || fail "it led out of the folder"
[ "$(cat "$base/left/zz/good")" = x ] || fail "the good one is missing"
quit_norvane
