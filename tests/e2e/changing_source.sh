#!/usr/bin/env bash
# Sources that vanish, shrink or change their kind while they are copied.
. "$(dirname "$0")/lib.sh"

mkdir -p "$base/from/tree/gone too" "$base/to/tree"
for name in a b c d; do
    printf 'new %s\n' $name >"$base/from/tree/$name"
done
printf 'leaf\n' >"$base/from/tree/gone too/leaf"
printf 'old a\n' >"$base/to/tree/a"
printf 'elsewhere\n' >"$base/elsewhere"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane

# The question about a holds the copy when all names are read and none is copied.
key t F5
question_ready
rm -r "$base/from/tree/b" "$base/from/tree/gone too"
rm "$base/from/tree/c"
ln -s "$base/elsewhere" "$base/from/tree/c"
press_button 80 96
dismiss foo # of b
dismiss Err # of b, of c, where a link stands now, and of the folder
expect "the operation window stayed" window_gone Copy
[ "$(ls -A "$base/to/tree" | tr '\n' ' ')" = "a d " ] || fail "copied: $(ls -A "$base/to/tree")"
[ "$(cat "$base/to/tree/a")" = "new a" ] && [ "$(cat "$base/to/tree/d")" = "new d" ] ||
    fail "what stayed was not copied"

# A file that shrinks under the copy. It is stopped in the middle, however fast it is.
head -c 700000000 /dev/zero >"$base/from/shrinks"
key F2 s F5
end=$((SECONDS + 10))
until [ -s "$base/to/shrinks" ] || [ $SECONDS -ge $end ]; do :; done
kill -STOP "$program_pid"
truncate -s 10 "$base/from/shrinks"
kill -CONT "$program_pid"
dismiss Err
expect "the operation window stayed" window_gone Copy
[ "$(stat -c %s "$base/from/shrinks")" = 10 ] || fail "the source changed"

# A folder that vanishes while it is shown: there is nothing to copy in it, and the way up is open.
rm -r "$base/from"
key Home F2 F5 BackSpace e F5
arrived() { same_files "$base/elsewhere" "$base/to/elsewhere"; }
expect "the pane is of no use after its folder went" arrived
expect "the operation window stayed" window_gone Copy
quit_norvane
[ "$(setting Pane0)" = "$base" ] || fail "the pane is on $(setting Pane0)"
