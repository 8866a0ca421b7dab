#!/usr/bin/env bash
# Builds Tiler and opens it: ./run.sh [file.tlrx]
# Installs what is missing. Without a display it shows the whole road on a virtual one: opens the
# project, presses the download button, waits for the compiler, runs the program on the emulated
# controller, prints what the robot does and leaves a screenshot.
set -euo pipefail
cd "$(dirname "$0")"
. tools/dependencies.sh

project="${1:-examples/square.tlrx}"
if [ ! -f "$project" ]; then
    echo "There is no project $project." >&2
    exit 1
fi
project="$(realpath "$project")"

need build kit run
echo "Building ..."
cmake --preset dev -DBUILD_TESTING=OFF >build.log 2>&1 && cmake --build --preset dev --target vantrel toolchain_kit >>build.log 2>&1 || {
    cat build.log >&2
    exit 1
}
rm -f build.log
program="$PWD/build/tiler/vantrel"

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    echo "Opening $project"
    exec "$program" "$project"
fi

need emulator display
exec tools/show-road.sh "$program" "$project"
