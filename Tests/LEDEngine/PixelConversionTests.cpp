// SPDX-License-Identifier: MIT
#include <limits>

#include <gtest/gtest.h>

#include "Show.h"

namespace {

using enum PixelMapType;

/// The channels of one element that is spread over a picture of one row.
Bytes ChannelsOf(const DeviceLedItem& fixture, const std::vector<Rgb>& colours)
{
    Show show({{fixture}});
    show.Frame(*Picture(static_cast<int>(colours.size()), 1, colours));
    return show.Universe(0);
}

TEST(PixelConversion, EveryTypePutsItsBytesInOrder)
{
    // Orange: its minimum is blue, and green that of red and green;
    // luminance = (201 + 100 + 50 + 15) / 3 = 122. And a cold colour whose minimum is red, with odd
    // halves: luminance = (7 + 131 + 65 + 126) / 3 = 109.
    const std::vector<Rgb> colours{{201, 100, 31}, {7, 131, 253}};
    const std::vector<std::pair<PixelMapType, Bytes>> expected{
        {RGB, {201, 100, 31, 7, 131, 253}},
        {RBG, {201, 31, 100, 7, 253, 131}},
        {GRB, {100, 201, 31, 131, 7, 253}},
        {GBR, {100, 31, 201, 131, 253, 7}},
        {BRG, {31, 201, 100, 253, 7, 131}},
        {BGR, {31, 100, 201, 253, 131, 7}},
        {RGBL, {201, 100, 31, 255, 7, 131, 253, 255}},
        {RGBA, {201, 100, 31, 0, 7, 131, 253, 0}},
        {RGBWPlus, {201, 100, 31, 122, 7, 131, 253, 109}},
        {RGBWMinus, {170, 69, 0, 31, 0, 124, 246, 7}},
        {L, {122, 109}},
        {CMY, {54, 155, 224, 248, 124, 2}},
        {YMC, {224, 155, 54, 2, 124, 248}},
        {RGBXXX, {201, 100, 31, 0, 0, 0, 7, 131, 253, 0, 0, 0}},
        {RrGgBb, {201, 201, 100, 100, 31, 31, 7, 7, 131, 131, 253, 253}},
        {RGBAmber, {201, 100, 31, 100, 7, 131, 253, 7}},
        {RGBWAmber, {201, 100, 31, 255, 100, 7, 131, 253, 255, 7}},
        {RB, {201, 31, 7, 253}},
        {R, {201, 7}},
        {G, {100, 131}},
        {B, {31, 253}},
    };
    for (int i = 0; i < 21; ++i) {
        const auto& [type, bytes] = expected[static_cast<std::size_t>(i)];
        ASSERT_EQ(static_cast<int>(type), i);
        const int n = static_cast<int>(bytes.size() / 2);
        EXPECT_EQ(ChannelsOf(Fixture(type, {1, n + 1}), colours), bytes) << i;
    }
    EXPECT_EQ(ChannelsOf(Fixture(L, {1, 2}), {{255, 255, 255}, {1, 1, 1}}), Bytes({254, 0}));
    for (const int none : {-1, 21, std::numeric_limits<int>::max()})
        EXPECT_EQ(ChannelsOf(Fixture(static_cast<PixelMapType>(none), {1}, 4, {{2, 9}}), colours),
                  Bytes({0, 9, 0, 0}));
}

TEST(PixelConversion, CellsCountsAndConstants)
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    const auto endingIn = [](const Bytes& end) {
        Bytes channels(512 - end.size());
        channels.insert(channels.end(), end.begin(), end.end());
        return channels;
    };
    const std::pair<DeviceLedItem, Bytes> cases[] = {
        // A pixel ends on channel 511 at the latest.
        {Fixture(RGB, {509, 0, 0}, 512), endingIn({0, 1, 2, 3, 0})},
        {Fixture(RGB, {510, 0, 0}, 512), Bytes(512)},
        {Fixture(R, {511, 0, 0}, 512), endingIn({0, 1, 0})},
        {Fixture(R, {512, 0, 0}, 512), Bytes(512)},
        {Fixture(RrGgBb, {506, 507, 0}, 512), endingIn({0, 1, 1, 2, 2, 3, 3, 0})},
        // Cells that name no channel.
        {Fixture(RGB, {0, -1, 4}, 9), {0, 0, 0, 7, 8, 9, 0, 0, 0}},
        {Fixture(RGB, {1, 0, 4}), {1, 2, 3, 7, 8, 9}},
        {Fixture(RGB, {513, 512, least}, 3), {0, 0, 0}},
        {Fixture(RGB, {most, most - 2, 0}, 3), {0, 0, 0}},
        // A pixel that begins among the fixture's channels is cut; one behind them is not written.
        {Fixture(RGB, {1, 4, 6}, 5), {1, 2, 3, 4, 5}},
        {Fixture(RGB, {1, 0, 0}, 0), {}},
        {Fixture(RGB, {1, 0, 0}, 2), {1, 2}},
        // Automatic counts, and a universe ends at 512.
        {Fixture(RGB, {1, 0, 0}), {1, 2, 3}},
        {Fixture(RGB, {900, 0, 0}), Bytes(512)},
        // Later pixels win.
        {Fixture(RGB, {1, 2, 1}, 4), {7, 8, 9, 6}},
        {Fixture(RGB, {3, 2, 1}, 5), {7, 8, 9, 6, 3}},
        // Constants win over pixels. The third one lies behind the fixture's channels.
        {Fixture(RGB, {1, 1, 1}, 5, {{2, 77}, {4, -1}, {6, 99}, {3, 0}, {5, 255}, {1, -1}}),
         {0, 77, 0, 0, 255}},
    };
    for (const auto& [fixture, channels] : cases)
        EXPECT_EQ(ChannelsOf(fixture, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}), channels);
}

} // namespace
