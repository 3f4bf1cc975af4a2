#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes Resources/LEDFixtureLib.wfl and Resources/DemoMapping.wfm, or checks them.

    make_default_data.py            writes both files
    make_default_data.py --check    says whether the committed files are what would be written

Both are in the exact form that PixelWeft itself writes. Needs Python 3 and nothing else; the
build doesn't run it, the files are in the repository.
"""

import struct
import sys
from pathlib import Path

from default_library import library

RESOURCES = Path(__file__).resolve().parents[2] / "Resources"
LIBRARY_VERSION = 1
CANVAS = (640, 360)


class Element:
    def __init__(self, name, attributes=(), children=(), text=None):
        self.name, self.text = name, text
        self.attributes = [(key, str(value)) for key, value in attributes if value is not None]
        self.children = list(children)


def escaped(text):
    for char, name in ("&", "amp"), ("<", "lt"), (">", "gt"), ('"', "quot"), ("'", "apos"):
        text = text.replace(char, f"&{name};")
    return text


def printed(element, depth=0):
    attributes = "".join(f' {key}="{escaped(value)}"' for key, value in element.attributes)
    start = "    " * depth + "<" + element.name + attributes
    if element.text is not None:
        return f"{start}>{escaped(element.text)}</{element.name}>\n"
    if not element.children:
        return f"{start} />\n"
    inner = "".join(printed(child, depth + 1) for child in element.children)
    return f"{start}>\n{inner}{'    ' * depth}</{element.name}>\n"


def fixture_element(fixture):
    cells = "".join("".join(f"{cell} " for cell in row) + " " for row in fixture.rows)
    size = [("width", fixture.width), ("height", fixture.height), ("type", fixture.type)]
    children = [Element("PixelMapping", size, text=cells)]
    children += [Element("StaticChannel", [("channel", channel), ("value", value)])
                 for channel, value in fixture.statics]
    return Element("LEDFixture", [("manufacturer", fixture.manufacturer),
                                  ("product", fixture.product),
                                  ("channel_count", fixture.channel_count),
                                  ("intensity_channel", fixture.intensity_channel)], children)


# Product, centre and size in pixels of the canvas, degrees, mirrored left to right, then the
# universe and the first channel. The right half of the stage mirrors the left one.
DEMO_ELEMENTS = [
    ("LED Panel C60-50", (320, 178), (192, 192), 0, False, 0, 1),
    ("DIGISTRIP40", (320, 20), (480, 12), 0, False, 1, 1),
    ("LPiX.40 Mk2", (320, 344), (480, 12), 0, False, 1, 121),
    ("ArcLine 36", (36, 180), (264, 22), 90, False, 1, 241),
    ("ArcLine 36", (604, 180), (264, 22), 90, True, 1, 277),
    ("Spiider - Mode 4", (140, 124), (119, 119), 0, False, 2, 1),
    ("Spiider - Mode 4", (500, 124), (119, 119), 0, True, 2, 91),
    ("PiX Par 24 - 72 channels", (140, 246), (84, 84), 0, False, 3, 1),
    ("PiX Par 24 - 72 channels", (500, 246), (84, 84), 0, True, 3, 73),
    ("COLORband PiX - 36 channels", (258, 306), (96, 12), 30, False, 4, 1),
    ("COLORband PiX - 36 channels", (382, 306), (96, 12), 330, True, 4, 37),
    ("ELAR Quad Strip", (140, 312), (112, 16), 0, False, 4, 73),
    ("ELAR Quad Strip", (500, 312), (112, 16), 0, True, 4, 97),
    ("Trackpod 90 (Mode 1 - 48ch)", (140, 46), (112, 14), 0, False, 4, 121),
    ("Trackpod 90 (Mode 1 - 48ch)", (500, 46), (112, 14), 0, True, 4, 169),
]


def decimals(value):
    """As the program prints a number that it holds in 32 bits."""
    return "%f" % struct.unpack("<f", struct.pack("<f", value))[0]


def demo_element(description, product, centre, size, degrees, mirrored, universe, channel):
    def fractions(pair):
        return ",".join(decimals(value / whole) for value, whole in zip(pair, CANVAS))
    video = [("center", fractions(centre)), ("size", fractions(size)),
             ("rotation", decimals(degrees)), ("horizontalflip", "true" if mirrored else "false"),
             ("verticalflip", "false"), ("filtermode", "bilinear")]
    address = [("subnet", 0), ("universe", universe), ("channel", channel), ("ipconf", "Auto"),
               ("ipName", "")]
    return Element("Element", [("description", description), ("fixture", product)], [
        Element("VideoMapping", children=[Element(name, text=text) for name, text in video]),
        Element("DMXMapping", [("type", "ArtNet")], [Element("ArtNetMapping", address)]),
    ])


def library_text(fixtures):
    return printed(Element("LEDFixtureLibrary", [("version", LIBRARY_VERSION)],
                           [fixture_element(fixture) for fixture in fixtures]))


def demo_text(fixtures):
    used = {product for product, *_ in DEMO_ELEMENTS}
    seen = {}
    elements = []
    for product, *rest in DEMO_ELEMENTS:
        seen[product] = seen.get(product, 0) + 1
        elements.append(demo_element(f"{product}-{seen[product]}", product, *rest))
    merging = [("Enabled", 0), ("FromStartSubnet", 0), ("FromStartUniverse", 0),
               ("ConsecutiveUniverses", 1), ("ToStartSubnet", 1), ("ToStartUniverse", 0),
               ("MergerDMXSource", "PixelWeft")]
    mapping = [("name", "Demo"), ("version", "1.0"), ("resolution", "%d,%d" % CANVAS),
               ("autoUnicast", 0), ("network", "2.X.X.X")]
    top_level = [
        Element("LEDFixtureLibrary", children=[fixture_element(fixture) for fixture in fixtures
                                               if fixture.product in used]),
        Element("UniverseMerging", merging),
        Element("ManualNetworkNodes"),
        Element("Mapping", mapping, elements),
    ]
    return "".join(printed(element) for element in top_level)


def main():
    fixtures = library()
    stale = False
    for name, text in (("LEDFixtureLib.wfl", library_text(fixtures)),
                       ("DemoMapping.wfm", demo_text(fixtures))):
        content = b"\xff\xfe" + text.encode("utf-16-le")
        path = RESOURCES / name
        if sys.argv[1:] == ["--check"]:
            same = path.exists() and path.read_bytes() == content
            print(f"{name}: {'up to date' if same else 'differs'}")
            stale = stale or not same
        else:
            path.write_bytes(content)
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main())
