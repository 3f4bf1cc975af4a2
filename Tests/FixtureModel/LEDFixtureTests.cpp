// SPDX-License-Identifier: MIT
#include "FixtureModel/LEDFixture.h"

#include <algorithm>
#include <climits>

#include "Reading.h"

namespace {

using Entries = std::vector<StaticChannel>;

std::optional<LEDFixture> Read(const tinyxml2::XMLElement& element)
{
    std::int32_t unused = 0;
    return LEDFixture::FromXml(element, 7, unused);
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

const Entries& ListOf(const LEDFixture& fixture)
{
    return fixture.staticChannels;
}

TEST(StaticChannelList, SetsFindsAndRemoves)
{
    StaticChannelList list{{5, 10}, {1, -1}, {7, 0}};
    list.Set(5, 20);
    list.Set(3, 30);
    ASSERT_TRUE(list.Find(5));
    EXPECT_EQ(list.Find(5)->value, 20);
    EXPECT_EQ(list.Find(2), nullptr);
    EXPECT_EQ(list.GetHighestChannel(), 7);
    EXPECT_FALSE(list.HasValueInRange(1, 2));
    EXPECT_TRUE(list.HasValueInRange(1, 3));
    EXPECT_FALSE(list.HasValueInRange(7, 0));
    list.SetUnassigned(2, 2);
    EXPECT_EQ(list, (StaticChannelList{{5, 20}, {1, -1}, {7, 0}, {3, -1}, {2, -1}}));
    list.RemoveRange(2, 4);
    EXPECT_EQ(list, (StaticChannelList{{1, -1}, {7, 0}}));
    EXPECT_EQ(StaticChannelList().GetHighestChannel(), 0);
}

TEST(StaticChannelList, RangesAtTheEndOfTheNumbers)
{
    StaticChannelList list{{INT_MAX, 4}};
    EXPECT_TRUE(list.HasValueInRange(INT_MAX, INT_MAX));
    list.SetUnassigned(INT_MAX, 5);
    EXPECT_EQ(list, (StaticChannelList{{INT_MAX, -1}}));
    list.RemoveRange(INT_MAX - 1, INT_MAX);
    EXPECT_TRUE(list.empty());
}

TEST(LEDFixture, AutomaticCountAndFreeChannels)
{
    const auto plain = Loaded(FixtureText("", "1 4 7 10"));
    EXPECT_EQ(plain.uniqueID, 7);
    EXPECT_EQ(plain.GetStoredChannelCount(), -1);
    EXPECT_EQ(plain.GetChannelCount(), 12);

    // The free channels end with the pixels when a constant stands beyond them.
    const auto beyond = Loaded(FixtureText("", "2 10", Constant(20)));
    EXPECT_EQ(beyond.GetChannelCount(), 20);
    EXPECT_EQ(ListOf(beyond),
              Entries({{20, 0}, {1, -1}, {5, -1}, {6, -1}, {7, -1}, {8, -1}, {9, -1}}));
}

TEST(LEDFixture, StoredCountAndFreeChannels)
{
    const auto taken =
        Loaded(FixtureText("channel_count=\"6\"", "2", Constant(5) + Constant(1) + Constant(6)));
    EXPECT_EQ(ListOf(taken), Entries({{5, 0}, {1, 0}, {6, 0}}));

    const std::string six = "1 4 7 10 13 16";
    const std::string two = Constant(19, 255) + Constant(20);
    EXPECT_EQ(ListOf(Loaded(FixtureText("channel_count=\"20\"", six, two))),
              Entries({{19, 255}, {20, 0}}));
    const auto free = Loaded(FixtureText("channel_count=\"24\"", six, two));
    EXPECT_EQ(ListOf(free), Entries({{19, 255}, {20, 0}, {21, -1}, {22, -1}, {23, -1}, {24, -1}}));
    EXPECT_EQ(Written(free),
              "<P>\n"
              "    <LEDFixture manufacturer=\"Generic\" product=\"Bar\" channel_count=\"24\">\n"
              "        <PixelMapping width=\"6\" height=\"1\" type=\"RGB\">1 4 7 10 13 16  "
              "</PixelMapping>\n"
              "        <StaticChannel channel=\"19\" value=\"255\" />\n"
              "        <StaticChannel channel=\"20\" value=\"0\" />\n"
              "    </LEDFixture>\n"
              "</P>\n");

    EXPECT_EQ(Loaded(FixtureText("channel_count=\"2\"", six)).GetChannelCount(), 2);
    EXPECT_EQ(Loaded(FixtureText("channel_count=\"0\"", six)).GetChannelCount(), 0);
    EXPECT_EQ(Loaded(FixtureText("channel_count=\"512\"", "1")).staticChannels.size(), 509U);
}

TEST(LEDFixture, ConstantWithoutValueIsNotWritten)
{
    const auto fixture = Loaded(FixtureText("", "1", "<StaticChannel channel=\"5\" />"));
    EXPECT_EQ(ListOf(fixture), Entries({{5, -1}}));
    EXPECT_EQ(Written(fixture),
              "<P>\n    <LEDFixture manufacturer=\"Generic\" product=\"Bar\">\n"
              "        <PixelMapping width=\"1\" height=\"1\" type=\"RGB\">1  </PixelMapping>\n"
              "    </LEDFixture>\n</P>\n");
}

TEST(LEDFixture, IntensityChannelIsKeptApart)
{
    std::int32_t intensityChannel = -5;
    const auto read = [&](const tinyxml2::XMLElement& element) {
        return LEDFixture::FromXml(element, 1, intensityChannel);
    };
    const auto fixture = FromText(FixtureText("intensity_channel=\"159\"", "1"), read);
    ASSERT_TRUE(fixture);
    EXPECT_EQ(intensityChannel, 159);
    EXPECT_EQ(fixture->GetIntensity(), 255);
    EXPECT_EQ(Written(*fixture).find("intensity"), std::string::npos);
}

TEST(LEDFixture, EmptyNamesAreWrittenWithoutAttributes)
{
    // What is found by name may stand behind other elements.
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
         {FixtureText("channel_count=\"\"", "1"), "Channel count is unreadable: \"\""},
         {FixtureText("channel_count=\"513\"", "1"), "Channel count is out of range: 513"},
         {FixtureText("channel_count=\"-1\"", "1"), "Channel count is out of range: -1"},
         {FixtureText("channel_count=\"-2147483648\"", "1"),
          "Channel count is out of range: -2147483648"},
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

TEST(LEDFixture, HostileCellsLoadAndFreeChannelsStayWithinAUniverse)
{
    const auto fixture = Loaded(FixtureText("", "2147483647 -2147483648 -1"));
    EXPECT_EQ(fixture.GetChannelCount(), INT_MAX);
    // The pixel on -1 reaches channel 1.
    EXPECT_EQ(fixture.staticChannels.size(), 511U);
    EXPECT_EQ(fixture.staticChannels.front(), (StaticChannel{2, -1}));
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
