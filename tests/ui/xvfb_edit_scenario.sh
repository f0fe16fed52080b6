#!/usr/bin/env bash
# The real program under an X server, driven by real input events: a click
# selects the dining table of the flat, Shift+D places a copy that a click
# fixes, a drag moves the copy, Del removes it. The plan must then look as
# it did at the start, and undo must bring the copy back.
#   xvfb_edit_scenario.sh PROGRAM PROJECT OUT_DIR
set -euo pipefail
program=$1
project=$2
out=$3
rm -rf "$out"
mkdir -p "$out/home"
export HOME="$out/home" XDG_DATA_HOME="$out/home/data" XDG_CONFIG_HOME="$out/home/config"
# The plan alone fills the window, as the places below were measured; the
# library window stays closed.
mkdir -p "$out/home/data/Plaveno/Plaveno"
printf '\xEF\xBB\xBF\r\n[Options]\r\nShowLibTab=0\r\n' >"$out/home/data/Plaveno/Plaveno/config.ini"

"$program" "$project" >"$out/program.log" 2>&1 &
pid=$!
trap 'kill $pid 2>/dev/null || true' EXIT

window=""
for _ in $(seq 1 100); do
    window=$(xdotool search --name "Plaveno - \[" 2>/dev/null | head -1 || true)
    [ -n "$window" ] && break
    sleep 0.1
done
[ -n "$window" ] || { echo "no window"; cat "$out/program.log"; exit 1; }

xdotool windowmove "$window" 0 0 windowsize "$window" 1200 900
sleep 1
xdotool windowfocus "$window"
xdotool key asterisk
sleep 1

# The plan area only: the status bar's texts change with the pointer.
shot() { import -window root -crop 1130x780+0+60 +repage "$out/$1.png"; }
differ() { compare -metric AE -fuzz 3% "$out/$1.png" "$out/$2.png" null: 2>&1 || true; }

shot start
# The dining table, then a copy of it that hangs on the pointer a little
# off the original; it follows the pointer up by 100 pixels, and a click
# fixes it there.
xdotool mousemove 812 373 click 1
sleep 0.3
xdotool key shift+d
sleep 0.3
for step in 1 2 3 4 5; do
    xdotool mousemove 812 $((373 - 20 * step))
    sleep 0.05
done
xdotool click 1
sleep 0.5
shot placed
# The copy is selected and on top: drag it left by 100 pixels.
xdotool mousemove 812 273 mousedown 1
for step in 1 2 3 4 5; do
    xdotool mousemove $((812 - 20 * step)) 273
    sleep 0.05
done
xdotool mouseup 1
sleep 0.5
shot moved
xdotool key Delete
sleep 0.5
# Nothing selected any more, as at the start.
xdotool mousemove 1100 820 click 1
sleep 0.5
shot deleted
xdotool key ctrl+z
sleep 0.5
shot undone

placed=$(differ start placed)
moved=$(differ placed moved)
deleted=$(differ start deleted)
undone=$(differ deleted undone)
echo "pixels changed: placed $placed, moved $moved, deleted-vs-start $deleted, undone $undone"
[ "$placed" -gt 1000 ] || { echo "no copy was placed"; exit 1; }
[ "$moved" -gt 1000 ] || { echo "the copy did not move"; exit 1; }
[ "$deleted" -eq 0 ] || { echo "the plan differs from the start after the delete"; exit 1; }
[ "$undone" -gt 1000 ] || { echo "undo did not bring the copy back"; exit 1; }
