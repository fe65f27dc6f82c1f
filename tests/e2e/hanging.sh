#!/usr/bin/env bash
# A folder on a file system that never answers holds up no window, no other pane, and no end of the program.
. "$(dirname "$0")/lib.sh"

hang_at=$base/hangs
gate=$base/gate
mkdir -p "$hang_at/below" "$base/from" "$base/to"
printf 'one\n' >"$base/from/one"
ln -s "$hang_at/below" "$base/from/zlink"
touch "$hang_at/below/inside" "$hang_at/file"
start_desktop 1280x800 wm || fail "no desktop"
launcher=(env "LD_PRELOAD=$(dirname "$norvane")/libhang.so" "HANG_AT=$hang_at" "HANG_WHILE=$gate")

now_ms() { echo $((${EPOCHREALTIME/[.,]/} / 1000)); }

# copies LETTER NAME: the left pane's entry comes to the right pane's folder
copies() {
    key ctrl+1
    copied() { key "$1" F5 && wait_for 2 same_files "$base/from/$2" "$base/to/$2"; }
    expect "$2 is not copied" copied "$1" "$2"
    expect "the operation window stayed" window_gone Copy
    expect "the main window did not get the focus back" window_focused Norvane
}

# A start with a saved folder there: the window comes at once, the other pane works, and it ends at once.
touch "$gate"
write_settings "$base/from" "$hang_at"
printf 'Left=40\nTop=60\nWidth=1100\nHeight=600\nNumPanes=3\nPane0=%s\nPane1=%s\nPane2=%s\n' \
    "$base/from" "$base/to" "$hang_at" >"$settings_file"
begin=$(now_ms)
start_norvane
took=$(($(now_ms) - begin))
[ $took -lt 1500 ] || fail "the window came after $took ms"
shot hanging-start
copies o one
key ctrl+q
wait_for 3 program_ended || fail "the program does not end"
wait "$program_pid" || fail "the program ended with status $?"
program_pid=

# What is gone into hangs while the rest goes on; when it answers its rows come by themselves.
rm "$gate"
write_settings "$base/from" "$base/to"
start_norvane
touch "$gate"
rm -f "$base/to/one"
key ctrl+2 ctrl+g
expect "no prompt" window_shown GoTo
answerable GoTo
xdotool type --delay 15 "$hang_at"
key Return
expect "the prompt stayed" window_gone GoTo
copies o one # the right pane still shows the folder that it showed
rm "$gate"
[ -e "$hang_at/one" ] && fail "copied to a folder that was not shown"
printf 'two\n' >"$base/from/two"
arrived() { key ctrl+1 t F5 && wait_for 2 same_files "$base/from/two" "$hang_at/two"; }
expect "the folder that answers at last is not shown" arrived
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane
quit_norvane

# A folder that stops answering while it is shown: keys in it, its icons, and what is read again.
for number in $(seq 200); do touch "$hang_at/many-$number"; done
write_settings "$base/from" "$hang_at"
rm -f "$base/to/one"
start_norvane
touch "$gate"
key ctrl+2 Next Next Next Down Down F2 space End Home
# A new folder, a new name and the question before a deletion ask its disk, too.
key F7 Down shift+F6
xdotool type --delay 15 renamed
key Return
key F8
answerable "Sir?"
key Escape
expect "the question stayed" window_gone "Sir?"
begin=$(now_ms)
key ctrl+1 ctrl+g
expect "no prompt" window_shown GoTo
took=$(($(now_ms) - begin))
[ $took -lt 1000 ] || fail "the prompt came after $took ms"
answerable GoTo
key Escape
expect "the prompt stayed" window_gone GoTo
mkdir "$base/other"
printf 'three\n' >"$base/other/xyz"
key ctrl+2 ctrl+g
answerable GoTo
xdotool type --delay 15 "$base/other"
key Return
expect "the prompt stayed" window_gone GoTo
copied() { key ctrl+2 x F5 && wait_for 2 same_files "$base/other/xyz" "$base/from/xyz"; }
hold 300 # what is shown until then may not be copied: that would wait for its disk
expect "a pane cannot leave a folder that does not answer" copied
expect "the operation window stayed" window_gone Copy
expect "the main window did not get the focus back" window_focused Norvane
key ctrl+q
wait_for 3 program_ended || fail "the program does not end"
wait "$program_pid" || fail "the program ended with status $?"
program_pid=
