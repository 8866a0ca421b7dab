#!/usr/bin/env bash
# Measures the program in its own window on virtual screens with a window manager:
#   benchmarks/real.sh <build directory> [arguments of tilerbench]
# Without arguments: everything that docs/performance.md tells, on a screen of 1920 by 1080 and one
# of 3840 by 2160, and what the largest programs take.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/dependencies.sh
. tools/virtual-display.sh
build="$(realpath "$1")"
shift
need display
home="$(mktemp -d)"
trap 'stop_display; rm -rf "$home"' EXIT
export HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_RUNTIME_DIR="$home" LC_ALL=C.UTF-8
chmod 700 "$home"

# measure <screen> [arguments]
measure() {
    local screen="$1"
    shift
    start_display "$screen"
    "$build/benchmarks/tilerbench" benchmarks/shapes.json "$@" 2>"$home/complaints" || {
        cat "$home/complaints" >&2
        return 1
    }
    stop_display
    echo
}

if [ $# -gt 0 ]; then
    measure "${SCREEN:-1920x1080}" "$@"
    exit
fi
measure 1920x1080 --shape chain,full
measure 3840x2160 --shape full --blocks 50,1000
measure 1920x1080 --shape nested,mixed --blocks 1000,10000 --zoom 1
measure 1920x1080 --shape chain --blocks 100000 --zoom 1 --only "first open,open,delete,paste,drag head,save,generate,clear"
