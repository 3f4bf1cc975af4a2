#!/bin/bash
# SPDX-License-Identifier: MIT
# demo.sh [--seconds N]: PixelWeft with a demonstration document on a private stage network, and in this
# terminal the universes that arrive at the nodes on the other end of the cable. Nothing leaves the
# machine and nothing of the user's own settings is read or changed. Ctrl-C or closing the window ends it. Where the
# output is no terminal, the nodes answer and nothing is drawn.
set -u
here=$(cd "$(dirname "$0")/.." && pwd)
program=$here/build/release/PixelWeft
rig=$here/build/release/rig
picture=$here/build/PixelWeft-demo.png

inside() { # inside WORK SECONDS: on the stage, host desk
    local work=$1 seconds=$2 start=("$program") nodes=answer
    [ ! -t 1 ] || nodes=watch
    # A display by TCP is on the other side of the network namespace; a socket in the file system is not.
    if [ -z "${WAYLAND_DISPLAY:-}" ] && [[ ${DISPLAY:-} != :* ]]; then
        # A node is listed with the second poll, up to six seconds after the network.
        start=(env PICTURE_STAY=1 PICTURE_AFTER="${PICTURE_AFTER:-9}" TMPDIR="$work"
            "$here/Tools/headless.sh" "$picture" "$program")
    fi
    "$STAGE_NET" rig "$rig" $nodes -a 2.0.0.10 2.0.0.11 -u 0-3 --stride 4 --name "Demo node" \
        --seconds "$seconds" &
    local rig_process=$!
    "${start[@]}" >"$work/program.log" 2>&1 &
    local started=$!
    while kill -0 $rig_process 2>/dev/null && kill -0 $started 2>/dev/null && [ ! -e "$work/stop" ]; do
        sleep 0.2
    done
    local early=''
    if kill -0 $rig_process 2>/dev/null && [ ! -e "$work/stop" ]; then early=1; fi
    kill -TERM $started $rig_process 2>/dev/null
    wait $rig_process
    wait $started
    local status=$?
    # A program that was still running was ended by us, and that is well.
    [ -n "$early" ] || status=0
    return $status
}

if [ "${1:-}" = --inside ]; then
    inside "$2" "$3"
    exit
fi

seconds=3600
case "${1:-}" in
    '') ;;
    --seconds) seconds=${2:-} ;;
    *) seconds='' ;;
esac
[[ $seconds =~ ^[1-9][0-9]*$ ]] || { echo "usage: demo.sh [--seconds N]" >&2; exit 64; }
for file in "$program" "$rig"; do
    [ -x "$file" ] || { echo "demo: $file is not built yet; use ./run demo" >&2; exit 1; }
done
"$here/Tools/stage-net" desk true || {
    echo "demo: without private networks it would send to the real one, so it does not start." >&2
    exit 77
}

work=$(mktemp -d)
trap 'rm -rf "$work"; [ ! -t 1 ] || printf "\033[0m\033[?25h"' EXIT
export XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data
mkdir -p "$XDG_CONFIG_HOME/Zentri" "$XDG_DATA_HOME/LoomTap2/PixelWeft"
printf '[General]\nnetwork=2.X.X.X\n' >"$XDG_CONFIG_HOME/Zentri/PixelWeft3.conf"
cp "$here/Resources/DemoMapping.wfm" "$XDG_DATA_HOME/LoomTap2/PixelWeft/mapping.wfm" || exit 1

# Its own session, so that Ctrl-C reaches only this shell, which then lets the stage end in order; if this
# shell is killed, the stage goes with it.
setpriv --pdeathsig KILL setsid "$here/Tools/stage-net" desk "$here/Tools/demo.sh" --inside "$work" "$seconds" </dev/null &
stage=$!
trap 'touch "$work/stop"' HUP INT TERM
status=130
while kill -0 $stage 2>/dev/null; do
    wait $stage
    status=$?
done
[ ! -e "$work/stop" ] || status=0
grep '^A picture' "$work/program.log" 2>/dev/null
if [ $status != 0 ]; then
    tail -n 15 "$work/program.log" >&2
    echo "demo: the program ended with status $status (its last lines are above)" >&2
fi
exit $status
