#!/usr/bin/env bash
# Compiles what is Windows' own in the sources with the cross compiler: tools/check-windows.sh
# That is each source and header that is named for Windows or asks for the system that it is built
# for, be it only to do something on another one. They see the headers of this system's Qt, which
# hold the declarations for Windows, too, so no Qt for Windows is needed; linking would need one.
set -euo pipefail
cd "$(dirname "$0")/.."
compiler=x86_64-w64-mingw32-g++-posix
command -v "$compiler" >/dev/null || {
    echo "check-windows.sh: $compiler is missing" >&2
    exit 1
}
rooms=()
for folder in module actions logging; do
    [ ! -d "$folder" ] || rooms+=("$folder")
done
headers="$(/usr/lib/qt5/bin/qmake -query QT_INSTALL_HEADERS)"
options=(-std=c++17 -O1 -Wall -Wextra -Wpedantic -Wshadow -Wno-deprecated-declarations -Werror
    -isystem "$headers")
for library in QtCore QtGui QtWidgets QtNetwork QtXml; do
    options+=(-isystem "$headers/$library")
done
options+=(-Imodule/source -Imodule -I.)

mapfile -t sources < <({
    find "${rooms[@]}" \( -name '*windows*.cpp' -o -name '*windows*.h' \) ! -name 'windowshape.*'
    grep -rlE --include='*.cpp' --include='*.h' '\b(Q_OS_[A-Z0-9]+|_WIN32|WIN32)\b|windows\.h' \
        "${rooms[@]}"
} | sort -u)
[ "${#sources[@]}" != 0 ] || {
    echo "check-windows.sh: no source found" >&2
    exit 1
}

one() {
    local source="$1"
    shift
    # A header is compiled as the first one of a source that has nothing else.
    "$@" -c -o /dev/null -x c++ - <<<"#include \"$source\"" || {
        echo "Not for Windows: $source" >&2
        return 1
    }
}
export -f one
printf '%s\n' "${sources[@]}" |
    xargs -P "$(nproc)" -I{} bash -c 'one "$@"' _ {} "$compiler" "${options[@]}"
echo "${#sources[@]} sources compiled for Windows."
