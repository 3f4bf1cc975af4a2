# SPDX-License-Identifier: MIT
"""Nodes as they come and go, and which of them gets which universe."""

import time

import stage
from document import strip_document
from stage import BROADCAST, RIG, dmx

NODE_RESULTS_WITHIN = 2.5 + 1 + 0.5  # the next poll publishes a node, a second's timer takes it over


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


if __name__ == "__main__":
    stage.run()
