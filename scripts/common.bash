# What ./run, ./test and ./package share: the packages they need, and how they are put in.
# shellcheck shell=bash disable=SC2034  # the lists are used by those who read this file

build_packages=(build-essential cmake ninja-build ccache qt6-base-dev qt6-svg-dev libqt6svg6 qt6-image-formats-plugins
    libturbojpeg0-dev liblcms2-dev libheif-dev libjxl-dev
    libmpv-dev libsdl2-mixer-dev libfluidsynth3 timgm6mb-soundfont)
screen_packages=(fontconfig fonts-dejavu-core)
demo_packages=(lomiri-wallpapers-16.04 mate-backgrounds imagemagick ffmpeg libheif-examples python3)
virtual_packages=(xvfb openbox xdotool x11-utils imagemagick python3)
test_packages=(libgtest-dev clang-format clang-tidy ffmpeg dbus-daemon python3-gi)
deb_packages=(dpkg-dev librsvg2-bin)
deb_check_packages=(lintian desktop-file-utils appstream)

say() {
    printf '%s\n' "$*"
}

stop() {
    printf '%s\n' "$*" >&2
    exit 1
}

# Installs those of the named packages that are absent, in one call; says nothing when all are there.
need_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "This system has no dpkg: please see yourself that these are installed: $*" >&2
        return
    fi
    local package missing=()
    for package in "$@"; do
        if ! dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -x installed >/dev/null; then
            missing+=("$package")
        fi
    done
    if ((${#missing[@]} == 0)); then
        return
    fi

    local as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null \
            || stop "Please install these packages first: apt-get install --no-install-recommends ${missing[*]}"
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    # A fresh system has no package lists yet, and old ones name versions that are gone.
    local install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
        apt-get install --yes --quiet --no-install-recommends "${missing[@]}")
    if ! "${install[@]}"; then
        "${as_root[@]}" apt-get update --quiet
        "${install[@]}"
    fi
}

# Configures and builds one preset; what cmake says is shown only when it fails.
build_preset() {
    local preset=$1 log
    shift
    mkdir -p build
    log=build/$preset-configure.log
    if ! cmake --preset "$preset" >"$log" 2>&1; then
        cat "$log" >&2
        stop "The build could not be set up."
    fi
    cmake --build --preset "$preset" --parallel "$(nproc)" "$@"
}
