# SPDX-License-Identifier: MIT
"""Documents and pictures that the tests give to the program, written without any of its code."""

import html
import struct

WIDTH, HEIGHT = 16, 8  # of the test picture, in pixels; the canvas is twice as large


def colour(x, y):
    """Red, green, blue of a pixel of the test picture: no two are alike. Outside of it there is black."""
    if not (0 <= x < WIDTH and 0 <= y < HEIGHT):
        return (0, 0, 0)
    return (10 + 15 * x, 20 + 25 * y, (5 + 37 * x + 91 * y) % 256)


def write_picture(path):
    """The test picture as a bitmap file of 24 bits a pixel, its first row first."""
    rows = bytes(byte for y in range(HEIGHT) for x in range(WIDTH) for byte in reversed(colour(x, y)))
    path.write_bytes(
        struct.pack("<2sIIIIiiHHIIiiII", b"BM", 54 + len(rows), 0, 54, 40, WIDTH, -HEIGHT, 1, 24, 0, len(rows), 0, 0, 0,
                    0) + rows)


class Document:
    """A mapping document, built line by line as its text form says."""

    def __init__(self, network="2.X.X.X", auto_unicast=False, merging=None):
        self._network = network
        self._auto_unicast = int(auto_unicast)
        self._merging = merging or dict(Enabled=0, FromStartSubnet=0, FromStartUniverse=0, ConsecutiveUniverses=1,
                                        ToStartSubnet=0, ToStartUniverse=0)
        self._fixtures = []
        self._elements = []

    def fixture(self, product, width, height, kind, cells, channel_count=None, constants=()):
        """Adds a fixture: first channels of its pixels in reading order, constants as (channel, value)."""
        count = f' channel_count="{channel_count}"' if channel_count is not None else ""
        self._fixtures += [
            f'    <LEDFixture manufacturer="Test" product="{product}"{count}>',
            f'        <PixelMapping width="{width}" height="{height}" type="{kind}">'
            f'{" ".join(map(str, cells))}</PixelMapping>',
            *(f'        <StaticChannel channel="{channel}" value="{value}" />' for channel, value in constants),
            "    </LEDFixture>",
        ]

    def element(self, product, x, y, width, height, universe, channel, to="Auto", rotation=0, flip_horizontal=False,
                flip_vertical=False, node_name="", description=None):
        """Places a fixture: the top left pixel of the picture that it covers, and how many it covers.

        A turned element keeps its centre, and so covers other pixels.
        """
        name = description or f"{product}-{len(self._elements) + 1}"
        name = html.escape(name).replace("\n", "&#10;")
        self._elements.append("\n".join([
            f'    <Element description="{name}" fixture="{product}">',
            "        <VideoMapping>",
            f"            <center>{(x + width / 2) / WIDTH:f},{(y + height / 2) / HEIGHT:f}</center>",
            f"            <size>{width / WIDTH:f},{height / HEIGHT:f}</size>",
            f"            <rotation>{rotation:f}</rotation>",
            f"            <horizontalflip>{str(flip_horizontal).lower()}</horizontalflip>",
            f"            <verticalflip>{str(flip_vertical).lower()}</verticalflip>",
            "            <filtermode>bilinear</filtermode>",
            "        </VideoMapping>",
            '        <DMXMapping type="ArtNet">',
            f'            <ArtNetMapping subnet="{universe // 16}" universe="{universe % 16}" channel="{channel}" '
            f'ipconf="{to}" ipName="{node_name}" />',
            "        </DMXMapping>",
            "    </Element>",
        ]))

    def to_bytes(self):
        merging = " ".join(f'{key}="{value}"' for key, value in self._merging.items())
        lines = [
            "<LEDFixtureLibrary>",
            *self._fixtures,
            "</LEDFixtureLibrary>",
            f"<UniverseMerging {merging} />",
            "<ManualNetworkNodes />",
            f'<Mapping name="Untitled" version="1.0" resolution="{2 * WIDTH},{2 * HEIGHT}" '
            f'autoUnicast="{self._auto_unicast}" network="{self._network}">',
            *self._elements,
            "</Mapping>",
        ]
        return b"\xff\xfe" + ("\n".join(lines) + "\n").encode("utf-16-le")


def strip_document(universe=0, **options):
    """A strip of four RGB pixels at the picture's (2, 1), from channel 1 of the universe."""
    document = Document(**options)
    document.fixture("Strip", 4, 1, "RGB", [1, 4, 7, 10])
    document.element("Strip", 2, 1, 4, 1, universe=universe, channel=1)
    return document


STRIP = bytes(byte for x in range(2, 6) for byte in colour(x, 1))
