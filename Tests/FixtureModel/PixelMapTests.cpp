// SPDX-License-Identifier: MIT
#include "FixtureModel/PixelMap.h"

#include <climits>

#include "Reading.h"

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
    for (std::int32_t i = 0; i < 21; ++i) {
        const auto& [text, channels] = types[static_cast<std::size_t>(i)];
        EXPECT_EQ(PixelMapTypeToText(static_cast<PixelMapType>(i)), text);
        EXPECT_EQ(PixelMapTypeFromText(text), i);
        EXPECT_EQ(ChannelsPerPixel(static_cast<PixelMapType>(i)), channels);
    }
    for (const std::int32_t outside : {-1, 21, INT_MAX}) {
        EXPECT_EQ(PixelMapTypeToText(static_cast<PixelMapType>(outside)), nullptr);
        EXPECT_EQ(ChannelsPerPixel(static_cast<PixelMapType>(outside)), -1);
    }
    EXPECT_EQ(PixelMapTypeFromText(L"rgb"), -1);
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

TEST(PixelMap, AnySizeForgetsTheCells)
{
    const auto full = MapOf(2, 1, RGB, {1, 4});
    auto map = full;
    map.SetWidth(2);
    EXPECT_EQ(map, PixelMap(2, 1, RGB));
    map = full;
    map.SetHeight(2);
    EXPECT_EQ(map, PixelMap(2, 2, RGB));
    map = full;
    map.SetType(RGBL);
    EXPECT_EQ(map, MapOf(2, 1, RGBL, {1, 4}));
    map.Clear();
    EXPECT_EQ(map, PixelMap(2, 1, RGBL));
    for (const PixelMap& other :
         {MapOf(2, 1, RGB, {4, 1}), MapOf(1, 2, RGB, {1, 4}), MapOf(2, 1, RBG, {1, 4})})
        EXPECT_NE(full, other);
}

TEST(PixelMap, WritesTwoBlanksAfterEachRowAndReadsAnySeparation)
{
    const auto map = MapOf(2, 2, RGBWPlus, {5, 9, 1, -13});
    EXPECT_EQ(Written(map),
              "<P>\n    <PixelMapping width=\"2\" height=\"2\" type=\"RGBW+\">5 9  1 -13"
              "  </PixelMapping>\n</P>\n");
    EXPECT_EQ(Written(PixelMap(1, 1, static_cast<PixelMapType>(21)), -1), "<P />\n");
    const Support::LogCapture log;
    for (const char* cells :
         {"5 9  1 -13  ", "\n 5 9\n\n 1\n-13", "5 9 1 -13 17 x", "+5 9 1 -13", "5x 9 1y -13z"})
    {
        const auto read = Read("<PixelMapping width=\"2\" height=\"2\" type=\"RGBW+\">" +
                               std::string(cells) + "</PixelMapping>");
        ASSERT_TRUE(read) << cells;
        EXPECT_EQ(*read, map) << cells;
    }
    EXPECT_TRUE(log.Messages().empty());
}

TEST(PixelMap, RejectsWithOneLine)
{
    Rejections cases{{R"(<M height="x" type="?" />)", "Width not found in Description"},
                     {R"(<M width="4.5" />)", "Syntact error in Description / Width"},
                     {R"(<M width="4" type="?" />)", "Height not found in Description"},
                     {R"(<M width="4" height="1a" />)", "Syntact error in Description / Height"},
                     {R"(<M width="4" height="1">1 2 3 4</M>)", "Type not found in Description"},
                     {R"(<M width="1" height="1" type="rgb">1</M>)", "Unknown PixelMap Type"}};
    const std::string many = "2147483647";
    for (const auto& [width, height, cells] : {std::tuple("4", "1", "1 4 7"),
                                               {"4", "1", "1 4 x 10"},
                                               {"1", "1", "+-1"},
                                               {"1", "1", "2147483648"},
                                               {"1", "1", ""},
                                               {"1", "1", "<!-- 1 -->1"},
                                               {"0", "1", "1"},
                                               {"1", "0", "1"},
                                               {"-1", "-1", "1"},
                                               {"65536", "65536", "1"},
                                               {many.c_str(), many.c_str(), "1"}})
        cases.emplace_back(std::string("<M width=\"") + width + "\" height=\"" + height +
                               "\" type=\"RGB\">" + cells + "</M>",
                           "PixelMap content not completely filled");
    ExpectRejected(cases, PixelMap::FromXml);
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
