// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "LEDEngine/ElementSampling.h"
#include "Show.h"

namespace {

struct Size
{
    int width = 1;
    int height = 1;
};

/// Pixels numbered from 1 in red, with other numbers in green and blue.
std::unique_ptr<ZenBitmap> Numbered(Size size, std::uint32_t format = 4)
{
    std::vector<Rgb> colours;
    for (int i = 1; i <= size.width * size.height; ++i)
        colours.push_back({static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i * 7),
                           static_cast<std::uint8_t>(i * 31)});
    return Picture(size.width, size.height, colours, format);
}

/// The numbers of the pixels that an element takes from a numbered picture; 0 is black.
Bytes Sampled(const ZenBitmap& source, const VideoMapping& mapping, Size element,
              Size canvas = {100, 100})
{
    const auto count = static_cast<std::size_t>(element.width * element.height);
    std::vector<std::int32_t> offsets(count, 12345);
    ElementSampling::ComputeOffsets(mapping, {canvas.width, canvas.height},
                                    ElementSampling::ShapeOf(source), element.width, element.height,
                                    offsets);
    Bytes pixels(count * 4, 99);
    ElementSampling::CopyPixels(source, offsets, pixels.data());
    Bytes numbers;
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        const std::uint8_t number = pixels[i + 2];
        EXPECT_EQ(pixels[i + 1], static_cast<std::uint8_t>(number * 7));
        EXPECT_EQ(pixels[i], static_cast<std::uint8_t>(number * 31));
        numbers.push_back(number);
    }
    return numbers;
}

VideoMapping Placed(float x, float y, float width, float height, float rotation = 0,
                    bool horizontal = false, bool vertical = false)
{
    return {{x, y}, {width, height}, rotation, horizontal, vertical};
}

TEST(Sampling, PixelsOfAPicture)
{
    struct Case
    {
        const char* what;
        Size picture;
        VideoMapping mapping;
        Size canvas;
        Size element;
        Bytes numbers;
    };
    const VideoMapping whole = WholeCanvas();
    const Case cases[] = {
        {"centre of a cell", {4, 1}, whole, {100, 100}, {2, 1}, {2, 4}},
        {"one pixel", {4, 1}, whole, {100, 100}, {1, 1}, {3}},
        {"every row, the first and the last",
         {2, 4},
         whole,
         {3, 700},
         {2, 4},
         {1, 2, 3, 4, 5, 6, 7, 8}},
        {"whatever the canvas", {4, 4}, whole, {7, 5}, {2, 2}, {6, 8, 14, 16}},
        {"stretched", {1, 1}, whole, {7, 5}, {3, 1}, {1, 1, 1}},
        {"mirrored left and right",
         {3, 2},
         Placed(0.5F, 0.5F, 1, 1, 0, true),
         {300, 200},
         {3, 2},
         {3, 2, 1, 6, 5, 4}},
        {"top and bottom",
         {3, 2},
         Placed(0.5F, 0.5F, 1, 1, 0, false, true),
         {300, 200},
         {3, 2},
         {4, 5, 6, 1, 2, 3}},
        {"both",
         {3, 2},
         Placed(0.5F, 0.5F, 1, 1, 0, true, true),
         {300, 200},
         {3, 2},
         {6, 5, 4, 3, 2, 1}},
        {"half a turn",
         {3, 2},
         Placed(0.5F, 0.5F, 1, 1, 540),
         {300, 200},
         {3, 2},
         {6, 5, 4, 3, 2, 1}},
        {"back, and mirrored",
         {3, 2},
         Placed(0.5F, 0.5F, 1, 1, -180, true),
         {300, 200},
         {3, 2},
         {4, 5, 6, 1, 2, 3}},
        // 100 x 50 pixels of a canvas of 200 x 100, upright now: 50 wide and 100 high.
        {"keeps its shape",
         {1, 8},
         Placed(0.5F, 0.5F, 0.5F, 0.5F, 90),
         {200, 100},
         {4, 1},
         {2, 4, 6, 8}},
        {"across", {8, 1}, Placed(0.5F, 0.5F, 0.5F, 0.5F, 90), {200, 100}, {1, 2}, {5, 4}},
        {"askew",
         {16, 15},
         Placed(0.45F, 0.55F, 0.5F, 0.6F, 33),
         {200, 100},
         {5, 4},
         {38, 55,  89,  122, 139, 69,  87,  120, 137, 171,
          85, 118, 151, 169, 202, 116, 149, 183, 200, 233}},
        {"askew and mirrored",
         {16, 15},
         Placed(0.45F, 0.55F, 0.5F, 0.6F, -71, true, true),
         {100, 300},
         {3, 4},
         {0, 0, 0, 124, 139, 154, 117, 116, 131, 0, 0, 0}},
        {"over the edge",
         {4, 4},
         Placed(1, 0, 1, 1),
         {9, 9},
         {4, 4},
         {0, 0, 0, 0, 0, 0, 0, 0, 3, 4, 0, 0, 7, 8, 0, 0}},
        {"far over all edges",
         {4, 4},
         Placed(0.5F, 0.5F, 1e3F, 1e3F),
         {9, 9},
         {3, 3},
         {0, 0, 0, 0, 11, 0, 0, 0, 0}},
        {"tiny", {4, 4}, Placed(0.4F, 0.4F, 1e-45F, 1e-30F, 30), {9, 9}, {2, 1}, {6, 6}},
        {"without a canvas", {4, 4}, whole, {0, 0}, {2, 1}, {0, 0}},
    };
    for (const Case& each : cases) {
        for (const std::uint32_t format : {4U, 3U})
            EXPECT_EQ(
                Sampled(*Numbered(each.picture, format), each.mapping, each.element, each.canvas),
                each.numbers)
                << each.what;
    }
}

TEST(Sampling, TheEdgesOfTheCanvasCountAsInside)
{
    const auto picture = Numbered({4, 4});
    const auto at = [&](float u, float v) {
        return int{Sampled(*picture, Placed(u, v, 0, 0), {1, 1}).front()};
    };
    EXPECT_EQ(at(0, 0), 1);
    EXPECT_EQ(at(-0.0F, -0.0F), 1);
    EXPECT_EQ(at(1, 0), 4);
    EXPECT_EQ(at(0, 1), 13);
    EXPECT_EQ(at(1, 1), 16);
    EXPECT_EQ(at(std::nextafter(0.25F, 0.0F), 0.5F), 9);
    EXPECT_EQ(at(0.25F, 0.5F), 10);
    for (const float outside :
         {1.00001F, std::nextafter(1.0F, 2.0F), std::nextafter(0.0F, -1.0F), 7.0F, -1e30F,
          std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
          std::numeric_limits<float>::quiet_NaN()})
    {
        EXPECT_EQ(at(outside, 0.5F), 0) << outside;
        EXPECT_EQ(at(0.5F, outside), 0) << outside;
        if (std::isfinite(outside))
            continue;
        for (const VideoMapping& mapping :
             {Placed(0.5F, 0.5F, outside, 1), Placed(0.5F, 0.5F, 1, outside),
              Placed(0.5F, 0.5F, 1, 1, outside)})
            EXPECT_EQ(Sampled(*picture, mapping, {2, 2}), Bytes(4)) << outside;
    }
}

TEST(Sampling, SourcesOfOtherShapes)
{
    // Rows of two 3-byte pixels that begin every 8 bytes.
    Bytes bytes{31, 7, 1, 62, 14, 2, 90, 91, 93, 21, 3, 124, 28, 4, 92, 93};
    ZenBitmap source;
    source.data = bytes.data();
    source.width = source.height = 2;
    source.bytesPerRow = 8;
    source.format = 7;
    EXPECT_EQ(Sampled(source, WholeCanvas(), {2, 2}), Bytes({1, 2, 3, 4}));
    for (const std::uint32_t format : {0U, 1U, 2U, 5U, 6U, 8U}) {
        source.format = format;
        EXPECT_EQ(Sampled(source, WholeCanvas(), {2, 1}), Bytes(2)) << "no colour: " << format;
    }
    source.format = 4;
    source.width = 0;
    EXPECT_EQ(Sampled(source, WholeCanvas(), {2, 1}), Bytes(2));
}

} // namespace
