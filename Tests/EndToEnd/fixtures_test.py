# SPDX-License-Identifier: MIT
"""Definitions of other programs on the wire: pixels and constants on the channels that the definition names."""

import json
import subprocess
import time

import stage
from document import Document, colour
from screen import PLATFORM, Screen
from stage import BROADCAST, dmx

SHUTTER = [("Closed", 0, 9), ("Strobe", 10, 199), ("Open", 200, 249), ("Strobe", 250, 255)]
OPEN = 224  # the middle of its range
MIDDLE = (128, 0)
FULL = 255


def json_definition():
    """Two rows of two pixels, in one mode behind 16-bit pan and a dimmer, in the other from the last to the first."""
    colours = ["Red", "Green", "Blue"]

    def pixels(keys, order):
        return {"insert": "matrixChannels", "repeatFor": keys, "channelOrder": "perPixel",
                "templateChannels": [f"{colour} $pixelKey" for colour in order]}

    return json.dumps({
        "name": "Wall",
        "categories": ["Matrix"],
        "matrix": {"pixelCount": [2, 2, 1]},
        "availableChannels": {
            "Pan": {"fineChannelAliases": ["Pan fine"],
                    "capability": {"type": "Pan", "angleStart": "0deg", "angleEnd": "540deg"}},
            "Dimmer": {"capability": {"type": "Intensity"}},
            "Shutter": {"capabilities": [{"dmxRange": [first, last], "type": "ShutterStrobe", "shutterEffect": effect}
                                         for effect, first, last in SHUTTER]},
        },
        "templateChannels": {f"{colour} $pixelKey": {"capability": {"type": "ColorIntensity", "color": colour}}
                             for colour in colours},
        "modes": [
            {"name": "Wide", "channels": ["Pan", "Pan fine", "Dimmer", pixels("eachPixelXYZ", colours), "Shutter"]},
            {"name": "Back", "channels": ["Shutter", pixels(["(2, 2)", "(1, 2)", "(2, 1)", "(1, 1)"], colours[::-1])]},
        ],
    })


def qxf_definition():
    """The same fixture in the other format."""
    names = [(colour, pixel) for pixel in range(4) for colour in ("Red", "Green", "Blue")]

    def mode(name, channels):
        heads = [[i for i, channel in enumerate(channels) if channel[-1] == str(pixel)] for pixel in range(4)]
        return (f'<Mode Name="{name}">' +
                "".join(f'<Channel Number="{i}">{channel}</Channel>' for i, channel in enumerate(channels)) +
                "".join("<Head>" + "".join(f"<Channel>{i}</Channel>" for i in head) + "</Head>" for head in heads) +
                "</Mode>")

    pixels = [f"{colour} {pixel}" for colour, pixel in names]
    return ("<FixtureDefinition><Manufacturer>Maker</Manufacturer><Model>Wall</Model><Type>LED Bar (Pixels)</Type>"
            '<Channel Name="Pan" Preset="PositionPan"/><Channel Name="Pan fine" Preset="PositionPanFine"/>'
            '<Channel Name="Dimmer" Preset="IntensityMasterDimmer"/>'
            '<Channel Name="Shutter"><Group Byte="0">Shutter</Group>' +
            "".join(f'<Capability Min="{first}" Max="{last}">{effect}</Capability>'
                    for effect, first, last in SHUTTER) + "</Channel>" +
            "".join(f'<Channel Name="{colour} {pixel}" Preset="Intensity{colour}"/>' for colour, pixel in names) +
            mode("Wide", ["Pan", "Pan fine", "Dimmer", *pixels, "Shutter"]) +
            mode("Back", ["Shutter", *pixels[::-1]]) +
            '<Physical><Layout Width="2" Height="2"/></Physical></FixtureDefinition>')


def cells(x, y):
    """The four pixels of the fixture where its top left one lies there, row by row."""
    return [colour(x + column, y + row) for row in range(2) for column in range(2)]


def both_modes():
    """A document with both of them, whose fixtures are in the library alone, and what the rig is to receive."""
    document = Document()
    document.element("Wall - Wide", 3, 2, 2, 2, universe=0, channel=1)
    document.element("Wall - Back", 8, 5, 2, 2, universe=1, channel=3)
    wide = bytes([*MIDDLE, FULL]) + b"".join(map(bytes, cells(3, 2))) + bytes([OPEN])
    back = bytes([0, 0, OPEN]) + b"".join(bytes(pixel[::-1]) for pixel in cells(8, 5)[::-1])
    return document, {(BROADCAST, 0): wide, (BROADCAST, 1): back + bytes(1)}


class Fixtures(stage.Case):

    def setUp(self):
        super().setUp()
        self.home.use_test_picture()
        self.library = self.home.data / "Zentri PixelWeft2" / "LEDFixtureLib.wfl"
        self.wire = self.watch()
        self.definitions = {}
        for name, text in (("wall.json", json_definition()), ("wall.qxf", qxf_definition())):
            self.definitions[name] = self.home.folder / "maker" / name
            self.definitions[name].parent.mkdir(exist_ok=True)
            self.definitions[name].write_text(text)

    def assertSent(self, expected, since=0.0):
        self.wire.wait_for(10, dmx(1), 30, "frames", since)
        found = {}
        for packet in self.wire.packets(dmx(), since):
            found.setdefault((packet.destination, packet.universe), set()).add(packet.channels)
        self.assertEqual({key: {channels} for key, channels in expected.items()}, found)

    def test_the_tool_makes_the_library_that_is_played(self):
        document, expected = both_modes()
        self.home.put_document(document)
        self.library.parent.mkdir(parents=True)
        for definition in self.definitions.values():
            imported = subprocess.run([stage.beside_program("pixelweft-fixtures"), definition, "-o", self.library],
                                      check=True, capture_output=True, text=True)
            self.assertEqual("Files: 1, modes: 2, imported: 2, known already: 0\n", imported.stdout)
            begin = time.time()
            program = self.start()
            self.assertSent(expected, begin)
            program.end()

    def import_and_play(self, name):
        """By the keyboard: Import Fixtures, and then Import with a document that uses them."""
        document, expected = both_modes()
        layout = self.home.folder / "layout.wfm"
        self.home.put_document(document, layout)
        program = self.start(platform=PLATFORM)
        screen = Screen()
        self.addCleanup(screen.close)
        program.wait_for_log("Entering Using local socket state")
        screen.settle()
        screen.press("Alt", "f")
        screen.press("f")
        screen.type(str(self.definitions[name]))
        screen.press("Alt", "i")
        stage.wait(lambda: "Wall - Back".encode("utf-16-le") in self.library.read_bytes(), 20,
                   "the fixtures are in the library's file")
        screen.press("Alt", "f")
        screen.press("i")
        screen.type(str(layout))
        self.assertSent(expected)

    def test_the_window_imports_json_and_plays_it(self):
        self.import_and_play("wall.json")

    def test_the_window_imports_qxf_and_plays_it(self):
        self.import_and_play("wall.qxf")


if __name__ == "__main__":
    stage.run()
