#!/usr/bin/env bash
# Starts the program some times and tells how long it took until its window was first painted, in
# milliseconds: benchmarks/startup.sh <build directory> [runs]
# Sizes the window for a screen of 1920 by 1080 with a virtual display; warm files, a settings
# folder of its own.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/dependencies.sh
. tools/virtual-display.sh
build="$(realpath "$1")"
runs="${2:-11}"
need display
start_display 1920x1080
home="$(mktemp -d)"
trap 'stop_display; rm -rf "$home"' EXIT
export HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_RUNTIME_DIR="$home"
chmod 700 "$home"

once() {
    STARTED="$(python3 -c 'import time; print(time.monotonic_ns())')" \
        LD_PRELOAD="$build/benchmarks/libfirstpaint.so" "$build/tiler/vantrel" 2>/dev/null
}
once >/dev/null # the first run warms the files
for ((i = 0; i < runs; i++)); do
    once
done | sort -n | awk '{ t[NR] = $1 } END { printf "start-up: best %s, median %s, worst %s ms in %d runs\n", t[1], t[int((NR + 1) / 2)], t[NR], NR }'
