// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>

#include "Show.h"

namespace {

/// The channels that one element of `fixture`, spread over the whole picture, has in its universe.
Bytes ChannelsOf(const DeviceLedItem& fixture, const std::vector<Rgb>& colours)
{
    Show show;
    show.Add(fixture, WholeCanvas(), Address(0, 0, 1));
    EXPECT_TRUE(show.Create());
    const auto picture =
        Picture(fixture.pixelMap.GetWidth(), fixture.pixelMap.GetHeight(), colours);
    show.Frame(*picture);
    return show.Universe(0);
}

/// A row of pixels of this type, one behind the other from channel 1 on.
DeviceLedItem RowOf(PixelMapType type, int pixels, int channelsPerPixel)
{
    PixelMap map(pixels, 1, type);
    for (int i = 0; i < pixels; ++i)
        map.SetCell(i, 0, 1 + i * channelsPerPixel);
    return FixtureOf(std::move(map), pixels * channelsPerPixel);
}

TEST(PixelConversion, EveryTypePutsItsBytesInOrder)
{
    // Orange: its minimum is blue, and green that of red and green;
    // luminance = (201 + 100 + 50 + 15) / 3 = 122. And a cold colour whose minimum is red, with odd
    // halves: luminance = (7 + 131 + 65 + 126) / 3 = 109.
    const std::vector<Rgb> colours{{201, 100, 31}, {7, 131, 253}};
    const std::vector<std::pair<PixelMapType, Bytes>> expected{
        {PixelMapType::RGB, {201, 100, 31, 7, 131, 253}},
        {PixelMapType::RBG, {201, 31, 100, 7, 253, 131}},
        {PixelMapType::GRB, {100, 201, 31, 131, 7, 253}},
        {PixelMapType::GBR, {100, 31, 201, 131, 253, 7}},
        {PixelMapType::BRG, {31, 201, 100, 253, 7, 131}},
        {PixelMapType::BGR, {31, 100, 201, 253, 131, 7}},
        {PixelMapType::RGBL, {201, 100, 31, 255, 7, 131, 253, 255}},
        {PixelMapType::RGBA, {201, 100, 31, 0, 7, 131, 253, 0}},
        {PixelMapType::RGBWPlus, {201, 100, 31, 122, 7, 131, 253, 109}},
        {PixelMapType::RGBWMinus, {170, 69, 0, 31, 0, 124, 246, 7}},
        {PixelMapType::L, {122, 109}},
        {PixelMapType::CMY, {54, 155, 224, 248, 124, 2}},
        {PixelMapType::YMC, {224, 155, 54, 2, 124, 248}},
        {PixelMapType::RGBXXX, {201, 100, 31, 0, 0, 0, 7, 131, 253, 0, 0, 0}},
        {PixelMapType::RrGgBb, {201, 201, 100, 100, 31, 31, 7, 7, 131, 131, 253, 253}},
        {PixelMapType::RGBAmber, {201, 100, 31, 100, 7, 131, 253, 7}},
        {PixelMapType::RGBWAmber, {201, 100, 31, 255, 100, 7, 131, 253, 255, 7}},
        {PixelMapType::RB, {201, 31, 7, 253}},
        {PixelMapType::R, {201, 7}},
        {PixelMapType::G, {100, 131}},
        {PixelMapType::B, {31, 253}},
    };
    for (int i = 0; i < 21; ++i) {
        const auto& [type, bytes] = expected[static_cast<std::size_t>(i)];
        ASSERT_EQ(static_cast<int>(type), i);
        const int n = static_cast<int>(bytes.size() / 2);
        EXPECT_EQ(ChannelsOf(RowOf(type, 2, n), colours), bytes) << i;
        // The same pixels, the second one on the first channels.
        auto turned = FixtureOf(MapOf(2, 1, type, {n + 1, 1}), 2 * n);
        Bytes swapped(bytes.begin() + n, bytes.end());
        swapped.insert(swapped.end(), bytes.begin(), bytes.begin() + n);
        EXPECT_EQ(ChannelsOf(turned, colours), swapped) << i;
    }
}

TEST(PixelConversion, TheEndsOfTheColours)
{
    const std::vector<Rgb> colours{{255, 255, 255}, {0, 0, 0}, {1, 1, 1}};
    // (255 + 255 + 127 + 127) / 3 = 254, (1 + 1 + 0 + 0) / 3 = 0.
    EXPECT_EQ(ChannelsOf(RowOf(PixelMapType::L, 3, 1), colours), Bytes({254, 0, 0}));
    EXPECT_EQ(ChannelsOf(RowOf(PixelMapType::RGBWMinus, 3, 4), colours),
              Bytes({0, 0, 0, 255, 0, 0, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(ChannelsOf(RowOf(PixelMapType::CMY, 3, 3), colours),
              Bytes({0, 0, 0, 255, 255, 255, 254, 254, 254}));
}

TEST(PixelConversion, ATypeOutsideTheTableWritesNothing)
{
    for (const int type : {-1, 21, std::numeric_limits<int>::max()}) {
        PixelMap map(1, 1, static_cast<PixelMapType>(type));
        map.SetCell(0, 0, 1);
        EXPECT_EQ(ChannelsOf(FixtureOf(std::move(map), 4, {{2, 9}}), {{201, 100, 31}}),
                  Bytes({0, 9, 0, 0}));
    }
}

TEST(PixelConversion, APixelEndsOnChannel511AtTheLatest)
{
    const std::vector<Rgb> colour{{201, 100, 31}};
    const auto at = [&](PixelMapType type, int cell) {
        const Bytes channels = ChannelsOf(FixtureOf(MapOf(1, 1, type, {cell}), 512), colour);
        EXPECT_EQ(channels.size(), 512U);
        return Bytes(channels.begin() + 506, channels.end());
    };
    EXPECT_EQ(at(PixelMapType::RGB, 509), Bytes({0, 0, 201, 100, 31, 0}));
    EXPECT_EQ(at(PixelMapType::RGB, 510), Bytes(6));
    EXPECT_EQ(at(PixelMapType::R, 511), Bytes({0, 0, 0, 0, 201, 0}));
    EXPECT_EQ(at(PixelMapType::R, 512), Bytes(6));
    EXPECT_EQ(at(PixelMapType::RrGgBb, 506), Bytes({201, 100, 100, 31, 31, 0}));
    EXPECT_EQ(at(PixelMapType::RrGgBb, 507), Bytes(6));
}

TEST(PixelConversion, CellsCountsAndConstantsOfEveryKind)
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    const std::vector<Rgb> three{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    const auto rgb = [](std::initializer_list<std::int32_t> cells) {
        return MapOf(static_cast<int>(cells.size()), 1, PixelMapType::RGB, cells);
    };
    struct Case
    {
        const char* what;
        DeviceLedItem fixture;
        Bytes channels;
    };
    const Case cases[] = {
        {"cells that name no channel", FixtureOf(rgb({0, -1, 4}), 9), {0, 0, 0, 7, 8, 9, 0, 0, 0}},
        {"nor do these", FixtureOf(rgb({513, 512, least}), 3), {0, 0, 0}},
        {"nor these", FixtureOf(rgb({most, most - 2, 0}), 3), {0, 0, 0}},
        // A pixel that begins among the fixture's channels is cut; one that begins behind them is
        // not written.
        {"beyond the channels of the fixture", FixtureOf(rgb({1, 4, 6}), 5), {1, 2, 3, 4, 5}},
        {"no channels", FixtureOf(rgb({1, 0, 0}), 0), {}},
        {"fewer than a pixel", FixtureOf(rgb({1, 0, 0}), 2), {1, 2}},
        {"automatic", FixtureOf(rgb({1, 0, 0}), -1), {1, 2, 3}},
        {"automatic, and a universe ends at 512", FixtureOf(rgb({900, 0, 0}), -1), Bytes(512)},
        {"later pixels win", FixtureOf(rgb({1, 2, 1}), 4), {7, 8, 9, 6}},
        {"later pixels win, backwards", FixtureOf(rgb({3, 2, 1}), 5), {7, 8, 9, 6, 3}},
        // The third constant lies behind the fixture's channels, the last one on a pixel again.
        {"constants win over pixels",
         FixtureOf(rgb({1, 1, 1}), 5, {{2, 77}, {4, -1}, {6, 99}, {3, 0}, {5, 255}, {1, -1}}),
         {0, 77, 0, 0, 255}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(ChannelsOf(each.fixture, three), each.channels) << each.what;
}

TEST(PixelConversion, APixelThatIsCutTouchesNoOtherElement)
{
    Show show;
    show.Add(FixtureOf(MapOf(1, 1, PixelMapType::RrGgBb, {2}), 2), WholeCanvas(), Address(0, 0, 1));
    show.Add(FixtureOf(MapOf(1, 1, PixelMapType::G, {2}), 3), WholeCanvas(), Address(0, 0, 3));
    ASSERT_TRUE(show.Create());
    show.Frame(*Picture(1, 1, {{201, 100, 31}}));
    EXPECT_EQ(show.Universe(0), Bytes({0, 201, 0, 100, 0}));
}

TEST(PixelConversion, ConstantsUnderPixelsHoldOnEveryFrame)
{
    Show show;
    show.Add(FixtureOf(MapOf(2, 1, PixelMapType::RGB, {1, 4}), 6, {{2, 77}, {6, -1}}),
             WholeCanvas(), Address(0, 0, 1));
    ASSERT_TRUE(show.Create());
    show.Frame(*Picture(2, 1, {{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(show.Universe(0), Bytes({1, 77, 3, 4, 5, 0}));
    show.Frame(*Picture(2, 1, {{11, 12, 13}, {14, 15, 16}}));
    EXPECT_EQ(show.Universe(0), Bytes({11, 77, 13, 14, 15, 0}));
}

} // namespace
