# SPDX-License-Identifier: MIT
"""A host program beside us: it gets the universes, dies, and we go on sending on our own port."""

import re
import time

import stage
from document import STRIP, strip_document
from stage import BROADCAST, dmx


class Host(stage.Process):
    """The host stand-in (Tools/HostStandIn) on the program's machine; `lines` has what came to it."""

    def __init__(self, home, *arguments):
        self.path = home.folder / "host.txt"
        with open(self.path, "wb") as output:
            super().__init__([stage._executable.parent / "host-stand-in", *arguments], stdout=output)

    def lines(self):
        return [line.split(None, 1)[1] for line in self.path.read_text().splitlines()]

    def wait_for(self, pattern, seconds=20):
        stage.wait(lambda: any(re.fullmatch(pattern, line) for line in self.lines()), seconds,
                   lambda: f"'{pattern}' at the host:\n" + "\n".join(self.lines()[-40:]))


class HostBesideUs(stage.Case):

    def setUp(self):
        super().setUp()
        self.home.put_document(strip_document())
        self.home.use_test_picture()

    def host(self, *arguments):
        return self.started(Host(self.home, "--seconds", 60, *arguments))

    def test_a_host_that_is_there_first_gets_the_universes(self):
        wire = self.watch()
        host = self.host()
        program = self.start()
        universe = r"universe address=0 pair=0 to=" + re.escape(BROADCAST) + " channels=" + STRIP.hex()
        host.wait_for(universe)
        host.wait_for(r"nodes-wanted request=\d+ interface=2\.0\.0\.1")
        self.assertEqual([], wire.packets(dmx()), "the port is the host's")

        killed = time.time()
        host.end(stage.signal.SIGKILL)
        first = wire.wait_for(1, dmx(), 20, "ArtDmx after the host's death", killed)[0]
        print(f"{first.time - killed:.3f} s from the host's death to our first ArtDmx", flush=True)
        self.assertGreater(first.time - killed, 4.9)
        self.assertLess(first.time - killed, 7)
        self.assertEqual(STRIP, first.channels)
        program.wait_for_log("Server stopped in Using remote socket state")

        # And a host that comes back takes over again.
        host = self.host()
        host.wait_for("0x91 rebindDMXSocket")
        host.wait_for(universe)
        taken = time.time() + 0.5
        time.sleep(1.5)
        self.assertEqual([], wire.packets(dmx(), taken))

    def test_a_slow_host_that_loses_messages_is_served_in_the_end(self):
        host = self.host("--slow", 40, "--lose", 0.2, "--ask", 2, "--reorder", "--old", 1, "--node", "Lamp",
                         stage.RIG, "0", "--node", "Other", "2.0.0.11", "0")
        program = self.start()
        program.wait_for_log("Entering Using remote socket state", 30)
        host.wait_for(r"universe address=0 .*", 30)

    def test_a_message_from_the_network_is_none(self):
        wire = self.watch()
        self.start()
        wire.wait_for(5, dmx(0, BROADCAST), 30, "output")
        forger = self.socket_on("rig")
        begin = time.time()
        while time.time() < begin + 3:
            for address in (stage.DESK, BROADCAST):
                forger.sendto(b"Art-Net\0\x00\x99\x00\x0e" + b"\x50\x57\x01\x12", (address, 6455))
            time.sleep(0.1)
        self.assertGreater(len(wire.packets(dmx(0, BROADCAST), begin)), 20, "frames in three seconds")


if __name__ == "__main__":
    stage.run()
