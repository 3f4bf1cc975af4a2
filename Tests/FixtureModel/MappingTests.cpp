// SPDX-License-Identifier: MIT
// Where an element is sent: its address, and the merging of universes.
#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/UniverseMerging.h"

#include <gtest/gtest.h>

#include <climits>
#include <tuple>

namespace {

TEST(DMXMapping, DescriptionOrderAndPortAddress)
{
    const DMXMappingArtNet odd(20, -3, 600, L"any", L"");
    EXPECT_EQ(odd.GetDescription(), L"ArtNet/IP any/sub 20/univ -3/ch 600");
    EXPECT_EQ(odd.GetSortDescription(), L"ArtNet/IP any/sub 020/univ -03/ch 600");
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

} // namespace
