#!/bin/bash
# SPDX-License-Identifier: MIT
# guide-pictures.sh [FOLDER]: takes the pictures of the README and of the user guide (into Docs/pictures, or
# FOLDER), from the real window on a private network with two nodes at its other end.
set -eu
cd "$(dirname "$0")/.."
folder=$(realpath -m "${1:-Docs/pictures}")
here=$PWD

if [ "${2:-}" = --inside ]; then
    "$STAGE_NET" rig build/release/rig answer -a 2.0.0.10 2.0.0.11 -u 0-3 --stride 4 --name "Demo node" &
    rig=$!
    trap 'kill $rig 2>/dev/null || true; wait $rig || true' EXIT
    export QT_QPA_PLATFORM=offscreen
    build/release/guide-pictures "$folder"
    # And one as on a screen of twice the pixels.
    twice=$(mktemp -d)
    QT_SCALE_FACTOR=2 build/release/guide-pictures "$twice"
    mv "$twice/one-selected.png" "$folder/scaled.png"
    rm -r "$twice"
    exit
fi

# shellcheck source=Tools/setup.sh
. Tools/setup.sh
cmake --preset release >/dev/null
cmake --build build/release --target guide-pictures rig >/dev/null
mkdir -p "$folder"
Tools/stage-net desk "$here/Tools/guide-pictures.sh" "$folder" --inside >build/guide-pictures.log 2>&1 || {
    tail -n 15 build/guide-pictures.log >&2
    exit 1
}
ls -l "$folder"
