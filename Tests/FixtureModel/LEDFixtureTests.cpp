// SPDX-License-Identifier: MIT
#include "FixtureModel/LEDFixture.h"

#include "Support/LogCapture.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

namespace {

using Entries = std::vector<StaticChannel>;

/// An element with these attributes beside the names, an RGB map of one row, and these children.
std::string FixtureText(const std::string& attributes, const std::string& cells,
                        const std::string& children = {})
{
    const auto width = std::to_string(std::count(cells.begin(), cells.end(), ' ') + 1);
    return "<LEDFixture manufacturer=\"Generic\" product=\"Bar\" " + attributes +
           "><PixelMapping width=\"" + width + "\" height=\"1\" type=\"RGB\">" + cells +
           "</PixelMapping>" + children + "</LEDFixture>";
}

std::string Constant(int channel, int value = 0)
{
    return "<StaticChannel channel=\"" + std::to_string(channel) + "\" value=\"" +
           std::to_string(value) + "\" />";
}

LEDFixture Loaded(const std::string& text)
{
    XmlText::Document document;
    EXPECT_TRUE(XmlText::Parse(text, document)) << text;
    std::int32_t intensityChannel = 0;
    auto fixture = LEDFixture::FromXml(*document.FirstChildElement(), 7, intensityChannel);
    EXPECT_TRUE(fixture) << text;
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
    const std::string six = "1 4 7 10 13 16";
    const std::string two = Constant(19, 255) + Constant(20);
    using Case = std::tuple<std::string, std::int32_t, Entries>;
    for (const auto& [text, count, list] :
         {Case{FixtureText("", "1 4 7 10"), 12, {}},
          // The free channels end with the pixels when a constant lies beyond them.
          Case{FixtureText("", "2 6", Constant(20)), 20, {{20, 0}, {1, -1}, {5, -1}}},
          Case{FixtureText("channel_count=\"6\"", "2", Constant(5) + Constant(1) + Constant(6)),
               6,
               {{5, 0}, {1, 0}, {6, 0}}},
          Case{FixtureText("channel_count=\"21\"", six, two), 21, {{19, 255}, {20, 0}, {21, -1}}},
          Case{FixtureText("channel_count=\"0\"", six), 0, {}},
          Case{FixtureText("", "1", "<StaticChannel channel=\"5\" />"), 5, {{5, -1}}}})
    {
        const LEDFixture fixture = Loaded(text);
        EXPECT_EQ(fixture.uniqueID, 7);
        EXPECT_EQ(fixture.GetChannelCount(), count) << text;
        EXPECT_EQ(static_cast<const Entries&>(fixture.staticChannels), list) << text;
    }
    EXPECT_EQ(Loaded(FixtureText("channel_count=\"512\"", "1")).staticChannels.size(), 509U);
    // The pixel on -1 reaches channel 1; free channels stay within a universe.
    const auto wild = Loaded(FixtureText("", "2147483647 -2147483648 -1"));
    EXPECT_EQ(wild.GetChannelCount(), INT_MAX);
    EXPECT_EQ(wild.staticChannels.size(), 511U);
}

TEST(LEDFixture, ChannelCountOutOfRangeChangesNothing)
{
    LEDFixture fixture(L"m", L"p", PixelMap(1, 1, PixelMapType::RGB), 1, 9);
    const Support::LogCapture log;
    for (const auto& [set, count] : {std::pair(512, 512), {513, 512}, {0, 0}, {-1, 0}}) {
        fixture.SetChannelCount(set);
        EXPECT_EQ(fixture.GetChannelCount(), count);
    }
    EXPECT_EQ(log.Messages(),
              (std::vector<std::string>{"Setting channel count is out of range 513",
                                        "Setting channel count is out of range -1"}));
}

TEST(LEDFixture, EqualByProductAndPixelsAlone)
{
    const auto one = Loaded(FixtureText("channel_count=\"9\"", "1", Constant(5)));
    auto other = Loaded(FixtureText("", "1", Constant(6, 9)));
    other.manufacturer = L"Another";
    EXPECT_EQ(one, other);
    other.product = L"bar";
    EXPECT_NE(one, other);
    EXPECT_NE(one, Loaded(FixtureText("", "2")));
}

} // namespace
