# SPDX-License-Identifier: MIT
"""From a document and a picture to DMX on the wire: bytes, lengths, addresses, ports and rates."""

import stage
from document import HEIGHT, STRIP, WIDTH, Document, colour
from stage import BROADCAST, DESK, RIG, dmx

OTHER_RIG = "2.0.0.11"


def pixels(cells):
    """RGB of these pixels of the picture, in their order."""
    return bytes(byte for x, y in cells for byte in colour(x, y))


def luminance(red, green, blue):
    return (red + green + green // 2 + blue // 2) // 3


def many_kinds():
    """A document with one of everything, and what it must put on the wire: {(address, universe): channels}."""
    document = Document()
    document.fixture("Strip", 4, 1, "RGB", [1, 4, 7, 10])
    document.fixture("Dot", 1, 1, "RGB", [1])
    document.fixture("Square", 2, 2, "RGBW+", [5, 9, 1, 13])
    document.fixture("Warm", 2, 1, "RGBAmber", [1, 5])
    document.fixture("Odd", 2, 1, "GRB", [1, 4])
    document.fixture("Paint", 1, 1, "CMY", [1])
    document.fixture("White", 1, 1, "L", [1])
    document.fixture("Head", 1, 1, "RGB", [2], channel_count=9, constants=[(1, 255), (8, 7)])
    document.fixture("Wall", WIDTH, HEIGHT, "RGB", range(1, 3 * WIDTH * HEIGHT, 3))
    expected = {}

    # Straight, mirrored, and turned about its centre, with a gap of unused channels.
    document.element("Strip", 2, 1, 4, 1, universe=0, channel=1)
    document.element("Strip", 6, 3, 4, 1, universe=0, channel=15, flip_horizontal=True)
    document.element("Strip", 8.5, 3.5, 4, 1, universe=0, channel=27, rotation=90)
    document.element("Strip", 0, 7, 4, 1, universe=0, channel=39, rotation=180)
    expected[BROADCAST, 0] = (STRIP + bytes(2) + pixels([(9, 3), (8, 3), (7, 3), (6, 3)]) +
                              pixels([(10, 2), (10, 3), (10, 4), (10, 5)]) +
                              pixels([(3, 7), (2, 7), (1, 7), (0, 7)]))

    # Three channels are an odd number, and the wire takes even ones.
    document.element("Dot", 5, 5, 1, 1, universe=1, channel=1)
    expected[BROADCAST, 1] = pixels([(5, 5)]) + bytes(1)

    # Layouts of colour, and a later element on top of an earlier one.
    document.element("Square", 10, 0, 2, 2, universe=2, channel=1)
    document.element("Warm", 12, 6, 2, 1, universe=2, channel=17)
    document.element("Odd", 1, 2, 2, 1, universe=2, channel=25)
    document.element("Paint", 7, 7, 1, 1, universe=2, channel=31)
    document.element("White", 15, 0, 1, 1, universe=2, channel=31)
    order = [colour(10, 1), colour(10, 0), colour(11, 0), colour(11, 1)]
    layouts = b"".join(bytes([*rgb, luminance(*rgb)]) for rgb in order)
    layouts += b"".join(bytes([*rgb, min(rgb[:2])]) for rgb in (colour(12, 6), colour(13, 6)))
    layouts += b"".join(bytes([green, red, blue]) for red, green, blue in (colour(1, 2), colour(2, 2)))
    layouts += bytes([luminance(*colour(15, 0)), 255 - colour(7, 7)[1], 255 - colour(7, 7)[2], 0])
    expected[BROADCAST, 2] = layouts

    # Constants, free channels, and pixels beyond the edge of the picture.
    document.element("Head", 3, 4, 1, 1, universe=17, channel=1)
    document.element("Strip", -2, 0, 4, 1, universe=17, channel=10)
    expected[BROADCAST, 17] = (bytes([255]) + pixels([(3, 4)]) + bytes([0, 0, 0, 7, 0]) + bytes(6) +
                               pixels([(0, 0), (1, 0)]) + bytes(1))

    # The last universe that a document can name, filled to its last channel and not beyond.
    document.element("Wall", 0, 0, WIDTH, HEIGHT, universe=255, channel=1)
    document.element("Strip", 2, 1, 4, 1, universe=255, channel=503)
    wall = pixels([(x, y) for y in range(HEIGHT) for x in range(WIDTH)])
    expected[BROADCAST, 255] = wall + bytes(502 - len(wall)) + STRIP[:10]

    # A chosen node has a universe of its own beside the broadcast one of the same number; an address
    # outside the network has none, and neither has an element that starts behind the last channel.
    document.element("Dot", 0, 0, 1, 1, universe=3, channel=1)
    document.element("Strip", 2, 1, 4, 1, universe=3, channel=1, to=OTHER_RIG)
    document.element("Strip", 2, 1, 4, 1, universe=4, channel=1, to=RIG)
    document.element("Strip", 2, 1, 4, 1, universe=3, channel=1, to="10.0.0.10")
    document.element("Strip", 2, 1, 4, 1, universe=5, channel=513)
    expected[BROADCAST, 3] = pixels([(0, 0)]) + bytes(1)
    expected[OTHER_RIG, 3] = STRIP
    expected[RIG, 4] = STRIP
    return document, expected


class Frames(stage.Case):

    def setUp(self):
        super().setUp()
        self.home.use_test_picture()

    def test_every_universe_of_a_document(self):
        document, expected = many_kinds()
        self.home.put_document(document)
        wire, other_network = self.watch(), self.watch("rig", "art1")
        self.start()
        wire.wait_for(40, dmx(0), 30, "frames of universe 0")

        sent = wire.packets(dmx())
        found = {}
        for packet in sent:
            found.setdefault((packet.destination, packet.universe), set()).add(packet.channels)
        self.assertEqual({key: {channels} for key, channels in expected.items()}, found)
        for packet in sent:
            self.assertEqual((DESK, 6454), (packet.source, packet.source_port))
            self.assertEqual(len(packet.channels), packet.length)
            self.assertEqual(bytes.fromhex("4172742d4e657400" "0050" "000e" "0000"), packet.payload[:14])
            self.assertEqual(packet.universe, packet.payload[14] + 256 * packet.payload[15])
        for (address, universe) in expected:
            self.assertRate(wire.packets(dmx(universe, address)), 10)
        self.assertEqual([], wire.packets(lambda p: p.malformed))
        self.assertEqual([], other_network.packets(stage.from_program), "the other network must stay silent")

    def test_polls_and_answers(self):
        self.home.put_document(Document())
        wire = self.watch()
        self.start()
        polls = wire.wait_for(4, lambda p: p.kind == "poll" and stage.from_program(p), 30, "polls")
        self.assertEqual({(DESK, 6454, BROADCAST, bytes.fromhex("4172742d4e657400" "0020" "000e" "0200"))},
                         {(p.source, p.source_port, p.destination, p.payload) for p in polls})
        for earlier, later in zip(polls, polls[1:]):
            self.assertAlmostEqual(2.5, later.time - earlier.time, delta=0.3)

        # A poll of ten bytes is a poll, from whatever port it comes, and its sender alone gets the answer.
        asker = self.socket_on("rig")
        for target in (DESK, BROADCAST):
            asker.sendto(bytes.fromhex("4172742d4e657400" "0020"), (target, 6454))
            answer, source = asker.recvfrom(2000)
            self.assertEqual((DESK, 6454), source)
            self.assertEqual("80000000" * 2, (answer[174:178] + answer[182:186]).hex(), "one port")
            texts = [text.decode() for text in (answer[26:44], answer[44:108], answer[108:172])]
            self.assertEqual(["Zentri PixelWeft", "Zentri PixelWeft", "#0001 [0001] Ready"],
                             [text.rstrip("\0") for text in texts])
        self.assertEqual([], wire.packets(lambda p: p.kind == "reply" and p.destination not in (RIG, DESK)))
        self.assertEqual([], wire.packets(lambda p: p.kind == "dmx"), "an empty document sends nothing")


class Merging(stage.Case):
    """Received universes under the program's own channels: 4 and 5 come in, 32 and 33 are sent."""

    def setUp(self):
        super().setUp()
        self.home.use_test_picture()
        document = Document(merging=dict(Enabled=1, FromStartSubnet=0, FromStartUniverse=4, ConsecutiveUniverses=2,
                                         ToStartSubnet=2, ToStartUniverse=0, MergerDMXSource="PixelWeft"))
        document.fixture("Strip", 4, 1, "RGB", [1, 4, 7, 10])
        document.fixture("Head", 1, 1, "RGB", [2], channel_count=9, constants=[(1, 255), (8, 0)])
        # An element in the range is sent with its universe, whatever its node; one outside as without merging.
        document.element("Head", 3, 4, 1, 1, universe=4, channel=11, to=OTHER_RIG)
        document.element("Strip", 2, 1, 4, 1, universe=0, channel=1)
        self.home.put_document(document)

    def merged(self, received):
        """Universe 4 as received, with a pixel and two constants on it; the free channels stay as received."""
        channels = bytearray(received + bytes(512 - len(received)))
        channels[10] = 255
        channels[11:14] = pixels([(3, 4)])
        channels[17] = 0
        return bytes(channels)

    def test_received_universes_lie_under_our_own(self):
        wire = self.watch()
        self.start()
        wire.wait_for(120, dmx(32), 30, "merged frames")
        offers = wire.packets(lambda p: p.kind == "reply" and p.destination == BROADCAST)
        self.assertEqual([bytes([0, 0])], [p.payload[18:20] for p in offers], "consoles that unicast find us")
        self.assertEqual({
            (BROADCAST, 0, STRIP),
            (BROADCAST, 32, self.merged(b"")),
            (BROADCAST, 33, bytes(512)),
        }, {(p.destination, p.universe, p.channels) for p in wire.packets(dmx())})
        for universe in (0, 32, 33):
            self.assertRate(wire.packets(dmx(universe)), 40)

        console = self.socket_on("rig")
        full = bytes((7 * i + 3) % 256 for i in range(512))
        for to, universe, channels in ((DESK, 4, full), (BROADCAST, 5, full[::-1]), (BROADCAST, 4, full[:100]),
                                       (BROADCAST, 6, full)):
            stage.send_dmx(console, to, universe, channels)
            if universe == 6:
                continue
            wanted = self.merged(channels) if universe == 4 else channels
            wire.wait_for(1, lambda p: dmx(universe + 28)(p) and p.channels == wanted, 10,
                          f"universe {universe} as sent to {to}")
        # What was received last stays, and a universe outside the range is not sent.
        seen = len(wire.packets(dmx(32)))
        wire.wait_for(seen + 20, dmx(32), 10, "further frames")
        last = {p.universe: p.channels for p in wire.packets(dmx())}
        self.assertEqual({0: STRIP, 32: self.merged(full[:100]), 33: full[::-1]}, last)
        self.assertRate(wire.packets(dmx(32)), 40)


if __name__ == "__main__":
    stage.run()
