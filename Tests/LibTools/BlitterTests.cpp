// SPDX-License-Identifier: MIT
#include "LibTools/W32BlitterService.h"
#include "Support/LogCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <tuple>
#include <vector>

namespace {

constexpr std::int32_t maxInt = std::numeric_limits<std::int32_t>::max();

/// A 4-byte bitmap whose pixels are numbered from `first`.
std::unique_ptr<ZenBitmap> Numbered(std::int32_t width, std::int32_t height, std::uint32_t first)
{
    auto bitmap = ZenBitmap::Create(width, height, 4);
    for (std::int32_t i = 0; i < width * height; ++i) {
        const std::uint32_t pixel = first + static_cast<std::uint32_t>(i);
        std::memcpy(bitmap->data + 4 * i, &pixel, 4);
    }
    return bitmap;
}

std::vector<std::uint32_t> Pixels(const ZenBitmap& bitmap)
{
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(bitmap.width * bitmap.height));
    std::memcpy(pixels.data(), bitmap.data, pixels.size() * 4);
    return pixels;
}

} // namespace

TEST(Bitmap, SizesThatCantBeHeldGiveNoBitmap)
{
    for (const auto& [width, height] :
         {std::pair(-1, 1), {1, -1}, {maxInt, maxInt}, {maxInt, 1}, {32768, 32768}})
        EXPECT_EQ(ZenBitmap::Create(width, height, 4), nullptr);
    const auto bitmap = ZenBitmap::Create(3, 2, 7);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->bytesPerRow, 9);
    EXPECT_EQ(std::count(bitmap->data, bitmap->data + 18, 0), 18);
}

TEST(Blitter, StretchTakesTheNearestPixelAndTouchesNothingOutside)
{
    W32BlitterService blitter;
    const auto source = Numbered(3, 2, 10); // 10 11 12 / 13 14 15
    const BlitRect whole{0, 0, 3, 2};
    const auto target = Numbered(5, 3, 100);
    // Step 39321/65536 across, 43690/65536 down.
    blitter.StretchBlit(*source, whole, *target, {0, 0, 5, 3});
    EXPECT_EQ(Pixels(*target), (std::vector<std::uint32_t>{10, 10, 11, 11, 12, 10, 10, 11, 11, 12,
                                                           13, 13, 14, 14, 15}));
    const auto part = Numbered(4, 2, 100);
    blitter.StretchBlit(*source, {1, 1, 2, 1}, *part, {1, 0, 2, 1});
    blitter.StretchBlit(*source, whole, *part, {-2, -1, 3, 2});
    for (const BlitRect& rect :
         {BlitRect{0, 0, 0, 2}, BlitRect{0, 0, -1, 2}, BlitRect{5, 5, 2, 2}, BlitRect{-4, 0, 2, 2},
          BlitRect{maxInt, maxInt, maxInt, maxInt}, BlitRect{-maxInt, -maxInt, maxInt, maxInt}})
        blitter.StretchBlit(*source, whole, *part, rect);
    blitter.StretchBlit(*source, {7, 7, maxInt, maxInt}, *part, {0, 0, 4, 2});
    blitter.StretchBlit(*source, {-9, -9, 2, 2}, *part, {0, 0, 4, 2});
    blitter.Blit(ZenBitmap(), *part);
    EXPECT_EQ(Pixels(*part), (std::vector<std::uint32_t>{15, 14, 15, 103, 104, 105, 106, 107}));
    blitter.Blit(*Numbered(4, 2, 50), *part);
    EXPECT_EQ(Pixels(*part), Pixels(*Numbered(4, 2, 50)));
}

TEST(Blitter, EveryFormatKeepsItsColours)
{
    W32BlitterService blitter;
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(1, 2, 3, 255));
    image.setPixel(1, 0, qRgba(200, 100, 50, 255));
    const auto bitmap = ZenBitmap::Create(2, 1, 4);
    blitter.ImageToBitmap(image, *bitmap);
    EXPECT_EQ(Pixels(*bitmap), (std::vector<std::uint32_t>{0xFF010203, 0xFFC86432}));
    // 3 pixels of 3 bytes: QImage pads its rows, the colours must not drift.
    QImage preview(3, 2, QImage::Format_RGB888);
    blitter.BitmapToImage(*bitmap, preview);
    for (int y = 0; y < 2; ++y) {
        EXPECT_EQ(preview.pixel(1, y), qRgb(1, 2, 3));
        EXPECT_EQ(preview.pixel(2, y), qRgb(200, 100, 50));
    }
    // Grey, two bytes a pixel, three bytes a pixel.
    for (const auto& [format, low, high, colour] : {std::tuple(1U, 77, 0, qRgb(77, 77, 77)),
                                                    {2U, 0x00, 0x7C, qRgb(255, 0, 0)},
                                                    {5U, 0x1F, 0, qRgb(0, 0, 255)},
                                                    {6U, 0xE0, 0x03, qRgb(0, 255, 0)},
                                                    {3U, 1, 2, qRgb(0, 2, 1)},
                                                    {7U, 9, 8, qRgb(0, 8, 9)}})
    {
        const auto small = ZenBitmap::Create(1, 1, format);
        small->data[0] = static_cast<std::uint8_t>(low);
        if (format != 1)
            small->data[1] = static_cast<std::uint8_t>(high);
        blitter.BitmapToImage(*small, preview);
        EXPECT_EQ(preview.pixel(1, 1), colour) << format;
    }
    const Support::LogCapture log;
    blitter.BitmapToImage(*ZenBitmap::Create(1001, 1, 4), preview);
    EXPECT_EQ(preview.pixel(0, 0), qRgb(0, 8, 9)) << "the image stays as it was";
    EXPECT_TRUE(log.Has("Ridiculous size for bitamp! Bail!"));
    blitter.BitmapToImage(*ZenBitmap::Create(1000, 1, 4), preview);
    EXPECT_EQ(preview.pixel(0, 0), qRgb(0, 0, 0));
}
