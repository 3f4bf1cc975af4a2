// SPDX-License-Identifier: MIT
#include "LibTools/W32BlitterService.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr std::int32_t maxInt = std::numeric_limits<std::int32_t>::max();

using Numbers = std::vector<std::uint32_t>;

/// A bitmap of 4 bytes a pixel.
std::unique_ptr<ZenBitmap> Bitmap(std::int32_t width, const Numbers& pixels)
{
    auto bitmap = ZenBitmap::Create(width, static_cast<std::int32_t>(pixels.size()) / width, 4);
    std::memcpy(bitmap->data, pixels.data(), pixels.size() * 4);
    return bitmap;
}

Numbers Pixels(const ZenBitmap& bitmap)
{
    Numbers pixels(static_cast<std::size_t>(bitmap.width * bitmap.height));
    std::memcpy(pixels.data(), bitmap.data, pixels.size() * 4);
    return pixels;
}

} // namespace

TEST(Bitmap, SizesThatCantBeHeldGiveNoBitmap)
{
    for (const auto& [width, height] :
         {std::pair(-1, 0), {0, -1}, {maxInt, maxInt}, {maxInt, 1}, {32768, 32768}})
        EXPECT_EQ(ZenBitmap::Create(width, height, 4), nullptr);
    EXPECT_EQ(ZenBitmap::Create(3, 2, 7)->bytesPerRow, 9);
    EXPECT_EQ(Pixels(*ZenBitmap::Create(3, 2, 4)), Numbers(6, 0));
}

TEST(Blitter, StretchTakesTheNearestPixelAndTouchesNothingOutside)
{
    W32BlitterService blitter;
    const auto source = Bitmap(3, {10, 11, 12, 13, 14, 15});
    const BlitRect whole{0, 0, 3, 2};
    const auto target = Bitmap(5, Numbers(15, 0));
    // Step 39321/65536 across, 43690/65536 down.
    blitter.Blit(*source, *target);
    EXPECT_EQ(Pixels(*target),
              Numbers({10, 10, 11, 11, 12, 10, 10, 11, 11, 12, 13, 13, 14, 14, 15}));
    const auto part = Bitmap(4, {100, 101, 102, 103, 104, 105, 106, 107});
    blitter.StretchBlit(*source, {1, 1, 2, 1}, *part, {1, 0, 2, 1});
    blitter.StretchBlit(*source, whole, *part, {-2, -1, 3, 2});
    for (const BlitRect& rect :
         {BlitRect{0, 0, 0, 2}, BlitRect{0, 0, -1, 2}, BlitRect{5, 5, 2, 2}, BlitRect{-4, 0, 2, 2},
          BlitRect{maxInt, maxInt, maxInt, maxInt}, BlitRect{-maxInt, -maxInt, maxInt, maxInt}})
        blitter.StretchBlit(*source, whole, *part, rect);
    blitter.StretchBlit(*source, {7, 7, maxInt, maxInt}, *part, {0, 0, 4, 2});
    blitter.StretchBlit(*source, {-9, -9, 2, 2}, *part, {0, 0, 4, 2});
    blitter.Blit(ZenBitmap(), *part);
    EXPECT_EQ(Pixels(*part), Numbers({15, 14, 15, 103, 104, 105, 106, 107}));
}

TEST(Blitter, EveryFormatKeepsItsColours)
{
    W32BlitterService blitter;
    QImage image(1, 2, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(1, 2, 3, 255));
    image.setPixel(0, 1, qRgba(200, 100, 50, 255));
    const auto bitmap = Bitmap(1, {0, 0});
    blitter.ImageToBitmap(image, *bitmap);
    EXPECT_EQ(Pixels(*bitmap), Numbers({0xFF010203, 0xFFC86432}));
    QImage preview(3, 2, QImage::Format_RGB888); // QImage pads its rows of 9 bytes
    blitter.BitmapToImage(*bitmap, preview);
    EXPECT_EQ(preview.pixel(2, 0), qRgb(1, 2, 3));
    EXPECT_EQ(preview.pixel(2, 1), qRgb(200, 100, 50));
    Numbers colours; // of grey, two bytes a pixel, three bytes a pixel
    using Case = std::pair<std::uint32_t, std::vector<std::uint8_t>>;
    for (const auto& [format, bytes] :
         {Case{1, {77}}, {2, {0, 0x7C}}, {5, {0x1F, 0}}, {6, {0xE0, 3}}, {3, {1, 2, 3}}})
    {
        const auto small = ZenBitmap::Create(1, 1, format);
        std::ranges::copy(bytes, small->data);
        blitter.BitmapToImage(*small, preview);
        colours.push_back(preview.pixel(1, 1) & 0xFFFFFF);
    }
    EXPECT_EQ(colours, Numbers({0x4D4D4D, 0xFF0000, 0x0000FF, 0x00FF00, 0x030201}));
}
