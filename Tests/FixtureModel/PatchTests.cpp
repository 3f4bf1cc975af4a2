// SPDX-License-Identifier: MIT
// Where elements are sent: their addresses, which of them follow each other or overlap, and the
// merging of universes.
#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchRun.h"
#include "FixtureModel/UniverseMerging.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <set>
#include <tuple>
#include <vector>

namespace {

TEST(DMXMapping, OrderAndPortAddress)
{
    const DMXMappingArtNet mapping(1, 2, 3, L"z", L"");
    for (const auto& [subnet, universe, channel] :
         {std::tuple(2, 0, 0), {1, 3, 0}, {1, 2, 4}, {INT_MAX, INT_MIN, 0}})
        EXPECT_TRUE(mapping < DMXMappingArtNet(subnet, universe, channel, L"a", L""));
    EXPECT_FALSE(mapping < DMXMappingArtNet(1, 2, 3, L"zz", L""));
    for (const auto& [subnet, universe, address] :
         {std::tuple(1, 2, 18), {15, 15, 255}, {20, 1, 321}, {INT_MAX, INT_MAX, 0xFFEF}})
        EXPECT_EQ(DMXMappingArtNet(subnet, universe, 1, L"", L"").GetPortAddress(), address);
    EXPECT_TRUE(DMXMappingArtNet().IsAuto());
    EXPECT_FALSE(DMXMappingArtNet(0, 0, 1, L"auto", L"").IsAuto());
}

TEST(UniverseMerging, RangesAndTranslation)
{
    const auto run = [](std::uint32_t fromSubnet, std::uint32_t fromUniverse, std::int32_t length,
                        std::uint32_t toSubnet, std::uint32_t toUniverse) {
        return UniverseMerging(true, fromSubnet, fromUniverse, length, toSubnet, toUniverse,
                               MergerDMXSource::PixelWeft);
    };
    const auto up = run(0, 1, 2, 1, 0);
    for (const auto& [address, inside] : {std::pair(0, false), {1, true}, {2, true}, {3, false}})
        EXPECT_EQ(up.IsInFromRange(address), inside) << address;
    EXPECT_EQ(run(2, 1, 4, 0, 3).TranslateToOutput(33), 3);
    for (const auto& [from, length, to, overlap] :
         {std::tuple(0U, 3, 3U, false), {0U, 4, 3U, true}, {3U, 3, 0U, false}, {3U, 4, 0U, true}})
        EXPECT_EQ(run(0, from, length, 0, to).RangesOverlap(), overlap);
}

TEST(FreePatch, GoesBehindEverythingPatchedAndPastTakenUniverses)
{
    using Case = std::tuple<std::vector<PatchedSpan>, int, std::vector<int>, PatchAddress>;
    for (const auto& [patched, channels, taken, next] : {
             Case{{}, 512, {}, {0, 0, 1}},
             // Not in the order of the wire, and with a gap that stays a gap.
             Case{{{{0, 3, 40}, 10}, {{0, 1, 500}, 12}, {{0, 3, 1}, 3}}, 3, {}, {0, 3, 50}},
             Case{{{{0, 15, 1}, 3}, {{1, 0, 7}, 3}}, 3, {}, {1, 0, 10}},
             Case{{{{0, 2, 343}, 169}}, 1, {}, {0, 2, 512}},
             Case{{{{0, 2, 343}, 170}}, 3, {}, {0, 3, 1}},
             Case{{{{0, 15, 343}, 170}}, 3, {}, {1, 0, 1}},
             Case{{{{0, 0, 1}, 1}}, 512, {}, {0, 1, 1}},
             // Past a taken universe only the universe moves on.
             Case{{{{0, 14, 500}, 13}}, 3, {17, 15, 16}, {1, 2, 1}},
             Case{{{{0, 0, 1}, 36}}, 3, {0}, {0, 1, 37}},
             // A document may hold any number.
             Case{{{{INT_MAX, INT_MAX, INT_MAX}, 512}}, 3, {}, {INT_MAX, 0, 1}},
             Case{{{{-5, -7, -100}, 3}}, 3, {}, {0, 0, 1}},
         })
        EXPECT_EQ(NextFreePatch(patched, channels, taken), next)
            << next.subnet << '/' << next.universe << '/' << next.channel;
}

TEST(PatchRun, GoesOnBehindTheElementBeforeAndWrapsAtTheEnds)
{
    using Case = std::tuple<PatchAddress, int, int, PatchAddress>;
    for (const auto& [before, taken, channels, next] : {
             Case{{0, 0, 1}, 170, 170, {0, 0, 171}},
             Case{{0, 0, 171}, 170, 170, {0, 0, 341}},
             Case{{0, 0, 341}, 170, 170, {0, 1, 1}},
             Case{{0, 0, 171}, 170, 171, {0, 1, 1}}, // 341 to 511 would just fit
             Case{{0, 0, 1}, 36, 3, {0, 0, 37}},
             Case{{0, 0, 1}, 512, 512, {0, 1, 1}},
             Case{{0, 0, 511}, 0, 0, {0, 0, 511}},
             Case{{0, 15, 500}, 36, 36, {1, 0, 1}},
             Case{{15, 15, 500}, 36, 36, {0, 0, 1}},
             // A document may hold any number.
             Case{{INT_MAX, INT_MAX, INT_MAX}, 3, 3, {0, 0, 1}},
             Case{{-3, -5, -7}, 3, 3, {-3, -5, -4}},
         })
        EXPECT_EQ(NextInRun(before, taken, channels), next)
            << before.subnet << '/' << before.universe << '/' << before.channel;
}

TEST(PatchOverlaps, ChannelsAreSentUpTo512)
{
    using Case = std::tuple<std::int32_t, std::int32_t, SentChannels>;
    for (const auto& [channel, count, sent] :
         {Case{97, 33, {97, 129, false}}, Case{477, 36, {477, 512, false}},
          Case{478, 36, {478, 512, true}}, Case{512, 1, {512, 512, false}},
          Case{513, 1, {513, 512, true}}, Case{0, 36, {}}, Case{7, 0, {7, 6, false}},
          Case{INT_MAX, INT_MAX, {INT_MAX, 512, true}}})
        EXPECT_EQ(ChannelsSent(channel, count), sent) << channel << " " << count;
}

/// Whether a node may receive both on some channel.
bool Share(const PatchedElement& a, const PatchedElement& b)
{
    const bool together = a.node == b.node || a.node == AutoNode || b.node == AutoNode;
    return a.portAddress == b.portAddress && together && !a.channels.AreNone() &&
           !b.channels.AreNone() && a.channels.first <= b.channels.last &&
           b.channels.first <= a.channels.last;
}

/// What the sweep must find, by its definition.
std::vector<std::size_t> OneByOne(const std::vector<PatchedElement>& elements)
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        for (std::size_t k = 0; k < elements.size(); ++k) {
            if (i == k || !elements[k].chosen || !Share(elements[i], elements[k]))
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

/// The same for the groups, each grown element by element.
std::vector<OverlapGroup> GroupsOneByOne(const std::vector<PatchedElement>& elements)
{
    std::vector<OverlapGroup> groups;
    std::set<std::size_t> left;
    for (std::size_t i = 0; i < elements.size(); ++i)
        left.insert(i);
    while (!left.empty()) {
        OverlapGroup group{elements[*left.begin()].portAddress, 512, 0, {*left.begin()}};
        for (std::size_t at = 0; at < group.elements.size(); ++at) {
            const std::size_t one = group.elements[at];
            left.erase(one);
            for (std::size_t k = 0; k < elements.size(); ++k) {
                if (k == one || !Share(elements[one], elements[k]))
                    continue;
                const SentChannels a = elements[one].channels;
                const SentChannels b = elements[k].channels;
                group.first = std::min(group.first, std::max(a.first, b.first));
                group.last = std::max(group.last, std::min(a.last, b.last));
                if (std::ranges::count(group.elements, k) == 0)
                    group.elements.push_back(k);
            }
        }
        std::ranges::sort(group.elements);
        if (group.elements.size() > 1)
            groups.push_back(group);
    }
    return groups;
}

TEST(PatchOverlaps, AreThoseThatANodeReceivesTogether)
{
    std::mt19937 random(7);
    const auto below = [&random](unsigned limit) {
        return static_cast<int>(random() % limit);
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<PatchedElement> elements;
        for (int i = below(30); i >= 0; --i) {
            const wchar_t* nodes[] = {AutoNode, AutoNode, L"2.0.0.1", L"2.0.0.2"};
            elements.push_back({static_cast<std::uint16_t>(below(3)),
                                ChannelsSent(below(600) - 10, below(40)), nodes[below(4)],
                                below(3) == 0});
        }
        ASSERT_EQ(OverlapsWithChosen(elements), OneByOne(elements)) << "round " << round;
        auto groups = OverlapGroups(elements);
        ASSERT_TRUE(std::ranges::is_sorted(groups, {}, &OverlapGroup::portAddress));
        std::ranges::sort(groups, {}, [](const auto& group) { return group.elements.front(); });
        ASSERT_EQ(groups, GroupsOneByOne(elements)) << "round " << round;
    }
}

} // namespace
