# SPDX-License-Identifier: MIT
"""Nodes that come and go without end must not make the program grow. SOAK_SECONDS says how long (40)."""

import os
import pathlib
import random
import statistics
import time

import stage
from document import strip_document
from stage import dmx

SECONDS = float(os.environ.get("SOAK_SECONDS", "40"))
WARM_UP = 18  # seconds in which every table may grow to its size: a reply page lives for 12.5
ROOM = 2048   # KiB that the process may grow: less than keeping one node for each that went would take


def reply(name, universes):
    """A node's ArtPollReply with up to four outputs, written from the published layout."""
    packet = bytearray(239)
    packet[0:10] = b"Art-Net\0\x00\x21"
    packet[14:16] = b"\x36\x19"
    packet[44:44 + len(name)] = name
    packet[18] = universes[0] >> 8
    packet[19] = universes[0] >> 4 & 15
    packet[173] = len(universes)
    for port, universe in enumerate(universes):
        packet[174 + port] = 0x80
        packet[190 + port] = universe & 15
    return bytes(packet)


class Soak(stage.Case):

    def memory(self):
        status = pathlib.Path(f"/proc/{self.program.popen.pid}/status").read_text()
        return int(status.split("VmRSS:")[1].split()[0])

    def test_node_churn(self):
        self.home.put_settings(network="2.X.X.X")
        self.home.put_document(strip_document(auto_unicast=True))
        places = [f"2.0.{subnet}.{host}" for subnet in (3, 4) for host in range(1, 101)]
        stage.add_addresses("rig", places)
        senders = [self.socket_on("rig", place) for place in places]
        wire = self.watch("rig", "art1")  # the other network stays silent
        self.program = self.start()
        self.program.wait_for_log("Entering Using local socket state")

        dice = random.Random(1)
        sizes = []
        began = time.monotonic()
        while (now := time.monotonic() - began) < SECONDS:
            for sender in dice.sample(senders, 60):
                first = dice.randrange(0, 32) * 16
                name = f"Node {dice.randrange(10**6)}".encode()
                sender.sendto(reply(name, [first + k for k in range(dice.randrange(1, 5))]), (stage.DESK, 6454))
            sizes.append((now, self.memory()))
            self.assertTrue(self.program.running())
            time.sleep(0.1)  # the pace of the churn: six hundred changes a second

        warm = [size for at, size in sizes if WARM_UP <= at < WARM_UP + (SECONDS - WARM_UP) / 4]
        last = [size for at, size in sizes if at >= SECONDS - (SECONDS - WARM_UP) / 4]
        grown = statistics.median(last) - statistics.median(warm)
        print(f"{statistics.median(warm):.0f} KiB, then {grown:+.0f} KiB ", end="", flush=True)
        self.assertLess(grown, ROOM)
        self.assertEqual([], wire.packets(dmx()))
        self.assertEqual(0, self.program.end())


if __name__ == "__main__":
    stage.run()
