# What ./run and ./check share: the packages, their installation, and the build. To be sourced by bash from the top
# folder of the project.

export DEBIAN_FRONTEND=noninteractive

# To build it.
build_packages=(
    build-essential cmake ninja-build pkg-config
    qt6-base-dev qt6-svg-dev libgl-dev
    libavcodec-dev libavformat-dev libavutil-dev libswresample-dev
    librubberband-dev libsoxr-dev libfftw3-dev libpulse-dev
    libcdio-dev libcdio-cdda-dev libcdio-paranoia-dev
    libmp3lame-dev libburn-dev
    libgtest-dev libgmock-dev libbenchmark-dev mold
    fp-utils
)

# To see it.
run_packages=(libqt6svg6 breeze-icon-theme fonts-dejavu-core x11-utils)

# To drive it without a screen and to hear it without a sound card.
stage_packages=(
    xvfb openbox xdotool imagemagick
    pulseaudio pulseaudio-utils
    python3 python3-gi gir1.2-atspi-2.0 at-spi2-core dbus-daemon
)

# To judge its sources and data files, to build it with sanitizers, and to make sounds for its tests.
check_packages=(
    clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev llvm desktop-file-utils appstream ffmpeg lame
    fluidsynth timgm6mb-soundfont festival festvox-kallpc16k espeak-ng
)

note() { printf '\n== %s\n' "$*"; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo --preserve-env=DEBIAN_FRONTEND "$@"
    fi
}

# Installs those of the named packages that are not there yet.
install_missing() {
    local package missing=()
    for package in "$@"; do
        # A package that others know of, and that is not there, has a status too.
        if ! dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed; then
            missing+=("$package")
        fi
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    note "Installing what is missing: ${missing[*]}"
    as_root apt-get update -q
    as_root apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# Several sources at once: what is built whole is built faster so, since much of the work is the headers.
configure() {
    local log
    log=$(cmake --preset "$1" -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=12 2>&1) || {
        printf '%s\n' "$log"
        return 1
    }
}

# build PRESET [TARGET...]
build() {
    local preset=$1 quiet=--quiet
    shift
    if [ -t 1 ]; then
        quiet=  # a terminal gets a line that counts
    fi
    note "Building: $preset"
    configure "$preset"
    cmake --build "build/$preset" ${1:+--target "$@"} -- $quiet
}
