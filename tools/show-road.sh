#!/usr/bin/env bash
# The road of one program on a virtual display: tools/show-road.sh <program> <project>
# Presses the real download button with the real mouse. What the robot does goes to the standard
# output, the picture of the window to tiler-screenshot.png in the present folder.
set -euo pipefail
program="$1"
project="$2"
here="$(cd "$(dirname "$0")" && pwd)"
folder="$(dirname "$program")"
objects="$folder/gcc/example/build/gcc/objects"
work="$(mktemp -d)"
. "$here/virtual-display.sh"
trap 'stop_display; rm -rf "$work"' EXIT

start_display 1280x768
echo "No display here, so a virtual one is used."
rm -f "$objects"/*.bin
XDG_CONFIG_HOME="$work" "$program" "$project" >"$work/log" 2>&1 &
started="$!"
window="$(wait_for_window "$started")" || { cat "$work/log" >&2; exit 1; }
sleep 1
echo "Opened $(basename "$project"); pressing the download button."
# The fifth button of the tool bar, in window coordinates.
xdotool mousemove --window "$window" 306 17 click 1

# The compiler's image, the action data and the trailer behind it: 57,536 bytes more.
for _ in $(seq 1 150); do
    binary="$(ls "$objects"/*.bin 2>/dev/null | head -n 1)" || true
    if [ -n "$binary" ] && [ "$(stat -c %s "$binary")" -gt 57536 ]; then
        break
    fi
    sleep 0.2
done
if [ -z "${binary:-}" ]; then
    echo "The compiler left no program." >&2
    exit 1
fi
sleep 0.5
scrot -o tiler-screenshot.png
echo "Compiled: $(basename "$binary"), $(stat -c %s "$binary") bytes. On the emulated controller:"
result=0
"$folder/gcc/run-on-emulator" --limit 30 "$binary" || result=$?
# 3: the program is an endless one and was stopped.
if [ "$result" != 0 ] && [ "$result" != 3 ]; then
    exit "$result"
fi
echo "Screenshot: $PWD/tiler-screenshot.png"
