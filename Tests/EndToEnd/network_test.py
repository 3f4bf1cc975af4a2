# SPDX-License-Identifier: MIT
"""Adapters, cables and addresses that change under a running program: the output comes back by itself."""

import time

import stage
from document import strip_document
from stage import BROADCAST, DESK, dmx

CHECK = 3.2  # seconds: networks are looked at every three, and the coarse timer may be late by a twentieth
GRACE = 0.6  # for the frames, and a busy machine


class Networks(stage.Case):

    def setUp(self):
        super().setUp()
        self.home.put_settings(network="2.X.X.X")
        self.home.put_document(strip_document())
        self.wire = self.watch()

    def sending(self):
        self.program = self.start()
        self.wire.wait_for(5, dmx(0, BROADCAST), 30, "output")

    def assertOutputWithin(self, seconds, since, source=DESK):
        """From the Art-Net port: what is sent from another one meanwhile is better than nothing, and not enough."""
        frames = self.wire.wait_for(
            10, lambda p: p.is_dmx and p.destination == BROADCAST and (p.source, p.source_port) == (source, 6454), 15,
            f"output from {source}", since)
        late = frames[0].time - since
        self.assertLess(late, seconds, "seconds without output after the network was back")
        stray = self.wire.packets(lambda p: p.is_dmx and p.source_port != 6454, since=frames[0].time)
        self.assertEqual([], stray)
        print(f"output after {late:.2f} s ", end="", flush=True)

    def assertPollsGoOn(self, since, source=DESK):
        self.wire.wait_for(1, lambda p: p.is_poll and p.source == source, 10, "polls", since)

    def assertAnswers(self, address):
        asker = self.socket_on("rig")
        asker.sendto(b"Art-Net\0\x00\x20", (BROADCAST, 6454))
        self.assertEqual((address, 6454), asker.recvfrom(2000)[1])

    def test_an_adapter_goes_down_and_a_cable_is_pulled(self):
        self.sending()
        for count, (host, link) in enumerate([("desk", "art0"), ("hub", "desk.0")], start=1):
            stage.on(host, "ip", "link", "set", link, "down")
            self.program.wait_for_log("Current network disconnected", count=count)
            stage.on(host, "ip", "link", "set", link, "up")
            up = time.time()
            self.assertOutputWithin(2, up)
            self.program.wait_for_log("Current network connected", count=count)
            self.assertPollsGoOn(up)
            self.assertAnswers(DESK)

    def change_address(self, old, new):
        stage.on("desk", "ip", "addr", "del", f"{old}/8", "dev", "art0")
        stage.on("desk", "ip", "addr", "add", f"{new}/8", "brd", "+", "dev", "art0")

    def test_an_address_changes(self):
        self.sending()
        self.addCleanup(self.change_address, "2.0.0.5", DESK)
        self.change_address(DESK, "2.0.0.5")
        changed = time.time()
        self.assertOutputWithin(CHECK + GRACE, changed, "2.0.0.5")
        self.assertPollsGoOn(changed, "2.0.0.5")
        self.assertAnswers("2.0.0.5")

    def test_an_interface_is_deleted_and_returns(self):
        self.sending()
        stage.on("hub", "ip", "link", "del", "desk.0")
        time.sleep(CHECK)  # a network that is gone is not reported, so there is nothing to wait for
        stage.on(
            "hub", "bash", "-ec", "ip link add desk.0 type veth peer name art0 netns $STAGE_PID_desk; "
            "ip link set desk.0 master sw0 up")
        stage.on("desk", "ip", "addr", "add", "2.0.0.1/8", "brd", "+", "dev", "art0")
        stage.on("desk", "ip", "link", "set", "art0", "up")
        back = time.time()
        self.assertOutputWithin(CHECK + GRACE, back)
        self.assertPollsGoOn(back)
        self.assertAnswers(DESK)

    def test_the_network_of_the_document_is_used(self):
        self.sending()
        other = self.watch("rig", "art1")
        self.assertEqual(0, self.program.end())
        self.home.put_document(strip_document(network="10.X.X.X"))
        self.home.put_settings(network="10.X.X.X")
        changed = time.time()
        self.program = self.start()
        frames = other.wait_for(10, dmx(0, "10.255.255.255"), 30, "output on the other network")
        self.assertEqual({"10.0.0.1"}, {p.source for p in frames})
        other.wait_for(1, lambda p: p.is_poll and p.destination == "10.255.255.255", 10, "polls there")
        self.assertEqual([], self.wire.packets(stage.from_program, since=changed))

    def test_after_a_power_cut_no_question_waits_for_an_answer(self):
        """The document's network is not the last one of the user, and its adapter is late."""
        self.home.put_settings()
        self.home.put_document(strip_document(network="10.X.X.X"))
        other = self.watch("rig", "art1")
        self.addCleanup(stage.on, "desk", "ip", "addr", "replace", "10.0.0.1/8", "brd", "+", "dev", "art1")
        stage.on("desk", "ip", "addr", "del", "10.0.0.1/8", "dev", "art1")
        self.program = self.start()
        self.program.wait_for_log("Initialize in Disabled state")
        time.sleep(CHECK)  # it has looked, and found nothing
        stage.on("desk", "ip", "addr", "add", "10.0.0.1/8", "brd", "+", "dev", "art1")
        came = time.time()
        late = other.wait_for(5, dmx(0, "10.255.255.255"), 15, "output")[0].time - came
        print(f"output after {late:.2f} s ", end="", flush=True)
        self.assertLess(late, CHECK + GRACE + 0.3)  # the wait for a host
        self.assertEqual([], self.wire.packets(dmx()))

    def test_a_port_that_is_taken_is_tried_again(self):
        squatter = self.socket_on("desk", port=6454)
        self.program = self.start()
        # The output is sent all the same, as well as the system can.
        self.wire.wait_for(20, lambda p: p.is_dmx and p.source_port != 6454, 30, "output from another port")
        self.assertEqual(1, self.program.log_text().count("failed to bind socket: Address already in use"))
        squatter.close()
        self.assertOutputWithin(1.5, time.time())
        self.program.wait_for_log("Port 6454 is open again on 2.0.0.1")
        self.assertAnswers(DESK)


if __name__ == "__main__":
    stage.run()
