// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetNodeTable.h"

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/IPv4.h"

namespace {

ArtNetNodeInfo Node(const std::string& ip, const std::string& name = "node",
                    std::initializer_list<std::uint16_t> universes = {})
{
    ArtNetNodeInfo node;
    node.SetIp(ip);
    node.SetName(name);
    node.universes.assign(universes.begin(), universes.end());
    return node;
}

std::vector<std::string> Ips(const ArtNetNodeTable& table)
{
    std::vector<std::string> ips;
    for (const ArtNetNodeInfo& node : *table.Published())
        ips.emplace_back(node.Ip());
    return ips;
}

using List = std::vector<std::string>;

TEST(NodeInfo, TextsFillTheirFieldsWithoutATerminator)
{
    ArtNetNodeInfo node = Node("255.255.255.255x", std::string(70, 'n'));
    EXPECT_EQ(node.Ip(), "255.255.255.255x");
    EXPECT_EQ(node.Name(), std::string(64, 'n'));
    node.SetName("short");
    EXPECT_EQ(node.Name(), "short");
}

TEST(NodeInfo, EqualAreThoseWhoseTextsAndUniversesMatch)
{
    ArtNetNodeInfo node = Node("1.2.3.4", "a", {1, 2});
    ArtNetNodeInfo other = node;
    other.name[10] = 'x'; // behind the end of the text
    EXPECT_EQ(node, other);
    EXPECT_NE(node, Node("1.2.3.5", "a", {1, 2}));
    EXPECT_NE(node, Node("1.2.3.4", "b", {1, 2}));
    EXPECT_NE(node, Node("1.2.3.4", "a", {2, 1}));
}

TEST(NodeTable, ANewNodeShowsAtTheNextTickInOrderOfArrival)
{
    ArtNetNodeTable table;
    table.Hear(Node("2.0.0.12"));
    table.Hear(Node("2.0.0.10"));
    EXPECT_EQ(Ips(table), List{});
    EXPECT_EQ(table.Generation(), 0U);
    table.Age();
    EXPECT_EQ(Ips(table), (List{"2.0.0.12", "2.0.0.10"}));
    EXPECT_EQ(table.Generation(), 1U);
    table.Hear(Node("2.0.0.10"));
    table.Hear(Node("2.0.0.12"));
    table.Age();
    EXPECT_EQ(Ips(table), (List{"2.0.0.12", "2.0.0.10"}));
    EXPECT_EQ(table.Generation(), 1U); // nothing new
}

TEST(NodeTable, FourMissedPollsAreSurvivedAndTheFifthIsNot)
{
    ArtNetNodeTable table;
    table.Hear(Node("2.0.0.10"));
    table.Hear(Node("2.0.0.11"));
    for (int i = 0; i < 4; ++i)
        table.Age();
    EXPECT_EQ(Ips(table), (List{"2.0.0.10", "2.0.0.11"}));
    EXPECT_EQ(table.Generation(), 1U);
    table.Hear(Node("2.0.0.11"));
    table.Age();
    EXPECT_EQ(Ips(table), (List{"2.0.0.11"}));
    EXPECT_EQ(table.Generation(), 2U);
    for (int i = 0; i < 4; ++i)
        table.Age();
    EXPECT_EQ(Ips(table), List{});
    EXPECT_EQ(table.Generation(), 3U);
    // It comes back at the end of the line.
    table.Hear(Node("2.0.0.11"));
    table.Hear(Node("2.0.0.10"));
    table.Age();
    EXPECT_EQ(Ips(table), (List{"2.0.0.11", "2.0.0.10"}));
}

TEST(NodeTable, AChangeKeepsThePlaceAndCountsOnce)
{
    ArtNetNodeTable table;
    table.Hear(Node("2.0.0.10", "a", {1}));
    table.Hear(Node("2.0.0.11"));
    table.Age();
    table.Hear(Node("2.0.0.10", "a", {1, 2}));
    EXPECT_EQ((*table.Published())[0], Node("2.0.0.10", "a", {1}));
    table.Age();
    EXPECT_EQ((*table.Published())[0], Node("2.0.0.10", "a", {1, 2}));
    EXPECT_EQ(table.Generation(), 2U);
    table.Age();
    EXPECT_EQ(table.Generation(), 2U);
}

TEST(NodeTable, OfTwoRepliesBetweenTicksTheLastWinsAndTheChangeIsSeen)
{
    ArtNetNodeTable table;
    table.Hear(Node("2.0.0.10", "first"));
    table.Hear(Node("2.0.0.10", "second"));
    table.Hear(Node("2.0.0.10", "second")); // two poll targets: each node answers twice
    table.Age();
    EXPECT_EQ((*table.Published())[0].Name(), "second");
    EXPECT_EQ(table.Generation(), 1U);
}

TEST(NodeTable, ANodeThatAnswersInSeveralPagesIsNoNewsAtEveryPoll)
{
    ArtNetNodeTable table;
    for (int poll = 0; poll < 3; ++poll) {
        table.Hear(Node("2.0.0.10", "big", {0, 1, 2, 3}));
        table.Hear(Node("2.0.0.11"));
        table.Hear(Node("2.0.0.10", "big", {4, 5, 6, 7}));
        table.Age();
        EXPECT_EQ((*table.Published())[0], Node("2.0.0.10", "big", {4, 5, 6, 7}));
        EXPECT_EQ(table.Published()->size(), 2U);
        EXPECT_EQ(table.Generation(), 1U);
    }
}

TEST(NodeTable, AListThatWasTakenStaysAsItWas)
{
    ArtNetNodeTable table;
    table.Hear(Node("2.0.0.10"));
    table.Age();
    const auto taken = table.Published();
    table.Hear(Node("2.0.0.11"));
    table.Age();
    EXPECT_EQ(taken->size(), 1U);
    EXPECT_EQ(table.Published()->size(), 2U);
}

TEST(NodeTable, TakenNodesFollowOurOwnAndDoublesDieOfAge)
{
    ArtNetNodeTable first;
    first.Hear(Node("2.0.0.10"));
    first.Age();
    ArtNetNodeTable second;
    second.Hear(Node("10.0.0.10"));
    second.Hear(Node("2.0.0.10", "seen there too"));
    second.Age();
    second.Hear(Node("10.0.0.11")); // not yet published
    ArtNetNodeTable all;
    all.TakeFrom(first);
    all.TakeFrom(second);
    EXPECT_EQ(Ips(all), (List{"2.0.0.10", "10.0.0.10", "2.0.0.10"}));
    EXPECT_EQ(all.Generation(), 0U);
    for (int i = 0; i < 4; ++i) {
        all.Hear(Node("2.0.0.10", "alive"));
        all.Age();
    }
    EXPECT_EQ(Ips(all), (List{"2.0.0.10", "10.0.0.11"}));
    EXPECT_EQ((*all.Published())[0].Name(), "alive");
    all.Age();
    EXPECT_EQ(Ips(all), (List{"2.0.0.10"}));
}

TEST(NodeTable, WhereTheFirstOfTwoDiesTheSecondIsKeptUp)
{
    ArtNetNodeTable old;
    old.Hear(Node("2.0.0.10", "old"));
    for (int i = 0; i < 3; ++i)
        old.Age();
    ArtNetNodeTable fresh;
    fresh.Hear(Node("2.0.0.10", "fresh"));
    fresh.Age();
    ArtNetNodeTable all;
    all.TakeFrom(old);
    all.TakeFrom(fresh);
    all.Age();
    all.Age(); // the first is gone now
    for (int i = 0; i < 6; ++i) {
        all.Hear(Node("2.0.0.10", "heard"));
        all.Age();
        ASSERT_EQ(Ips(all), (List{"2.0.0.10"}));
    }
    EXPECT_EQ((*all.Published())[0].Name(), "heard");
}

TEST(NodeTable, AtTheBoundTheLeastRecentlyHeardMakesRoom)
{
    ArtNetNodeTable table;
    const auto ip = [](std::size_t i) {
        return Platform::FormatIPv4(0x02000000 + static_cast<std::uint32_t>(i));
    };
    for (std::size_t i = 0; i < ArtNetNodeTable::MaxNodes; ++i)
        table.Hear(Node(ip(i)));
    table.Age();
    table.Hear(Node(ip(0))); // heard again: 1 and 2 are the oldest now
    table.Hear(Node("9.0.0.1"));
    table.Hear(Node("9.0.0.2"));
    table.Age();
    const List ips = Ips(table);
    ASSERT_EQ(ips.size(), ArtNetNodeTable::MaxNodes);
    EXPECT_EQ(ips[0], ip(0));
    EXPECT_EQ(ips[1], ip(3));
    EXPECT_EQ(ips.back(), "9.0.0.2");
}

// Replies from ever new addresses cost no more when the table is full: the service's mutex is held.
TEST(NodeTable, AFullTableTakesAFloodOfStrangers)
{
    constexpr std::uint32_t count = 200000;
    ArtNetNodeTable table;
    ArtNetNodeInfo node = Node("", "flood", {1, 2, 3, 4});
    const auto begin = std::chrono::steady_clock::now();
    for (std::uint32_t i = 0; i < count; ++i) {
        node.SetIp(Platform::FormatIPv4(0x02000000 + i));
        table.Hear(node);
    }
    // Two microseconds each or so; walking the table would take a hundred.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    table.Age();
    EXPECT_EQ(table.Published()->size(), ArtNetNodeTable::MaxNodes);
    EXPECT_EQ(table.Published()->back().Ip(), Platform::FormatIPv4(0x02000000 + count - 1));
}

} // namespace
