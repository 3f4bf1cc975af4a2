#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""definitions_check.py PIXELWEFT-FIXTURES FOLDER: imports a folder of the Open Fixture Library and judges the pixels.

Which colour is on which channel is found here by another way than in the program: every template is resolved for every
pixel, every mode laid out flat, and red, green and blue are looked for in the flat list. Of the modes that have them
together 98 in 100 must be imported, each with all of these pixels at their places in the matrix."""
import json
import re
import subprocess
import sys
import tempfile
from itertools import product
from pathlib import Path
from xml.etree import ElementTree

if len(sys.argv) < 3 or not sys.argv[2]:
    print("No folder of definitions is given.")
    sys.exit(77)
COMMAND, FOLDER = sys.argv[1], Path(sys.argv[2])
LETTERS = {"RGB": "RGB", "RBG": "RBG", "GRB": "GRB", "GBR": "GBR", "BRG": "BRG", "BGR": "BGR", "RGBW+": "RGBW",
           "RGBAmber": "RGBA", "RrGgBb": "RrGgBb", "CMY": "CMY", "YMC": "YMC", "RB": "RB", "R": "R", "G": "G", "B": "B"}


def letter(channel):
    """The colour of a channel as a letter; a dot for none."""
    capabilities = channel.get("capabilities") or [channel["capability"]]
    colours = {c["color"] for c in capabilities if c["type"] == "ColorIntensity"}
    return colours.pop().split()[-1][0] if len(colours) == 1 and colours <= {
        "Red", "Green", "Blue", "Cyan", "Magenta", "Yellow", "White", "Warm White", "Cold White", "Amber"} else "."


def places(matrix):
    """The cell of each pixel as (x, y, z), and the matrix' size."""
    if "pixelKeys" in matrix:
        layers = matrix["pixelKeys"]
        size = max(len(row) for layer in layers for row in layer), max(map(len, layers)), len(layers)
        return {key: (x, y, z) for z, layer in enumerate(layers) for y, row in enumerate(layer)
                for x, key in enumerate(row) if key is not None}, size
    size = tuple(matrix.get("pixelCount", ()))
    cells = {}
    for place in product(*map(range, size)):
        along = [str(n + 1) for n, count in zip(place, size) if count > 1]
        cells["(" + ", ".join(along) + ")" if len(along) > 1 else along[0] if along else "1"] = place
    return cells, size


def meanings(fixture, pixels):
    """Of each key of a mode its letter (small for a second byte) and its pixel."""
    table, switched = {}, {}
    entries = [(key.replace("$pixelKey", pixel), json.loads(json.dumps(channel).replace("$pixelKey", pixel)), pixel)
               for key, channel in fixture.get("templateChannels", {}).items() for pixel in pixels]
    entries += [(key, channel, None) for key, channel in fixture.get("availableChannels", {}).items()]
    for key, channel, pixel in entries:
        pixel = pixel or (table[key][1] if key in table else None)
        table[key] = letter(channel), pixel
        for number, alias in enumerate(channel.get("fineChannelAliases", [])):
            table[alias] = (letter(channel).lower() if number == 0 else "."), pixel
        for capability in channel.get("capabilities", []):
            for alias, target in capability.get("switchChannels", {}).items():
                switched.setdefault(alias, []).append(target)
    for alias, targets in switched.items():  # the colour, if it is one of what the alias may be
        table[alias] = max((table.get(t, (".", None)) for t in targets), key=lambda meaning: meaning[0] != ".")
    return table


def flat(mode, cells, groups):
    for entry in mode["channels"]:
        if not isinstance(entry, dict):
            yield entry
            continue
        keys = entry["repeatFor"]
        if keys == "eachPixelABC":
            keys = sorted(cells, key=lambda k: [(not s.isdigit(), int(s) if s.isdigit() else s.lower())
                                                for s in re.findall(r"\d+|\D", k)])
        elif keys == "eachPixelGroup":
            keys = list(groups)
        elif isinstance(keys, str):
            order = ["XYZ".index(axis) for axis in reversed(keys[-3:])]
            keys = sorted(cells, key=lambda k: [cells[k][axis] for axis in order])
        pairs = product(keys, entry["templateChannels"])
        if entry["channelOrder"] == "perChannel":
            pairs = ((key, template) for template, key in product(entry["templateChannels"], keys))
        yield from (template and template.replace("$pixelKey", key) for key, template in pairs)


def sets(letters, owners):
    """The first channels (from 0) of red, green and blue together, of one pixel, none on another."""
    at = 0
    while at < len(letters):
        long = 6 if letters[at:at + 6] == "RrGgBb" else 3 if sorted(letters[at:at + 3]) == list("BGR") else 0
        if long and len(set(owners[at:at + long])) == 1:
            yield at
        at += max(long, 1)


def fault(fixture, letters, owners, cells, size):
    """What is wrong with an imported fixture, None for nothing."""
    pixels = fixture.find("PixelMapping")
    numbers = [int(n) for n in pixels.text.split()]
    width, kind, used = int(pixels.get("width")), LETTERS.get(pixels.get("type"), "?"), set()
    for start in filter(None, numbers):
        channels = range(start - 1, start - 1 + len(kind))
        if "".join(letters[c] for c in channels) != kind or len({owners[c] for c in channels}) > 1:
            return f"{pixels.get('type')} on channel {start}"
        if used & set(channels):
            return f"channel {start} twice"
        used |= set(channels)
    found = list(sets(letters, owners))
    of_pixels = [s for s in found if owners[s] in cells]
    for start in of_pixels or found[:0 if any(owners[s] for s in found) else None]:
        if start + 1 not in numbers:
            return f"no pixel on channel {start + 1}"
        if owners[start] in cells and len(of_pixels) > 1:
            x, y, z = cells[owners[start]]
            if numbers.index(start + 1) != (z * size[1] + y) * width + x or width != size[0]:
                return f"{owners[start]} is at another place"
    return None


def main():
    makers = json.loads((FOLDER / "manufacturers.json").read_text())
    with tempfile.TemporaryDirectory() as out:
        status = subprocess.run([COMMAND, FOLDER, "-o", f"{out}/out.wfl"], stdout=subprocess.DEVNULL).returncode
        library = ElementTree.fromstring(Path(f"{out}/out.wfl").read_text(encoding="utf-16"))
    fixtures = {(f.get("manufacturer"), f.get("product")): f for f in library}
    together, imported, faults = 0, 0, []
    for path in sorted(FOLDER.glob("*/*.json")):
        definition = json.loads(path.read_text())
        if "redirectTo" in definition:
            continue
        matrix = definition.get("matrix", {})
        cells, size = places(matrix)
        groups = matrix.get("pixelGroups", {})
        table = meanings(definition, [*cells, *groups])
        for mode in definition["modes"]:
            channels = [table.get(key, (".", None)) for key in flat(mode, cells, groups)]
            letters, owners = "".join(c[0] for c in channels), [c[1] for c in channels]
            if not list(sets(letters, owners)):
                continue
            together += 1
            names = [" ".join(text.split()) for text in (makers[path.parent.name]["name"], definition["name"], mode["name"])]
            fixture = fixtures.get((names[0], f"{names[1]} - {names[2]}"))
            if fixture is not None:
                imported += 1
                if what := fault(fixture, letters, owners, cells, size):
                    faults.append(f"{path.name} {mode['name']}: {what}")
    print(*faults, sep="\n")
    print(f"{imported} of {together} modes with red, green and blue together are imported, {len(faults)} wrongly")
    return status in (0, 1) and together > 0 and imported >= 0.98 * together and not faults


sys.exit(not main())
