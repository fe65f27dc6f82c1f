# shellcheck shell=bash disable=SC2154,SC2034 # bench/run has set what is used here
# Sourced by bench/run: how smoothly what a person keeps in motion follows, on a large screen.

# measure_frames COUNT: in a folder of so many entries, beside one of folders that a row is dragged over
measure_frames() {
    local count=$1 round way milliseconds=2500
    local folder=$shm_play/smooth-$count
    local -A ways=(
        ["Page Down held"]="held Next"
        ["Down held"]="held Down"
        ["the wheel"]="wheel 400 500"
        ["a column dragged"]="drag 60 54 300 0 60"
        ["a row dragged"]="carry 60 200 1240 400 60"
    )
    local -A frames=()
    fill "$folder" "$count"
    mkdir -p "$shm_play/folders"
    (cd "$shm_play/folders" && seq -f 'folder-%03.0f' 100 | xargs mkdir -p)
    stop_desktop
    start_desktop 1920x1080 wm || return 1
    for round in $(seq "$rounds"); do
        printf 'Left=1\nTop=20\nWidth=1917\nHeight=1055\nNumPanes=2\nPane0=%s\nPane1=%s\n' \
            "$folder" "$shm_play/folders" >"$XDG_CONFIG_HOME/Norvane/Norvane.pref"
        start_and_measure "$norvane"
        for way in "${!ways[@]}"; do
            key Home
            sleep 0.3
            # shellcheck disable=SC2086
            frames[$way]+="$("$tools/desk" frames Norvane "$milliseconds" ${ways[$way]})"$'\n'
        done
        end_program
    done
    stop_desktop
    start_desktop 1280x800 wm || return 1
    local own
    for way in "Page Down held" "Down held" "the wheel" "a column dragged" "a row dragged"; do
        mapfile -t own <<<"${frames[$way]%$'\n'}"
        row "frames/s in $count: $way" "$(median own)" "$(spread own)" "" "" "" "" "60"
    done
    rm -rf "$folder" "$shm_play/folders"
}

# measure_text_frames: in a text of 100 MB that a viewer shows on the whole screen
measure_text_frames() {
    local folder=$shm_play/text round way milliseconds=2500 own
    local -A ways=(
        ["Page Down held"]="held Next"
        ["Down held"]="held Down"
        ["the wheel"]="wheel 400 500"
    )
    local -A frames=()
    mkdir -p "$folder"
    write_log "$folder/log"
    stop_desktop
    start_desktop 1920x1080 wm || return 1
    settings "$folder" "$folder"
    for round in $(seq "$rounds"); do
        start_and_measure "$norvane"
        key l F3
        wait_for 5 window_focused log
        xdotool windowsize --sync "$(window_id log)" 1900 1000
        for way in "${!ways[@]}"; do
            key Home
            sleep 0.3
            # shellcheck disable=SC2086
            frames[$way]+="$("$tools/desk" frames log "$milliseconds" ${ways[$way]})"$'\n'
        done
        end_program
    done
    stop_desktop
    start_desktop 1280x800 wm || return 1
    for way in "Page Down held" "Down held" "the wheel"; do
        mapfile -t own <<<"${frames[$way]%$'\n'}"
        row "frames/s in a text: $way" "$(median own)" "$(spread own)" "" "" "" "" "60"
    done
    rm -rf "$folder"
}
