#!/usr/bin/env bash
# Keyboards of other scripts: every shortcut is where it is on the keyboard, and names are typed, with
# dead keys, too.
. "$(dirname "$0")/lib.sh"

command -v setxkbmap >/dev/null || {
    echo "skipped: no setxkbmap here"
    exit 77
}
mkdir -p "$base/left" "$base/right"
names=("مرحبا بالعالم.txt" "नमस्ते दुनिया" "你好世界" "こんにちは" "한국어" "שלום file" "Привет" "ไทย"
    "👩‍👩‍👧 emoji" $'e\xcc\x81 combined' "Ελληνικά")
for name in "${names[@]}"; do printf 'x\n' >"$base/left/$name"; done
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
start_norvane
expect "never rests" still root
shot languages

layout() { setxkbmap "$@" && hold 300; } # the program hears of it when its next key comes
control() { xdotool keydown Control_L key "$1" keyup Control_L; }
exists() { [ -e "$base/left/$1" ]; }

# By the keys' places: N is 57, A 38, G 42, E 26; D F and G give the name.
named() { # LAYOUT NAME
    layout -layout "$1"
    control 57
    expect "$1: Ctrl+N made nothing" exists "New Folder"
    hold 300
    control 38
    xdotool key 40 41 42 Return
    expect "$1: there is $(ls "$base/left")" exists "$2"
    control 42
    answerable GoTo
    key Escape
    expect "$1: no focus" window_focused Norvane
    rmdir "$base/left/$2"
}
named ru вап
named gr δφγ
named il גכע
named ara يبل
named ua вап

# A dead key with a letter
layout us
control 57
expect "Ctrl+N made nothing" exists "New Folder"
hold 300
layout -layout us -variant intl
control 38
xdotool key 48 26 57 Return # ' and e, then n
expect "the dead key gave $(ls "$base/left")" exists én
layout us
quit_norvane
