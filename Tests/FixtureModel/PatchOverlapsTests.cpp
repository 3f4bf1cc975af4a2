// SPDX-License-Identifier: MIT
#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/PatchOverlaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <tuple>
#include <vector>

TEST(PatchOverlaps, ChannelsAreSentUpTo512)
{
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    using Case = std::tuple<std::int32_t, std::int32_t, SentChannels>;
    for (const auto& [channel, count, sent] :
         {Case{97, 33, {97, 129, false}}, Case{477, 36, {477, 512, false}},
          Case{478, 36, {478, 512, true}}, Case{512, 1, {512, 512, false}},
          Case{513, 1, {513, 512, true}}, Case{0, 36, {}}, Case{7, 0, {7, 6, false}},
          Case{most, most, {most, 512, true}}})
        EXPECT_EQ(ChannelsSent(channel, count), sent) << channel << " " << count;
}

namespace {

constexpr wchar_t Left[] = L"2.0.0.1";
constexpr wchar_t Right[] = L"2.0.0.2";

/// What the sweep must find, by its definition.
std::vector<std::size_t> OneByOne(const std::vector<PatchedElement>& elements)
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        for (std::size_t k = 0; k < elements.size(); ++k) {
            const PatchedElement& a = elements[i];
            const PatchedElement& b = elements[k];
            const bool together = a.node == b.node || a.node == AutoNode || b.node == AutoNode;
            if (i == k || !b.chosen || a.portAddress != b.portAddress || !together ||
                a.channels.AreNone() || b.channels.AreNone() ||
                a.channels.first > b.channels.last || b.channels.first > a.channels.last)
                continue;
            found.push_back(i);
            break;
        }
    }
    std::ranges::stable_sort(found, {}, [&](std::size_t i) {
        return std::pair(elements[i].portAddress, elements[i].channels.first);
    });
    return found;
}

} // namespace

TEST(PatchOverlaps, AreThoseThatANodeReceivesTogether)
{
    std::mt19937 random(7);
    const auto below = [&random](unsigned limit) {
        return static_cast<int>(random() % limit);
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<PatchedElement> elements;
        for (int i = below(30); i >= 0; --i) {
            const wchar_t* nodes[] = {AutoNode, AutoNode, Left, Right};
            elements.push_back({static_cast<std::uint16_t>(below(3)),
                                ChannelsSent(below(600) - 10, below(40)), nodes[below(4)],
                                below(3) == 0});
        }
        ASSERT_EQ(OverlapsWithChosen(elements), OneByOne(elements)) << "round " << round;
    }
}
