// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetNodeTable.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// "a2/45B" is a reply of node a: its BindIndex is 2, its universes are 4 and 5, its name is B.
ArtNetReply Reply(const std::string& text)
{
    ArtNetReply reply;
    reply.node.SetIp(text.substr(0, 1));
    reply.bindIndex = static_cast<std::uint8_t>(text[1] - '0');
    const std::size_t name = std::min(text.find_first_of("ABCDEF"), text.size());
    for (const char universe : text.substr(3, name - 3))
        reply.node.universes.push_back(static_cast<std::uint16_t>(universe - '0'));
    reply.node.SetName(text.substr(name));
    reply.switches = reply.node.universes.empty() ? 0 : reply.node.universes[0];
    return reply;
}

/// The nodes in their order, each as " a/45B".
std::string Published(const ArtNetNodeTable& table)
{
    std::string text;
    for (const ArtNetNodeInfo& node : *table.Published()) {
        text.append(" ").append(node.Ip()) += '/';
        for (const std::uint16_t universe : node.universes)
            text += std::to_string(universe);
        text += node.Name();
    }
    return text;
}

/// "a1/4 b1/5 > a/4 b/5; > a/4": two replies and what the next poll publishes; none, and the same.
void Play(ArtNetNodeTable& table, const std::string& history)
{
    SCOPED_TRACE(history);
    std::istringstream polls(history);
    for (std::string poll; std::getline(polls, poll, ';');) {
        const std::string before = Published(table);
        const std::uint32_t generation = table.Generation();
        const std::size_t arrow = poll.find('>');
        std::istringstream replies(poll.substr(0, arrow));
        for (std::string reply; replies >> reply;)
            table.Hear(Reply(reply));
        EXPECT_EQ(Published(table), before) << "not before the poll";
        table.Age();
        EXPECT_EQ(Published(table), poll.substr(arrow + 1)) << poll;
        EXPECT_EQ(table.Generation(), generation + (Published(table) == before ? 0 : 1)) << poll;
    }
}

TEST(NodeTable, RepliesShowWithThePollAndAreGoneAfterFiveWithoutAnAnswer)
{
    for (const char* history : {
             // In order of arrival. A node that comes back is the last.
             "b1/1 a1/1 > b/1 a/1; a1/1 b1/1 > b/1 a/1; > b/1 a/1; > b/1 a/1; > b/1 a/1;"
             "a1/1 > a/1; b1/1 > a/1 b/1",
             // Of the replies to two polls the last wins.
             "a1/1A b1/2 > a/1A b/2; b1/2 b1/1 b1/1 > a/1A b/1; a1/1 a1/1A b1/1 > a/1A b/1",
             // Two pages, in whatever order they come.
             "n1/0123 n2/4567 > n/01234567; n2/4567 n1/0123 > n/01234567",
             // One that falls silent goes alone, and comes back to its place.
             "n2/45 n1/01 > n/0145; n1/01 > n/0145; n1/01 > n/0145; n1/01 > n/0145; n1/01 > n/01;"
             "n2/45 > n/0145",
             "n1/01 n2/45 > n/0145; n2/67 > n/0167; n2/ > n/01", // patched anew
             "n1/01 n1/45 > n/45; n0/67 > n/67; n1/89 > n/89",   // 0 and 1 are the same
             // Pages without a number come in turns, within each poll or one with each.
             "n0/45 n0/01 > n/0145; n0/45 n0/01 > n/0145; n0/01 > n/0145",
             "n0/01 > n/01; n0/45 > n/45; n0/01 > n/0145; n0/45 > n/0145; n0/01 > n/0145",
             // A node that was patched anew does not go back.
             "n0/01 > n/01; n0/01 n0/45 > n/0145; n0/45 > n/45; n0/45 > n/45; n0/45 > n/45;"
             "n0/45 > n/45; n0/01 n0/45 > n/0145",
             // The first page names the node.
             "n1/0A n2/1B > n/01A; n2/1B n1/0A > n/01A; n2/1C > n/01A; n1/0D > n/01D;"
             "n0/0E n0/2F > n/021E",
         })
    {
        ArtNetNodeTable table;
        Play(table, history);
    }
}

TEST(NodeTable, TakenNodesFollowOurOwnAndDoublesDieOfAge)
{
    ArtNetNodeTable first;
    Play(first, "a1/1 > a/1");
    ArtNetNodeTable second;
    Play(second, "b1/1 a1/1A > b/1 a/1A");
    second.Hear(Reply("c1/1")); // not yet published
    ArtNetNodeTable all;
    all.TakeFrom(first);
    all.TakeFrom(second);
    EXPECT_EQ(Published(all), " a/1 b/1 a/1A");
    EXPECT_EQ(all.Generation(), 0U);
    Play(all, "a1/2 > a/2 b/1 a/1A c/1; > a/2 b/1 a/1A c/1; > a/2 b/1 a/1A c/1; > a/2 c/1");

    // Where the first of two dies before it is heard again, the second is kept up.
    ArtNetNodeTable old;
    Play(old, "a1/1A > a/1A; > a/1A; > a/1A");
    old.TakeFrom(first);
    Play(old, "> a/1A a/1; > a/1; a1/2 > a/2; a1/2 > a/2; a1/2 > a/2; a1/2 > a/2; a1/2 > a/2");
}

TEST(NodeTable, AWholeNodeIsFedUntilItRepliesItself)
{
    ArtNetNodeTable table;
    const auto feed = [&table](const std::string& text) {
        table.Feed(Reply(text).node);
        table.Age();
        return Published(table);
    };
    EXPECT_EQ(feed("n0/01234567A"), " n/01234567A");
    EXPECT_EQ(feed("n0/012345678A"), " n/012345678A");
    Play(table, "n2/67A n1/01A > n/0167A");
    for (int poll = 0; poll < 9; ++poll)
        EXPECT_EQ(feed("n0/0167A"), " n/0167A") << "it is what we know";
    EXPECT_EQ(feed("n0/A"), " n/A");
}

// ---- Bounds ------------------------------------------------------------------------------------

ArtNetNodeInfo NodeAt(std::size_t number)
{
    ArtNetNodeInfo node;
    node.SetIp(std::to_string(number));
    node.universes.push_back(1);
    return node;
}

TEST(NodeTable, PagesAreBounded)
{
    ArtNetNodeTable table;
    const auto universesOf = [&table](std::size_t node) {
        return (*table.Published())[node].universes.size();
    };
    for (std::size_t node = 0; node < 300; ++node) {
        for (std::uint32_t page = 0; page < 200; ++page)
            table.Hear({NodeAt(node), static_cast<std::uint8_t>(node % 2 * page), page});
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
        table.Hear({NodeAt(300), page, 0});
    table.Age();
    EXPECT_EQ(universesOf(0), 2U) << "there is room again";
}

TEST(NodeTable, AtTheBoundNothingChangesUntilANodeIsGone)
{
    ArtNetNodeTable table;
    const auto poll = [&](std::size_t first, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            table.Hear({NodeAt(first + i)});
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
    EXPECT_EQ(table.Published()->back(), NodeAt(most));
}

} // namespace
