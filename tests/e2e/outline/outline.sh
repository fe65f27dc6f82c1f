# shellcheck shell=bash
# The header strip and the rows of an outline by real mouse and keys.
# Usage: outline.sh OUTLINE-PROGRAM SCALE
. "$(dirname "${BASH_SOURCE[0]}")/../lib.sh"

scale=$2
export QT_SCALE_FACTOR=$scale
said=$base/said

start_desktop 1280x1024 wm || fail "no desktop"
"$norvane" >"$said" &
program_pid=$!
expect "the window did not come" window_shown Outline
expect "the window did not get the focus" window_focused Outline
window=$(window_id Outline)
expect "the window stays empty" painted Outline

# says TEXT: the newest line has it
says() { tail -n 1 "$said" | grep -qF -- "$1"; }
shows() { expect "$what: not \"$1\" but \"$(tail -n 1 "$said")\"" says "$1"; }
# at X Y: in units of the window
at() { xdotool mousemove --sync --window "$window" $(($1 * scale)) $(($2 * scale)); }
press() { xdotool mousedown 1; }
release() { xdotool mouseup 1; }
click() { at "$1" "$2"; press; release; }

strip=9
row() { echo $((30 + $1 * 19)); } # its middle
arrow=13
name=60
count=210
kind=290

what="at first"
shows "rows Orchard Pear Apple Kitchen Herbs Beans Bench; keys; order 0:20 1:160 2:60 3:100; selected nothing"
shot "outline-$scale"

what="a click on an arrow"
click $arrow "$(row 0)"
shows "rows Orchard Kitchen Herbs Beans Bench; keys"
click $arrow "$(row 0)"
shows "rows Orchard Pear Apple Kitchen Herbs Beans Bench; keys"
click $((arrow + 20)) "$(row 4)"
shows "rows Orchard Pear Apple Kitchen Herbs Thyme Basil Beans Bench; keys"
shot "outline-$scale-expanded"

what="keys"
click $((name + 40)) "$(row 6)"
shows "selected Basil"
key Left
shows "selected Herbs"
key Left
shows "rows Orchard Pear Apple Kitchen Herbs Beans Bench;"
key Left
shows "selected Kitchen"
key Left
shows "rows Orchard Pear Apple Kitchen Bench;"
key Right
shows "rows Orchard Pear Apple Kitchen Herbs Beans Bench;"
key Right
shows "selected Herbs"
key Down
shows "selected Beans"

what="sorting"
click $name $strip
shows "rows Bench Kitchen Beans Herbs Orchard Apple Pear; keys 1a;"
shows "selected Beans"
shot "outline-$scale-sorted"
click $name $strip
shows "rows Orchard Pear Apple Kitchen Herbs Beans Bench; keys 1d;"
click $name $strip
shows "keys;"
click $count $strip
shows "rows Bench Orchard Pear Apple Kitchen Herbs Beans; keys 2a;"
at $kind $strip
xdotool keydown shift
press
release
xdotool keyup shift
shows "keys 2a 3a;"

what="a column dragged"
at $kind $strip
press
at 200 $strip
at 120 $strip
shot "outline-$scale-drag"
at 90 $strip
at 60 $strip
release
shows "order 3:100 0:20 1:160 2:60;"
shot "outline-$scale-dropped"

what="a drag that is given up"
at 50 $strip
press
at 200 $strip
at 260 $strip
key Escape
release
shows "order 3:100 0:20 1:160 2:60;"
stays 200 says "order 3:100 0:20 1:160 2:60;" || fail "$what: it was dropped"

what="an edge dragged"
at 101 $strip
press
at 130 $strip
at 151 $strip
shot "outline-$scale-resize"
shows "order 3:150 0:20 1:160 2:60;"
at 3 $strip
release
shows "order 3:20 0:20 1:160 2:60;"

xdotool windowclose "$window"
kill "$program_pid"
expect "the program stays" program_ended
program_pid=
