// SPDX-License-Identifier: MIT
#include "FixtureModel/PixelMap.h"

#include <climits>
#include <initializer_list>

#include "Reading.h"

namespace {

using Indices = std::vector<std::int32_t>;

PixelMap MapOf(std::int32_t width, std::int32_t height, PixelMapType type,
               std::initializer_list<std::int32_t> cells)
{
    PixelMap map(width, height, type);
    std::int32_t index = 0;
    for (const std::int32_t cell : cells) {
        map.SetCell(index % width, index / width, cell);
        ++index;
    }
    return map;
}

std::unique_ptr<PixelMap> Read(std::string_view text)
{
    return FromText(text, PixelMap::FromXml);
}

TEST(PixelMapType, TextAndChannelsOfAllTypes)
{
    const std::vector<std::pair<std::wstring, std::int32_t>> types{
        {L"RGB", 3},      {L"RBG", 3},       {L"GRB", 3},  {L"GBR", 3},    {L"BRG", 3},
        {L"BGR", 3},      {L"RGBL", 4},      {L"RGBA", 4}, {L"RGBW+", 4},  {L"RGBW-", 4},
        {L"L", 1},        {L"CMY", 3},       {L"YMC", 3},  {L"RGBXXX", 6}, {L"RrGgBb", 6},
        {L"RGBAmber", 4}, {L"RGBWAmber", 5}, {L"RB", 2},   {L"R", 1},      {L"G", 1},
        {L"B", 1}};
    ASSERT_EQ(types.size(), 21U);
    for (std::size_t i = 0; i < types.size(); ++i) {
        const auto type = static_cast<PixelMapType>(i);
        EXPECT_EQ(PixelMapTypeToText(type), types[i].first);
        EXPECT_EQ(PixelMapTypeFromText(types[i].first), static_cast<std::int32_t>(i));
        EXPECT_EQ(ChannelsPerPixel(type), types[i].second) << i;
    }
    EXPECT_EQ(PixelMapType::B, static_cast<PixelMapType>(20));
    for (const std::int32_t outside : {-1, 21, INT_MIN, INT_MAX}) {
        EXPECT_EQ(PixelMapTypeToText(static_cast<PixelMapType>(outside)), nullptr);
        EXPECT_EQ(ChannelsPerPixel(static_cast<PixelMapType>(outside)), -1);
    }
    for (const wchar_t* text : {L"", L"rgb", L"RGBX", L"RG", L" RGB", L"RGBW"})
        EXPECT_EQ(PixelMapTypeFromText(text), -1) << text;
}

TEST(PixelMap, HighestAndTotalChannels)
{
    const auto rgb = MapOf(4, 1, PixelMapType::RGB, {1, 4, 7, 10});
    EXPECT_EQ(rgb.GetHighestChannel(), 12);
    EXPECT_EQ(rgb.GetTotalChannels(), 12);
    const auto rgbl = MapOf(2, 2, PixelMapType::RGBL, {5, 9, 1, 13});
    EXPECT_EQ(rgbl.GetHighestStartChannel(), 13);
    EXPECT_EQ(rgbl.GetHighestChannel(), 16);
    EXPECT_EQ(PixelMap(3, 2, PixelMapType::RGB).GetHighestChannel(), 0);
    EXPECT_EQ(PixelMap(0, 0, PixelMapType::RGB).GetHighestStartChannel(), 0);
    const auto negative = MapOf(2, 1, PixelMapType::RGB, {-9, -4});
    EXPECT_EQ(negative.GetHighestStartChannel(), -4);
    EXPECT_EQ(negative.GetHighestChannel(), 0);
}

TEST(PixelMap, PixelForChannel)
{
    const auto map = MapOf(3, 1, PixelMapType::RGB, {0, 1, 4});
    EXPECT_EQ(map.GetPixelForChannel(3), 1);
    EXPECT_EQ(map.GetPixelForChannel(4), 2);
    EXPECT_EQ(map.GetPixelForChannel(7), -1);
    EXPECT_EQ(map.GetPixelForChannel(0), -1);
    EXPECT_EQ(PixelMap(2, 2, PixelMapType::RGB).GetPixelForChannel(1), -1);
    EXPECT_EQ(PixelMap(0, 0, PixelMapType::RGB).GetPixelForChannel(1), -1);
}

TEST(PixelMap, OverlappingAndBeyond)
{
    const auto map = MapOf(4, 1, PixelMapType::RGB, {10, 0, 4, 7});
    EXPECT_EQ(map.GetPixelsOverlapping(7), Indices({3}));
    EXPECT_EQ(map.GetPixelsOverlapping(8), Indices({0, 3}));
    EXPECT_EQ(map.GetPixelsOverlapping(2), Indices({2}));
    EXPECT_EQ(map.GetPixelsOverlapping(1), Indices());
    EXPECT_EQ(map.GetPixelsOverlapping(13), Indices());
    EXPECT_EQ(map.GetPixelsBeyondChannel(12), Indices());
    EXPECT_EQ(map.GetPixelsBeyondChannel(11), Indices({0}));
    EXPECT_EQ(map.GetPixelsBeyondChannel(8), Indices({0, 3}));
    // An empty cell counts like any other: its last channel is n - 1.
    EXPECT_EQ(map.GetPixelsBeyondChannel(1), Indices({0, 1, 2, 3}));
}

TEST(PixelMap, CellsAtTheEndsOfTheNumbers)
{
    const auto map = MapOf(2, 1, PixelMapType::RGBXXX, {INT_MAX, INT_MIN});
    EXPECT_EQ(map.GetHighestChannel(), INT_MAX);
    EXPECT_EQ(map.GetPixelForChannel(INT_MAX), 0);
    EXPECT_EQ(map.GetPixelForChannel(INT_MIN + 5), 1);
    EXPECT_EQ(map.GetPixelForChannel(INT_MIN + 6), -1);
    EXPECT_EQ(map.GetPixelsOverlapping(INT_MAX), Indices({0}));
    EXPECT_EQ(map.GetPixelsBeyondChannel(INT_MAX), Indices({0}));
}

TEST(PixelMap, AnySizeForgetsTheCells)
{
    const auto full = MapOf(2, 1, PixelMapType::RGB, {1, 4});
    auto map = full;
    map.SetWidth(2);
    EXPECT_EQ(map.GetChannels(), Indices({0, 0}));
    map = full;
    map.SetHeight(2);
    EXPECT_EQ(map.GetChannels(), Indices({0, 0, 0, 0}));
    map = full;
    map.SetType(PixelMapType::RGBL);
    EXPECT_EQ(map.GetChannels(), full.GetChannels());
    EXPECT_NE(map, full);
    EXPECT_NE(full, MapOf(2, 1, PixelMapType::RGB, {4, 1}));
    EXPECT_NE(full, MapOf(1, 2, PixelMapType::RGB, {1, 4}));
    map = full;
    map.Clear();
    EXPECT_EQ(map, PixelMap(2, 1, PixelMapType::RGB));
}

TEST(PixelMap, WritesTwoBlanksBehindEachRow)
{
    EXPECT_EQ(Written(MapOf(4, 1, PixelMapType::RGB, {1, 4, 7, 10})),
              "<P>\n    <PixelMapping width=\"4\" height=\"1\" type=\"RGB\">1 4 7 10  "
              "</PixelMapping>\n</P>\n");
    EXPECT_EQ(Written(MapOf(2, 2, PixelMapType::RGBWPlus, {5, 9, 1, -13})),
              "<P>\n    <PixelMapping width=\"2\" height=\"2\" type=\"RGBW+\">5 9  1 -13  "
              "</PixelMapping>\n</P>\n");
    EXPECT_EQ(Written(PixelMap(1, 1, static_cast<PixelMapType>(21)), -1), "<P />\n");
}

TEST(PixelMap, ReadsWhateverSeparatesRows)
{
    Support::LogCapture log;
    const auto expected = MapOf(2, 2, PixelMapType::RGBL, {5, 9, 1, 13});
    for (const char* cells :
         {"5 9  1 13  ", "\n 5 9\n\n 1\n13", "5 9 1 13 17 x", "+5 9 1 13", "5x 9 1y 13z"})
    {
        const auto map = Read("<PixelMapping width=\"2\" height=\"2\" type=\"RGBL\">" +
                              std::string(cells) + "</PixelMapping>");
        ASSERT_TRUE(map) << cells;
        EXPECT_EQ(*map, expected) << cells;
    }
    const auto wild =
        Read(R"(<PixelMapping width="3" height="1" type="R">-7 2147483647 513</PixelMapping>)");
    ASSERT_TRUE(wild);
    EXPECT_EQ(wild->GetChannels(), Indices({-7, INT_MAX, 513}));
    EXPECT_TRUE(log.Messages().empty());
}

TEST(PixelMap, RejectsWithOneLine)
{
    const std::string unfilled = "PixelMap content not completely filled";
    const auto sized = [](const char* width, const char* height, const char* cells) {
        return std::string("<M width=\"") + width + "\" height=\"" + height + "\" type=\"RGB\">" +
               cells + "</M>";
    };
    ExpectRejected({{R"(<M height="x" type="?" />)", "Width not found in Description"},
                    {R"(<M width="4.5" />)", "Syntact error in Description / Width"},
                    {R"(<M width="" />)", "Syntact error in Description / Width"},
                    {R"(<M width="4294967297" />)", "Syntact error in Description / Width"},
                    {R"(<M width="4" type="?" />)", "Height not found in Description"},
                    {R"(<M width="4" height="1a" />)", "Syntact error in Description / Height"},
                    {R"(<M width="4" height="1">1 2 3 4</M>)", "Type not found in Description"},
                    {R"(<M width="1" height="1" type="rgb">1</M>)", "Unknown PixelMap Type"},
                    {R"(<M width="1" height="1" type="">1</M>)", "Unknown PixelMap Type"},
                    {sized("4", "1", "1 4 7"), unfilled},
                    {sized("4", "1", "1 4 x 10"), unfilled},
                    {sized("1", "1", "- 1"), unfilled},
                    {sized("1", "1", "+-1"), unfilled},
                    {sized("1", "1", "2147483648"), unfilled},
                    {sized("1", "1", ""), unfilled},
                    {sized("1", "1", "<!-- 1 -->1"), unfilled},
                    {sized("0", "1", "1"), unfilled},
                    {sized("1", "-1", "1"), unfilled},
                    {sized("-1", "-1", "1"), unfilled},
                    {sized("65536", "65536", "1"), unfilled},
                    {sized("2147483647", "2147483647", "1"), unfilled}},
                   PixelMap::FromXml);
}

TEST(PixelMap, TheLargestMapAndOneCellMore)
{
    std::string cells;
    for (std::int64_t i = 0; i <= MaxPixelMapCells; ++i)
        cells += "1 ";
    const std::string end = R"(" height="1" type="L">)" + cells + "</M>";
    const auto map = Read(R"(<M width="1000000)" + end);
    ASSERT_TRUE(map);
    EXPECT_EQ(map->GetTotalChannels(), 1'000'000);
    ExpectRejected({{R"(<M width="1000001)" + end, "PixelMap content not completely filled"}},
                   PixelMap::FromXml);
}

} // namespace
