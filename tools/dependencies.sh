# Installs what is missing of the named sets of Debian packages. To be sourced:
#   . tools/dependencies.sh; need build run
# Does nothing, and quickly, when all is there.

tiler_packages() {
    case "$1" in
    build) echo cmake ninja-build g++ make python3 qtbase5-dev qtbase5-dev-tools \
        qttools5-dev qttools5-dev-tools qttranslations5-l10n librsvg2-bin optipng ccache ;;
    kit) echo make gcc-arm-none-eabi libnewlib-arm-none-eabi ;;
    emulator) echo qemu-system-arm python3 ;;
    run) echo fonts-noto-cjk libqt5gui5 ;;
    display) echo xvfb openbox xdotool scrot ;;
    check) echo clang-format clang-tidy valgrind ;;
    service) echo nginx openssl ca-certificates ;;
    windows) echo g++-mingw-w64-x86-64-posix qt5-qmake ;;
    esac
}

need() {
    local packages="" missing="" package
    for set in "$@"; do
        packages="$packages $(tiler_packages "$set")"
    done
    for package in $packages; do
        dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' ||
            missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    echo "Installing:$missing"
    local sudo=""
    if [ "$(id -u)" != 0 ]; then
        sudo=sudo
    fi
    # A fresh machine may not have a list of packages yet, or an old one.
    $sudo apt-get update -qq &&
        DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $missing \
            >/tmp/tiler-install.$$.log 2>&1 || {
        cat /tmp/tiler-install.$$.log >&2
        echo "The packages could not be installed:$missing" >&2
        return 1
    }
    rm -f /tmp/tiler-install.$$.log
}
