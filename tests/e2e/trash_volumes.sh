#!/usr/bin/env bash
# F6, F8 and Delete between two volumes, their own Trashes, and Empty Trash.
. "$(dirname "$0")/lib.sh"

odd=$'new\nline' bad=$'bad \xff name' percent='two words %41%'
mkdir -p "$base/one" "$base/two"
cat >"$base/fill" <<'FILL'
mkdir -p tree/below
for name in plain "two words %41%" -dash "$(printf 'new\nline')" "$(printf 'bad \377 name')" tree/below/deep; do
    printf 'of %s\n' "$name" >"./$name"
done
ln -s below/deep tree/link
chmod 640 plain
touch -d '2001-02-03 04:05:06' plain
mkdir mixed
mkfifo mixed/pipe
printf 'kept\n' >mixed/file
FILL
with_mounts "mount -t tmpfs none '$base/one'; mount -t tmpfs none '$base/two'
    (cd '$base/one'; sh '$base/fill')"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/one" "$base/two"
start_norvane
uid=$(in_mounts id -u)
one=$(inside "$base/one")
two=$(inside "$base/two")
trash=$XDG_DATA_HOME/Trash
names_of() { (cd "$1" && find . -mindepth 1 ! -path './.Trash*' -print0 | sort -z | tr '\0' '|'); }
gone() { [ ! -e "$1" ] && [ ! -L "$1" ]; }
operation_over() { window_gone Delete && window_gone Copy; }

what="F6 to the other volume, all marked but the folder that holds a pipe"
all=$(names_of "$one")
key plus m space F6 # the folder's mark goes again
expect "$what: the names stayed" gone "$one/plain"
expect "$what: the operation goes on" operation_over
[ "$(names_of "$one")" = "./mixed|./mixed/file|./mixed/pipe|" ] || fail "$what: left $(names_of "$one")"
[ "$(names_of "$two")" = "${all/.\/mixed|.\/mixed\/file|.\/mixed\/pipe|/}" ] ||
    fail "$what: arrived $(names_of "$two")"
[ "$(stat -c '%a %y' "$two/plain" | cut -c1-23)" = "640 2001-02-03 04:05:06" ] ||
    fail "$what: $(stat -c '%a %y' "$two/plain")"
[ "$(readlink "$two/tree/link")" = below/deep ] || fail "$what: the link became another one"
[ "$(cat "$two/$bad")" = "of $bad" ] || fail "$what: the name that is not UTF-8"

what="F8 on another volume than the home folder's"
key Tab plus F8
dismiss "Sir?"
in_trash() { [ -e "$trash/files/plain" ] && [ -z "$(names_of "$two")" ]; }
expect "$what: left $(names_of "$two")" in_trash
expect "$what: the operation goes on" operation_over
[ "$(names_of "$trash/files")" = "${all/.\/mixed|.\/mixed\/file|.\/mixed\/pipe|/}" ] ||
    fail "$what: in the Trash $(names_of "$trash/files")"
grep -qx "Path=$base/two/two%20words%20%2541%25" "$trash/info/$percent.trashinfo" ||
    fail "$what: the record of '$percent'"
[ ! -e "$two/.Trash-$uid" ] || fail "$what: the volume got a Trash of its own"

what="restoring onto the volume"
for _ in 1 2 3 4 5 6; do
    in_mounts sh -c "cd '$base/two' && echo 0 | trash-restore" >/dev/null 2>&1
done
for name in plain "$percent" -dash "$odd" tree/below/deep; do
    [ "$(cat "$two/$name")" = "of $name" ] || fail "$what: '$name' is not back"
done
# That tool makes U+FFFD of bytes that are not UTF-8; the record had them all.
[ "$(cat "$two"/bad*name)" = "of $bad" ] || fail "$what: the name that is not UTF-8 is not back"
[ -z "$(find "$trash/files" "$trash/info" -mindepth 1)" ] || fail "$what: left $(ls -A "$trash/files")"

# What cannot be copied whole is moved, into the Trash of its own volume.
# trash_mixed WHERE: deletes the folder that holds a pipe, which is to arrive in WHERE
trash_mixed() {
    key ctrl+1 m F8
    dismiss "Sir?"
    dismiss Err
    expect "$what: the operation goes on" operation_over
    gone "$one/mixed" || fail "$what: it stays"
    [ -p "$one/$1/files/mixed/pipe" ] && [ "$(cat "$one/$1/files/mixed/file")" = kept ] ||
        fail "$what: it is not in $1: $(find "$one")"
    [ "$(sed -n 's/^Path=//p' "$one/$1/info/mixed.trashinfo")" = mixed ] ||
        fail "$what: $(cat "$one/$1/info/mixed.trashinfo")"
    [ "$(stat -c %a "$one/$1")" = 700 ] || fail "$what: others may look into it"
}
restore_mixed() {
    in_mounts sh -c "cd '$base/one' && echo 0 | trash-restore" >/dev/null 2>&1
    [ -p "$one/mixed/pipe" ] || fail "$what: not restored"
    rm -rf "$one"/.Trash*
    key F2
}
what="its own Trash"
trash_mixed ".Trash-$uid"
restore_mixed

what="the Trash that all users share"
mkdir "$one/.Trash" && chmod 1777 "$one/.Trash"
trash_mixed ".Trash/$uid"
restore_mixed

what="a shared Trash that is not sticky"
mkdir "$one/.Trash" && chmod 777 "$one/.Trash"
trash_mixed ".Trash-$uid"
[ -z "$(ls -A "$one/.Trash")" ] || fail "$what: it was used"
restore_mixed

what="a shared Trash that is a link"
mkdir "$one/elsewhere" && chmod 1777 "$one/elsewhere"
ln -s elsewhere "$one/.Trash"
trash_mixed ".Trash-$uid"
[ -z "$(ls -A "$one/elsewhere")" ] || fail "$what: it was used"
restore_mixed

# refuses WHAT: it stays in its place, whole
refuses() {
    what=$1
    key ctrl+1 m F8
    dismiss "Sir?"
    answerable Err
    shot "trash-$2"
    dismiss Err
    expect "$what: the operation goes on" operation_over
    [ -p "$one/mixed/pipe" ] && [ -f "$one/mixed/file" ] || fail "$what: it left its place"
    [ -z "$(find "$one/elsewhere" "$trash/files" -mindepth 1)" ] || fail "$what: a part went elsewhere"
    rm -rf "$one"/.Trash*
}
ln -s elsewhere "$one/.Trash-$uid"
refuses "a private Trash that is a link" link
mkdir "$one/.Trash-$uid" && chmod 777 "$one/.Trash-$uid"
refuses "a private Trash that others may write in" open
printf 'in the way\n' >"$one/.Trash-$uid"
refuses "a file in the place of the Trash" file

what="Delete in a volume's Trash"
trash_mixed ".Trash-$uid"
mkdir -p "$trash/files/old" "$trash/info"
printf '[Trash Info]\nPath=/old\nDeletionDate=2026-01-01T00:00:00\n' >"$trash/info/old.trashinfo"
quit_norvane
# The mounts went with the program: the next one has a volume and a Trash of its own.
with_mounts "mount -t tmpfs none '$base/one'; (cd '$base/one'
    mkdir -m 700 -p .Trash-$uid/files/mixed .Trash-$uid/info; mkfifo .Trash-$uid/files/mixed/pipe
    printf x >.Trash-$uid/files/other
    for name in mixed other; do
        printf '[Trash Info]\nPath=%s\nDeletionDate=2026-01-01T00:00:00\n' \$name >.Trash-$uid/info/\$name.trashinfo
    done; chmod 700 .Trash-$uid)"
write_settings "$base/one/.Trash-$uid/files" "$base/two"
start_norvane
one=$(inside "$base/one")
key m Delete
answerable "Sir?"
shot trash-volume-for-good
dismiss "Sir?"
expect "$what: it is still there" gone "$one/.Trash-$uid/files/mixed"
expect "$what: the operation goes on" operation_over
gone "$one/.Trash-$uid/info/mixed.trashinfo" || fail "$what: its record stays"
[ -e "$trash/files/old" ] && [ ! -e "$trash/files/mixed" ] || fail "$what: it went into the home Trash"

# The command empties the Trash of the home folder, without a question; that of a volume is emptied
# where it is shown.
what="Empty Trash"
key F10 e Return
emptied() { [ -z "$(ls -A "$trash/files")" ] && [ -z "$(ls -A "$trash/info")" ]; }
expect "$what: left $(ls -A "$trash/files" "$trash/info")" emptied
[ -e "$one/.Trash-$uid/files/other" ] || fail "$what: what lies on another volume is gone"
expect "$what: no focus" window_focused Norvane
key plus F8
dismiss "Sir?"
volume_emptied() { [ -z "$(ls -A "$one/.Trash-$uid/files")" ] && [ -z "$(ls -A "$one/.Trash-$uid/info")" ]; }
expect "$what: left on the volume $(ls -A "$one/.Trash-$uid/files")" volume_emptied
expect "$what: the operation goes on" operation_over
quit_norvane
