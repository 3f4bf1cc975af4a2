// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>
#include <numeric>

#include <gtest/gtest.h>

#include "Show.h"

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float none = std::numeric_limits<float>::quiet_NaN();

struct Size
{
    int width = 1;
    int height = 1;
};

/// The numbers of the pixels that an element samples, counted from 1; 0 for none.
Bytes Sampled(Size picture, const VideoMapping& mapping, Size element, Size canvas = {100, 100})
{
    std::vector<Rgb> numbers;
    for (int i = 1; i <= picture.width * picture.height; ++i)
        numbers.push_back({static_cast<std::uint8_t>(i), 0, 0});
    std::vector<std::int32_t> cells(static_cast<std::size_t>(element.width * element.height));
    std::iota(cells.begin(), cells.end(), 1);
    Show show({{Fixture(PixelMapType::R, cells, -1, {}, element.height), Address(0), mapping}});
    show.Document().SetCanvasSize(canvas.width, canvas.height);
    show.Frame(*Picture(picture.width, picture.height, numbers));
    return show.Universe(0);
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
        // Mirrored and turned.
        {{3, 2}, Whole(0, true), {3, 2}, {3, 2, 1, 6, 5, 4}},
        {{3, 2}, Whole(0, false, true), {3, 2}, {4, 5, 6, 1, 2, 3}},
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
        // Over the edges, tiny, and of no size or angle at all.
        {{4, 4}, At(1, 0, 1, 1), {4, 4}, {0, 0, 0, 0, 0, 0, 0, 0, 3, 4, 0, 0, 7, 8, 0, 0}},
        {{4, 4}, At(0.5F, 0.5F, 1e3F, 1e3F), {3, 3}, {0, 0, 0, 0, 11, 0, 0, 0, 0}},
        {{4, 4}, At(0.4F, 0.4F, 1e-45F, 1e-30F, 30), {2, 1}, {6, 6}},
        {{4, 4}, At(0.5F, 0.5F, infinite, 1), {2, 1}, {0, 0}},
        {{4, 4}, At(0.5F, 0.5F, 1, none), {2, 1}, {0, 0}},
        {{4, 4}, Whole(infinite), {2, 1}, {0, 0}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(Sampled(each.picture, each.mapping, each.element, each.canvas), each.numbers)
            << "case " << &each - cases;
}

TEST(Sampling, TheEdgesOfTheCanvasCountAsInside)
{
    const auto at = [](float u, float v) {
        return int{Sampled({4, 4}, At(u, v, 0, 0), {1, 1}).front()};
    };
    EXPECT_EQ(at(-0.0F, 0), 1);
    EXPECT_EQ(at(1, 0), 4);
    EXPECT_EQ(at(0, 1), 13);
    EXPECT_EQ(at(std::nextafter(0.25F, 0.0F), 0.5F), 9);
    EXPECT_EQ(at(0.25F, 0.5F), 10);
    for (const float outside :
         {std::nextafter(1.0F, 2.0F), std::nextafter(0.0F, -1.0F), infinite, -infinite, none})
    {
        EXPECT_EQ(at(outside, 0.5F), 0) << outside;
        EXPECT_EQ(at(0.5F, outside), 0) << outside;
    }
}

} // namespace
