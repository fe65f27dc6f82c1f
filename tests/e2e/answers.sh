#!/usr/bin/env bash
# Each of the six answers of the overwrite question, given by mouse or by keys.
. "$(dirname "$0")/lib.sh"

start_desktop 1280x800 wm || fail "no desktop"

# Three clashes: a's target is older than its source, b's newer, c's older again.
prepare() {
    rm -rf "$base/from" "$base/to"
    mkdir -p "$base/from" "$base/to"
    local name
    for name in a b c; do
        printf 'new %s\n' $name >"$base/from/$name"
        printf 'old %s, longer\n' $name >"$base/to/$name"
        touch -d 2022-02-02 "$base/from/$name"
        touch -d 2021-01-01 "$base/to/$name"
    done
    touch -d 2023-03-03 "$base/to/b"
    write_settings "$base/from" "$base/to"
    start_norvane
    key plus F5
    question_ready
}

# check A B C: which of the targets is new now, which still old
check() {
    expect "the operation window stayed after $answer" window_gone Copy
    expect "the question stayed after $answer" window_gone "Item Exists"
    local name expected
    for name in a b c; do
        expected=$1
        shift
        case $(cat "$base/to/$name") in
        "$expected "*) ;;
        *) fail "$answer: $name holds '$(cat "$base/to/$name")', not the $expected text" ;;
        esac
    done
    [ "$(cat "$base/from/a")" = "new a" ] || fail "$answer changed a source"
    expect "the main window did not get the focus back" window_focused Norvane
    quit_norvane
}

answer="Overwrite, then Skip, then Overwrite"
prepare
shot question
key Return
question_ready
press_button 370 96
question_ready
press_button 80 96
check new old new

answer="Overwrite All"
prepare
press_button 225 96
check new new new

answer="Overwrite All Older"
prepare
press_button 225 136
check new old new

answer="Skip All"
prepare
press_button 370 136
check old old old

answer="Overwrite, then Cancel"
prepare
press_button 80 96
question_ready
press_button 80 136
check new old old

answer="Overwrite All by keys"
prepare
key Tab
reading_time # keys that answer count only some time after the last key
key space
check new new new
