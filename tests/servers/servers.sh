# shellcheck shell=bash disable=SC2034,SC2154 # who sources it uses what is set here, and sets the folders
# Sourced by tests/servers/run and bench/run: FTP servers that others wrote, each with one user, on loopback alone.
# $root is that of the project, $folder an empty one for this run, in which everybody may look; what is unpacked goes
# to $servers. What is served is $home.

home=$folder/home
user=anna
password=$(od -An -N8 -tx8 /dev/urandom | tr -d ' ')
owner=$(id -u) # of what the servers write
group=$(id -g)
pid=

end_server() {
    [ -z "$pid" ] && return
    # With those that it started.
    kill -- "-$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
    pid=
}
reason=
# unpacked PROGRAM PACKAGE...: makes sure of a program in packages that are not installed.
unpacked() {
    local program=$servers/root/$1 package
    shift
    if [ ! -x "$program" ]; then
        mkdir -p "$servers/packages"
        for package; do
            (cd "$servers/packages" && apt-get download -qq "$package" >/dev/null 2>&1) ||
                { reason="$package cannot be had"; return 1; }
        done
        for package; do
            dpkg-deb -x "$servers/packages/$package"_*.deb "$servers/root" ||
                { reason="$package cannot be unpacked"; return 1; }
        done
        # Under a path that is the same for every kind of machine.
        ln -sfn "$(cd "$servers"/root/usr/lib/*-linux-gnu*/ && pwd)" "$servers/lib"
    fi
    export LD_LIBRARY_PATH=$servers/lib
    reason=$(ldd "$program" | sed -n 's/^\t\(.*\) => not found.*/its library \1 is missing/p' | head -n 1)
    [ -z "$reason" ]
}
# has_SERVER: whether it can be tried, else the reason.
has_pyftpdlib() {
    reason="python3-pyftpdlib is not installed"
    /usr/bin/python3 -c 'import pyftpdlib' 2>/dev/null
}
has_vsftpd() { unpacked usr/sbin/vsftpd vsftpd libwrap0; }
has_proftpd() {
    unpacked usr/sbin/proftpd proftpd-core libhiredis0.14 libmemcached11 libmemcachedutil2 libhashkit2
}
has_pure-ftpd() {
    reason="it starts as root alone"
    [ "$(id -u)" -eq 0 ] && unpacked usr/sbin/pure-ftpd pure-ftpd libsodium23
}

# start_SERVER ADDRESS PORT: starts it as $pid; what it says goes to $folder/said.
start_pyftpdlib() { # chooses the port itself
    rm -f "$folder/port"
    setsid /usr/bin/python3 "$root/tests/servers/one_user.py" "$1" "$user" "$password" "$home" \
        >"$folder/port" 2>"$folder/said" &
    pid=$!
    local tries
    for tries in {1..100}; do
        [ -s "$folder/port" ] && break
        kill -0 "$pid" 2>/dev/null || return
        sleep 0.1
    done
    read -r port <"$folder/port"
}
start_vsftpd() {
    echo "$password" >"$folder/passwords"
    local listen="listen=YES
listen_address=$1"
    [[ $1 = *:* ]] && listen="listen=NO
listen_ipv6=YES
listen_address6=$1"
    cat >"$folder/conf" <<END
$listen
listen_port=$2
background=NO
anonymous_enable=YES
secure_email_list_enable=YES
email_password_file=$folder/passwords
local_enable=NO
ftp_username=$(id -un)
nopriv_user=$(id -un)
run_as_launching_user=YES
anon_root=$home
allow_writeable_chroot=YES
write_enable=YES
anon_upload_enable=YES
anon_mkdir_write_enable=YES
anon_other_write_enable=YES
anon_world_readable_only=NO
anon_umask=022
ascii_upload_enable=YES
ascii_download_enable=YES
isolate=NO
isolate_network=NO
seccomp_sandbox=NO
xferlog_enable=NO
END
    setsid "$servers/root/usr/sbin/vsftpd" "$folder/conf" >"$folder/said" 2>&1 &
    pid=$!
}
start_proftpd() {
    local hash
    hash=$(openssl passwd -6 "$password")
    echo "$user:$hash:$owner:$group::$home:/bin/sh" >"$folder/users"
    echo "$user:x:$group:" >"$folder/groups"
    chmod 600 "$folder/users" "$folder/groups"
    cat >"$folder/conf" <<END
ServerType standalone
DefaultAddress $1
Port $2
UseIPv6 on
UseReverseDNS off
User $(id -un)
Group $(id -gn)
RootLogin on
AuthPAM off
AuthOrder mod_auth_file.c
AuthUserFile $folder/users
AuthGroupFile $folder/groups
RequireValidShell off
UseFtpUsers off
PidFile $folder/pid
ScoreboardFile none
SystemLog $folder/said
WtmpLog off
TransferLog none
DelayEngine off
AllowOverwrite on
END
    setsid "$servers/root/usr/sbin/proftpd" -n -c "$folder/conf" >"$folder/said" 2>&1 &
    pid=$!
}
start_pure-ftpd() {
    owner=$(id -u nobody)
    group=$(id -g nobody)
    # A hash of its own kind takes seconds of both cores.
    echo "$user:$(openssl passwd -6 "$password"):$owner:$group::$home/./::::::::::::" >"$folder/users"
    "$servers/root/usr/bin/pure-pw" mkdb "$folder/users.pdb" -f "$folder/users"
    chown "$owner:$group" "$home"
    setsid "$servers/root/usr/sbin/pure-ftpd" -S "$1,$2" -l "puredb:$folder/users.pdb" -A -E -H -g "$folder/pid" \
        -k 100 >"$folder/said" 2>&1 &
    pid=$!
}

answers() { (exec 3<>"/dev/tcp/$1/$2") 2>/dev/null; }

# started SERVER ADDRESS: on $port, within ten seconds.
started() {
    local try tries
    for try in 1 2 3; do
        port=$((20000 + RANDOM % 12000))
        answers "$2" "$port" && continue
        rm -rf "$home"
        mkdir "$home"
        "start_$1" "$2" "$port"
        for tries in {1..100}; do
            answers "$2" "$port" && return 0
            kill -0 "$pid" 2>/dev/null || break
            sleep 0.1
        done
        end_server
    done
    reason="it does not start: $(tail -n 1 "$folder/said")"
    return 1
}

