# shellcheck shell=bash disable=SC2154,SC2034 # bench/run has set what is used here
# Sourced by bench/run: searches, beside tools that are told to look at the same. Ours count from the
# start of the search to the rows of its hits; the others with their own start and the writing of what they
# found into a file.

# What each of both found, to be compared: an answer that differs is no time.
query_agrees() { [ "$1" = "$(wc -l <"$play/found")" ] || echo "found $1 and $(wc -l <"$play/found")" >&2; }

# search_beside ROW BOUND PREDICATE PEER COMMAND...: in $query_folder
search_beside() {
    local job=$1 bound=$2 predicate=$3 peer=$4 round own=() other=() said begin
    shift 4
    for round in $(seq "$rounds"); do
        read -r -a said < <("$tools/query-rows" "$query_folder" "$predicate" "${query_text[@]}")
        own+=("${said[0]}")
        begin=$(date +%s%N)
        "$@" >"$play/found"
        other+=($((($(date +%s%N) - begin) / 1000000)))
        query_agrees "${said[1]}"
    done
    compare_times "$job" own "$peer" other "$bound"
}

measure_query() {
    local query_folder=$shm_play/query query_text=() finder
    finder=$(command -v fdfind || command -v fd)
    mkdir "$query_folder"
    python3 - "$query_folder" <<'TREE'
import os, sys
for a in range(100):
    for b in range(150):
        folder = f"{sys.argv[1]}/folder-{a}/part-{b:03d}"
        os.makedirs(folder)
        for c in range(19):
            with open(f"{folder}/entry-{a}-{b}-{c:03d}.{'log' if c % 5 == 0 else 'txt'}", "w") as file:
                file.write("x" * (2 if c == 10 and b % 10 == 0 else 1))
TREE
    search_beside "query 300,000 entries by name, ms" "<= 0.7" '(name=="*-7-0*.log")' "fd -u -s" \
        "$finder" -u -s --glob '*-7-0*.log' "$query_folder"
    search_beside "by name and size, ms" "<= 0.6" '((name=="*.log*")&&(size>=2))' "fd -u -s -S" \
        "$finder" -u -s -F -S +2b .log "$query_folder"
    rm -rf "$query_folder"
    measure_contents
}

# 1 GB in 50,000 files
measure_contents() {
    local query_folder=$shm_play/contents query_text=("a needle in it")
    mkdir "$query_folder"
    python3 - "$query_folder" <<'TREE'
import os, random, sys
dice = random.Random(1)
words = ["hay", "straw", "a needle", "in it", "barn", "field", "grass", "dry", "long", "cut"]
text = " ".join(dice.choice(words) for _ in range(40000)).replace("a needle in it", "a needle out")
for folder in range(250):
    os.makedirs(f"{sys.argv[1]}/{folder}")
    for file in range(200):
        begin = dice.randint(0, 100000)
        size = dice.randint(10000, 30000)
        with open(f"{sys.argv[1]}/{folder}/text-{file}", "w") as out:
            out.write(text[begin:begin + size])
            if file == 100:
                out.write("a needle in it")
TREE
    search_beside "contents of 1 GB in 50,000 files, ms" "<= 0.9" '(name=="text-*")' "grep -rlF" \
        grep -rlF "a needle in it" "$query_folder"
    ! command -v rg >/dev/null ||
        search_beside "" "" '(name=="text-*")' "rg -luuF" rg -luuF "a needle in it" "$query_folder"
    rm -rf "$query_folder"
}
