# shellcheck shell=bash disable=SC2034,SC2154 # arrays are passed by their names; bench/run has the rest
# Sourced by bench/run: what an operation costs beside the commands that do the same.
#
# A virtual machine's host takes unused memory back, and whoever uses it first after a pause pays for
# getting it again. So before each measured job, whoever does it, as much is copied and thrown away.

# open_panes LEFT RIGHT KEY: the program with two panes, after a key in the left one
open_panes() {
    settings "$1" "$2"
    start_and_measure "$norvane"
    key "$3"
    sleep 0.3
}

# operate KEY TITLE FOLDER: an operation; its time in `total`, and in `first` the time from the key
# to the first entry in FOLDER; both empty when it failed, which desk says
operate() {
    total='' first=''
    read -r total first < <("$tools/desk" operation "$@")
    end_program
}

# ask KEY: a key that asks "Sir?", and the moment in which the question takes its answer
ask() {
    key "$1"
    wait_for 10 window_shown "Sir?"
    sleep 0.6
}

# share_row FIRSTS: what of the job above was the window's
share_row() { row "  from the key to the first entry" "$(median "$1")" "$(spread "$1")" "" "" "" "" ""; }

# What the window takes of an operation: one that is over sooner is not seen by the measure.
measure_window() {
    local folder=$shm_play/window round own=() firsts=() bare=()
    mkdir -p "$folder/from" "$folder/to"
    head -c 134217728 /dev/urandom >"$folder/from/big"
    for round in $(seq "$rounds"); do
        open_panes "$folder/from" "$folder/to" b
        warm_copy "$folder"
        operate F5 Copy "$folder/to"
        own+=("$total") firsts+=("$first")
        rm "$folder/to/big"
        warm_copy "$folder"
        bare+=("$("$tools/transfer" "$folder/from/big" "$folder/to/big" | cut -d' ' -f1)")
        rm "$folder/to/big"
    done
    compare_times "copy 128 MiB, ms" own "without the window" bare "+40 ms"
    share_row firsts
    rm -rf "$folder"
}

# warm_copy FOLDER
warm_copy() {
    cp --reflink=never "$1/from/big" "$1/to/warm"
    rm "$1/to/warm"
    sync # nobody pays for what was written before
}

# measure_copy NAME FOLDER SPEED
measure_copy() {
    local folder=$2 round own=() bare=() firsts=() cp=()
    mkdir -p "$folder/from" "$folder/to"
    head -c 1073741824 /dev/urandom >"$folder/from/big"
    for round in $(seq "$rounds"); do
        open_panes "$folder/from" "$folder/to" b
        warm_copy "$folder"
        operate F5 Copy "$folder/to"
        own+=("$total") firsts+=("$first")
        cmp -s "$folder/from/big" "$folder/to/big" || echo "the copy differs" >&2
        rm "$folder/to/big"
        warm_copy "$folder"
        bare+=("$("$tools/transfer" "$folder/from/big" "$folder/to/big" | cut -d' ' -f1)")
        rm "$folder/to/big"
        warm_copy "$folder"
        cp+=("$(milliseconds cp "$folder/from/big" "$folder/to/big")")
        rm "$folder/to/big"
    done
    compare_speeds "copy 1 GiB on $1, ms" own cp cp "speed >= $3"
    share_row firsts
    compare_speeds "  without the window" bare cp cp "speed >= $3"
    rm -rf "$folder"
}

volume=
end_volume() {
    [ -z "$volume" ] || umount "$volume"
    volume=
}

# 1 GiB on a volume that shares blocks, which only root can make
measure_clone() {
    local image=$disk_play/image round own=() firsts=() cp=()
    local folder=$disk_play/volume
    mkdir "$folder"
    truncate -s 4G "$image"
    if ! mkfs.btrfs -q "$image" >/dev/null 2>&1 || ! mount -o loop "$image" "$folder" 2>/dev/null; then
        echo "no volume that shares blocks can be made here: clone is left out" >&2
        rm -rf "$image" "$folder"
        return
    fi
    volume=$folder
    mkdir "$folder/from" "$folder/to"
    head -c 1073741824 /dev/urandom >"$folder/from/big"
    sync
    for round in $(seq "$rounds"); do
        open_panes "$folder/from" "$folder/to" b
        operate F5 Copy "$folder/to"
        own+=("$total") firsts+=("$first")
        cmp -s "$folder/from/big" "$folder/to/big" || echo "the copy differs" >&2
        rm "$folder/to/big"
        cp+=("$(milliseconds cp --reflink=always "$folder/from/big" "$folder/to/big")")
        rm "$folder/to/big"
    done
    compare_times "copy 1 GiB by sharing it, ms" own "cp --reflink=always" cp "<= + the window"
    share_row firsts
    end_volume
    rm -rf "$image" "$folder"
}

# 10 GiB, of them 1 MiB of data in 16 places
measure_sparse() {
    local folder=$disk_play/sparse round place own=() firsts=() cp=()
    mkdir -p "$folder/from" "$folder/to"
    truncate -s 10G "$folder/from/big"
    for place in $(seq 0 15); do
        dd if=/dev/urandom of="$folder/from/big" bs=64K count=1 seek=$((place * 10000)) \
            conv=notrunc status=none
    done
    sync
    for round in $(seq "$rounds"); do
        open_panes "$folder/from" "$folder/to" b
        operate F5 Copy "$folder/to"
        own+=("$total") firsts+=("$first")
        cp+=("$(milliseconds cp --sparse=auto "$folder/from/big" "$folder/to/cp")")
        for place in $(seq 0 15); do
            cmp -s -n 65536 -i $((place * 655360000)) "$folder/from/big" "$folder/to/big" ||
                echo "the copy differs" >&2
        done
        sync
        local own_size=("$(du -k "$folder/to/big" | cut -f1)")
        local cp_size=("$(du -k "$folder/to/cp" | cut -f1)")
        rm "$folder/to/big" "$folder/to/cp"
    done
    compare_times "copy a sparse file, ms" own "cp --sparse=auto" cp "<= + the window"
    share_row firsts
    row "its size there, KiB" "${own_size[0]}" "" "cp --sparse=auto" "${cp_size[0]}" "" \
        "$(ratio "${own_size[0]}" "${cp_size[0]}")" "<= 1"
    rm -rf "$folder"
}

# warm_tree TREE FOLDER
warm_tree() {
    cp -r "$1" "$2/warm"
    rm -rf "$2/warm"
}

# 20,000 small files in 2,000 folders: copied, then deleted for good in the Trash
measure_tree() {
    local folder=$shm_play/tree round own=() firsts=() cp=() floor=() gone=() rm=() gone_floor=()
    local bare=() bare_gone=()
    local trash=$XDG_DATA_HOME/Trash/files tree=$shm_play/tree/from/tree
    mkdir -p "$folder/from" "$folder/to" "$folder/peer" "$folder/bare" "$trash"
    "$tools/tree" make "$tree" 2000 20000 >/dev/null
    for round in $(seq "$rounds"); do
        open_panes "$folder/from" "$folder/to" t
        warm_tree "$tree" "$folder/peer"
        operate F5 Copy "$folder/to"
        own+=("$total") firsts+=("$first")
        diff -r "$folder/from" "$folder/to" >/dev/null || echo "the copy differs" >&2
        warm_tree "$tree" "$folder/peer"
        cp+=("$(milliseconds cp -r "$tree" "$folder/peer/tree")")
        rm+=("$(milliseconds rm -rf "$folder/peer/tree")")
        warm_tree "$tree" "$folder/peer"
        floor+=("$("$tools/tree" copy "$tree" "$folder/peer")")
        gone_floor+=("$("$tools/tree" remove "$folder/peer/tree")")
        warm_tree "$tree" "$folder/peer"
        bare+=("$("$tools/operation" copy "$folder/bare" "$tree")")
        bare_gone+=("$("$tools/operation" delete "$folder/bare/tree")")
        mv "$folder/to/tree" "$trash/tree"
        open_panes "$trash" "$folder/to" t
        ask F8
        operate Return Delete
        gone+=("$total")
        [ ! -e "$trash/tree" ] || echo "the tree is still there" >&2
    done
    compare_times "copy 20,000 small files, ms" own "cp -r" cp "<= 0.75"
    compare_times "" own "two threads in C" floor "aim: 1"
    share_row firsts
    compare_times "  without the window" bare "cp -r" cp ""
    compare_times "delete them, ms" gone "rm -rf" rm "<= 0.75"
    compare_times "" gone "two threads in C" gone_floor "aim: 1"
    compare_times "  without the window" bare_gone "rm -rf" rm ""
    rm -rf "$folder"
}

# 10,000 small files, each marked by itself
measure_marked() {
    local folder=$shm_play/marked from=$shm_play/marked/from/folder-00000 round
    local own=() firsts=() cp=() bare=() files
    mkdir -p "$folder/to" "$folder/peer" "$folder/bare"
    "$tools/tree" make "$folder/from" 1 10000 >/dev/null
    files=("$from"/*)
    for round in $(seq "$rounds"); do
        open_panes "$from" "$folder/to" plus
        warm_tree "$from" "$folder/peer"
        operate F5 Copy "$folder/to"
        own+=("$total") firsts+=("$first")
        diff -r "$from" "$folder/to" >/dev/null || echo "the copy differs" >&2
        rm -rf "$folder/to"
        mkdir "$folder/to"
        warm_tree "$from" "$folder/peer"
        cp+=("$(milliseconds cp -t "$folder/peer" "${files[@]}")")
        warm_tree "$from" "$folder/peer"
        bare+=("$("$tools/operation" copy "$folder/bare" "${files[@]}")")
        rm -rf "$folder/peer" "$folder/bare"
        mkdir "$folder/peer" "$folder/bare"
    done
    compare_times "copy 10,000 marked small files, ms" own cp cp "<= 0.9"
    share_row firsts
    compare_times "  without window and panes" bare cp cp ""
    rm -rf "$folder"
}

# copy_sync_remove TREE FOLDER
copy_sync_remove() {
    cp -a "$1" "$2"
    sync -f "$2"
    rm -rf "$1"
}

# A tree of small files from memory to the disk. Nothing is removed on the disk meanwhile: ext4 gives
# the nodes of what was just removed away slowly, for everybody.
measure_move() {
    local folder=$shm_play/move disk=$disk_play/move round own=() firsts=() peer=()
    local begin
    for round in $(seq "$rounds"); do
        mkdir -p "$folder" "$disk/own-$round" "$disk/peer-$round"
        "$tools/tree" make "$folder/tree" 2000 20000 >/dev/null
        warm_tree "$folder/tree" "$folder"
        sync
        open_panes "$folder" "$disk/own-$round" t
        operate F6 Copy "$disk/own-$round"
        # What is not on the medium yet belongs to the time of the one who left it so.
        local synced
        synced=$(milliseconds sync -f "$disk")
        own+=("${total:+$(awk -v t="$total" -v s="$synced" 'BEGIN {print t + s}')}")
        firsts+=("$first")
        [ ! -e "$folder/tree" ] || echo "the tree is still there" >&2
        "$tools/tree" make "$folder/tree" 2000 20000 >/dev/null
        diff -r "$folder/tree" "$disk/own-$round/tree" >/dev/null || echo "the copy differs" >&2
        warm_tree "$folder/tree" "$folder"
        sync
        peer+=("$(milliseconds copy_sync_remove "$folder/tree" "$disk/peer-$round")")
    done
    compare_times "move 20,000 small files to the disk, ms" own "cp -a, sync -f, rm -rf" peer "<= 1"
    share_row firsts
    rm -rf "$folder" "$disk"
}

# 10,000 marked files into the Trash
measure_trash() {
    local folder=$shm_play/trash round own=() floor=() bare=()
    for round in $(seq "$rounds"); do
        fill "$folder/own" 10000
        fill "$folder/peer" 10000
        fill "$folder/bare" 10000
        mkdir -p "$folder/Trash/files" "$folder/Trash/info"
        open_panes "$folder/own" "$folder" plus
        ask F8
        operate Return Delete
        own+=("$total")
        [ -z "$(ls "$folder/own")" ] || echo "not all were trashed" >&2
        floor+=("$("$tools/tree" trash "$folder/peer" "$folder/Trash")")
        bare+=("$("$tools/operation" trash "$folder/bare"/*)")
        rm -rf "$folder" "$XDG_DATA_HOME/Trash"
    done
    compare_times "trash 10,000 files, ms" own "records and renames in C" floor "<= 2"
    compare_times "  without window and panes" bare "records and renames in C" floor ""
}
