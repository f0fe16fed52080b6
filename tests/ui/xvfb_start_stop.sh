#!/usr/bin/env bash
# Fifty-five starts and stops of the real program under an X server, as users
# and desktops do them: with and without a project, beside a running
# instance, and right after an instance was killed. No start may abort, a
# stop by SIGTERM ends with status 0, and an unchanged project leaves no
# auto-save file behind.
#   xvfb_start_stop.sh PROGRAM SAMPLES_DIR OUT_DIR
set -uo pipefail
program=$1
samples=$2
out=$3
rm -rf "$out"
mkdir -p "$out/home"
export HOME="$out/home" XDG_DATA_HOME="$out/home/data" XDG_CONFIG_HOME="$out/home/config"
appdata="$out/home/data/Plaveno"
failures=0

# Waits for a main window of the given process; 0 when it came.
wait_window() {
    local pid=$1
    for _ in $(seq 1 150); do
        if xdotool search --all --pid "$pid" --name "Plaveno - \[" >/dev/null 2>&1; then
            return 0
        fi
        kill -0 "$pid" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

# Starts the program in this shell, so that `wait` gets its status; the
# process id is left in `started`.
start() {
    "$program" "$@" >>"$out/program.log" 2>&1 &
    started=$!
}

check_ended() {
    local pid=$1 what=$2
    # Ten seconds to end; a program that hangs fails the run.
    for _ in $(seq 1 100); do
        kill -0 "$pid" 2>/dev/null || break
        sleep 0.1
    done
    if kill -0 "$pid" 2>/dev/null; then
        echo "run $run ($what): still running ten seconds after SIGTERM"
        xdotool search --pid "$pid" --name "" getwindowname %@ 2>/dev/null | sed 's/^/  window: /'
        kill -KILL "$pid"
        failures=$((failures + 1))
    fi
    wait "$pid"
    local status=$?
    if [ "$status" -ne 0 ]; then
        echo "run $run ($what): exit status $status"
        failures=$((failures + 1))
    fi
}

for run in $(seq 1 50); do
    case $((run % 5)) in
    0) args=() ;;
    1) args=("$samples/House.pvp") ;;
    2) args=("$samples/Flat.pvp") ;;
    3) args=("$samples/Studio.pvp") ;;
    4) args=("$out/missing.pvp") ;;
    esac
    case $((run % 4)) in
    0 | 1)
        # Alone, ended as a desktop session ends it.
        start "${args[@]}"
        pid=$started
        if ! wait_window "$pid"; then
            echo "run $run: no window"
            failures=$((failures + 1))
        fi
        kill -TERM "$pid"
        check_ended "$pid" "alone"
        ;;
    2)
        # Beside another instance.
        start
        first=$started
        wait_window "$first" || true
        start "${args[@]}"
        pid=$started
        if ! wait_window "$pid"; then
            echo "run $run: no second window"
            failures=$((failures + 1))
        fi
        kill -TERM "$pid" "$first"
        check_ended "$pid" "second instance"
        check_ended "$first" "first instance"
        ;;
    3)
        # Right after one was killed outright.
        start "${args[@]}"
        victim=$started
        wait_window "$victim" || true
        kill -KILL "$victim"
        wait "$victim" 2>/dev/null
        start "${args[@]}"
        pid=$started
        if ! wait_window "$pid"; then
            echo "run $run: no window after a kill"
            failures=$((failures + 1))
        fi
        kill -TERM "$pid"
        check_ended "$pid" "after a kill"
        ;;
    esac
done

# A session that ends while the program is still starting: with the
# questions of the start-up on the screen or not yet there.
for run in 51 52 53 54 55; do
    start "$samples/Flat.pvp"
    pid=$started
    sleep "0.$((run % 5 + 1))"
    kill -TERM "$pid"
    check_ended "$pid" "ended while starting"
done

leftover=$(ls "$appdata"/PVSave*.pvp 2>/dev/null | wc -l)
if [ "$leftover" -ne 0 ]; then
    echo "auto-save files left behind: $leftover"
    failures=$((failures + 1))
fi
if grep -qiE "abort|segmentation|terminate called" "$out/program.log"; then
    echo "the log tells of an abort:"
    grep -iE "abort|segmentation|terminate called" "$out/program.log" | head
    failures=$((failures + 1))
fi
echo "55 runs, $failures failures"
[ "$failures" -eq 0 ]
