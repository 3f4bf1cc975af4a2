#!/bin/bash
# SPDX-License-Identifier: MIT
# guide-pictures.sh [--looks] [--language CODE] [FOLDER]: takes the pictures of the README and of the user guide (into
# Docs/pictures, or FOLDER), from the real window on a private network with two nodes at its other end. With --looks it
# takes them all, and those of the dialogs, boxes and menus that the guide doesn't show, in both looks, at once and twice
# the size (into build/looks, or FOLDER): to look at after a change of the window. The window speaks English, or the
# language of the CODE, as "de".
set -eu
cd "$(dirname "$0")/.."
looks='' usual=Docs/pictures
if [ "${1:-}" = --looks ]; then
    looks=1 usual=build/looks
    shift
fi
[ "${2:-}" = --inside ] || export LANGUAGE=en
if [ "${1:-}" = --language ]; then
    LANGUAGE=$2
    shift 2
fi
folder=$(realpath -m "${1:-$usual}")
here=$PWD

take() { # take SCALE FOLDER [LOOK]; the screen has room for every dialog
    mkdir -p "$2"
    SCREEN=3200x2000x24 PICTURE_AFTER=600 QT_SCALE_FACTOR=$1 Tools/headless.sh none build/release/guide-pictures "${@:2}"
}

if [ "${2:-}" = --inside ]; then
    "$STAGE_NET" rig build/release/rig answer -a 2.0.0.10 2.0.0.11 -u 0-3 --stride 4 --name "Demo node" &
    rig=$!
    trap 'kill $rig 2>/dev/null || true; wait $rig || true' EXIT
    if [ -n "$looks" ]; then
        for look in grey night; do
            for scale in 1 2; do
                take $scale "$folder/$look-${scale}x" $look
            done
        done
        exit
    fi
    take 1 "$folder"
    # And one as on a screen of twice the pixels.
    twice=$(mktemp -d)
    take 2 "$twice"
    mv "$twice/one-selected.png" "$folder/scaled.png"
    build/release/pixelweft-patch Resources/DemoMapping.wfm --pdf "$twice/patch.pdf"
    pdftoppm -png -r 80 -f 2 -l 2 -singlefile "$twice/patch.pdf" "$folder/patch-layout"
    rm -r "$twice"
    exit
fi

# shellcheck source=Tools/setup.sh
. Tools/setup.sh check
cmake --preset release >/dev/null
cmake --build build/release --target guide-pictures pixelweft-patch rig >/dev/null
Tools/stage-net desk "$here/Tools/guide-pictures.sh" ${looks:+--looks} "$folder" --inside \
    >build/guide-pictures.log 2>&1 || {
    tail -n 15 build/guide-pictures.log >&2
    exit 1
}
ls -l "$folder"
