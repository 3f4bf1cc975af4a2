// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetNodeTable.h"

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/IPv4.h"

namespace {

using List = std::vector<std::string>;

ArtNetNodeInfo Node(const std::string& ip, const std::string& name = "node",
                    std::initializer_list<std::uint16_t> universes = {})
{
    ArtNetNodeInfo node;
    node.SetIp(ip);
    node.SetName(name);
    node.universes.assign(universes.begin(), universes.end());
    return node;
}

/// So many polls that these nodes answer.
void Poll(ArtNetNodeTable& table, const std::vector<ArtNetNodeInfo>& answers = {}, int polls = 1)
{
    for (int i = 0; i < polls; ++i) {
        for (const ArtNetNodeInfo& node : answers)
            table.Hear(node);
        table.Age();
    }
}

List Ips(const ArtNetNodeTable& table)
{
    List ips;
    for (const ArtNetNodeInfo& node : *table.Published())
        ips.emplace_back(node.Ip());
    return ips;
}

TEST(NodeInfo, TextsFillTheirFieldsAndCountUpToTheirFirstZero)
{
    ArtNetNodeInfo node = Node("255.255.255.255x", std::string(70, 'n'));
    EXPECT_EQ(node.Ip(), "255.255.255.255x");
    EXPECT_EQ(node.Name(), std::string(64, 'n'));
    node = Node("1.2.3.4", "a", {1, 2});
    ArtNetNodeInfo other = node;
    other.name[10] = 'x';
    EXPECT_EQ(node, other);
    EXPECT_NE(node, Node("1.2.3.5", "a", {1, 2}));
    EXPECT_NE(node, Node("1.2.3.4", "b", {1, 2}));
    EXPECT_NE(node, Node("1.2.3.4", "a", {2, 1}));
}

TEST(NodeTable, NodesShowWithThePollInOrderOfArrivalAndAreGoneAfterFiveWithoutAnAnswer)
{
    ArtNetNodeTable table;
    table.Hear(Node("2.0.0.12"));
    table.Hear(Node("2.0.0.10"));
    EXPECT_EQ(Ips(table), List{});
    EXPECT_EQ(table.Generation(), 0U);
    const List both{"2.0.0.12", "2.0.0.10"};
    Poll(table);
    EXPECT_EQ(Ips(table), both);
    Poll(table, {Node("2.0.0.10"), Node("2.0.0.12")});
    EXPECT_EQ(Ips(table), both);
    EXPECT_EQ(table.Generation(), 1U) << "unchanged";

    const auto taken = table.Published();
    Poll(table, {}, 3);
    EXPECT_EQ(Ips(table), both);
    EXPECT_EQ(table.Generation(), 1U);
    Poll(table, {Node("2.0.0.10")});
    EXPECT_EQ(Ips(table), List{"2.0.0.10"});
    EXPECT_EQ(table.Generation(), 2U);
    Poll(table, {Node("2.0.0.12")});
    EXPECT_EQ(Ips(table), (List{"2.0.0.10", "2.0.0.12"})) << "it comes back as the last";
    EXPECT_EQ((*taken)[0].Ip(), "2.0.0.12") << "a list that was taken stays as it was";
}

TEST(NodeTable, AChangeKeepsThePlaceAndCountsOnce)
{
    ArtNetNodeTable table;
    Poll(table, {Node("2.0.0.10", "a", {1}), Node("2.0.0.11")});
    // Two poll targets: each node answers twice. The last reply wins.
    table.Hear(Node("2.0.0.10", "a", {1, 2}));
    table.Hear(Node("2.0.0.10", "b", {3}));
    EXPECT_EQ((*table.Published())[0], Node("2.0.0.10", "a", {1}));
    Poll(table, {Node("2.0.0.10", "b", {3})});
    EXPECT_EQ((*table.Published())[0], Node("2.0.0.10", "b", {3}));
    EXPECT_EQ(table.Generation(), 2U);
    // A node that answers in several pages changes nothing with each poll.
    Poll(table, {Node("2.0.0.10", "b", {7}), Node("2.0.0.11"), Node("2.0.0.10", "b", {3})}, 3);
    EXPECT_EQ((*table.Published())[0], Node("2.0.0.10", "b", {3}));
    EXPECT_EQ(table.Generation(), 2U);
}

TEST(NodeTable, TakenNodesFollowOurOwnAndDoublesDieOfAge)
{
    ArtNetNodeTable first;
    Poll(first, {Node("2.0.0.10")});
    ArtNetNodeTable second;
    Poll(second, {Node("10.0.0.10"), Node("2.0.0.10", "seen there too")});
    second.Hear(Node("10.0.0.11")); // not yet published
    ArtNetNodeTable all;
    all.TakeFrom(first);
    all.TakeFrom(second);
    EXPECT_EQ(Ips(all), (List{"2.0.0.10", "10.0.0.10", "2.0.0.10"}));
    EXPECT_EQ(all.Generation(), 0U);
    Poll(all, {Node("2.0.0.10", "alive")}, 4);
    EXPECT_EQ(Ips(all), (List{"2.0.0.10", "10.0.0.11"}));
    EXPECT_EQ((*all.Published())[0].Name(), "alive");

    // Where the first of two dies before it is heard again, the second is kept up.
    ArtNetNodeTable old;
    Poll(old, {Node("2.0.0.10", "old")});
    Poll(old, {}, 2);
    ArtNetNodeTable both;
    both.TakeFrom(old);
    both.TakeFrom(first);
    Poll(both, {}, 2);
    Poll(both, {Node("2.0.0.10", "heard")}, 6);
    EXPECT_EQ(Ips(both), List{"2.0.0.10"});
    EXPECT_EQ((*both.Published())[0].Name(), "heard");
}

TEST(NodeTable, AtTheBoundTheLeastRecentlyHeardMakesRoomAndAFloodCostsNoMore)
{
    ArtNetNodeTable table;
    const auto stranger = [](std::uint32_t i) {
        return Node(Platform::FormatIPv4(0x02000000 + i), "flood", {1, 2, 3, 4});
    };
    for (std::uint32_t i = 0; i < ArtNetNodeTable::MaxNodes; ++i)
        table.Hear(stranger(i));
    Poll(table, {stranger(0), Node("9.0.0.1"), Node("9.0.0.2")}); // 1 and 2 are the oldest
    const List ips = Ips(table);
    ASSERT_EQ(ips.size(), ArtNetNodeTable::MaxNodes);
    EXPECT_EQ((List{ips[0], ips[1], ips.back()}), (List{"2.0.0.0", "2.0.0.3", "9.0.0.2"}));

    // The service's mutex is held meanwhile: a reply takes two microseconds or so, and walking the
    // table would take a hundred.
    const auto begin = std::chrono::steady_clock::now();
    for (std::uint32_t i = 0; i < 200'000; ++i)
        table.Hear(stranger(i));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    table.Age();
    EXPECT_EQ(table.Published()->size(), ArtNetNodeTable::MaxNodes);
    EXPECT_EQ(table.Published()->back(), stranger(199'999));
}

} // namespace
