# shellcheck shell=bash disable=SC2154,SC2034 # bench/run has set what is used here
# Sourced by bench/run: preferences that are applied to ten panes.

# measure_preferences COUNT: of so many files each
measure_preferences() {
    local folder=$shm_play/files said round font=() units=() sorting=() dots=() dates=()
    python3 - "$folder" "$1" <<'FILES'
import os, sys
os.mkdir(sys.argv[1])
for number in range(int(sys.argv[2])):
    open(f"{sys.argv[1]}/file{number}", "w").close()
FILES
    for round in $(seq "$rounds"); do
        read -r -a said < <("$tools/preferences" "$folder" "$1")
        font+=("${said[0]}")
        units+=("${said[1]}")
        sorting+=("${said[2]}")
        dots+=("${said[3]}")
        dates+=("${said[4]}")
    done
    alone_row "ten panes of $1: font size, ms" font "<= 100"
    alone_row "units of sizes, ms" units "<= 100"
    alone_row "rows sorted by names, ms" sorting "<= 100"
    alone_row "dot names hidden, ms" dots "<= 100"
    alone_row "form of dates, ms" dates "<= 100"
    rm -r "$folder"
}
