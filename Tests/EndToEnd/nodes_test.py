# SPDX-License-Identifier: MIT
"""Nodes as they come and go, and which of them gets which universe."""

import time

import stage
from document import STRIP, strip_document
from stage import BROADCAST, RIG, dmx

NODE_RESULTS_WITHIN = 2.5 + 1 + 0.5  # the next poll publishes a node, a second's timer takes it over


def addresses(count):
    return [f"2.0.1.{n}" for n in range(1, count + 1)]


class Nodes(stage.Case):

    def setUp(self):
        super().setUp()
        self.home.put_settings(network="2.X.X.X")

    def put_strips(self, universes):
        document = strip_document(auto_unicast=True)
        for universe in universes:
            document.element("Strip", 2, 1, 4, 1, universe=universe, channel=1)
        self.home.put_document(document)

    def test_a_node_is_found_and_forgotten(self):
        self.put_strips([1])
        wire = self.watch()
        self.start()
        wire.wait_for(5, dmx(0, BROADCAST), 30, "broadcast while no node is known")

        node = self.rig("-a", RIG, "-u", "0,7")
        reply = wire.wait_for(1, lambda p: p.kind == "reply", 10, "a reply to a poll")[0]
        first = wire.wait_for(20, dmx(0, RIG), 10, "frames for the node")[0]
        self.assertLess(first.time - reply.time, NODE_RESULTS_WITHIN)
        # It gets the universe that it announced and the program has; the other universe is not sent.
        later = first.time + 0.2
        self.assertEqual({(RIG, 0)}, {(p.destination, p.universe) for p in wire.packets(dmx(), since=later)})
        self.assertRate(wire.packets(dmx(0, RIG)), 10)

        node.end()
        last = wire.packets(lambda p: p.kind == "reply")[-1]
        back = wire.wait_for(20, dmx(0, BROADCAST), 20, "broadcast again", since=later)[0]
        self.assertTrue(10 <= back.time - last.time <= 12.5 + 1.5,
                        f"forgotten after {back.time - last.time:.1f} s instead of 10 to 12.5 and a second's timer")
        self.assertEqual({(BROADCAST, 0), (BROADCAST, 1)},
                         {(p.destination, p.universe) for p in wire.packets(dmx(), since=back.time + 0.2)})

    def test_a_node_of_eight_ports_gets_them_all(self):
        """Its ports are two replies to each poll; one that it gives no longer is forgotten alone."""
        self.put_strips(range(9))
        wire = self.watch()
        self.start()
        node = self.rig("-a", RIG, "-u", "0-7")
        first = wire.wait_for(20, dmx(7, RIG), 20, "the last port")[0]
        taken = wire.packets(dmx(), since=first.time + 0.2)
        self.assertEqual({(RIG, universe) for universe in range(8)}, {(p.destination, p.universe) for p in taken})

        node.end()
        self.rig("-a", RIG, "-u", "0-3")
        last = wire.packets(lambda p: p.kind == "reply" and p.payload[211] == 2)[-1].time
        stage.wait(lambda: wire.packets(dmx(3))[-1].time > wire.packets(dmx(7))[-1].time + 1, 20,
                   "the second page is forgotten")
        end = wire.packets(dmx(7))[-1].time
        self.assertTrue(10 <= end - last <= 12.5 + 1.5, f"forgotten after {end - last:.1f} s")
        self.assertEqual({(RIG, universe) for universe in range(4)},
                         {(p.destination, p.universe) for p in wire.packets(dmx(), since=end + 0.2)})
        self.assertRate(wire.packets(dmx(3, RIG), since=first.time), 10)

    def test_a_visualiser_on_this_machine_before_us_and_after(self):
        document = strip_document()
        document.element("Strip", 2, 1, 4, 1, universe=1, channel=1, to="127.0.0.1")
        self.home.put_document(document)
        self.home.use_test_picture()
        wire = self.watch()

        def assert_hears(visualiser):
            stage.wait(lambda: visualiser.recv(2000)[14:] == b"\x01\x00\x00\x0c" + STRIP, 10, "universe 1")
            visualiser.close()

        first = self.socket_on("desk", "127.0.0.1", 6454)
        self.start()
        wire.wait_for(5, dmx(0, BROADCAST), 30, "output")
        assert_hears(first)
        for address, shares in (("127.0.0.1", False), ("127.0.0.1", True), ("", True)):
            assert_hears(self.socket_on("desk", address, 6454, shares=shares))
        self.assertEqual({(BROADCAST, 0, 6454)}, {(p.destination, p.universe, p.source_port)
                                                  for p in wire.packets(dmx())})

    def test_the_nodes_of_another_network_count_for_nothing(self):
        """The chosen network becomes a smaller one, and its only node is outside of it."""
        self.put_strips([])
        stage.add_addresses("rig", ["2.1.0.10"])
        wire = self.watch()
        self.start()
        self.rig("-a", "2.1.0.10", "-u", 0)
        wire.wait_for(5, dmx(0, "2.1.0.10"), 30, "frames for the node")
        self.addCleanup(
            stage.on, "desk", "bash", "-ec", "ip addr del 2.9.0.1/8 dev art1; ip addr del 2.0.0.1/16 dev art0; "
            "ip addr add 2.0.0.1/8 brd + dev art0")
        stage.on(
            "desk", "bash", "-ec", "ip addr del 2.0.0.1/8 dev art0; ip addr add 2.0.0.1/16 brd + dev art0; "
            "ip addr add 2.9.0.1/8 brd + dev art1")
        changed = time.time()
        first = wire.wait_for(1, dmx(0, "2.0.255.255"), 20, "broadcast in the new network", changed)[0]
        self.assertLess(first.time - changed, 5, "seconds until the new network gets frames")

    def test_forty_subscribers_and_one_more(self):
        self.put_strips([])
        stage.add_addresses("rig", addresses(41))
        wire = self.watch()
        program = self.start()
        rig = self.rig("-a", addresses(1)[0], "--nodes", 40, "-u", 0)
        stage.wait(lambda: {p.destination for p in wire.packets(dmx(0))} >= set(addresses(40)), 30,
                   "forty nodes get the universe")
        then = max(wire.packets(dmx(0, address))[0].time for address in addresses(40)) + 0.3
        for address in addresses(40):
            frames = wire.wait_for(20, dmx(0, address), 10, f"frames for {address}", since=then)
            self.assertRate(frames, 10)
        self.assertEqual([], wire.packets(dmx(0, BROADCAST), since=then))

        self.assertNotIn("Adding autounicast subscriber", program.log_text(), "these lines come with -artnetdebug")
        rig.end()
        self.rig("-a", addresses(1)[0], "--nodes", 41, "-u", 0)
        program.wait_for_log("Port-Address 0 will use broadcast, number of subscribers is 41")
        then = wire.wait_for(1, dmx(0, BROADCAST), 10, "broadcast to 41", since=then)[0].time + 0.3
        frames = wire.wait_for(20, dmx(0, BROADCAST), 10, "two seconds of broadcast", since=then)
        self.assertRate(frames, 10)
        self.assertEqual([], wire.packets(lambda p: dmx(0)(p) and p.destination != BROADCAST, since=then))


if __name__ == "__main__":
    stage.run()
