// SPDX-License-Identifier: MIT
// A fixture, its pixels and its constants.
#include "FixtureModel/LEDFixture.h"

#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

namespace {

using Entries = std::vector<StaticChannel>;
using enum PixelMapType;

/// A fixture with these attributes, an RGB map of one row, and constants.
LEDFixture Loaded(const std::string& attributes, const std::string& cells,
                  const std::string& constants = {})
{
    const auto width = std::to_string(std::count(cells.begin(), cells.end(), ' ') + 1);
    XmlText::Document document;
    EXPECT_TRUE(XmlText::Parse("<LEDFixture manufacturer='Maker' product='Bar' " + attributes +
                                   "><PixelMapping height='1' type='RGB' width='" + width + "'>" +
                                   cells + "</PixelMapping>" + constants + "</LEDFixture>",
                               document));
    std::int32_t intensityChannel = 0;
    auto fixture = LEDFixture::FromXml(*document.FirstChildElement(), 1, intensityChannel);
    EXPECT_TRUE(fixture) << attributes << cells << constants;
    return fixture.value_or(LEDFixture(L"", L"", PixelMap(0, 0, RGB), 0, 0));
}

TEST(StaticChannelList, SetsFindsAndRemoves)
{
    StaticChannelList list{{5, 10}, {1, -1}, {7, 0}};
    list.Set(5, 20);
    list.Set(3, 30);
    EXPECT_EQ(list.Find(2), nullptr);
    EXPECT_EQ(list.GetHighestChannel(), 7);
    EXPECT_FALSE(list.HasValueInRange(1, 2));
    EXPECT_TRUE(list.HasValueInRange(1, 3));
    EXPECT_FALSE(list.HasValueInRange(7, 0));
    list.SetUnassigned(2, 2);
    EXPECT_EQ(list, (StaticChannelList{{5, 20}, {1, -1}, {7, 0}, {3, -1}, {2, -1}}));
    list.RemoveRange(2, 4);
    EXPECT_EQ(list, (StaticChannelList{{1, -1}, {7, 0}}));
    StaticChannelList last{{INT_MAX, 4}};
    EXPECT_TRUE(last.HasValueInRange(INT_MAX, INT_MAX));
    last.SetUnassigned(INT_MAX, 5);
    EXPECT_EQ(last, (StaticChannelList{{INT_MAX, -1}}));
}

TEST(LEDFixture, CountAndFreeChannels)
{
    const std::string five = "<StaticChannel channel='5' value='0' />";
    const std::string one = "<StaticChannel channel='1' value='9' />";
    const std::string twenty = "<StaticChannel channel='20' />";
    using Case = std::tuple<LEDFixture, std::int32_t, Entries>;
    for (const auto& [fixture, count, list] :
         {Case{Loaded("", "1 4 7 10"), 12, {}},
          // The free channels end with the pixels when a constant lies beyond them.
          Case{Loaded("", "2 6", twenty), 20, {{20, -1}, {1, -1}, {5, -1}}},
          Case{Loaded("channel_count='6'", "2", five + one), 6, {{5, 0}, {1, 9}, {6, -1}}},
          Case{Loaded("channel_count='0'", "1 4"), 0, {}}})
    {
        EXPECT_EQ(fixture.GetChannelCount(), count);
        EXPECT_EQ(static_cast<const Entries&>(fixture.staticChannels), list) << count;
    }
    LEDFixture full = Loaded("channel_count='512'", "1");
    EXPECT_EQ(full.staticChannels.size(), 509U);
    for (const auto& [set, count] : {std::pair(513, 512), {-1, 512}, {0, 0}}) {
        full.SetChannelCount(set);
        EXPECT_EQ(full.GetChannelCount(), count);
    }
    // The pixel on -1 reaches channel 1; free channels stay within a universe.
    const auto wild = Loaded("", "2147483647 -2147483648 -1");
    EXPECT_EQ(wild.GetChannelCount(), INT_MAX);
    EXPECT_EQ(wild.staticChannels.size(), 511U);
    // Product and pixels make a fixture, not its channels and constants.
    EXPECT_EQ(wild, Loaded("channel_count='9'", "2147483647 -2147483648 -1", five));
    EXPECT_NE(wild, Loaded("", "2147483647 -2147483648 -2"));
}

using Indices = std::vector<std::int32_t>;

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
