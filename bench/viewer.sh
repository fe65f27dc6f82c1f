# shellcheck shell=bash disable=SC2154,SC2034 # bench/run has set what is used here
# Sourced by bench/run: a large text and a large picture in a viewer.

# write_log FILE: 100 MB, a million lines
write_log() {
    python3 - "$1" <<'TEXT'
import sys
with open(sys.argv[1], "w") as out:
    for line in range(1000000):
        out.write(f"2026-01-01 00:00:00 host service[{line:7d}]: a message of some length about nothing at all " + "x" * (line % 29) + "\n")
TEXT
}

measure_viewer() {
    local text=$shm_play/log said round first=() whole=() end=() wrapped=() grown=()
    write_log "$text"
    for round in $(seq "$rounds"); do
        read -r -a said < <("$tools/viewer" "$text")
        first+=("${said[0]}")
        whole+=("${said[1]}")
        end+=("${said[2]}")
        wrapped+=("$(printf '%s\n' "${said[3]}" "${said[4]}" | sort -n | tail -n 1)")
        grown+=("$(ratio "${said[5]}" "$(($(stat -c %s "$text") / 1000))e-3")")
    done
    alone_row "text of $(($(stat -c %s "$text") / 1000000)) MB: first page, ms" first "<= 100"
    alone_row "whole, ms" whole "<= 500"
    alone_row "to its end, ms" end ""
    alone_row "wrapped or unwrapped there, ms" wrapped "<= 300"
    alone_row "memory, of its size" grown "< 1.3"
    rm "$text"
    measure_picture
}

# 50 megapixels
measure_picture() {
    local picture=$shm_play/picture.jpg round said own=() other=() smooth=() modes=()
    convert -seed 1 -size 8192x6104 plasma:red-blue -quality 90 "$picture"
    for round in $(seq "$rounds"); do
        read -r -a said < <("$tools/viewer" --image "$picture")
        own+=("${said[0]}")
        modes+=("${said[1]}")
        other+=("$("$tools/decode" "$picture")")
        smooth+=("$("$tools/decode" --smooth "$picture")")
    done
    compare_times "JPEG of 50 megapixels, ms" own "Qt, to nearest pixels" other "<= 1.2"
    compare_times "" own "Qt, smoothly, as ours" smooth "<= 1.2"
    alone_row "scale modes toggled, ms" modes "<= 100"
    rm "$picture"
}
