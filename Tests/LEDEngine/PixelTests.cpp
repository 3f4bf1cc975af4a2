// SPDX-License-Identifier: MIT
// From the pixels of a picture to the channels of one element.
#include <cmath>
#include <limits>
#include <numeric>

#include <gtest/gtest.h>

#include "Show.h"

namespace {

using enum PixelMapType;

struct Size
{
    int width = 1;
    int height = 1;
};

VideoMapping At(float x, float y, float width, float height, float rotation = 0,
                bool horizontal = false, bool vertical = false)
{
    return {{x, y}, {width, height}, rotation, horizontal, vertical};
}

VideoMapping Whole(float rotation = 0, bool horizontal = false, bool vertical = false)
{
    return At(0.5F, 0.5F, 1, 1, rotation, horizontal, vertical);
}

Bytes ChannelsOf(const DeviceLedItem& fixture, const std::vector<Rgb>& colours, Size picture,
                 const VideoMapping& mapping = Whole(), Size canvas = {})
{
    Show show({{fixture, Address(0), mapping}});
    show.Document().SetCanvasSize(canvas.width, canvas.height);
    show.Frame(*Picture(picture.width, picture.height, colours));
    return show.Universe(0);
}

// ---- Sampling -----------------------------------------------------------------------------------

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// The numbers of the pixels that an element samples, counted from 1; 0 for none.
Bytes Sampled(Size picture, const VideoMapping& mapping, Size element, Size canvas = {100, 100})
{
    std::vector<Rgb> numbers;
    for (int i = 1; i <= picture.width * picture.height; ++i)
        numbers.push_back({static_cast<std::uint8_t>(i), 0, 0});
    std::vector<std::int32_t> cells(static_cast<std::size_t>(element.width * element.height));
    std::iota(cells.begin(), cells.end(), 1);
    return ChannelsOf(Fixture(R, cells, -1, {}, element.height), numbers, picture, mapping, canvas);
}

TEST(Sampling, PixelsOfAPicture)
{
    struct Case
    {
        Size picture;
        VideoMapping mapping;
        Size element;
        Bytes numbers;
        Size canvas{300, 200};
    };
    const Case cases[] = {
        // The centre of each cell, every row from the first to the last, whatever the canvas is.
        {{2, 4}, Whole(), {2, 4}, {1, 2, 3, 4, 5, 6, 7, 8}, {3, 700}},
        {{4, 4}, Whole(), {2, 2}, {6, 8, 14, 16}, {7, 5}},
        // Mirrored and turned.
        {{3, 2}, Whole(0, true), {3, 2}, {3, 2, 1, 6, 5, 4}},
        {{3, 2}, Whole(0, false, true), {3, 2}, {4, 5, 6, 1, 2, 3}},
        {{3, 2}, Whole(-180, true), {3, 2}, {4, 5, 6, 1, 2, 3}},
        // 100 x 50 pixels of a canvas of 200 x 100, upright now: 50 wide and 100 high.
        {{1, 8}, At(0.5F, 0.5F, 0.5F, 0.5F, 90), {4, 1}, {2, 4, 6, 8}, {200, 100}},
        {{16, 15},
         At(0.45F, 0.55F, 0.5F, 0.6F, 33),
         {5, 4},
         {38, 55,  89,  122, 139, 69,  87,  120, 137, 171,
          85, 118, 151, 169, 202, 116, 149, 183, 200, 233},
         {200, 100}},
        {{16, 15},
         At(0.45F, 0.55F, 0.5F, 0.6F, -71, true, true),
         {3, 4},
         {0, 0, 0, 124, 139, 154, 117, 116, 131, 0, 0, 0},
         {100, 300}},
        // At the edges, which count as inside, and between two pixels.
        {{4, 4}, At(-0.0F, 0, 0, 0), {1, 1}, {1}},
        {{4, 4}, At(1, 0, 0, 0), {1, 1}, {4}},
        {{4, 4}, At(0, 1, 0, 0), {1, 1}, {13}},
        {{4, 4}, At(std::nextafter(0.25F, 0.0F), 0.5F, 0, 0), {1, 1}, {9}},
        {{4, 4}, At(0.25F, 0.5F, 0, 0), {1, 1}, {10}},
        // Over the edges, tiny, and of no size or angle at all.
        {{4, 4}, At(1, 0, 1, 1), {4, 4}, {0, 0, 0, 0, 0, 0, 0, 0, 3, 4, 0, 0, 7, 8, 0, 0}},
        {{4, 4}, At(0.5F, 0.5F, 1e3F, 1e3F), {3, 3}, {0, 0, 0, 0, 11, 0, 0, 0, 0}},
        {{4, 4}, At(0.4F, 0.4F, 1e-45F, 1e-30F, 30), {2, 1}, {6, 6}},
        {{4, 4}, At(0.5F, 0.5F, infinite, 1), {2, 1}, {0, 0}},
        {{4, 4}, At(0.5F, 0.5F, 1, notANumber), {2, 1}, {0, 0}},
        {{4, 4}, Whole(infinite), {2, 1}, {0, 0}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(Sampled(each.picture, each.mapping, each.element, each.canvas), each.numbers)
            << "case " << &each - cases;
}

TEST(Sampling, NothingBeyondTheEdgesOfTheCanvas)
{
    for (const float outside :
         {std::nextafter(1.0F, 2.0F), std::nextafter(0.0F, -1.0F), infinite, -infinite, notANumber})
    {
        EXPECT_EQ(Sampled({4, 4}, At(outside, 0.5F, 0, 0), {1, 1}), Bytes{0}) << outside;
        EXPECT_EQ(Sampled({4, 4}, At(0.5F, outside, 0, 0), {1, 1}), Bytes{0}) << outside;
    }
}

// ---- Conversion ---------------------------------------------------------------------------------

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
    for (const auto& [type, bytes] : expected) {
        const int second = static_cast<int>(bytes.size() / 2) + 1;
        EXPECT_EQ(ChannelsOf(Fixture(type, {1, second}), colours, {2, 1}), bytes)
            << static_cast<int>(type);
    }
    EXPECT_EQ(ChannelsOf(Fixture(L, {1, 2}), {{255, 255, 255}, {1, 1, 1}}, {2, 1}),
              Bytes({254, 0}));
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
        EXPECT_EQ(ChannelsOf(fixture, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, {3, 1}), channels);
}

} // namespace
