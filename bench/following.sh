# shellcheck shell=bash disable=SC2154,SC2034 # bench/run has set what is used here
# Sourced by bench/run: what a pane does while others change its folder.

# processor time of all threads that live, in milliseconds; the clock of the whole process is coarse
processor_ms() { cat "/proc/$1/task/"*/schedstat | awk '{sum += $1} END {print int(sum / 1000000)}'; }

measure_following() {
    local round own=() peer=() folder=$shm_play/follow
    mkdir -p "$folder" "$shm_play/empty"
    settings "$folder" "$shm_play/empty"
    start_and_measure "$norvane"
    local files
    files=$("$tools/desk" files "$folder" 100)
    row "a file of others shown, ms: 50th, 99th" "$(cut -d' ' -f1 <<<"$files")" "" "" \
        "$(cut -d' ' -f2,3 <<<"$files")" "" "" "<= 50"
    end_program
    for round in $(seq "$rounds"); do
        rm -rf "$folder" "$folder-2"
        mkdir -p "$folder" "$folder-2"
        start_and_measure "$norvane"
        own+=("$("$tools/desk" creations "$folder" 10000)")
        end_program
        peer+=("$("$tools/follow" beside "$folder-2" 10000)")
    done
    compare_times "10,000 creations shown, ms" own "bare reader with stat" peer "<= 1.3 + 300 ms"
    measure_changes rename "renamed"
    measure_changes remove "removed"
    rm -rf "$folder" "$folder-2"
}

# measure_changes COMMAND WORD: 20,000 and 40,000 listed entries, from outside
measure_changes() {
    local round count half=() whole=() before
    for round in $(seq "$rounds"); do
        for count in 20000 40000; do
            rm -rf "$folder"
            fill "$folder" "$count"
            start_and_measure "$norvane"
            before=$(processor_ms "$program_pid")
            "$tools/follow" "$1" "$folder" "$count"
            "$tools/desk" key Down 1500 >/dev/null
            if [ "$count" = 20000 ]; then
                half+=("$(awk -v a="$(processor_ms "$program_pid")" -v b="$before" 'BEGIN {print a - b}')")
            else
                whole+=("$(awk -v a="$(processor_ms "$program_pid")" -v b="$before" 'BEGIN {print a - b}')")
            fi
            end_program
        done
    done
    compare_times "40,000 entries $2, CPU ms" whole "20,000 of them" half "<= 2.3"
}

# A hundred thousand rows, with and without notices of a row that is out of sight; and ten such panes.
measure_many() {
    local folder=$shm_play/many keys pane toucher
    fill "$folder" 100000
    settings "$folder" "$shm_play/empty"
    mkdir -p "$shm_play/empty"
    start_and_measure "$norvane"
    keys=$("$tools/desk" keys Down 300)
    row "Down in 100,000, ms: 50th, 99th, 100th" "$(cut -d' ' -f1 <<<"$keys")" "" "" \
        "$(cut -d' ' -f2,3 <<<"$keys")" "" "" "99th <= 16, <= 50"
    "$tools/follow" touch "$folder" 1000 &
    toucher=$!
    keys=$("$tools/desk" keys Down 300)
    row "beside 1,000 notices a second" "$(cut -d' ' -f1 <<<"$keys")" "" "" \
        "$(cut -d' ' -f2,3 <<<"$keys")" "" "" "99th <= 16, <= 50"
    kill $toucher
    wait $toucher 2>/dev/null
    end_program
    {
        printf 'Left=20\nTop=40\nWidth=1180\nHeight=640\nNumPanes=10\n'
        for pane in 0 1 2 3 4 5 6 7 8 9; do
            printf 'Pane%d=%s\n' $pane "$folder"
        done
    } >"$XDG_CONFIG_HOME/Norvane/Norvane.pref"
    start_and_measure "$norvane"
    row "ten panes of 100,000 entries, MiB" "$(($(memory "$program_pid") / 1024))" "" "" "" "" "" "< 450"
    end_program
    rm -rf "$folder"
}
