#!/usr/bin/env bash
# plaveno-cli snapshot-3d on an X server: the small room from both of its
# viewpoints, checked by the colours where sky, floor and wall must be; a
# viewpoint the scene lacks and a tool without its engine library fail with
# one line.
#   xvfb_snapshot_3d.sh PLAVENO_CLI SCENE OUT_DIR
set -uo pipefail
cli=$1
scene=$2
out=$3
rm -rf "$out"
mkdir -p "$out"
failures=0

fail() {
    echo "$*"
    failures=$((failures + 1))
}

# "r g b" of one pixel.
pixel() {
    convert "$1" -format '%[fx:int(255*p{'"$2"','"$3"'}.r)] %[fx:int(255*p{'"$2"','"$3"'}.g)] %[fx:int(255*p{'"$2"','"$3"'}.b)]' info:
}

is_sky() { read -r r g b <<<"$1"; [ "$b" -gt 180 ] && [ "$r" -lt 100 ]; }
is_wall() { read -r r g b <<<"$1"; [ "$r" -gt 150 ] && [ "$g" -gt 150 ] && [ "$b" -gt 130 ]; }
is_floor() { read -r r g b <<<"$1"; [ "$r" -gt $((b + 20)) ] && [ "$r" -gt "$g" ]; }

start=$(date +%s%N)
"$cli" snapshot-3d "$scene" -o "$out/outside.png" --width 640 --height 480 --verbose 2>"$out/outside.log" ||
    fail "outside: exit $?: $(cat "$out/outside.log")"
elapsed=$((($(date +%s%N) - start) / 1000000))
grep -q '^viewpoints: 2$' "$out/outside.log" || fail "outside: $(cat "$out/outside.log")"
if grep -q '^engine:' "$out/outside.log"; then
    fail "outside: the engine warned: $(grep '^engine:' "$out/outside.log")"
fi
[ "$(identify -format '%w %h' "$out/outside.png")" = "640 480" ] || fail "outside: wrong size"
is_sky "$(pixel "$out/outside.png" 320 10)" || fail "outside: no sky at the top: $(pixel "$out/outside.png" 320 10)"
is_floor "$(pixel "$out/outside.png" 320 470)" || fail "outside: no floor below: $(pixel "$out/outside.png" 320 470)"
is_wall "$(pixel "$out/outside.png" 320 216)" || fail "outside: no wall ahead: $(pixel "$out/outside.png" 320 216)"

"$cli" snapshot-3d "$scene" -o "$out/inside.jpg" --viewpoint 1 --width 320 --height 240 ||
    fail "inside: exit $?"
is_wall "$(pixel "$out/inside.jpg" 160 120)" || fail "inside: no wall ahead: $(pixel "$out/inside.jpg" 160 120)"

if "$cli" snapshot-3d "$scene" -o "$out/none.png" --viewpoint 7 2>"$out/none.log"; then
    fail "a missing viewpoint succeeded"
fi
grep -q 'has no viewpoint 7' "$out/none.log" || fail "missing viewpoint: $(cat "$out/none.log")"
[ ! -e "$out/none.png" ] || fail "a missing viewpoint left a picture"

# The tool alone, without the library beside it.
mkdir -p "$out/alone"
cp "$cli" "$out/alone/"
"$out/alone/$(basename "$cli")" snapshot-3d "$scene" -o "$out/alone.png" 2>"$out/alone.log"
status=$?
[ "$status" -eq 1 ] || fail "without the engine: exit $status"
[ "$(wc -l <"$out/alone.log")" -eq 1 ] && grep -q "3D engine can't be loaded" "$out/alone.log" ||
    fail "without the engine: $(cat "$out/alone.log")"

echo "snapshot of 640 x 480 in $elapsed ms, start to end of the tool"
[ "$failures" -eq 0 ]
