#!/usr/bin/env bash
# Starts the program some times and tells what it took until its window was first painted:
#   benchmarks/startup.sh <build directory> [runs]
# Milliseconds by the clock and of processor time, and resident megabytes; on a virtual screen of
# 1920 by 1080, with warm files and a settings folder of its own. With LATER=<milliseconds> also the
# processor time that it takes in so long a while behind, in which it asks for updates.
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
done >"$home/figures"
# column <number> <name>
column() {
    sort -n -k "$1,$1" "$home/figures" | awk -v n="$1" -v name="$2" '{ t[NR] = $n }
        END { printf "start-up, %s: best %s, median %s, worst %s in %d runs\n", name, t[1], t[int((NR + 1) / 2)], t[NR], NR }'
}
column 1 "ms by the clock"
column 2 "ms of processor time"
column 3 "MB resident"
if [ -n "${LATER:-}" ]; then
    column 4 "ms of processor time in the $LATER ms behind"
fi
