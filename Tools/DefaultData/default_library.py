# SPDX-License-Identifier: MIT
"""The fixtures of the default library, in file order.

A map is a list of rows of first channels; 0 is a cell without a pixel. Most products are laid out
as the trade lays them out: pixels packed from channel 1, left to right and top to bottom. What
differs is built by its own function below.
"""

import math
from dataclasses import dataclass, field

CHANNELS_PER_PIXEL = {
    "RGB": 3, "RGBL": 4, "RGBA": 4, "RGBW+": 4, "RGBW-": 4, "L": 1, "RrGgBb": 6, "RGBAmber": 4,
    "RGBWAmber": 5,
}


@dataclass
class Fixture:
    manufacturer: str
    product: str
    type: str
    rows: list
    channel_count: int = None
    intensity_channel: int = None
    statics: list = field(default_factory=list)

    @property
    def width(self):
        return len(self.rows[0])

    @property
    def height(self):
        return len(self.rows)

    @property
    def cells(self):
        return [cell for row in self.rows for cell in row]

    @property
    def size(self):
        return CHANNELS_PER_PIXEL[self.type]

    @property
    def highest_channel(self):
        last = [cell + self.size - 1 for cell in self.cells if cell > 0]
        return max(last + [channel for channel, _ in self.statics] + [0])


def packed(width, height, step, first=1):
    """Pixels side by side, row after row."""
    return [[first + (y * width + x) * step for x in range(width)] for y in range(height)]


def numbered(shape, step, first=1):
    """Pixels only where the shape has an x, row after row."""
    channel = first
    rows = []
    for line in shape:
        row = []
        for mark in line:
            row.append(channel if mark == "x" else 0)
            channel += step if mark == "x" else 0
        rows.append(row)
    return rows


def flipped_horizontally(rows):
    return [list(reversed(row)) for row in rows]


def flipped_vertically(rows):
    return list(reversed(rows))


def transposed(rows):
    return [list(column) for column in zip(*rows)]


def serpentine(rows):
    return [list(reversed(row)) if y % 2 else row for y, row in enumerate(rows)]


def two_chains_from_the_middle():
    """12 x 12 pixels fed in the middle of the top edge: the first half of the chain runs down and
    up again towards the right edge, the second half from the middle towards the left one."""
    rows = [[0] * 12 for _ in range(12)]
    channel = 1
    for run, column in enumerate([6, 7, 8, 9, 10, 11, 5, 4, 3, 2, 1, 0]):
        lines = range(12) if run % 2 == 0 else reversed(range(12))
        for line in lines:
            rows[line][column] = channel
            channel += 3
    return rows


def cut(side, first_row, row_count):
    """The rows of a square panel that one universe carries; the others stay empty."""
    rows = [[0] * side for _ in range(side)]
    rows[first_row:first_row + row_count] = packed(side, row_count, 3)
    return rows


def rings(first, step):
    """19 pixels, one in the middle and rings of 6 and 12, on a grid of 17 x 17."""
    rows = [[0] * 17 for _ in range(17)]
    spots = [(8, 8)]
    for count, radius in ((6, 4), (12, 8)):
        for spot in range(count):
            angle = 2 * math.pi * spot / count
            spots.append((8 + round(radius * math.sin(angle)), 8 - round(radius * math.cos(angle))))
    for index, (x, y) in enumerate(spots):
        rows[y][x] = first + index * step
    return rows


def zeros(*channels):
    return [(channel, 0) for channel in channels]


def between(first, step, count, size, last):
    """Every channel up to the last that no pixel covers, held at 0."""
    covered = {first + pixel * step + slot for pixel in range(count) for slot in range(size)}
    return zeros(*[channel for channel in range(1, last + 1) if channel not in covered])


def library():
    fixtures = []
    maker = ""

    def add(product, type_, width=1, height=1, rows=None, first=1, step=None, **more):
        size = CHANNELS_PER_PIXEL[type_]
        if rows is None:
            rows = packed(width, height, step or size, first)
        fixtures.append(Fixture(maker, product, type_, rows, **more))

    maker = "Chroma-Q"
    add("Color Block", "RGB", 4)
    add("Color Force 12 RGBA 8 channels", "RGBAmber", 2)
    add("Color Force 48 RGBA 32 channels", "RGBAmber", 8)
    add("Color Force 72 RGBA 48 channels", "RGBAmber", 12)
    add("Color Force COMPACT RGBA 4 channels", "RGBAmber")
    add("Color Span 2 RGBA 400", "RGBAmber", 2)
    add("Color Span 2 RGBA 800", "RGBAmber", 4)
    add("Color Span 2 RGBA 1200", "RGBAmber", 6)
    add("Color Block II RGBA", "RGBAmber", 4)

    maker = "Generic"
    add("Pixel RGB", "RGB", channel_count=3)
    add("Pixel L", "L")
    add("Pixel RGBL", "RGBL")

    maker = "Elation Pro"
    add("ELAR Quad Pannel", "RGBW+", 2, 2)
    add("FLEX Pixel WP", "RGB", 72)
    add("ELAR 108 Par RGBW", "RGBW+")
    add("ELAR 180 Par RGBW", "RGBW+")
    add("ELAR Quad Bar", "RGBW+", 3)
    add("ELAR Quad Strip", "RGBW+", 6)
    add("ELAR Quad Par 4ch", "RGBW+")
    add("Design LED 36 Tri-Brick", "RGB", 3)
    add("Design LED 60 Tri Strip", "RGB", 10)
    add("ELAR EX Tri Bar 9ch", "RGB", 3)
    add("ELAR Tri Brick", "RGB", 2, 2)
    add("ELAR EX Tri Flood 3ch", "RGB")
    add("ELAR EX Tri Par 3ch", "RGB")
    add("EPAR QA 4ch", "RGBA")
    add("EPAR QW 4ch", "RGBW+")
    add("EPAR Tri", "RGB")
    add("Pixel Touch PCB", "RGB", 13, 4, channel_count=159, intensity_channel=159,
        statics=[(157, 0), (158, 0), (159, 255)])
    add("Opti QA Par 4ch", "RGBA")
    add("Opti Quad Par 4ch", "RGBW+")
    add("Opti RGBA 4ch", "RGBA")
    add("Opti Tri 30 3ch", "RGB")
    add("Opti Tri Par", "RGB")
    add("ELED Strip RGBW", "RGBW+", 8)
    add("Arena Par", "RGBA", channel_count=6, statics=[(5, 255), (6, 0)])
    add("Paladin Std. Mode", "RGB", statics=[(4, 255), (5, 0), (6, 0)])
    # Eight cells, hung in any of the eight ways a panel can be turned and mirrored, then fed row
    # by row in alternating direction.
    cells = packed(4, 2, 3)
    upright = transposed(cells)
    snake = serpentine(cells)
    flips = []
    for rows in (cells, upright, snake):
        flips += [rows, flipped_horizontally(rows), flipped_vertically(rows),
                  flipped_horizontally(flipped_vertically(rows))]
    for number, rows in enumerate(flips, 1):
        name = "Flip default" if number == 1 else f"Flip {number}"
        add(f"Paladin Ext. Mode ({name})", "RGB", rows=rows)
    add("Paladin Ext. Mode (Flip 3", "RGB", rows=[[0]])

    maker = "American DJ"
    add("Flash Panel 16", "L", 4, 4)
    dimmer_last = dict(channel_count=6, statics=[(4, 0), (5, 0), (6, 255)])
    add("Flat Par Tri 7x", "RGB", **dimmer_last)
    add("Flat Par Tri 18x", "RGB", **dimmer_last)
    dimmer_last = dict(channel_count=7, statics=[(5, 0), (6, 0), (7, 255)])
    add("Flat Par QA12x", "RGBA", **dimmer_last)
    add("Flat Par QA5x", "RGBA", **dimmer_last)
    add("Flat Par QWH12x", "RGBW+", **dimmer_last)
    add("Flat Par QWH5x", "RGBW+", **dimmer_last)
    add("Mega Tri Bar", "RGB", 6)
    add("Mega Par Profile", "RGBL")
    add("Mega TriPar Profile", "RGBL")
    add("Mega Pixel LED_24ch", "RGB", 8)
    add("Mega Panel LED", "RGB", 4, 2)
    add("Mega Bar Pro", "RGBA", channel_count=6, statics=[(5, 255), (6, 0)])
    add("Mega 24 pro_12ch", "RGB", 4)
    add("Pro Par 56RGB", "RGBL")
    add("Pro38B LED RC", "RGBL")
    add("Pro 64B LED RC", "RGBL")
    add("Punch LED Pro", "RGBA", statics=[(5, 255), (6, 0)])

    maker = "Chromlech"
    add("Jarag", "L", 5, 5)
    maker = "Ayrton"
    add("Moduled 9 channels", "RrGgBb", first=4, channel_count=9,
        statics=[(1, 255), (2, 0), (3, 0)])
    maker = "Pulsar"
    add("Chroma bank", "RGB", 6)
    maker = "Anolis"
    add("ArcQube 144", "RGB", 6, 6)
    for leds in (12, 18, 24, 36):
        add(f"ArcLine {leds}", "RGB", leds // 3)
    maker = "Kinetix"
    add("iTile", "RGB", rows=serpentine(packed(12, 12, 3)))
    add("iFlex", "RGB", rows=two_chains_from_the_middle())

    maker = "Showtec"
    add("LED Bar DMX 20", "RGB", 6, first=3, channel_count=20, statics=[(1, 255), (2, 0)])
    add("Octopod 30", "RGB", first=2, channel_count=6, statics=zeros(1, 5, 6))
    add("Octopod 90", "RGB", first=2, channel_count=6, statics=zeros(1, 5, 6))
    add("Trackpod 90 (Mode 1 - 48ch)", "RGB", 8, first=2, step=6, statics=between(2, 6, 8, 3, 48))
    add("LED Archi Panel (Mode 128 ch)", "RGBW+", 8, 4)
    add("LED Pixel Track (Mode 1 - 48ch)", "RGB", 16)
    add("LED Pixel Track Pro (Mode 160)", "RGB", 52, channel_count=160, intensity_channel=159,
        statics=[(157, 0), (158, 0), (159, 255), (160, 0)])
    add("Sunstrip LED RGB-E (Mode 6 - 30 ch)", "RGB", 10)
    add("LED Versatrack-E (Mode 20ch)", "RGB", 6, channel_count=20, statics=[(19, 255), (20, 0)])
    add("Octostrip (Mode 1 - 48ch)", "RGB", 16)
    add("LED Dance Floor (Mode 12 ch)", "RGB", 2, 2)
    add("LED Par 36 DMX", "RGBL")

    maker = "EvenLED"
    add("EvenLED", "L", 4, 4)

    maker = "Schnick Schnack Systems"
    add("LED Strip C25-250", "RGB", 10)
    add("LED Strip C50-250", "RGB", 5)
    add("LED Strip C50-500", "RGB", 10)
    add("LED Strip C100-1000", "RGB", 10)
    add("LED Tile C25", "RGB", 10, 10)
    add("LED Tile C50", "RGB", 5, 5)
    add("LED Panel C60-50", "RGB", 12, 12)
    for universe in range(5):
        add(f"LED Panel C60-25 Univ{universe}", "RGB",
            rows=cut(24, universe * 5, min(5, 24 - universe * 5)))
    for universe in range(3):
        add(f"LED Panel C100 Univ {universe}", "RGB",
            rows=cut(20, universe * 7, min(7, 20 - universe * 7)))

    maker = "Chauvet"
    mini = "COLORband PiX Mini"
    add(f"{mini} - 3 channel", "RGB")
    add(f"{mini} - 4 channels", "RGBL")
    for channels in (6, 9, 18):
        add(f"{mini} - {channels} channels", "RGB", channels // 3)
    bar = "COLORband PiX"
    add(f"{bar} - 7 channels", "RGBL", channel_count=7, statics=zeros(5, 6, 7))
    add(f"{bar} - 3 channels", "RGB")
    add(f"{bar} - 4 channels", "RGBL")
    for channels in (6, 9, 12, 18, 36):
        add(f"{bar} - {channels} channels", "RGB", channels // 3)
    add("PiX Par 12 - 36 channels", "RGB", rows=numbered([".xx.", "xxxx", "xxxx", ".xx."], 3))
    add("PiX Par 12 - 12 channels", "RGB", 2, 2)
    add("PiX Par 12 - 3 channels", "RGB")
    add("PiX Par 24 - 72 channels", "RGB",
        rows=numbered(["..xx..", ".xxxx.", "xxxxxx", "xxxxxx", ".xxxx.", "..xx.."], 3))
    add("PiX Par 24 - 12 channel", "RGB", 2, 2)
    add("PiX Par 24 - 9 channels", "RGB", 3)
    add("PiX Par 24 - 3 channels", "RGB")

    maker = "Litecraft"
    add("LPiX.40 Mk2", "RGB", 40)
    add("2PiX.80 Mk2", "RGB", 40, 2)
    add("BPiX.160 Mk2", "RGB", 40, 4)
    add("QPiX.144 Mk2", "RGB", 12, 12)
    for product in ("MiniPAR AT10", "PAR 64 AT10", "InLED AT10", "OutLED AT10"):
        add(product, "RGBW+")
    add("SunX.10", "RGBW+", channel_count=6, statics=[(5, 255), (6, 0)])
    for heads in (2, 4, 5):
        add(f"PowerBar {heads}", "RGB", heads, first=2, channel_count=1 + 3 * heads,
            statics=[(1, 255)])
    add("PowerBar AT10.sx", "RGBW+", 4)
    add("OutdoorBar AT10.sx", "RGBW+", 4)
    add("CPiX.4", "RGB", 2, 2)
    add("TPiX.7", "RGB", 7)
    add("ZX.6", "L", 6)
    for product in ("MiniPAR AT3", "PAR 64 AT3", "Studio PAR AT3", "Studio PAR AT3 Pro",
                    "OutdoorPAR AT3"):
        add(product, "RGB")
    add("BlindX.4", "L", 2, 2)
    add("BattLED AT5", "RGBWAmber")
    add("BattLED AT10.x", "RGBW-")
    for heads in (2, 4, 5):
        add(f"Powerbar {heads}", "RGB", heads)
    for product in ("Par RGB Pro", "Par AT3", "Par 64 AT3", "Outdoor par AT3", "Studiopar AT3"):
        add(product, "RGBL")
    add("PowerBarX.15", "RGB", 15)
    add("WashX.21", "RGBW-", channel_count=6, statics=[(5, 255), (6, 0)])

    maker = "Prolights"
    add("DIGIBAR160", "RGB", 40, 4)
    add("DIGITILE144", "RGB", 12, 12)
    add("DIGISTRIP40", "RGB", 40)
    add("HALUPIX", "L", 10)
    add("HALUROCK", "L", 5)
    add("CHROMAROCK", "RGBWAmber", channel_count=7, statics=[(6, 255), (7, 0)])

    maker = "Robe"
    # Pan, tilt, zoom and the like are the first 33 channels and stay free for the desk.
    add("Spiider - Mode 4", "RGB", rows=rings(34, 3), channel_count=90)

    maker = "Zentri"
    add("Brindle Tile 8x8 RGB", "RGB", 8, 8)
    add("Brindle Tile 13x13 RGB", "RGB", 13, 13)
    return fixtures
