# shellcheck shell=bash disable=SC2034 # who sources it uses the lists
# Sourced by run, test, bench/run and .ci/run: installs what they need, as Debian and Ubuntu name it.

build_packages="g++ cmake ninja-build pkg-config ccache qt6-base-dev qt6-base-private-dev libqt6svg6
    libx11-dev libx11-xcb-dev libxcb1-dev libfontconfig-dev libglib2.0-dev libarchive-dev libssl-dev libgl-dev shared-mime-info fonts-dejavu-core"
desktop_packages="xvfb openbox xdotool x11-utils x11-xkb-utils x11-xserver-utils imagemagick fontconfig"
test_packages="libgtest-dev attr util-linux libcap2-bin trash-cli libglib2.0-bin fonts-liberation fonts-noto-core
    binutils xz-utils weston qt6-wayland thunar pcmanfm-qt dbus dbus-daemon python3-pyftpdlib xterm ibus ibus-m17n $desktop_packages"
lint_packages="clang clang-tidy cppcheck shellcheck"
bench_packages="libbenchmark-dev libxdamage-dev libxtst-dev pcmanfm thunar mc xterm procps curl lftp fd-find ripgrep $desktop_packages"

# need PACKAGE...: makes sure that the packages are installed.
need() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This system has no dpkg. Please install what provides these Debian packages:" >&2
        echo " " "$@" >&2
        return 0
    fi
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Please install these packages first: ${missing[*]}" >&2
            return 1
        fi
        root=(sudo)
    fi
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq &&
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# build PRESET: configures and builds a preset.
build() {
    cmake --preset "$1" >"build/$1.configure.log" 2>&1 || { cat "build/$1.configure.log"; return 1; }
    cmake --build --preset "$1"
}
