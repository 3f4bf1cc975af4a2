// SPDX-License-Identifier: MIT
// Where an element lies: its address, the merging of universes, and its place on the canvas.
#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/UniverseMerging.h"
#include "FixtureModel/VideoMapping.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <tuple>

namespace {

TEST(DMXMapping, Descriptions)
{
    const DMXMappingArtNet mapping(20, -3, 600, L"any", L"");
    EXPECT_EQ(mapping.GetDescription(), L"ArtNet/IP any/sub 20/univ -3/ch 600");
    EXPECT_EQ(mapping.GetSortDescription(), L"ArtNet/IP any/sub 020/univ -03/ch 600");
    EXPECT_EQ(DMXMappingArtNet().GetDescription(), L"ArtNet/IP Auto/sub 0/univ 0/ch 1");
}

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

TEST(VideoMapping, CornersTurnWithTheRectangleByWholeDegrees)
{
    VideoMapping mapping({0.5F, 0.5F}, {0.2F, 0.1F}, 0, false, false);
    EXPECT_EQ(mapping.filterMode, VideoFilterMode::Bilinear);
    mapping.SetRotation(450.5F);
    mapping.SetRotation(std::numeric_limits<float>::infinity());
    mapping.SetRotation(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(mapping.rotation, 90);
    const auto expectNear = [](PointF point, float x, float y) {
        EXPECT_NEAR(point.x, x, 1e-6);
        EXPECT_NEAR(point.y, y, 1e-6);
    };
    expectNear(mapping.GetTopLeft(), 0.55F, 0.4F);
    expectNear(mapping.GetTopRight(), 0.55F, 0.6F);
    expectNear(mapping.GetBottomLeft(), 0.45F, 0.4F);
    expectNear(mapping.GetBottomRight(), 0.45F, 0.6F);
    mapping.SetTopLeft(0, 0.25F);
    expectNear(mapping.GetCenter(), 0.1F, 0.3F);
}

} // namespace
