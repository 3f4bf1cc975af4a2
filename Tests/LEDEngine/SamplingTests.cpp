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

/// The colour that stands for a number from 1 to 255; 0 is black.
Rgb ColourOf(std::uint8_t number)
{
    return {number, static_cast<std::uint8_t>(number * 7), static_cast<std::uint8_t>(number * 31)};
}

/// A picture whose pixels have the numbers from 1 on.
std::unique_ptr<ZenBitmap> Numbered(Size size, std::uint32_t format = 4)
{
    std::vector<Rgb> colours;
    for (int i = 1; i <= size.width * size.height; ++i)
        colours.push_back(ColourOf(static_cast<std::uint8_t>(i)));
    return Picture(size.width, size.height, colours, format);
}

/// The numbers of the pixels that an element samples.
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
        const Rgb colour = ColourOf(numbers.emplace_back(pixels[i + 2]));
        EXPECT_EQ(pixels[i + 1], colour.g);
        EXPECT_EQ(pixels[i], colour.b);
    }
    return numbers;
}

VideoMapping At(float x, float y, float width, float height, float rotation = 0,
                bool horizontal = false, bool vertical = false)
{
    return {{x, y}, {width, height}, rotation, horizontal, vertical};
}

VideoMapping Whole(float rotation = 0, bool horizontal = false, bool vertical = false)
{
    return At(0.5F, 0.5F, 1, 1, rotation, horizontal, vertical);
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
        {{4, 1}, Whole(), {2, 1}, {2, 4}},
        {{4, 1}, Whole(), {1, 1}, {3}},
        {{2, 4}, Whole(), {2, 4}, {1, 2, 3, 4, 5, 6, 7, 8}, {3, 700}},
        {{4, 4}, Whole(), {2, 2}, {6, 8, 14, 16}, {7, 5}},
        {{1, 1}, Whole(), {3, 1}, {1, 1, 1}, {7, 5}},
        // Mirrored and turned.
        {{3, 2}, Whole(0, true), {3, 2}, {3, 2, 1, 6, 5, 4}},
        {{3, 2}, Whole(0, false, true), {3, 2}, {4, 5, 6, 1, 2, 3}},
        {{3, 2}, Whole(0, true, true), {3, 2}, {6, 5, 4, 3, 2, 1}},
        {{3, 2}, Whole(540), {3, 2}, {6, 5, 4, 3, 2, 1}},
        {{3, 2}, Whole(-180, true), {3, 2}, {4, 5, 6, 1, 2, 3}},
        // 100 x 50 pixels of a canvas of 200 x 100, upright now: 50 wide and 100 high.
        {{1, 8}, At(0.5F, 0.5F, 0.5F, 0.5F, 90), {4, 1}, {2, 4, 6, 8}, {200, 100}},
        {{8, 1}, At(0.5F, 0.5F, 0.5F, 0.5F, 90), {1, 2}, {5, 4}, {200, 100}},
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
        // Over the edges, tiny, and without a canvas.
        {{4, 4}, At(1, 0, 1, 1), {4, 4}, {0, 0, 0, 0, 0, 0, 0, 0, 3, 4, 0, 0, 7, 8, 0, 0}},
        {{4, 4}, At(0.5F, 0.5F, 1e3F, 1e3F), {3, 3}, {0, 0, 0, 0, 11, 0, 0, 0, 0}},
        {{4, 4}, At(0.4F, 0.4F, 1e-45F, 1e-30F, 30), {2, 1}, {6, 6}},
        {{4, 4}, Whole(), {2, 1}, {0, 0}, {0, 0}},
    };
    for (const Case& each : cases) {
        for (const std::uint32_t format : {4U, 3U})
            EXPECT_EQ(
                Sampled(*Numbered(each.picture, format), each.mapping, each.element, each.canvas),
                each.numbers)
                << "case " << &each - cases << ", format " << format;
    }
}

TEST(Sampling, TheEdgesOfTheCanvasCountAsInside)
{
    const auto picture = Numbered({4, 4});
    const auto at = [&](float u, float v) {
        return int{Sampled(*picture, At(u, v, 0, 0), {1, 1}).front()};
    };
    EXPECT_EQ(at(-0.0F, 0), 1);
    EXPECT_EQ(at(1, 0), 4);
    EXPECT_EQ(at(0, 1), 13);
    EXPECT_EQ(at(1, 1), 16);
    EXPECT_EQ(at(std::nextafter(0.25F, 0.0F), 0.5F), 9);
    EXPECT_EQ(at(0.25F, 0.5F), 10);
    constexpr float infinite = std::numeric_limits<float>::infinity();
    for (const float outside : {std::nextafter(1.0F, 2.0F), std::nextafter(0.0F, -1.0F), -1e30F,
                                infinite, -infinite, std::nanf("")})
    {
        EXPECT_EQ(at(outside, 0.5F), 0) << outside;
        EXPECT_EQ(at(0.5F, outside), 0) << outside;
    }
    for (const float none : {infinite, std::nanf("")}) {
        EXPECT_EQ(Sampled(*picture, At(0.5F, 0.5F, none, 1), {2, 2}), Bytes(4)) << none;
        EXPECT_EQ(Sampled(*picture, At(0.5F, 0.5F, 1, none), {2, 2}), Bytes(4)) << none;
        EXPECT_EQ(Sampled(*picture, Whole(none), {2, 2}), Bytes(4)) << none;
    }
}

TEST(Sampling, SourcesWithoutColourAreBlack)
{
    const auto source = Numbered({2, 2});
    for (const std::uint32_t format : {0U, 1U, 2U, 5U, 6U, 8U}) {
        source->format = format;
        EXPECT_EQ(Sampled(*source, Whole(), {2, 1}), Bytes(2)) << format;
    }
}

} // namespace
