#!/usr/bin/env bash
# One program from a drag to what the robot does, in a real X server with real mouse and keys:
# tests/e2e/road.sh <program>
# SHOTS=<folder> keeps a screenshot of each step.
set -euo pipefail
program="$1"
here="$(cd "$(dirname "$0")" && pwd)"
. "$here/../../tools/virtual-display.sh"
work="$(mktemp -d)"
# A copy of its own, in a folder with a blank and Chinese characters: what lies beside the program
# is written to.
folder="$work/机器人 kit"
mkdir -p "$folder"
cp "$program" "$folder/vantrel"
cp -r "$(dirname "$program")/gcc" "$folder/gcc"
rm -f "$folder"/gcc/example/build/gcc/objects/*.bin
project="$work/我的 car.tlrx"
trap 'stop_display; rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    scrot -o "${SHOTS:-/tmp}/tiler-e2e-failed.png" 2>/dev/null || true
    cat "$work/log" >&2 || true
    exit 1
}
shot() { [ -z "${SHOTS:-}" ] || scrot -o "$SHOTS/$1.png"; }
at() { xdotool mousemove --window "$window" "$1" "$2"; sleep 0.1; }
click() { at "$1" "$2"; xdotool click 1; sleep 0.5; }
# drag <from x> <from y> <to x> <to y> [picture taken before the release]
drag() {
    local step
    at "$1" "$2"
    xdotool mousedown 1
    sleep 0.2
    for step in 1 2 3 4 5 6 7 8; do
        at $(($1 + ($3 - $1) * step / 8)) $(($2 + ($4 - $2) * step / 8))
    done
    sleep 0.3
    [ -z "${5:-}" ] || shot "$5"
    xdotool mouseup 1
    sleep 0.5
}
start() {
    XDG_CONFIG_HOME="$work" LC_ALL=C.UTF-8 "$folder/vantrel" "$@" >>"$work/log" 2>&1 &
    process="$!"
    window="$(wait_for_window "$process")" || fail "no window"
    sleep 1
}
wait_for_file() {
    local i
    for i in $(seq 1 100); do
        [ -f "$1" ] && [ "$(stat -c %s "$1")" -gt 57536 ] && return 0
        sleep 0.2
    done
    return 1
}
compiled() {
    rm -f "$folder"/gcc/example/build/gcc/objects/*.bin
    click 306 17
    wait_for_file "$folder/gcc/example/build/gcc/objects/$1.bin" || fail "no $1.bin"
    sleep 0.7
    shot "download-$1"
    # Escape cancels the wait for a controller that isn't there.
    xdotool key Escape
    sleep 0.5
    diff <(sed 1d "$folder/gcc/example/user_main.c") - || fail "another text than expected"
}

start_display 1280x768
start
# In window coordinates at 1280 pixels: blocks are half their size, the start block's upper left
# corner is at (25, 124), the strip's blocks stand at y 640.
row=136
drag 60 640 140 $row
drag 725 640 200 $row
shot chain
# A block in between: the gap opens under it.
drag 890 640 140 $row gap
# The time of the first timed block, by the keyboard of the strip and then by keys.
click 185 183
shot keyboard
click 345 628
sleep 0.2
xdotool key period 5
sleep 0.3
# The fast one of the three speeds.
click 245 183
shot popup
click 283 224
click 1000 300
shot set
compiled RunA <<'C'
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      set_motor(1, speed1);set_motor(2, -speed2);set_motor(1, speed1);
      set_motor(2, -speed2);
      wait(2.5);
      set_motor(1, 0);
      set_motor(2, 0);
      speed1 = 80;
      speed2 = 80;
      speed3 = 80;
      speed4 = 80;
}
C
"$folder/gcc/run-on-emulator" "$folder/gcc/example/build/gcc/objects/RunA.bin" |
    sed 's/^\[[^]]*\] //' | diff - <(printf '%s\n' start 'motor A (1) speed 50' \
    'motor B (2) speed -50' 'motor A (1) speed 50' 'motor B (2) speed -50' 'wait 2.5 s' \
    'motor A (1) speed 0' 'motor B (2) speed 0' end) || fail "another trace than expected"

# The last block, dragged down onto the strip, is gone; Ctrl+Z brings it back, Ctrl+Y takes it.
drag 230 150 230 600 bin
xdotool key ctrl+z
sleep 0.4
xdotool key ctrl+y
sleep 0.4
shot deleted

# Saved by the dialog, closed, and opened again from the command line.
xdotool key ctrl+s
sleep 1
xdotool type --delay 40 "$work/car"
xdotool key Return
wait_for_file "$work/car.tlrx" || fail "nothing saved"
sleep 0.3
xdotool key ctrl+q
wait "$process" || fail "the program ended with an error"
mv "$work/car.tlrx" "$project"
start "$project"
shot reopened
compiled RunA <<'C'
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      set_motor(1, speed1);set_motor(2, -speed2);set_motor(1, speed1);
      set_motor(2, -speed2);
      wait(2.5);
      set_motor(1, 0);
      set_motor(2, 0);
}
C
xdotool key ctrl+q
wait "$process" || fail "the program ended with an error"
echo "The whole road: dragged, linked, set, compiled, run, deleted, saved, reopened."
