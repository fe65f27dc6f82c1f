#!/usr/bin/env bash
# Where the system lets no folder be watched: that is said once, what others do is seen all the same
# a little later, marks stay, and once there is a watch everything is as ever.
. "$(dirname "$0")/lib.sh"

gate=$base/gate
mkdir -p "$base/from" "$base/to"
for name in a b c; do
    printf '%s\n' $name >"$base/from/$name"
done
touch "$gate"
start_desktop 1280x800 wm || fail "no desktop"
launcher=(env "LD_PRELOAD=$(dirname "$norvane")/libhang.so" "NO_WATCH_WHILE=$gate")
write_settings "$base/from" "$base/to"
start_program "${launcher[@]}" "$norvane"
expect "nothing is said" window_shown Err
dismiss Err
stays 1000 window_gone Err || fail "it is said again"
expect "the main window did not get the focus back" window_focused Norvane
main=$(window_id Norvane)
shot unwatched

# The list as it is shown; the rest of the window says how many entries there are.
list=540x150+2+63
seen=$(look "$main" $list)
key b space
expect "the mark is not shown" looks_new "$seen" "$main" $list
wait_for 10 still "$main"
seen=$(look "$main" $list)
printf 'new\n' >"$base/from/bb"
expect "a new file is not seen" looks_new "$seen" "$main" $list
wait_for 10 still "$main"
shot unwatched-news
# The mark is where it was: what is marked is copied. Nothing tells the other pane, which looks, too.
key F5
expect "b is not copied" same_files "$base/from/b" "$base/to/b"
expect "the operation window stayed" window_gone Copy
[ ! -e "$base/to/bb" ] || fail "the mark went to another row"

# Going elsewhere says nothing again; the footer does.
key ctrl+2 BackSpace
stays 1000 window_gone Err || fail "it is said again"
key ctrl+1

# When there are watches again they are taken.
rm "$gate"
hold 4000
seen=$(look "$main" $list)
printf 'more\n' >"$base/from/aa"
wait_for 1 looks_new "$seen" "$main" $list || fail "no watch was taken once there was one"
shot watched-again
quit_norvane
