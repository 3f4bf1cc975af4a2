// SPDX-License-Identifier: MIT
#include "FixtureModel/LEDFixture.h"

#include <algorithm>
#include <climits>

#include "Reading.h"

namespace {

using Entries = std::vector<StaticChannel>;

std::int32_t intensityChannel = 0;

std::optional<LEDFixture> Read(const tinyxml2::XMLElement& element)
{
    return LEDFixture::FromXml(element, 7, intensityChannel);
}

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
    auto fixture = FromText(text, Read);
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
    struct Case
    {
        std::string text;
        std::int32_t count;
        Entries list;
    };
    for (const auto& [text, count, list] : {
             Case{FixtureText("", "1 4 7 10"), 12, {}},
             // The free channels end with the pixels when a constant lies beyond them.
             Case{FixtureText("", "2 6", Constant(20)), 20, {{20, 0}, {1, -1}, {5, -1}}},
             Case{FixtureText("channel_count=\"6\"", "2", Constant(5) + Constant(1) + Constant(6)),
                  6,
                  {{5, 0}, {1, 0}, {6, 0}}},
             Case{
                 FixtureText("channel_count=\"21\"", six, two), 21, {{19, 255}, {20, 0}, {21, -1}}},
             Case{FixtureText("channel_count=\"0\"", six), 0, {}},
             Case{FixtureText("", "1", "<StaticChannel channel=\"5\" />"), 5, {{5, -1}}},
         })
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

TEST(LEDFixture, WritesWhatIsNotFree)
{
    const auto text = FixtureText("channel_count=\"24\"", "1 4",
                                  Constant(19, 255) + "<StaticChannel channel=\"9\" />");
    EXPECT_EQ(Written(Loaded(text)),
              "<P>\n"
              "    <LEDFixture manufacturer=\"Generic\" product=\"Bar\" channel_count=\"24\">\n"
              "        <PixelMapping width=\"2\" height=\"1\" type=\"RGB\">1 4  </PixelMapping>\n"
              "        <StaticChannel channel=\"19\" value=\"255\" />\n"
              "    </LEDFixture>\n"
              "</P>\n");
}

TEST(LEDFixture, IntensityChannelIsKeptApart)
{
    const auto fixture = Loaded(FixtureText("intensity_channel=\"159\"", "1"));
    EXPECT_EQ(intensityChannel, 159);
    EXPECT_EQ(fixture.GetIntensity(), 255);
    EXPECT_EQ(Written(fixture).find("intensity"), std::string::npos);
}

TEST(LEDFixture, EmptyNamesAreWrittenWithoutAttributes)
{
    // An element that is found by its name may follow others.
    const auto fixture = Loaded(R"(<LEDFixture manufacturer="" product="A"><Note />)"
                                R"(<PixelMapping width="1" height="1" type="L">1</PixelMapping>)"
                                R"(</LEDFixture>)");
    const std::string text = Written(fixture);
    EXPECT_EQ(text.find("manufacturer"), std::string::npos);
    ExpectRejected({{text, "Manufacturer is not defined"}},
                   [](const auto& parent) { return Read(*parent.FirstChildElement()); });
}

TEST(LEDFixture, RejectsWithOneLine)
{
    const std::string map = R"(<PixelMapping width="1" height="1" type="RGB">1</PixelMapping>)";
    const auto constant = [](const std::string& attributes) {
        return FixtureText("", "1", "<StaticChannel " + attributes + " />");
    };
    ExpectRejected(
        {{"<LEDFixture product=\"a\">" + map + "</LEDFixture>", "Manufacturer is not defined"},
         {"<LEDFixture manufacturer=\"a\">" + map + "</LEDFixture>", "Product name is not defined"},
         {R"(<LEDFixture manufacturer="a" product="b" channel_count="x" />)",
          "PixelMap node not found"},
         {FixtureText("channel_count=\"x\"", "1 q"), "PixelMap content not completely filled"},
         {FixtureText("channel_count=\"3x\"", "1"), "Channel count is unreadable: \"3x\""},
         {FixtureText("channel_count=\"513\"", "1"), "Channel count is out of range: 513"},
         {FixtureText("channel_count=\"-1\"", "1"), "Channel count is out of range: -1"},
         {FixtureText("intensity_channel=\"hi\"", "1", "<StaticChannel />"),
          "Intensity value is unreadable: \"hi\""},
         {constant("value=\"x\""), "Assignment channel not defined"},
         {constant("channel=\"5a\""), "Assignment channel syntax error: \"5a\""},
         {constant("channel=\"0\""), "Assignment channel should be in range (1-512): \"0\""},
         {constant("channel=\"513\" value=\"0\""),
          "Assignment channel should be in range (1-512): \"513\""},
         {constant("channel=\"5\" value=\"\""), "Assignment value syntax error: \"\""},
         {constant("channel=\"5\" value=\"-1\""),
          "Assignment value should be in range (0-255): \"-1\""},
         {constant("channel=\"5\" value=\"256\""),
          "Assignment value should be in range (0-255): \"256\""},
         {FixtureText("", "1", Constant(5) + Constant(6) + Constant(5)),
          "Channel 5 has multiple static value assignments"},
         {FixtureText("", "1", Constant(2)),
          "Channel 2 assignment overlaps with fixture pixel mapping"}},
        Read);
}

TEST(LEDFixture, ChannelCountOutOfRangeChangesNothing)
{
    LEDFixture fixture(L"m", L"p", PixelMap(1, 1, PixelMapType::RGB), 1, 9);
    Support::LogCapture log;
    fixture.SetChannelCount(512);
    fixture.SetChannelCount(513);
    fixture.SetChannelCount(-1);
    EXPECT_EQ(fixture.GetChannelCount(), 512);
    EXPECT_EQ(log.Messages(),
              (std::vector<std::string>{"Setting channel count is out of range 513",
                                        "Setting channel count is out of range -1"}));
    fixture.SetChannelCount(0);
    EXPECT_EQ(fixture.GetChannelCount(), 0);
}

TEST(LEDFixture, EqualByProductAndPixelsAlone)
{
    const auto one = Loaded(FixtureText("channel_count=\"9\"", "1", Constant(5)));
    auto other = Loaded(FixtureText("", "1", Constant(6, 9)));
    other.manufacturer = L"Another";
    EXPECT_EQ(one, other);
    other.pixelMap.SetCell(0, 0, 2);
    EXPECT_NE(one, other);
    other = one;
    other.product = L"bar";
    EXPECT_NE(one, other);
}

} // namespace
