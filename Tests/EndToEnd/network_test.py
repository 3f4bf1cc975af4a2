# SPDX-License-Identifier: MIT
"""Adapters, cables and addresses that change under a running program: the output comes back by itself."""

import time

import stage
from document import strip_document
from screen import AMBER, PLATFORM, Screen
from stage import BROADCAST, DESK, dmx

CHECK = 0.4  # seconds: the system tells of a change, and then a host has 0.3 s to answer
GRACE = 0.6  # for the frames, and a busy machine


class Networks(stage.Case):

    def setUp(self):
        super().setUp()
        self.home.put_settings(network="2.X.X.X")
        self.home.put_document(strip_document())
        self.wire = self.watch()

    def sending(self, **options):
        self.program = self.start(**options)
        self.wire.wait_for(5, dmx(0, BROADCAST), 30, "output", since=time.time())

    def assertBackWithin(self, seconds, since, source=DESK):
        """Frames from the Art-Net port (what comes from another one meanwhile is not enough), polls and answers."""
        frames = self.wire.wait_for(
            10, lambda p: (p.kind, p.destination, p.source, p.source_port) == ("dmx", BROADCAST, source, 6454), 15,
            f"output from {source}", since)
        late = frames[0].time - since
        print(f"output after {late:.2f} s ", end="", flush=True)
        self.assertLess(late, seconds, "seconds without output after the network was back")
        self.assertEqual([], self.wire.packets(lambda p: p.kind == "dmx" and p.source_port != 6454, frames[0].time))
        self.wire.wait_for(1, lambda p: p.kind == "poll" and p.source == source, 10, "polls", since)
        asker = self.socket_on("rig")
        asker.sendto(b"Art-Net\0\x00\x20", (BROADCAST, 6454))
        self.assertEqual((source, 6454), asker.recvfrom(2000)[1])

    def test_an_adapter_goes_down_and_a_cable_is_pulled(self):
        self.sending()
        for count, (host, link) in enumerate([("desk", "art0"), ("hub", "desk.0")], start=1):
            stage.on(host, "ip", "link", "set", link, "down")
            self.program.wait_for_log("Current network disconnected", count=count)
            stage.on(host, "ip", "link", "set", link, "up")
            self.assertBackWithin(2, time.time())
            self.program.wait_for_log("Current network connected", count=count)

    @staticmethod
    def delete_address(address=DESK):
        stage.on("desk", "ip", "addr", "del", f"{address}/8", "dev", "art0")

    @staticmethod
    def bring_address(address=DESK):
        stage.on("desk", "ip", "addr", "add", f"{address}/8", "brd", "+", "dev", "art0")

    @staticmethod
    def delete_interface():
        stage.on("hub", "ip", "link", "del", "desk.0")

    def bring_interface(self):
        stage.on(
            "hub", "bash", "-ec", "ip link add desk.0 type veth peer name art0 netns $STAGE_PID_desk; "
            "ip link set desk.0 master sw0 up")
        self.bring_address()
        stage.on("desk", "ip", "link", "set", "art0", "up")

    def change_address(self, old, new):
        self.delete_address(old)
        self.bring_address(new)

    def test_an_address_changes(self):
        self.sending()
        self.addCleanup(self.change_address, "2.0.0.5", DESK)
        self.change_address(DESK, "2.0.0.5")
        self.assertBackWithin(CHECK + GRACE, time.time(), "2.0.0.5")

    def test_a_network_that_is_gone_is_amber_and_nothing_leaves_by_another(self):
        """On a machine with a default route, whatever has no other way leaves by it."""
        other = self.watch("rig", "art1")
        self.addCleanup(stage.on, "desk", "ip", "route", "del", "default")
        stage.on("desk", "ip", "route", "add", "default", "via", "10.0.0.10")
        self.sending(platform=PLATFORM)
        screen = Screen()
        self.addCleanup(screen.close)
        self.assertFalse(screen.shows(AMBER))
        self.delete_interface()
        stage.wait(lambda: screen.shows(AMBER), CHECK + GRACE, "the network is amber")
        time.sleep(3)  # longer than from poll to poll
        self.bring_interface()
        self.assertBackWithin(CHECK + GRACE, time.time())
        stage.wait(lambda: not screen.shows(AMBER), CHECK + GRACE, "the network is as always")
        self.assertEqual([], other.packets())

    def test_after_a_power_cut_no_question_waits_for_an_answer(self):
        """The document's network is not the last one of the user, and its adapter is late."""
        self.home.put_settings()
        self.home.put_document(strip_document(network="10.X.X.X"))
        other = self.watch("rig", "art1")
        self.addCleanup(stage.on, "desk", "ip", "addr", "replace", "10.0.0.1/8", "brd", "+", "dev", "art1")
        stage.on("desk", "ip", "addr", "del", "10.0.0.1/8", "dev", "art1")
        self.program = self.start()
        self.program.wait_for_log("Initialize in Disabled state")
        stage.on("desk", "ip", "addr", "add", "10.0.0.1/8", "brd", "+", "dev", "art1")
        came = time.time()
        frames = other.wait_for(5, dmx(0, "10.255.255.255"), 15, "output")
        self.assertLess(frames[0].time - came, CHECK + GRACE)
        self.assertEqual({"10.0.0.1"}, {p.source for p in frames})
        other.wait_for(1, lambda p: p.kind == "poll" and p.destination == "10.255.255.255", 10, "polls there")
        self.assertEqual([], self.wire.packets(stage.from_program))

    def test_a_port_that_is_taken_is_tried_again(self):
        squatter = self.socket_on("desk", port=6454)
        self.program = self.start()
        # The output is sent all the same, as well as the system can.
        self.wire.wait_for(20, lambda p: p.kind == "dmx" and p.source_port != 6454, 30, "output from another port")
        self.assertEqual(1, self.program.log_text().count("failed to bind socket: Address already in use"))
        squatter.close()
        self.assertBackWithin(1.5, time.time())
        self.program.wait_for_log("Port 6454 is open again on 2.0.0.1")


if __name__ == "__main__":
    stage.run()
