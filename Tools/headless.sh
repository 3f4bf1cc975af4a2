#!/bin/bash
# SPDX-License-Identifier: MIT
# headless.sh PICTURE COMMAND [ARG...]
# Runs COMMAND on a virtual display of its own, takes a picture of the screen after a few seconds
# (PICTURE_AFTER, default 5) and ends COMMAND. PICTURE_STAY=1 leaves it running until it ends itself
# or this script is ended. SCREEN is the size and depth of the display, 1600x1000x24 if not set.
set -u
picture=$1
shift
work=$(mktemp -d)
xvfb='' program=''
cleanup() {
    trap - EXIT HUP INT TERM
    [ -z "$program" ] || kill "$program" 2>/dev/null
    [ -z "$program" ] || wait "$program" 2>/dev/null
    [ -z "$xvfb" ] || kill "$xvfb" 2>/dev/null
    [ -z "$xvfb" ] || wait "$xvfb" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
for s in HUP INT TERM; do
    # shellcheck disable=SC2064 # the number of this signal, now
    trap "exit $((128 + $(kill -l "$s")))" "$s"
done

# -displayfd lets Xvfb find a free number, so that any number of these run side by side.
Xvfb -displayfd 3 -screen 0 "${SCREEN:-1600x1000x24}" -nolisten tcp 3>"$work/number" 2>"$work/log" &
xvfb=$!
for _ in {1..100}; do
    [ -s "$work/number" ] && break
    kill -0 "$xvfb" 2>/dev/null || break
    sleep 0.1
done
[ -s "$work/number" ] || {
    echo "The virtual display did not start:" >&2
    tail -n 5 "$work/log" >&2
    exit 1
}
DISPLAY=:$(cat "$work/number")
export DISPLAY
unset WAYLAND_DISPLAY
echo "No display here: starting on a virtual one ($DISPLAY)."

QT_QPA_PLATFORM=xcb "$@" &
program=$!
for ((i = 0; i < ${PICTURE_AFTER:-5} * 10; ++i)); do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.1
done
if ! kill -0 "$program" 2>/dev/null; then
    wait "$program"
    status=$?
    program=''
    echo "The program ended by itself before its picture was taken (status $status)." >&2
    exit "$status"
fi
mkdir -p "$(dirname "$picture")"
maim --quiet --hidecursor --format png "$picture" || {
    echo "The picture could not be taken." >&2
    exit 1
}
echo "A picture of its window: $picture"
[ "${PICTURE_STAY:-}" != 1 ] || wait "$program"
