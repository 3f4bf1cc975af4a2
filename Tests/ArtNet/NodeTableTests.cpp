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
            table.Hear({Node(sign)});
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
                 {"aAb", "Ab", 5}, // what changes back is no change
                 {"1b", "1b", 6}});
}

TEST(NodeTable, TakenNodesFollowOurOwnAndDoublesDieOfAge)
{
    ArtNetNodeTable first;
    Play(first, {{"a", "a", 1}});
    ArtNetNodeTable second;
    Play(second, {{"bA", "bA", 1}});
    second.Hear({Node('c')}); // not yet published
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

// ---- Pages -------------------------------------------------------------------------------------

/// "2/45" is a reply with BindIndex 2 and these two universes, of the node "n" or as named behind.
ArtNetReply PageReply(const std::string& text)
{
    ArtNetReply reply;
    reply.node.SetIp("n");
    reply.node.SetName(text.substr(std::min(text.size(), text.find(' '))));
    reply.bindIndex = static_cast<std::uint8_t>(text[0] - '0');
    for (std::size_t i = 2; i < text.size() && text[i] != ' '; ++i)
        reply.node.universes.push_back(static_cast<std::uint16_t>(text[i] - '0'));
    reply.switches = reply.node.universes.empty() ? 0 : reply.node.universes[0];
    return reply;
}

std::string UniversesOf(const ArtNetNodeTable& table)
{
    std::string text;
    for (const ArtNetNodeInfo& node : *table.Published()) {
        for (const std::uint16_t universe : node.universes)
            text += std::to_string(universe);
        text += node.Name();
    }
    return text;
}

TEST(NodeTable, ANodeHasTheUniversesOfAllItsPages)
{
    using Replies = std::vector<std::string>;
    using Poll = std::pair<Replies, std::string>; // and what is published with the next one
    const Poll onlyFirst{{"1/01"}, "0145"};
    const Poll onlyLast{{"0/45"}, "45"};
    const std::vector<std::vector<Poll>> cases{
        // Two pages, in whatever order they come.
        {{{"1/0123", "2/4567"}, "01234567"}, {{"2/4567", "1/0123"}, "01234567"}},
        // One that falls silent goes alone, and comes back to its place.
        {{{"2/45", "1/01"}, "0145"},
         onlyFirst,
         onlyFirst,
         onlyFirst,
         {{"1/01"}, "01"},
         {{"2/45"}, "0145"}},
        {{{"1/01", "2/45"}, "0145"}, {{"2/67"}, "0167"}, {{"2/"}, "01"}}, // patched anew
        {{{"1/01", "1/45"}, "45"}, {{"0/67"}, "67"}, {{"1/89"}, "89"}},   // 0 and 1 are the same
        // Pages without a number come in turns, within each poll or one with each.
        {{{"0/45", "0/01"}, "0145"}, {{"0/45", "0/01"}, "0145"}, {{"0/01"}, "0145"}},
        {{{"0/01"}, "01"},
         {{"0/45"}, "45"},
         {{"0/01"}, "0145"},
         {{"0/45"}, "0145"},
         {{"0/01"}, "0145"}},
        // A node that was patched anew does not go back.
        {{{"0/01"}, "01"},
         {{"0/01", "0/45"}, "0145"},
         onlyLast,
         onlyLast,
         onlyLast,
         onlyLast,
         {{"0/01", "0/45"}, "0145"}},
        // The first page names the node.
        {{{"1/0 a", "2/1 b"}, "01 a"},
         {{"2/1 b", "1/0 a"}, "01 a"},
         {{"2/1 c"}, "01 a"},
         {{"1/0 d"}, "01 d"},
         {{"0/0 e", "0/2 f"}, "021 e"}}};
    for (const auto& polls : cases) {
        ArtNetNodeTable table;
        for (const auto& [replies, published] : polls) {
            for (const std::string& reply : replies)
                table.Hear(PageReply(reply));
            const std::uint32_t before = table.Generation();
            const std::string old = UniversesOf(table);
            table.Age();
            EXPECT_EQ(UniversesOf(table), published) << polls[0].first[0] << replies[0];
            EXPECT_EQ(table.Generation() != before, old != published);
        }
    }
}

TEST(NodeTable, AWholeNodeIsFedUntilItRepliesItself)
{
    ArtNetNodeTable table;
    const auto feed = [&table](const std::string& text) {
        table.Feed(PageReply(text).node);
        table.Age();
        return UniversesOf(table);
    };
    EXPECT_EQ(feed("0/01234567 n"), "01234567 n");
    EXPECT_EQ(feed("0/012345678 n"), "012345678 n");
    table.Hear(PageReply("2/67 n"));
    table.Hear(PageReply("1/01 n"));
    table.Age();
    EXPECT_EQ(UniversesOf(table), "0167 n");
    for (int poll = 0; poll < 9; ++poll)
        EXPECT_EQ(feed("0/0167 n"), "0167 n") << "it is what we know";
    EXPECT_EQ(feed("0/ n"), " n");
}

TEST(NodeTable, PagesAreBounded)
{
    ArtNetNodeTable table;
    const auto universesOf = [&table](std::size_t node) {
        return (*table.Published())[node].universes.size();
    };
    for (std::size_t node = 0; node < 300; ++node) {
        for (std::uint32_t page = 0; page < 200; ++page)
            table.Hear(
                {NodeAt(std::to_string(node)), static_cast<std::uint8_t>(node % 2 * page), page});
    }
    table.Age();
    for (const std::size_t node : {0U, 1U, 255U})
        EXPECT_EQ(universesOf(node), ArtNetNodeTable::MaxPagesOfNode) << node;
    EXPECT_EQ(universesOf(256), 1U);
    EXPECT_EQ(universesOf(299), 1U);
    for (int poll = 0; poll < 5; ++poll)
        table.Age();
    EXPECT_TRUE(table.Published()->empty());
    for (std::uint8_t page = 0; page < 3; ++page)
        table.Hear({NodeAt("new"), page, 0});
    table.Age();
    EXPECT_EQ(universesOf(0), 2U) << "there is room again";
}

TEST(NodeTable, AtTheBoundNothingChangesUntilANodeIsGone)
{
    ArtNetNodeTable table;
    const auto poll = [&](std::size_t first, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            table.Hear({NodeAt(std::to_string(first + i))});
        table.Age();
    };
    constexpr std::size_t most = ArtNetNodeTable::MaxNodes;
    poll(0, most + 900);
    EXPECT_EQ(table.Published()->size(), most);
    for (int i = 0; i < 9; ++i)
        poll(i % 2 == 0 ? 0 : 5, most + 900); // 0 to 4 miss every other one
    EXPECT_EQ(table.Generation(), 1U);
    for (int i = 0; i < 4; ++i)
        poll(1, most);
    EXPECT_EQ(table.Published()->size(), most - 1);
    poll(1, most);
    EXPECT_EQ(table.Generation(), 3U);
    EXPECT_EQ(table.Published()->back(), NodeAt(std::to_string(most)));
}

} // namespace
