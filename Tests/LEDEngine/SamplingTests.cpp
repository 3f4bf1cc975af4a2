// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "LEDEngine/ElementSampling.h"
#include "Reference.h"

namespace {

/// The colours that an element of columns x rows pixels takes from `source`.
std::vector<Rgb> Sampled(const VideoMapping& mapping, int canvasWidth, int canvasHeight,
                         int columns, int rows, const ZenBitmap& source)
{
    const auto count = static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    std::vector<std::int32_t> offsets(count, 12345);
    ElementSampling::ComputeOffsets(mapping, {canvasWidth, canvasHeight},
                                    ElementSampling::ShapeOf(source), columns, rows, offsets);
    Bytes pixels(count * 4, 99);
    ElementSampling::CopyPixels(source, offsets, pixels.data());
    std::vector<Rgb> colours;
    for (std::size_t i = 0; i < count; ++i)
        colours.push_back({pixels[i * 4 + 2], pixels[i * 4 + 1], pixels[i * 4]});
    return colours;
}

/// Pixels numbered from 1 in red, with other numbers in green and blue.
std::unique_ptr<ZenBitmap> Numbered(int width, int height, std::uint32_t format = 4)
{
    std::vector<Rgb> colours;
    for (int i = 1; i <= width * height; ++i)
        colours.push_back({static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i * 7),
                           static_cast<std::uint8_t>(i * 31)});
    return Picture(width, height, colours, format);
}

/// The numbers of the sampled pixels: their red bytes.
Bytes SampleNumbers(const VideoMapping& mapping, int canvasWidth, int canvasHeight, int columns,
                    int rows, const ZenBitmap& source)
{
    Bytes reds;
    for (const Rgb& colour : Sampled(mapping, canvasWidth, canvasHeight, columns, rows, source))
        reds.push_back(colour.r);
    return reds;
}

TEST(Sampling, APixelTakesTheCentreOfItsCell)
{
    const auto four = Numbered(4, 1);
    EXPECT_EQ(SampleNumbers(WholeCanvas(), 100, 100, 2, 1, *four), Bytes({2, 4}));
    EXPECT_EQ(SampleNumbers(WholeCanvas(), 100, 100, 1, 1, *four), Bytes({3}));
    EXPECT_EQ(SampleNumbers(WholeCanvas(), 3, 700, 4, 1, *four), Bytes({1, 2, 3, 4}));
    // The picture's size has nothing to do with the canvas'.
    EXPECT_EQ(SampleNumbers(WholeCanvas(), 7, 5, 2, 2, *Numbered(4, 4)), Bytes({6, 8, 14, 16}));
    EXPECT_EQ(SampleNumbers(WholeCanvas(), 7, 5, 3, 1, *Numbered(1, 1)), Bytes({1, 1, 1}));
}

TEST(Sampling, TheEdgesOfTheCanvasCountAsInside)
{
    const auto picture = Numbered(4, 4);
    const auto at = [&](float u, float v) {
        return SampleNumbers({{u, v}, {0, 0}, 0, false, false}, 100, 100, 1, 1, *picture).front();
    };
    EXPECT_EQ(at(0.0F, 0.0F), 1);
    EXPECT_EQ(at(1.0F, 0.0F), 4);
    EXPECT_EQ(at(0.0F, 1.0F), 13);
    EXPECT_EQ(at(1.0F, 1.0F), 16);
    EXPECT_EQ(at(std::nextafter(0.25F, 0.0F), 0.5F), 9);
    EXPECT_EQ(at(0.25F, 0.5F), 10);
    for (const float outside : {1.00001F, std::nextafter(1.0F, 2.0F), -0.00001F,
                                std::nextafter(0.0F, -1.0F), 7.0F, -1e30F})
    {
        EXPECT_EQ(at(outside, 0.5F), 0) << outside;
        EXPECT_EQ(at(0.5F, outside), 0) << outside;
    }
    EXPECT_EQ(at(-0.0F, -0.0F), 1);
}

TEST(Sampling, ATurnedRectangleKeepsItsShapeInPixels)
{
    // 100 x 50 pixels of a canvas of 200 x 100, standing upright now: 50 wide and 100 high.
    const VideoMapping mapping({0.5F, 0.5F}, {0.5F, 0.5F}, 90, false, false);
    // A column of eight pictures rows, read in a line from the top: the row's number.
    const auto rows = Numbered(1, 8);
    EXPECT_EQ(SampleNumbers(mapping, 200, 100, 4, 1, *rows), Bytes({2, 4, 6, 8}));
    const auto columns = Numbered(8, 1);
    EXPECT_EQ(SampleNumbers(mapping, 200, 100, 1, 2, *columns), Bytes({5, 4}));
    // 45 degrees on a square canvas: the ends of the diagonal fall beside it.
    const VideoMapping diagonal({0.5F, 0.5F}, {1.5F, 0.01F}, 45, false, false);
    EXPECT_EQ(SampleNumbers(diagonal, 100, 100, 5, 1, *Numbered(5, 5)), Bytes({1, 7, 13, 19, 25}));
}

TEST(Sampling, Mirrors)
{
    const auto picture = Numbered(3, 2);
    const auto with = [&](float rotation, bool horizontal, bool vertical) {
        return SampleNumbers({{0.5F, 0.5F}, {1, 1}, rotation, horizontal, vertical}, 300, 200, 3, 2,
                             *picture);
    };
    EXPECT_EQ(with(0, false, false), Bytes({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(with(0, true, false), Bytes({3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(with(0, false, true), Bytes({4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(with(0, true, true), Bytes({6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(with(180, false, false), with(0, true, true));
    EXPECT_EQ(with(-180, true, false), with(0, false, true));
    EXPECT_EQ(with(540, false, false), with(180, false, false));
}

TEST(Sampling, ThreeByteSourcesAndRowsWithPadding)
{
    EXPECT_EQ(SampleNumbers(WholeCanvas(), 9, 9, 3, 2, *Numbered(3, 2, 3)),
              Bytes({1, 2, 3, 4, 5, 6}));
    // Rows of two 3-byte pixels that begin every 8 bytes.
    Bytes bytes{1, 2, 3, 4, 5, 6, 90, 91, 7, 8, 9, 10, 11, 12, 92, 93};
    ZenBitmap padded;
    padded.width = 2;
    padded.height = 2;
    padded.data = bytes.data();
    padded.bytesPerRow = 8;
    padded.format = 7;
    const auto colours = Sampled(WholeCanvas(), 9, 9, 2, 2, padded);
    EXPECT_EQ(colours[0].r, 3);
    EXPECT_EQ(colours[3].r, 12);
    EXPECT_EQ(colours[3].g, 11);
    EXPECT_EQ(colours[3].b, 10);
}

TEST(Sampling, SourcesWithoutColourGiveBlack)
{
    Bytes bytes(64, 55);
    ZenBitmap source;
    source.data = bytes.data();
    for (const std::uint32_t format : {0U, 1U, 2U, 5U, 6U, 8U}) {
        source.width = source.height = 2;
        source.bytesPerRow = 2 * ZenBitmap::BytesPerPixel(format);
        source.format = format;
        EXPECT_EQ(SampleNumbers(WholeCanvas(), 9, 9, 2, 1, source), Bytes(2)) << format;
    }
    source.format = 4;
    source.width = 0;
    EXPECT_EQ(SampleNumbers(WholeCanvas(), 9, 9, 2, 1, source), Bytes(2));
}

TEST(Sampling, RectanglesBeyondAllMeasure)
{
    constexpr float infinite = std::numeric_limits<float>::infinity();
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    constexpr float largest = std::numeric_limits<float>::max();
    const auto picture = Numbered(4, 4);
    for (const float bad : {infinite, -infinite, none}) {
        const VideoMapping mappings[] = {{{bad, 0.5F}, {1, 1}, 0, false, false},
                                         {{0.5F, bad}, {1, 1}, 0, false, false},
                                         {{0.5F, 0.5F}, {bad, 1}, 0, false, false},
                                         {{0.5F, 0.5F}, {1, bad}, 0, false, false},
                                         {{0.5F, 0.5F}, {1, 1}, bad, false, false}};
        for (const VideoMapping& mapping : mappings)
            EXPECT_EQ(SampleNumbers(mapping, 100, 100, 2, 2, *picture), Bytes(4)) << bad;
    }
    for (const float size : {1e-30F, 1e-45F, 0.0F})
        EXPECT_EQ(
            SampleNumbers({{0.4F, 0.4F}, {size, size}, 30, false, false}, 100, 100, 2, 1, *picture),
            Bytes({6, 6}));
    // Of a rectangle far larger than the canvas only the pixel in its middle lies on it.
    EXPECT_EQ(
        SampleNumbers({{0.5F, 0.5F}, {1e3F, 1e3F}, 0, false, false}, 100, 100, 3, 3, *picture),
        Bytes({0, 0, 0, 0, 11, 0, 0, 0, 0}));
    EXPECT_EQ(
        SampleNumbers({{0.5F, 0.5F}, {largest, largest}, 45, true, true}, 100, 100, 2, 2, *picture),
        Bytes(4));
    EXPECT_EQ(SampleNumbers(WholeCanvas(), 0, 0, 2, 2, *picture), Bytes(4));
}

TEST(Sampling, PicksTheSamePixelsAsThePlainArithmetic)
{
    std::mt19937 random(20261);
    const auto number = [&](float least, float most) {
        return std::uniform_real_distribution<float>(least, most)(random);
    };
    const auto whole = [&](int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random);
    };
    for (int round = 0; round < 3000; ++round) {
        const int sourceWidth = whole(1, 300);
        const int sourceHeight = whole(1, 200);
        auto source = ZenBitmap::Create(sourceWidth, sourceHeight, whole(0, 1) ? 4 : 3);
        for (std::int32_t i = 0; i < source->bytesPerRow * source->height; ++i)
            source->data[i] = static_cast<std::uint8_t>(random());
        // Whole angles and fractions of a pixel's grid fall on edges; the rest anywhere.
        const bool even = whole(0, 1) == 0;
        VideoMapping mapping(
            even ? PointF{static_cast<float>(whole(0, 8)) / 8, static_cast<float>(whole(0, 8)) / 8}
                 : PointF{number(-0.2F, 1.2F), number(-0.2F, 1.2F)},
            even ? PointF{static_cast<float>(whole(0, 4)) / 4, static_cast<float>(whole(0, 4)) / 4}
                 : PointF{number(0, 1.5F), number(0, 1.5F)},
            even ? static_cast<float>(whole(-8, 8) * 45) : number(-720, 720), whole(0, 1) == 0,
            whole(0, 1) == 0);
        const int columns = whole(1, 24);
        const int rows = whole(1, 24);
        const int canvasWidth = whole(1, 2000);
        const int canvasHeight = whole(1, 2000);
        const auto expected =
            Reference::Sample(mapping, canvasWidth, canvasHeight, columns, rows, *source);
        const auto colours = Sampled(mapping, canvasWidth, canvasHeight, columns, rows, *source);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(colours[i].r, expected[i].r) << "round " << round << " pixel " << i;
            ASSERT_EQ(colours[i].g, expected[i].g) << "round " << round << " pixel " << i;
            ASSERT_EQ(colours[i].b, expected[i].b) << "round " << round << " pixel " << i;
        }
    }
}

} // namespace
