// SPDX-License-Identifier: MIT
#include "FixtureModel/LEDFixture.h"

#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

namespace {

using Entries = std::vector<StaticChannel>;

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
    return fixture.value_or(LEDFixture(L"", L"", PixelMap(0, 0, PixelMapType::RGB), 0, 0));
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

} // namespace
