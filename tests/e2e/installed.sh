#!/usr/bin/env bash
# The program as it is installed: where its files are, what its library shows to others, and an
# add-on that is built with nothing but what was installed.
. "$(dirname "$0")/lib.sh"

build=$(realpath "$(dirname "$norvane")")
sources=$(realpath "$(dirname "$0")/../..")
usr=$base/an\ installation
for component in program development; do
    cmake --install "$build" --prefix "$usr" --component $component >"$base/log" || {
        cat "$base/log"
        fail "not installed"
    }
done
program=$(realpath "$usr/bin/norvane")
place=$(dirname "$program")
[ "$(basename "$place")" = norvane ] || fail "the program lies in $place"
for file in Help.html libnorvane-kits.so."$("$program" --version | sed 's/Norvane //')"; do
    [ -e "$place/$file" ] || fail "no $file"
done
for file in applications/norvane.desktop icons/hicolor/48x48/apps/norvane.png man/man1/norvane.1.gz \
    icons/hicolor/scalable/apps/norvane.svg icons/hicolor/symbolic/apps/norvane-symbolic.svg; do
    [ -e "$usr/share/$file" ] || fail "no $file"
done
[ "$(readlink "$usr/bin/norvane")" = "$(realpath --relative-to="$usr/bin" "$program")" ] ||
    fail "bin/norvane leads to $(readlink "$usr/bin/norvane")"

# What the library shows, and what it asks of those who use it.
library=$place/libnorvane-kits.so
hidden=$(nm -DC --defined-only "$library" | cut -d' ' -f3- | grep -E 'kits::|norvane|\bQ[A-Z]|\bg_' |
    grep -vE '^(typeinfo|vtable|construction|non-virtual|virtual|VTT).* B[A-Z]|^B[A-Z]|^operator|kits::ViewDrawing')
[ -z "$hidden" ] || fail "the library shows $hidden"
objdump -p "$library" | grep -q 'SONAME.*libnorvane-kits\.so\.[0-9]*\.[0-9]*\.[0-9]*$' ||
    fail "no exact version in the library's name"

for user in "$program" "$place"/add-ons/Tracker/*; do
    [ ! -e "$user" ] || ! ldd -r "$user" 2>&1 | grep -E 'undefined|not found' || fail "$user lacks something"
done

# The command line
"$usr/bin/norvane" --help | grep -q '^Usage: norvane ' || fail "no help"
"$usr/bin/norvane" --version | grep -qx 'Norvane [0-9.]*' || fail "no version"
"$usr/bin/norvane" --nonsense 2>"$base/said" && fail "an unknown option was taken"
grep -q 'no option --nonsense' "$base/said" || fail "it said $(cat "$base/said")"

# The example, by the installed headers alone
log=$base/example-log
cmake -S "$sources/examples/add-on" -B "$base/example" -G Ninja -DCMAKE_PREFIX_PATH="$usr" >"$log" 2>&1 &&
    cmake --build "$base/example" >>"$log" 2>&1 || {
    cat "$log"
    fail "the example is not built"
}
needed=$(objdump -p "$base/example/CountBytes" | sed -n 's/^ *NEEDED *//p' | grep -E 'norvane|Qt|glib' | tr '\n' ' ')
[ "$needed" = "$(basename "$(realpath "$library")") " ] || fail "the example needs $needed"
shown=$(nm -DC --defined-only "$base/example/CountBytes" | cut -d' ' -f3-)
[ "$shown" = process_refs ] || fail "the example shows $shown"
mkdir -p "$XDG_DATA_HOME/norvane/add-ons/Tracker"
cp "$base/example/CountBytes" "$XDG_DATA_HOME/norvane/add-ons/Tracker/zz CountBytes"

mkdir -p "$base/left/folder" "$base/right"
printf '12345' >"$base/left/folder/five"
printf '123' >"$base/left/folder/three"
start_desktop 1280x800 wm || fail "no desktop"
write_settings "$base/left" "$base/right"
norvane=$usr/bin/norvane
start_norvane "$base/left"
key f F10 Left Up Return
expect "the example did nothing" window_shown CountBytes
shot installed-add-on
dismiss CountBytes
quit_norvane

# One that was built for another version of the library is refused.
sed "s/\(libnorvane-kits\.so\.[0-9]*\.[0-9]*\.\)[0-9]/\19/" "$base/example/CountBytes" \
    >"$XDG_DATA_HOME/norvane/add-ons/Tracker/zz CountBytes"
start_norvane "$base/left"
key f F10 Left Up Return
key F10 Escape
hold 500
window_gone CountBytes || fail "an add-on for another version was run"
quit_norvane
