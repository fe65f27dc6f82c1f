#!/usr/bin/env bash
# What the page "Extras" offers for F5 and F6: copies that keep times, permissions and links, and moves within a volume
# by renaming; switched on and off again by keys.
. "$(dirname "$0")/lib.sh"

title="Norvane Preferences Dialog"
mkdir -p "$base/from/folder/below" "$base/to" "$base/from/merged/own" "$base/to/merged/own"
printf 'plain\n' >"$base/from/a"
chmod 754 "$base/from/a"
touch -d '2001-02-03 04:05:06' "$base/from/a"
ln -s a "$base/from/link"
printf 'inside\n' >"$base/from/folder/below/inside"
ln -s ../../a "$base/from/folder/below/out"
ln -s inside "$base/from/folder/below/in"
printf 'new\n' >"$base/from/merged/own/new"
printf 'clash, new\n' >"$base/from/merged/own/clash"
printf 'clash, old\n' >"$base/to/merged/own/clash"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/from" "$base/to"
start_norvane
main=$(window_id Norvane)
expect "the panes are still being painted" still "$main"

stored() { [ "$(setting "$1")" = "$2" ]; }

# switch VALUE: the fourth and the fifth box of the last page
switch() {
    key ctrl+r
    expect "no preferences window" window_focused "$title"
    expect "the preferences window is still being painted" still "$(window_id "$title")"
    key ctrl+Next ctrl+Next Tab Tab Tab Tab space Tab space
    shot switched
    key Return
    expect "copies: the switch is not stored" stored KeepAllInCopies "$1"
    expect "moves: the switch is not stored" stored MoveByRenaming "$1"
    key Escape
    expect "the preferences window stays" window_gone "$title"
    expect "the main window has no focus" window_focused Norvane
}

node() { stat -c %i "$base/$1"; }
record() { stat -c '%a %y' "$base/$1" | cut -c1-23; }
gone() { [ ! -e "$base/from/$1" ]; }
there() { [ -e "$base/to/$1" ]; }
# The operation is over and the keys go to the panes again.
settled() {
    expect "the operation window stayed" window_gone Copy
    expect "the main window did not get the focus back" window_focused Norvane
}

switch 1

what="a copy"
key a F5
expect "$what: it did not come" there a
settled
[ "$(record to/a)" = "754 2001-02-03 04:05:06" ] || fail "$what: $(record to/a)"
key l F5
expect "$what: no link" there link
settled
[ "$(readlink "$base/to/link")" = a ] || fail "$what: the link is $(readlink "$base/to/link")"

what="a move"
node=$(node from/folder)
key f F6
expect "$what: the source stayed" gone folder
settled
[ "$(node to/folder)" = "$node" ] || fail "$what: another node"
[ "$(readlink "$base/to/folder/below/out")" = "$base/from/a" ] || fail "$what: a link out leads elsewhere"
[ "$(readlink "$base/to/folder/below/in")" = inside ] || fail "$what: a link within is another one"

what="a merge"
node=$(node from/merged/own/new)
key m F6
question_ready
press_button 80 96
expect "$what: the source stayed" gone merged
settled
[ "$(node to/merged/own/new)" = "$node" ] || fail "$what: another node"
[ "$(cat "$base/to/merged/own/clash")" = "clash, new" ] || fail "$what: not replaced"
[ "$(ls "$base/to/merged/own")" = $'clash\nnew' ] || fail "$what: $(ls "$base/to/merged/own")"

switch 0

what="all as before"
rm "$base/to/a"
key a F5
expect "$what: it did not come" there a
settled
[ "$(record to/a | cut -c5-8)" = 2001 ] && fail "$what: the time was kept"
quit_norvane
