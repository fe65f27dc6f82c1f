# shellcheck shell=bash disable=SC2154 # lib.sh sets what is used here
# Sourced by the tests of panes on servers, after lib.sh: a server of $served, and the session "test"
# that leads to its folder /pub. Skips where there is no server to be had.

/usr/bin/python3 -c 'import pyftpdlib' 2>/dev/null || {
    echo "python3-pyftpdlib is not installed"
    exit 77
}
served=$base/served
mkdir -p "$served/pub"

servers=()
end_servers() {
    local server
    for server in "${servers[@]}"; do kill "$server" 2>/dev/null; done
    servers=()
}
trap 'status=$?; end_servers; (exit $status); finish' EXIT

# serve [HABIT]: the session "test" leads to this server from now on, see ftp_server.py
serve() {
    end_servers
    rm -f "$base/port"
    /usr/bin/python3 "$(dirname "${BASH_SOURCE[0]}")/ftp_server.py" "$served" "${1:-0}" \
        >"$base/port" 2>"$base/server.log" &
    servers+=($!)
    wait_for 10 test -s "$base/port" || fail "no server: $(cat "$base/server.log")"
    write_session secret
}

# write_session PASSWORD
write_session() {
    mkdir -p "$(dirname "$settings_file")"
    printf 'Host=127.0.0.1\nPort=%s\nUser=anna\nPass=%s\nRemoteDir=/pub\nLocalDir=\n' \
        "$(cat "$base/port")" "$1" >"$(dirname "$settings_file")/test.ftp"
}

# connect: by the keys, in the right pane
connect() {
    key ctrl+2 ctrl+f
    expect "no sessions window" window_shown "Ftp Sessions"
    expect "the sessions window did not get the focus" window_focused "Ftp Sessions"
    hold 200 # its list is read beside it
    key Down Return
    expect "the sessions window stayed" window_gone "Ftp Sessions"
}

idle() {
    expect "the $1 window stayed" window_gone "$1"
    expect "the main window did not get the focus back" window_focused Norvane
}

# rows_shown: the right pane of a window as write_settings makes it shows more than ".."
first_remote_row=300x16+554+88
rows_shown() {
    local colors
    colors=$(import -window "$(window_id Norvane)" -crop "$first_remote_row" -format %k info:- 2>/dev/null) &&
        [ "$colors" -gt 2 ]
}
