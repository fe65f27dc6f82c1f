# shellcheck shell=bash disable=SC2154,SC2034 # bench/run has set what is used here
# Sourced by bench/run: a server's folder beside a local one of the same size, and keys while files come.

# write_session PORT USER PASSWORD PASSIVE
write_session() {
    printf 'Host=127.0.0.1\nPort=%s\nUser=%s\nPass=%s\nPassive=%s\n' "$@" >"$XDG_CONFIG_HOME/Norvane/bench.ftp"
}

# connect: the right pane, to that server
connect() {
    key ctrl+2 ctrl+f
    wait_for 5 window_shown "Ftp Sessions"
    sleep 0.5
    key Down Return
    sleep 3
}

# measure_remote COUNT: both are read again by F2, in the same program
measure_remote() {
    local count=$1 round own=() local_times=() keys=
    local folder=$shm_play/local-$count port server
    fill "$folder" "$count"
    /usr/bin/python3 bench/listing_server.py "$count" >"$play/port" &
    server=$!
    wait_for 10 test -s "$play/port" || return 1
    port=$(cat "$play/port")
    write_session "$port" anna secret 0
    for round in $(seq "$rounds"); do
        settings "$folder" "$folder"
        start_and_measure "$norvane"
        connect
        local_times+=("$(key ctrl+1 && sleep 0.3 && "$tools/desk" key F2)")
        own+=("$(key ctrl+2 && sleep 0.3 && "$tools/desk" key F2)")
        [ -n "$keys" ] || keys=$("$tools/desk" keys Down 150)
        end_program
    done
    kill "$server"
    compare_times "list $count remote entries, ms" own "the same here" local_times "<= 1.5"
    row "Down there, ms: 50th, 99th, 100th" "$(cut -d' ' -f1 <<<"$keys")" "" "" \
        "$(cut -d' ' -f2,3 <<<"$keys")" "" "" "99th <= 16, <= 50"
    rm -rf "$folder" "$XDG_CONFIG_HOME/Norvane/bench.ftp"
}
