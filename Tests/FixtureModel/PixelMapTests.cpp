// SPDX-License-Identifier: MIT
#include "FixtureModel/PixelMap.h"

#include "XmlText/XmlText.h"

#include <climits>

#include <gtest/gtest.h>

namespace {

using Indices = std::vector<std::int32_t>;
using enum PixelMapType;

PixelMap MapOf(std::int32_t width, std::int32_t height, PixelMapType type, const Indices& cells)
{
    PixelMap map(width, height, type);
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(cells.size()); ++i)
        map.SetCell(i % width, i / width, cells[static_cast<std::size_t>(i)]);
    return map;
}

TEST(PixelMapType, TextAndChannelsOfAllTypes)
{
    std::wstring types;
    for (std::int32_t i = 0; i < 21; ++i) {
        const wchar_t* text = PixelMapTypeToText(static_cast<PixelMapType>(i));
        types += text + std::to_wstring(ChannelsPerPixel(static_cast<PixelMapType>(i))) + L' ';
        EXPECT_EQ(PixelMapTypeFromText(text), i);
    }
    EXPECT_EQ(types, L"RGB3 RBG3 GRB3 GBR3 BRG3 BGR3 RGBL4 RGBA4 RGBW+4 RGBW-4 L1 CMY3 YMC3 "
                     L"RGBXXX6 RrGgBb6 RGBAmber4 RGBWAmber5 RB2 R1 G1 B1 ");
    for (const std::int32_t outside : {-1, 21, INT_MAX}) {
        EXPECT_EQ(PixelMapTypeToText(static_cast<PixelMapType>(outside)), nullptr);
        EXPECT_EQ(ChannelsPerPixel(static_cast<PixelMapType>(outside)), -1);
        XmlText::Document document;
        auto& parent = XmlText::AddElement(document, "P");
        EXPECT_EQ(PixelMap(1, 1, static_cast<PixelMapType>(outside)).ToXml(parent), -1);
    }
}

TEST(PixelMap, QueriesOfChannels)
{
    const auto rgbl = MapOf(2, 2, RGBL, {5, 9, 1, 13});
    EXPECT_EQ(rgbl.GetTotalChannels(), 16);
    EXPECT_EQ(rgbl.GetHighestStartChannel(), 13);
    EXPECT_EQ(rgbl.GetHighestChannel(), 16);
    for (const PixelMap& none : {PixelMap(3, 2, RGB), PixelMap(0, 0, RGB), MapOf(1, 1, RGB, {-9})})
        EXPECT_EQ(none.GetHighestChannel(), 0);
    EXPECT_EQ(PixelMap(0, 0, RGB).GetHighestStartChannel(), 0);

    const auto map = MapOf(4, 1, RGB, {10, 0, 4, 7});
    for (const auto& [channel, pixel] :
         {std::pair(0, -1), {3, -1}, {4, 2}, {6, 2}, {7, 3}, {13, -1}})
        EXPECT_EQ(map.GetPixelForChannel(channel), pixel) << channel;
    for (const auto& [start, pixels] :
         {std::pair(7, Indices{3}), {8, {0, 3}}, {2, {2}}, {1, {}}, {12, {0}}, {13, {}}})
        EXPECT_EQ(map.GetPixelsOverlapping(start), pixels) << start;
    // An empty cell counts like any other: its last channel is n - 1.
    for (const auto& [channel, pixels] :
         {std::pair(12, Indices{}), {11, {0}}, {8, {0, 3}}, {2, {0, 2, 3}}, {1, {0, 1, 2, 3}}})
        EXPECT_EQ(map.GetPixelsBeyondChannel(channel), pixels) << channel;

    const auto ends = MapOf(2, 1, RGBXXX, {INT_MAX, INT_MIN});
    EXPECT_EQ(ends.GetHighestChannel(), INT_MAX);
    EXPECT_EQ(ends.GetPixelForChannel(INT_MAX), 0);
    EXPECT_EQ(ends.GetPixelForChannel(INT_MIN + 5), 1);
    EXPECT_EQ(ends.GetPixelsOverlapping(INT_MAX), Indices({0}));
    EXPECT_EQ(ends.GetPixelsBeyondChannel(INT_MAX), Indices({0}));
}

TEST(PixelMap, ANewSizeForgetsTheCells)
{
    auto map = MapOf(2, 1, RGB, {1, 4});
    map.SetType(RGBL);
    EXPECT_EQ(map, MapOf(2, 1, RGBL, {1, 4}));
    map.SetWidth(2);
    EXPECT_EQ(map, PixelMap(2, 1, RGBL));
    map.SetCell(0, 0, 1);
    map.SetHeight(-1);
    EXPECT_EQ(map, PixelMap(2, 0, RGBL));
    map.SetHeight(2);
    EXPECT_EQ(map, PixelMap(2, 2, RGBL));
    map.SetCell(1, 1, 1);
    map.Clear();
    EXPECT_EQ(map, PixelMap(2, 2, RGBL));
}

} // namespace
