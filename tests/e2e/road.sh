#!/usr/bin/env bash
# One program from a drag to what the robot does, in a real X server with real mouse and keys:
# tests/e2e/road.sh <program> [<helper>]
# SHOTS=<folder> keeps a screenshot of each step.
set -euo pipefail
. "$(dirname "$0")/bench.sh"
project="$work/我的 car.tlrx"

# compile <name>: presses the download button and waits for the compiled program, whose text has
# to be the one in the standard input.
compile() {
    rm -f "$objects"/*.bin
    click 306 17
    dialog Dialog
    wait_until is_finished "$objects/$1.bin" || fail "no $1.bin"
    diff <(sed 1d "$folder/gcc/example/user_main.c") - || fail "another text than expected"
}
# The compiler's image, the action data and the trailer: 57,536 bytes more than the image.
is_finished() { [ -f "$1" ] && [ "$(stat -c %s "$1")" -gt 57536 ]; }
press_button_of_dialog() {
    click 758 374
    wait_until no_dialog Dialog || fail "the dialog stays open"
}
arrived() { cmp -s "$objects/$1.bin" "$drive/$1.bin"; }
# What stands in the dialog: its status, and its button.
says() { looks_like "$1" 515 298 320 40; }
has_button() { looks_like "$1" 700 350 110 50; }

# robot_waits_for <seconds>: runs what was downloaded, the same twice but for the time.
robot_waits_for() {
    "$folder/gcc/run-on-emulator" "$robot/RunA.bin" |
        sed 's/^\[[^]]*\] //' | diff - <(printf '%s\n' start 'motor A (1) speed 50' \
        'motor B (2) speed -50' 'motor A (1) speed 50' 'motor B (2) speed -50' "wait $1 s" \
        'motor A (1) speed 0' 'motor B (2) speed 0' end) || fail "another trace than expected"
}

start
drag $forward_for_a_time $strip 140 $row
drag $speed $strip 200 $row
look chain
# A block in between: the gap opens under it, closes when it goes on, and opens again.
gap_is_open() { looks_like chain 158 126 54 50 218 126; }
press $forward $strip
move $forward $strip 140 $row
wait_until gap_is_open || fail "no gap"
look gap
move 140 $row 600 300
wait_until looks_like chain 20 110 300 110 || fail "the gap stays open"
look gap-closed
move 600 300 140 $row
wait_until gap_is_open || fail "no gap the second time"
release

# The time of the timed block, by the keyboard of the strip and then by keys.
click 185 183
look keyboard
click 345 628
key period
key 5
# The fast one of the three speeds.
click 245 183
look popup
click 283 224
click 1000 300
look set

# The controller is plugged in while the program waits for it.
compile RunA <<'C'
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
sleep 0.5
look waiting
# The dialog's round corners let the canvas through.
same set 430 220 2 2 waiting || fail "the dialog has square corners"
robot="$objects"
if plug_in; then
    robot="$drive"
    wait_until arrived RunA || fail "RunA.bin isn't on the drive"
    wait_until looks_unlike waiting 700 350 110 50 || fail "the download has no end"
    look downloaded
else
    echo "LEFT OUT: the download onto a drive, since there is no right to mount one"
fi
press_button_of_dialog
robot_waits_for 2.5

# The last block, dragged down onto the strip, is gone; Ctrl+Z brings it back, Ctrl+Y takes it.
canvas="0 40 1280 430"
look whole
press 230 150
move 230 150 230 600
look bin
release
look deleted
same whole $canvas deleted && fail "nothing was deleted"
key ctrl+z
wait_until looks_like whole $canvas || fail "undo doesn't bring the block back"
key ctrl+y
wait_until looks_like deleted $canvas || fail "redo doesn't take the block"

# Saved by the dialog, closed, and opened again from the command line.
key ctrl+s
dialog "Save file"
xdotool type --delay 40 "$work/car"
key Return
wait_until is_finished "$work/car.tlrx" || fail "nothing saved"
wait_until title_ends_in "$work/car.tlrx" || fail "the title doesn't tell the file"
key ctrl+q
ended
mv "$work/car.tlrx" "$project"
start "$project"
title_ends_in "$project" || fail "the title doesn't tell the file"
# But for the joint of the two blocks, where the one that came last lies above the other.
wait_until looks_like deleted 20 110 132 110 && wait_until looks_like deleted 168 110 152 110 ||
    fail "what was reopened looks different"
look reopened

# Another time makes it another program.
click 185 183
key 3
click 1000 300
second_program() {
    cat <<'C'
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      set_motor(1, speed1);set_motor(2, -speed2);set_motor(1, speed1);
      set_motor(2, -speed2);
      wait(3);
      set_motor(1, 0);
      set_motor(2, 0);
}
C
}
if [ "$robot" = "$drive" ]; then
    # A drive that is write-protected keeps the older program, and the dialog says so.
    older="$(sha256sum <"$drive/RunA.bin")"
    mount -o remount,ro "$drive"
    compile RunA < <(second_program)
    wait_until has_button downloaded || fail "the failing download has no end"
    look download-failed
    says downloaded && fail "it is said to have succeeded"
    press_button_of_dialog
    [ "$(sha256sum <"$drive/RunA.bin")" = "$older" ] || fail "the protected file has changed"
    mount -o remount,rw "$drive"

    compile RunA < <(second_program)
    wait_until arrived RunA || fail "RunA.bin isn't on the drive"
    wait_until says downloaded || fail "the dialog doesn't tell that it is done"
    press_button_of_dialog
    [ "$(sha256sum <"$drive/RunA.bin")" != "$older" ] || fail "the old program is still there"
    [ "$(ls "$drive")" = RunA.bin ] || fail "more than the program is on the drive"
else
    compile RunA < <(second_program)
    press_button_of_dialog
fi
robot_waits_for 3
key ctrl+q
ended
[ -d "$home/.config/vantrel/configs" ] || fail "no settings in the user's home"
echo "The whole road: dragged, linked, set, compiled, run, deleted, saved, reopened."
