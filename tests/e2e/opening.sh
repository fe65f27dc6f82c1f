#!/usr/bin/env bash
# Enter, a double click, F4 and the menu start the desktop's programs, with the files' names whole;
# what cannot be opened is told.
. "$(dirname "$0")/lib.sh"

recorder=$(realpath "$(dirname "$norvane")")/program-recorder
export RECORD_FOLDER=$base/records
mkdir -p "$RECORD_FOLDER" "$base/left/folder" "$base/right"

# program NAME COMMAND
program() {
    printf '[Desktop Entry]\nType=Application\nName=%s\nExec=%s\n' "$1" "$2" \
        >"$XDG_DATA_DIRS/applications/$1.desktop"
}
program text "$recorder text %f"
echo "StartupNotify=true" >>"$XDG_DATA_DIRS/applications/text.desktop"
program folders "$recorder folders %u"
program own "$(realpath "$norvane") %F"
program missing "/no/such/program %f"
program stays "$base/stays %f"
printf '#!/bin/sh\necho $$ >%s/stays.pid\nexec sleep 60\n' "$base" >"$base/stays"
chmod +x "$base/stays"
cat >"$XDG_DATA_DIRS/applications/mimeapps.list" <<END
[Default Applications]
text/plain=text.desktop
video/mp4=missing.desktop
application/pdf=stays.desktop
inode/directory=own.desktop
END
cat >"$XDG_DATA_DIRS/applications/mimeinfo.cache" <<END
[MIME Cache]
inode/directory=own.desktop;folders.desktop;
END

records() { find "$RECORD_FOLDER" -name '*.whole'; }
counts() { [ "$(records | wc -l)" = "$1" ]; }

# fact NAME: what the one program that was started wrote down
fact() { tr '\0\n' '\n\1' <"$(records)" | sed -n "s/^$1=//p" | tr '\1' '\n'; }

# started WHAT ARGUMENT: one program was, with these two arguments, and nothing else of this one's
started() {
    expect "$what: no program was started" counts 1
    [ "$(fact argument)" = "$recorder"$'\n'"$1"$'\n'"$2" ] || fail "$what: it got $(fact argument)"
    [ "$(fact blocked)" = 0000000000000000 ] || fail "$what: signals are blocked: $(fact blocked)"
    [ "$(fact descriptors)" = "0 1 2 " ] || fail "$what: it has descriptors: $(fact descriptors)"
    [ "$(fact limit)" = "$first_limit" ] || fail "$what: its descriptor limit is $(fact limit)"
    [ "$(fact session)" = "$(fact process)" ] || fail "$what: it has no session of its own"
    rm -f "$RECORD_FOLDER"/*
}

# no_zombies: nothing that ended waits for the program
no_zombies() {
    local status children
    children=$(grep -lE "^PPid:[[:space:]]*$program_pid\$" /proc/[0-9]*/status 2>/dev/null)
    for status in $children; do
        ! grep -q '^State:[[:space:]]*Z' "$status" 2>/dev/null || return 1
    done
}

printf 'text\n' >"$base/left/a plain one.txt"
printf 'text\n' >"$base/left/"$'b\nline.txt'
printf 'text\n' >"$base/left/"$'c\xff%20.txt'
printf 'text\n' >"$base/left/-d.txt"
printf 'film\n' >"$base/left/film.mp4"
ln -s "a plain one.txt" "$base/left/l"
ln -s nowhere "$base/left/n"
mkfifo "$base/left/pipe"
printf 'paper\n' >"$base/left/s.pdf"
cp "$recorder" "$base/left/tool"
ulimit -S -n $(($(ulimit -H -n) / 2))
first_limit=$(ulimit -S -n)

start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane

# The desktop hears of it before, and the program is told which start it is and when it was asked for.
what="Enter"
xev -root -event property >"$base/notices" &
xev_pid=$!
listens() { xprop -root -f LISTENS 8s -set LISTENS 1 && grep -q LISTENS "$base/notices"; }
expect "nobody listens" listens
key a Return
expect "no program was started" counts 1
kill $xev_pid
start=$(fact variable | sed -n 's/^DESKTOP_STARTUP_ID=//p')
[[ $start =~ ^norvane-$program_pid-0-.*_TIME[1-9][0-9]*$ ]] || fail "the program knows of its start: $start"
grep -q _NET_STARTUP_INFO_BEGIN "$base/notices" || fail "the desktop heard nothing"
started text "$base/left/a plain one.txt"
what="a line break"
key b Return
started text "$base/left/"$'b\nline.txt'
what="bytes that are no letters"
key c Return
started text "$base/left/"$'c\xff%20.txt'
what="a link"
key l Return
started text "$base/left/a plain one.txt"
what="the menu"
key b ctrl+o
started text "$base/left/"$'b\nline.txt'
what="F4"
key f f F4
started text "$base/left/film.mp4"

what="a program"
key t Return
expect "$what: it was not run" counts 1
[ "$(fact argument)" = "$base/left/tool" ] || fail "$what: it got $(fact argument)"
[ "$(fact folder)" = "$base/left" ] || fail "$what: it began in $(fact folder)"
rm -f "$RECORD_FOLDER"/*

what="a double click"
key Home
# The row of the name with a dash: the first file.
xdotool mousemove --sync --window "$(window_id Norvane)" 120 158 \
    click --repeat 2 --delay 60 1
started text "$base/left/-d.txt"

what="Open Tracker"
key ctrl+t
started folders "$base/left"

what="a program that is not installed"
key f f Return
expect "$what: no list of programs" window_focused "Open With"
expect "$what: the list stays empty" painted "Open With"
shot open-with
key Escape
expect "$what: the list stays" window_gone "Open With"
expect "$what: no focus" window_focused Norvane
# The last of the list, with Enter.
key Return
expect "$what: no list of programs" window_focused "Open With"
key End Return
started text "$base/left/film.mp4"
expect "$what: the list stays" window_gone "Open With"
expect "$what: no focus" window_focused Norvane
# Kept for all files of the kind: the box is two steps behind the list.
key Return
expect "$what: no list of programs" window_focused "Open With"
key End Tab space Return
started text "$base/left/film.mp4"
expect "$what: no focus" window_focused Norvane
key Return
started text "$base/left/film.mp4"
grep -q '^video/mp4=text.desktop' "$XDG_CONFIG_HOME/mimeapps.list" || fail "$what: the choice is not kept"

what="Open With of the row's menu"
key a shift+F10
expect "$what: no menu" menu_open
key o Return
expect "$what: no list of programs" window_focused "Open With"
shot open-with-menu
key Down Return # another one than Enter would start
started folders "$base/left/a plain one.txt"
expect "$what: the list stays" window_gone "Open With"
expect "$what: no focus" window_focused Norvane

what="a broken link"
key n Return
dismiss Err
expect "$what: no focus" window_focused Norvane

# Keys wait for each other: had this one started something, it would be there with the next.
what="a pipe"
key p Return a Return
started text "$base/left/a plain one.txt"
window_gone Err || fail "$what: an alert"
expect "something that ended was left to wait for" no_zombies

what="the end"
key s Return
expect "$what: no program was started" test -s "$base/stays.pid"
stays_pid=$(cat "$base/stays.pid")
quit_norvane
is_alive=no
kill -0 "$stays_pid" && is_alive=yes
kill "$stays_pid"
[ $is_alive = yes ] || fail "$what: what was started ended with the program"
