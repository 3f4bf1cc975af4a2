#!/bin/bash
# SPDX-License-Identifier: MIT
# readme-picture.sh: takes the README's picture anew, from the demonstration on its private network.
set -eu
cd "$(dirname "$0")/.."
env -u DISPLAY -u WAYLAND_DISPLAY ./run demo --seconds 15 >/dev/null
mkdir -p Docs/pictures
# The screen is larger than the window and of one colour; 255 colours are enough and keep it small.
convert build/PixelWeft-demo.png -trim +repage -strip -colors 255 PNG8:Docs/pictures/demo.png
echo "$(stat -c %s Docs/pictures/demo.png) bytes: Docs/pictures/demo.png"
