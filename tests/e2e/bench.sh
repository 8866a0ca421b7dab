# An installed copy of the program on a virtual display, to be used with mouse and keys. To be
# sourced by a script that was called with: <program> [<helper>]
# SHOTS=<folder> keeps a screenshot of each step.
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
program="$(realpath "$1")"
helper="$(realpath "${2:-$(dirname "$program")/../tests/e2e/e2e_helper}")"

# A drive is mounted where only this script and what it starts can see it. Without the right to do
# so there is no drive, and what needs one is left out.
if [ -z "${E2E_MOUNTS:-}" ]; then
    export E2E_MOUNTS=no
    for way in "unshare --mount" "unshare --map-root-user --mount"; do
        if $way --propagation private true 2>/dev/null; then
            E2E_MOUNTS=yes exec $way --propagation private "$0" "$@"
        fi
    done
fi

. "$here/../../tools/virtual-display.sh"
work="$(mktemp -d)"
trap 'unplug; stop_display; rm -rf "$work"' EXIT

# Blanks and Chinese characters wherever a path can have them. The program gets a copy of its own,
# since what lies beside it is written to.
folder="$work/安装 目录"
home="$work/小明 的家"
drive="$work/控制器 盘"
objects="$folder/gcc/example/build/gcc/objects"
mkdir -p "$folder" "$home" "$drive"
cp "$program" "$folder/vantrel"
cp -r "$(dirname "$program")/gcc" "$folder/gcc"
rm -f "$objects"/*.bin

fail() {
    echo "FAILED: $*" >&2
    if [ -n "${SHOTS:-}" ]; then scrot -o "$SHOTS/failed.png" || true; fi
    cat "$work/log" >&2 || true
    exit 1
}
# wait_until <command...>: until it succeeds; false if it doesn't within half a minute.
wait_until() {
    local end=$((SECONDS + 30))
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}

# look <name>: a screenshot of the window, in whose coordinates all here is.
look() {
    scrot -o -a "$frame" "$work/$1.png"
    [ -z "${SHOTS:-}" ] || cp "$work/$1.png" "$SHOTS/$1.png"
}
# same <name> <x> <y> <width> <height> <other name> [<x> <y>]: two pieces of screenshots.
same() { "$helper" same "$work/$1.png" "$2" "$3" "$4" "$5" "$work/$6.png" "${7:-$2}" "${8:-$3}"; }
# looks_like <name> <x> <y> <width> <height> [<x> <y>]: whether a piece is to be seen now, there.
looks_like() {
    scrot -o -a "$frame" "$work/now.png"
    same "$1" "$2" "$3" "$4" "$5" now "${6:-$2}" "${7:-$3}"
}
looks_unlike() { ! looks_like "$@"; }
# bounds_of <colour>: left, top, width and height of what has it on the canvas now.
bounds_of() {
    scrot -o -a "$frame" "$work/now.png"
    "$helper" bounds "$work/now.png" 0 40 1280 440 "$1" || true
}
# The colour of a red block that isn't linked.
loose_block="#e28e91"

at() { xdotool mousemove --window "$window" "$1" "$2"; sleep 0.05; }
click() { at "$1" "$2"; xdotool click 1; sleep 0.3; }
key() { xdotool key "$1"; sleep 0.3; }
# move <from x> <from y> <to x> <to y>: as a hand does it.
move() {
    local step
    for step in 1 2 3 4 5 6; do
        at $(($1 + ($3 - $1) * step / 6)) $(($2 + ($4 - $2) * step / 6))
    done
    sleep 0.2
}
press() { at "$1" "$2"; xdotool mousedown 1; sleep 0.1; }
release() { xdotool mouseup 1; sleep 0.3; }
# drag <from x> <from y> <to x> <to y>
drag() { press "$1" "$2"; move "$@"; release; }

# start [<project>]
start() {
    env -u XDG_CONFIG_HOME HOME="$home" LC_ALL=C.UTF-8 "$folder/vantrel" "$@" >>"$work/log" 2>&1 &
    process="$!"
    window="$(wait_for_window "$process")" || fail "no window"
    # The window manager makes it as large as the screen.
    wait_until is_maximised || fail "the window isn't maximised"
    sleep 0.5
}
is_maximised() {
    local X Y WIDTH HEIGHT SCREEN WINDOW
    eval "$(xdotool getwindowgeometry --shell "$window")"
    # Its title stands above it, and it reaches down to the screen's lower edge.
    frame="0,$((768 - HEIGHT)),$WIDTH,$HEIGHT"
    [ "$WIDTH" = 1280 ] && [ "$HEIGHT" -gt 740 ]
}
title() { xdotool getwindowname "$window"; }
title_ends_in() { [[ "$(title)" == *"$1" ]]; }
# dialog <title>: waits for a window of the program other than the main one.
dialog() {
    wait_until has_dialog "$1" || fail "no dialog \"$1\""
    sleep 0.3
}
has_dialog() { xdotool search --all --onlyvisible --pid "$process" --name "^$1\$" >/dev/null; }
no_dialog() { ! has_dialog "$1"; }
# ended: waits for the end of the program, which has to be a good one.
ended() {
    wait_until not_running || fail "the program doesn't end"
    wait "$process" || fail "the program ended with an error"
}
not_running() { ! kill -0 "$process" 2>/dev/null; }

# drop <file> <x> <y> [<dialog> <key>...]: out of a window of another program onto the canvas. The
# keys answer the dialog that comes up.
drop() {
    local other answer
    : >"$work/dragged"
    "$helper" offer "$1" 1000 100 200 40 "$work/dragged" 2>>"$work/log" &
    other="$!"
    wait_until xdotool search --all --onlyvisible --pid "$other" --name '^elsewhere$' >/dev/null 2>&1 ||
        fail "the other program has no window"
    press 1100 100
    move 1100 100 "$2" "$3"
    if ! wait_until grep -q wanted "$work/dragged"; then
        xdotool mouseup 1
        fail "the canvas doesn't want $1"
    fi
    release
    if [ -n "${4:-}" ]; then
        dialog "$4"
        for answer in "${@:5}"; do key "$answer"; done
    fi
    wait_until grep -q dropped "$work/dragged" || fail "the other program is left waiting"
    kill "$other"
    wait "$other" 2>/dev/null || true
}

# plug_in: a drive of 4 MiB, which the program can't tell from a controller's. Its name is that of
# a disk that isn't in use, and the system's word on that disk is made "removable".
# False if there is no right to mount.
plug_in() {
    local disk word
    [ "$E2E_MOUNTS" = yes ] || return 1
    for disk in /sys/class/block/*; do
        word="$(realpath "$disk")/removable"
        if [ -f "$word" ] && [ -z "$(ls -d "$disk/$(basename "$disk")"* 2>/dev/null)" ] &&
            ! grep -q "^/dev/$(basename "$disk") " /proc/self/mounts; then
            echo 1 >"$work/removable"
            if [ "$(cat "$word")" != 1 ]; then
                mount --bind "$work/removable" "$word" 2>/dev/null || continue
            fi
            mount -t tmpfs -o size=4m "/dev/$(basename "$disk")" "$drive" 2>/dev/null && return 0
        fi
    done
    return 1
}
unplug() { if mountpoint -q "$drive"; then umount -l "$drive"; fi; }

start_display 1280x768
# In window coordinates, at a width of 1280: blocks are half as large as in the strip, the start
# block's upper left corner is at (25, 124), the strip's blocks stand at y 640.
row=136
strip=640
forward_for_a_time=60
speed=645
forward=785
