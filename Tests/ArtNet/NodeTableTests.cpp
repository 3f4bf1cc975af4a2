// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetNodeTable.h"

#include <cctype>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

ArtNetNodeInfo NodeAt(std::string_view ip)
{
    ArtNetNodeInfo node;
    node.SetIp(ip);
    node.universes.push_back(1);
    return node;
}

/// 'b' is a node, 'B' the same one with another name, and '2' with another universe.
ArtNetNodeInfo Node(char sign)
{
    const bool digit = std::isdigit(sign) != 0;
    const char letter = static_cast<char>(digit ? sign - '1' + 'a' : std::tolower(sign));
    ArtNetNodeInfo node = NodeAt({&letter, 1});
    node.SetName({digit ? &letter : &sign, 1});
    node.universes[0] = digit ? 2 : 1;
    return node;
}

std::string Published(const ArtNetNodeTable& table)
{
    std::string signs;
    for (const ArtNetNodeInfo& node : *table.Published()) {
        for (const char sign : std::string("aA1bB2cC3"))
            signs += node == Node(sign) ? std::string(1, sign) : "";
    }
    return signs;
}

/// The replies before a poll, and what is published with it.
struct Turn
{
    std::string heard;
    std::string published;
    std::uint32_t generation;
};

void Play(ArtNetNodeTable& table, const std::vector<Turn>& turns)
{
    for (const Turn& turn : turns) {
        SCOPED_TRACE("turn " + std::to_string(&turn - turns.data()));
        const std::string before = Published(table);
        for (const char sign : turn.heard)
            table.Hear(Node(sign));
        EXPECT_EQ(Published(table), before) << "not before the poll";
        table.Age();
        EXPECT_EQ(Published(table), turn.published);
        EXPECT_EQ(table.Generation(), turn.generation);
    }
}

TEST(NodeTable, NodesShowWithThePollInOrderOfArrivalAndAreGoneAfterFiveWithoutAnAnswer)
{
    ArtNetNodeTable table;
    Play(table, {{"ba", "ba", 1},
                 {"ab", "ba", 1},
                 {"", "ba", 1},
                 {"", "ba", 1},
                 {"", "ba", 1},
                 {"a", "a", 2},
                 {"b", "ab", 3}, // it comes back as the last
                 {"A2", "A2", 4},
                 {"A", "A2", 4},
                 {"2bb", "Ab", 5}, // two poll targets: each node answers twice, and the last wins
                 {"aAb", "Ab", 5}, // several reply pages change nothing with each poll
                 {"1b", "1b", 6}});
}

TEST(NodeTable, TakenNodesFollowOurOwnAndDoublesDieOfAge)
{
    ArtNetNodeTable first;
    Play(first, {{"a", "a", 1}});
    ArtNetNodeTable second;
    Play(second, {{"bA", "bA", 1}});
    second.Hear(Node('c')); // not yet published
    ArtNetNodeTable all;
    all.TakeFrom(first);
    all.TakeFrom(second);
    EXPECT_EQ(Published(all), "abA");
    EXPECT_EQ(all.Generation(), 0U);
    Play(all, {{"1", "1bAc", 1}, {"1", "1bAc", 1}, {"1", "1bAc", 1}, {"1", "1c", 2}});

    // Where the first of two dies before it is heard again, the second is kept up.
    ArtNetNodeTable old;
    Play(old, {{"A", "A", 1}, {"", "A", 1}, {"", "A", 1}});
    ArtNetNodeTable both;
    both.TakeFrom(old);
    both.TakeFrom(first);
    Play(both, {{"", "Aa", 0}, {"", "a", 1}, {"1", "1", 2}});
    Play(both, std::vector<Turn>(5, {"1", "1", 2}));
}

TEST(NodeTable, AtTheBoundTheLeastRecentlyHeardMakesRoom)
{
    ArtNetNodeTable table;
    const auto stranger = [](std::size_t i) {
        return NodeAt(std::to_string(i));
    };
    for (std::size_t i = 0; i < ArtNetNodeTable::MaxNodes; ++i)
        table.Hear(stranger(i));
    for (const std::size_t i : {0U, 9999U, 9998U}) // 1 and 2 are the oldest
        table.Hear(stranger(i));
    table.Age();
    const ArtNetNodeList& nodes = *table.Published();
    ASSERT_EQ(nodes.size(), ArtNetNodeTable::MaxNodes);
    EXPECT_EQ(nodes[0], stranger(0));
    EXPECT_EQ(nodes[1], stranger(3));
    EXPECT_EQ(nodes.back(), stranger(9998));
}

} // namespace
