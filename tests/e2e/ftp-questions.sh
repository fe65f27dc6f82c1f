#!/usr/bin/env bash
# The overwrite question on the way to a server and back: each of its answers, given by keys, seen in
# every file of both sides.
# Usage: ftp-questions.sh NORVANE-BINARY upload|download
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/ftp_lib.sh"

way=${2:-upload}
mkdir -p "$base/here" "$base/empty" "$base/new" "$base/old"
# The pane that is chosen in, the title of the operation, and its two folders.
case $way in
upload) pane=1 title=Upload from=$base/here to=$served/pub ;;
download) pane=2 title=Download from=$served/pub to=$base/here ;;
*) fail "no such way: $way" ;;
esac

# The files of each letter are there on both sides. The target is certainly older than what would
# replace it, certainly newer, certainly older; a fourth is of the same day.
dates=(2021-01-01 2023-03-03 2021-01-01 2022-02-02)
prepare() {
    local letter number name
    for letter in a b c d e; do
        for number in 1 2 3 4; do
            name=$letter$number
            [ "$letter" = d ] || [ $number -lt 4 ] || continue
            head -c 30000 /dev/urandom >"$base/new/$name"
            head -c 20000 /dev/urandom >"$base/old/$name"
            cp "$base/new/$name" "$from"
            cp "$base/old/$name" "$to"
            touch -d "2022-02-02 12:00" "$from/$name"
            touch -d "${dates[number - 1]} 12:00" "$to/$name"
        done
    done
}

# begin LETTER COUNT: moves the files of that letter, up to the question about the first of them
begin() {
    local marks=()
    for ((; ${#marks[@]} < $2; )); do marks+=(Insert); done
    key "ctrl+$pane" minus Home "$1" "${marks[@]}" F5
    question_ready
}

# The lines of the question that tell which files it is about.
lines=440x74+0+0
question_over() { id_gone "$question" || looks_new "$lines_before" "$question" $lines; }
# answer KEY...
answer() {
    local question lines_before
    expect "$what: the question does not have the focus" window_focused "Item Exists"
    question=$(window_id "Item Exists")
    lines_before=$(look "$question" $lines)
    # Keys that answer count only some time after the last key.
    if [ $# -gt 1 ]; then
        key "${@:1:$#-1}"
        reading_time
    fi
    key "${@: -1}"
    expect "$what: the question stays" question_over
}

overwrite=(Return)
overwrite_all=(Tab space)
skip=(Tab Tab space)
cancel=(Tab Tab Tab space)
overwrite_older=(Tab Tab Tab Tab space)
skip_all=(Tab Tab Tab Tab Tab space)

# check LETTER STATE...: each target is new or old now, and no source is other than it was
check() {
    local number name letter=$1
    shift
    idle $title
    window_gone "Item Exists" || fail "$what: it asks on"
    for ((number = 1; number <= $#; number++)); do
        name=$letter$number
        same_files "$base/${!number}/$name" "$to/$name" || fail "$what: $name is not the ${!number} one"
    done
    same_trees "$base/new" "$from" || fail "$what: a source was changed"
    [ "$(ls -A "$to")" = "$(ls -A "$from")" ] || fail "$what: left over: $(ls -A "$to")"
}

prepare
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/here" "$base/empty"
serve
start_norvane
connect
expect "the server's folder is not shown" rows_shown

what="$way: Overwrite, then Skip, then Overwrite"
begin a 3
answer "${overwrite[@]}"
question_ready
answer "${skip[@]}"
question_ready
answer "${overwrite[@]}"
check a new old new

what="$way: Overwrite All"
begin b 3
answer "${overwrite_all[@]}"
check b new new new

what="$way: Skip All"
begin c 3
answer "${skip_all[@]}"
check c old old old

what="$way: Overwrite All Older"
begin d 4
answer "${overwrite_older[@]}"
dismiss Err # of the one whose age cannot be told
check d new old new old

what="$way: Overwrite, then Cancel"
begin e 3
answer "${overwrite[@]}"
question_ready
answer "${cancel[@]}"
check e new old old
quit_norvane

# Nothing of one letter's answers has reached another's files.
for name in a1:new a2:old a3:new b1:new b2:new b3:new c1:old c2:old c3:old d1:new d2:old d3:new d4:old \
    e1:new e2:old e3:old; do
    same_files "$base/${name#*:}/${name%:*}" "$to/${name%:*}" || fail "$way: at the end $name does not hold"
done
