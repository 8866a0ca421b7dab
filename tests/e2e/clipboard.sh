#!/usr/bin/env bash
# Blocks from one window of the program into another, and what other programs put on the clipboard
# and find there, in a real X server with real mouse and keys:
# tests/e2e/clipboard.sh <program> [<helper>]
# SHOTS=<folder> keeps a screenshot of each step.
set -euo pipefail
. "$(dirname "$0")/bench.sh"
blocks=korvane/tiler/modules
# A program that was stopped doesn't end when it is told to.
trap 'kill -KILL ${holder:-} 2>/dev/null || true; unplug; stop_display; rm -rf "$work"' EXIT

# to <window>: brings it to the front; a click could be taken for one on the canvas.
to() {
    window="$1"
    xdotool windowactivate --sync "$window" 2>>"$work/log"
    sleep 0.3
}
# Left, top, width and height of the one loose chain.
loose_chain() { bounds_of "$loose_block"; }
no_loose_chain() { [[ "$(loose_chain)" == *" 0 0" ]]; }
# chain_at <x> <y>: whether the loose chain's upper left corner is there, give or take its edge.
chain_at() {
    local left top
    read -r left top _ < <(loose_chain)
    [ "$left" -ge $(($1 - 4)) ] && [ "$left" -le $(($1 + 4)) ] &&
        [ "$top" -ge $(($2 - 4)) ] && [ "$top" -le $(($2 + 4)) ]
}
# hold <format> <file>: another program that owns the clipboard, until it is dropped.
hold() {
    rm -f "$work/held"
    "$helper" hold "$1" "$2" "$work/held" 2>>"$work/log" &
    holder="$!"
    wait_until grep -qs holding "$work/held" || fail "the other program doesn't hold the clipboard"
}
drop_it() {
    kill "$holder"
    wait "$holder" 2>/dev/null || true
    holder=""
}
has_text() { [ "$(clipboard get text/plain)" = "$1" ]; }
# written <text>: whether that is what stands in the editor.
written() { [ "$(cat "$work/text" 2>/dev/null)" = "$1" ]; }
clipboard() { "$helper" "$@" 2>>"$work/log"; }
# has_formats <format>...: exactly these are on the clipboard, beside what only X speaks of.
has_formats() {
    diff <(clipboard formats | grep -v '^[A-Z_]*$') <(printf '%s\n' "$@") >/dev/null
}
# modules_in <project>: its blocks, each with its values but for place and keys.
modules_in() {
    head -c -57472 "$1" | grep -o '<\(basenode\|module\) *[^>]*>' |
        sed -E 's/ (x|y|ownid|moduleKey)="[^"]*"//g'
}

# saved_alone: whether the second window's file holds the pasted blocks and no more.
saved_alone() {
    diff <(modules_in "$work/second.tlrx" | sort) <(sort <<'XML'
<basenode>
<basenode>
<module id="0"/>
<module id="100" n="2"/>
<module id="104" n="4"/>
XML
    ) | head -n 20
}

# A chain of two blocks, both with a value of their own.
start
first="$window"
first_process="$process"
drag $forward_for_a_time $strip 140 $row
drag $speed $strip 200 $row
click 125 183
key 4
click 185 183
click 223 224
at 1000 300
sleep 0.3
look chain
click 112 150
at 1000 300
look plain
key ctrl+c
wait_until looks_unlike plain 20 110 160 90 || fail "no frame shows what was copied"
look copied
has_formats $blocks || fail "the clipboard holds something else: $(clipboard formats)"
clipboard get $blocks | sed -E 's/ (x|y|ownid|moduleKey)="[^"]*"//g' | diff - <(
    cat <<'XML'
<!DOCTYPE vantrel>
<vantrel>
 <basenode>
  <module id="104" n="4"/>
  <module id="100" n="2"/>
 </basenode>
</vantrel>
XML
) || fail "another text than expected is on the clipboard"

# In the other window they come to the mouse, without a click before.
start
second="$window"
at 500 250
look untouched
key ctrl+v
wait_until chain_at 500 250 || fail "nothing was pasted where the mouse is: $(loose_chain)"
at 1000 400
sleep 0.3
look pasted
key ctrl+z
wait_until no_loose_chain || fail "undo doesn't take the pasted chain"
key ctrl+y
wait_until looks_like pasted 0 40 1280 430 || fail "redo doesn't bring it back"
key ctrl+s
dialog "Save file"
xdotool type --delay 40 "$work/second"
key Return
wait_until title_ends_in second.tlrx || fail "the title doesn't tell the file"
saved_alone || fail "other blocks than those that were copied are in the file"

# The text of another program is no block, whatever it says, and blocks are no text.
"$helper" edit "$work/text" 2>>"$work/log" &
editor_process="$!"
wait_until xdotool search --all --onlyvisible --pid "$editor_process" --name '^editor$' >/dev/null ||
    fail "the editor has no window"
editor="$(xdotool search --all --onlyvisible --pid "$editor_process" --name '^editor$')"
xml='<vantrel><basenode><module id="103"/></basenode></vantrel>'
xdotool windowactivate --sync "$editor"
xdotool type --delay 20 "$xml"
wait_until written "$xml" || fail "the editor holds something else: $(cat "$work/text")"
key ctrl+v
sleep 0.5
written "$xml" || fail "an editor takes blocks for a text"
# A text that is only selected leaves the blocks where they are.
key ctrl+a
to "$first"
wait_until looks_like copied 20 110 160 90 || fail "the frame goes, though the blocks are there"
xdotool windowactivate --sync "$editor"
sleep 0.3
key ctrl+c
wait_until has_text "$xml" || fail "the editor copies nothing"
to "$first"
wait_until looks_like plain 20 110 160 90 || fail "the frame stays, though the blocks are gone"
to "$second"
at 700 300
key ctrl+v
at 1000 400
sleep 0.5
looks_like pasted 0 40 1280 430 || fail "a text is taken for blocks"
has_text "$xml" || fail "the text doesn't outlive being pasted"
# A click on the canvas leaves it on the clipboard.
click 1000 400
has_text "$xml" || fail "a click on the canvas takes another program's text off the clipboard"
xdotool windowactivate --sync "$editor"
key End
key ctrl+v
wait_until written "$xml$xml" || fail "the text can't be pasted behind a click on the canvas"

# Nor does it take the other window's blocks away. Those of its own it does.
to "$first"
click 112 150
key ctrl+c
wait_until has_formats $blocks || fail "nothing was copied"
to "$second"
click 1000 400
sleep 0.3
has_formats $blocks || fail "a click in one window takes the other's blocks off the clipboard"
at 700 300
key ctrl+v
wait_until looks_unlike pasted 700 300 200 100 ||
    fail "the blocks can't be pasted behind a click on the canvas"
key ctrl+z
at 1000 400
wait_until looks_like pasted 0 40 1280 430 || fail "undo doesn't take the pasted chain again"
to "$first"
click 1000 300
wait_until test -z "$(clipboard get $blocks)" || fail "a click leaves the window's own copy"

# The blocks go with the window that they were copied in.
to "$first"
click 112 150
key ctrl+c
wait_until has_formats $blocks || fail "nothing was copied"
process="$first_process"
key ctrl+q
ended
to "$second"
at 700 300
key ctrl+v
at 1000 400
sleep 0.5
looks_like pasted 0 40 1280 430 || fail "blocks are pasted out of nothing"

# Any program may offer blocks: more of them than X hands over in one piece, and too late.
{
    echo "<vantrel><basenode>"
    for _ in {1..20000}; do echo '<module id="103"/>'; done
    echo "</basenode></vantrel>"
} >"$work/many"
hold $blocks "$work/many"
at 300 350
key ctrl+v
wait_until looks_unlike pasted 250 330 600 100 || fail "another program's blocks aren't pasted"
key ctrl+z
at 1000 400
wait_until looks_like pasted 0 40 1280 430 || fail "undo doesn't take another program's blocks"
kill -STOP "$holder"
rm "$work/second.tlrx"
key ctrl+v
key ctrl+s
wait_until test -s "$work/second.tlrx" || fail "a program that doesn't answer is waited for"
saved_alone || fail "something is pasted from a program that doesn't answer"
kill -CONT "$holder"
drop_it
key ctrl+q
ended
echo "Copied from window to window, and nothing but blocks was taken for blocks."
