#!/usr/bin/env bash
# The program looks the same on a dark desktop, with its menu and its boxes, in a real X server:
# tests/e2e/darkdesktop.sh <program> [<helper>]
# SHOTS=<folder> keeps a screenshot of each step.
set -euo pipefail
. "$(dirname "$0")/bench.sh"

# Of all desktops this one's colours are read by Qt itself, from a file.
dark_desktop() {
    export XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5
    export QT_STYLE_OVERRIDE=Windows
    mkdir -p "$home/.config"
    local part
    for part in Window View Button Tooltip Selection; do
        printf '[Colors:%s]\nBackgroundNormal=40,44,48\nForegroundNormal=239,240,241\n' "$part"
    done >"$home/.config/kdeglobals"
}
# walk <name>: a screenshot of each step.
walk() {
    start
    at 640 300
    look "$1-window"
    click 20 16
    look "$1-menu"
    key Escape
    drag $forward_for_a_time $strip 400 300
    key ctrl+o
    dialog "$save"
    at 640 300
    look "$1-question"
    key Escape
    wait_until no_dialog "$save" || fail "the question stays"
    key ctrl+s
    dialog "$save_file"
    at 640 300
    look "$1-files"
    kill "$process"
    wait "$process" 2>/dev/null || true
}
save=Save
save_file="Save file"

# Its files are in the file dialog.
cd "$home"
walk plain
dark_desktop
walk dark
for step in window menu question files; do
    # Without the lower edge of the file dialog, where a cursor blinks.
    same "plain-$step" 0 0 1280 470 "dark-$step" || fail "the $step looks different on a dark desktop"
done
echo "passed"
