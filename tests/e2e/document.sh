#!/usr/bin/env bash
# The canvas and the life of a document, in a real X server with real mouse and keys:
# tests/e2e/document.sh <program> [<helper>]
# SHOTS=<folder> keeps a screenshot of each step.
set -euo pipefail
. "$(dirname "$0")/bench.sh"
project="$work/我的 car.tlrx"
canvas="0 40 1280 430"

# A block in the middle of nowhere is a loose one.
start
look empty
drag $speed $strip 400 310
at 1000 300
read -r _ _ usual _ < <(bounds_of "$loose_block")
[ "$usual" -gt 50 ] || fail "no loose block"
look usual

# zoomed_to <percent>: a tenth of the full size is a fifth of the usual one on this screen.
zoomed_to() {
    local left top width height
    read -r left top width height < <(bounds_of "$loose_block")
    [ "$width" -ge $((usual * ($1 - 3) / 100)) ] && [ "$width" -le $((usual * ($1 + 3) / 100)) ]
}
usual_size() {
    click 170 17
    at 1000 300
    wait_until looks_like usual $canvas || fail "no way back to the usual size"
}
click 102 17
wait_until zoomed_to 120 || fail "the zoom button doesn't enlarge"
key ctrl+plus
wait_until zoomed_to 140 || fail "the zoom keys don't enlarge"
look enlarged
usual_size
click 238 17
wait_until zoomed_to 80 || fail "the zoom button doesn't make smaller"
key ctrl+minus
wait_until zoomed_to 60 || fail "the zoom keys don't make smaller"
look smaller
usual_size

# The canvas follows the hand, and the wheel over its lower edge.
at_home="$(bounds_of "$loose_block")"
# moved_by <x> <y>: the loose block, since it was at home. The dots of the background, which it
# lets through, may take a pixel off it.
moved_by() {
    local left top now_left now_top
    read -r left top _ <<<"$at_home"
    read -r now_left now_top _ < <(bounds_of "$loose_block")
    near "$now_left" $((left + $1)) && near "$now_top" $((top + $2))
}
near() { [ "$1" -ge $(($2 - 1)) ] && [ "$1" -le $(($2 + 1)) ]; }
drag 800 350 780 310
wait_until moved_by -20 -40 || fail "the canvas doesn't follow the hand"
look panned
drag 780 310 800 350
wait_until moved_by 0 0 || fail "the canvas doesn't come back"
at 300 460
xdotool click 4
wait_until moved_by -48 0 || fail "the wheel doesn't scroll sideways"
# The strip is there for a second only, so a screenshot may come too late for it.
wheel_shows_strip() {
    xdotool click 4
    look wheel-strip
    ! same empty 400 440 300 30 wheel-strip
}
wait_until wheel_shows_strip || fail "no strip is shown"
wait_until looks_like empty 400 440 300 30 || fail "the strip stays"
wheel_scrolls_home() {
    xdotool click 5
    sleep 0.1
    moved_by 0 0
}
wait_until wheel_scrolls_home || fail "the wheel doesn't scroll back"
at 1000 300
wait_until looks_like usual $canvas || fail "the canvas looks different from before"

drag $forward_for_a_time $strip 140 $row
at 1000 300
sleep 0.3
look drawn

# Closing asks. Cancel keeps the document, and so does yes with a cancelled file dialog.
key alt+F4
dialog save
look question
key Escape
wait_until looks_like drawn $canvas || fail "cancel doesn't keep the document"
key alt+F4
dialog save
key Return
dialog "Save file"
look save-dialog
key Escape
wait_until looks_like drawn $canvas || fail "a cancelled file dialog doesn't keep the document"
not_running && fail "the program has ended"
key alt+F4
dialog save
key Return
dialog "Save file"
xdotool type --delay 40 "$work/car"
key Return
ended
[ -f "$work/car.tlrx" ] || fail "nothing saved"
mv "$work/car.tlrx" "$project"
saved="$(sha256sum <"$project")"

# No ends the program and loses what is new.
start "$project"
title_ends_in "$project" || fail "the title doesn't tell the file"
at 1000 300
wait_until looks_like drawn $canvas || fail "what was reopened looks different"
drag $forward $strip 200 $row
looks_unlike drawn $canvas || fail "nothing was added"
key alt+F4
dialog save
key Tab
look question-no
key space
ended
[ "$(sha256sum <"$project")" = "$saved" ] || fail "no has saved"

# A file on the command line that is none: the box about it stands in the middle of the window.
echo text >"$work/bad.tlrx"
start "$work/bad.tlrx"
dialog "Open file"
middle_of() {
    local X Y WIDTH HEIGHT SCREEN WINDOW
    eval "$(xdotool getwindowgeometry --shell "$1")"
    echo $((X + WIDTH / 2)) $((Y + HEIGHT / 2))
}
box="$(xdotool search --all --onlyvisible --pid "$process" --name '^Open file$')"
read -r x y < <(middle_of "$window")
read -r box_x box_y < <(middle_of "$box")
[ $((box_x - x)) -ge -20 ] && [ $((box_x - x)) -le 20 ] &&
    [ $((box_y - y)) -ge -50 ] && [ $((box_y - y)) -le 50 ] ||
    fail "the box stands at $box_x $box_y, the window's middle is $x $y"
key Return
wait_until no_dialog "Open file" || fail "Return doesn't close the box"
key ctrl+q
ended

# A file dragged out of another program. Only a project is opened, and not over unsaved work.
start
echo text >"$work/说明.txt"
drop "$work/说明.txt" 600 300
title_ends_in untitled || fail "a text file was opened"
drop "$project" 600 350
wait_until title_ends_in "$project" || fail "the dropped project isn't opened"
at 1000 300
wait_until looks_like drawn $canvas || fail "what was dropped looks different"
drag $forward $strip 200 $row
at 1000 300
sleep 0.3
look changed
# The question stands while the other program waits for the end of its drop.
drop "$project" 600 350 save Escape
at 1000 300
wait_until looks_like changed $canvas || fail "cancel doesn't keep the document"
drop "$project" 600 350 save Tab space
at 1000 300
wait_until looks_like drawn $canvas || fail "no doesn't open the dropped project"
look dropped
key alt+F4
ended
echo "Zoomed, moved about, asked before losing anything, dropped a project from elsewhere."
