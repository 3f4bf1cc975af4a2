// SPDX-License-Identifier: MIT
#include "LibTools/W32BlitterService.h"
#include "Support/LogCapture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
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
    EXPECT_EQ(ZenBitmap::Create(-1, 1, 4), nullptr);
    EXPECT_EQ(ZenBitmap::Create(1, -1, 4), nullptr);
    EXPECT_EQ(ZenBitmap::Create(maxInt, maxInt, 4), nullptr);
    EXPECT_EQ(ZenBitmap::Create(maxInt, 1, 4), nullptr);
    EXPECT_EQ(ZenBitmap::Create(32768, 32768, 4), nullptr);
    const auto bitmap = ZenBitmap::Create(3, 2, 7);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->bytesPerRow, 9);
    EXPECT_EQ(std::vector<std::uint8_t>(bitmap->data, bitmap->data + 18),
              std::vector<std::uint8_t>(18, 0));
}

TEST(Blitter, StretchTakesTheNearestPixelInFixedPoint)
{
    W32BlitterService blitter;
    const auto source = Numbered(3, 2, 10); // 10 11 12 / 13 14 15
    const auto target = Numbered(5, 3, 100);
    // Step 39321/65536 across, 43690/65536 down.
    blitter.StretchBlit(*source, {0, 0, 3, 2}, *target, {0, 0, 5, 3});
    EXPECT_EQ(Pixels(*target), (std::vector<std::uint32_t>{10, 10, 11, 11, 12, 10, 10, 11, 11, 12,
                                                           13, 13, 14, 14, 15}));

    const auto part = Numbered(4, 2, 100);
    blitter.StretchBlit(*source, {1, 1, 2, 1}, *part, {1, 0, 2, 1});
    EXPECT_EQ(Pixels(*part), (std::vector<std::uint32_t>{100, 14, 15, 103, 104, 105, 106, 107}));
}

TEST(Blitter, RectanglesOutsideTouchNothingOutside)
{
    W32BlitterService blitter;
    const auto source = Numbered(2, 2, 1);
    const auto target = Numbered(2, 2, 100);
    const auto untouched = Pixels(*target);
    for (const BlitRect& rect :
         {BlitRect{0, 0, 0, 2}, BlitRect{0, 0, 2, 0}, BlitRect{0, 0, -1, 2}, BlitRect{5, 5, 2, 2},
          BlitRect{-4, 0, 2, 2}, BlitRect{maxInt, maxInt, maxInt, maxInt}})
        blitter.StretchBlit(*source, {0, 0, 2, 2}, *target, rect);
    blitter.StretchBlit(*source, {7, 7, maxInt, maxInt}, *target, {0, 0, 2, 2});
    blitter.StretchBlit(*source, {-9, -9, 2, 2}, *target, {0, 0, 2, 2});
    ZenBitmap none;
    blitter.Blit(none, *target);
    blitter.Blit(*source, none);
    EXPECT_EQ(Pixels(*target), untouched);

    blitter.StretchBlit(*source, {0, 0, 2, 2}, *target, {-1, -1, 2, 2});
    EXPECT_EQ(Pixels(*target), (std::vector<std::uint32_t>{4, 101, 102, 103}));
    blitter.StretchBlit(*source, {0, 0, 2, 2}, *target, {-maxInt, -maxInt, maxInt, maxInt});
}

TEST(Blitter, ImagesAndBitmapsKeepTheirColours)
{
    W32BlitterService blitter;
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(1, 2, 3, 255));
    image.setPixel(1, 0, qRgba(200, 100, 50, 255));
    const auto bitmap = ZenBitmap::Create(2, 1, 4);
    blitter.ImageToBitmap(image, *bitmap);
    EXPECT_EQ(std::vector<std::uint8_t>(bitmap->data, bitmap->data + 8),
              (std::vector<std::uint8_t>{3, 2, 1, 255, 50, 100, 200, 255}));

    // 3 pixels of 3 bytes: QImage pads its rows, the colours must not drift.
    QImage preview(3, 2, QImage::Format_RGB888);
    preview.fill(Qt::black);
    blitter.BitmapToImage(*bitmap, preview);
    for (int y = 0; y < 2; ++y) {
        EXPECT_EQ(preview.pixel(0, y), qRgb(1, 2, 3));
        EXPECT_EQ(preview.pixel(1, y), qRgb(1, 2, 3));
        EXPECT_EQ(preview.pixel(2, y), qRgb(200, 100, 50));
    }
    const auto other = ZenBitmap::Create(3, 1, 4);
    blitter.ImageToBitmap(image, *other);
    EXPECT_EQ(Pixels(*other), std::vector<std::uint32_t>(3, 0)) << "another size is left alone";
}

TEST(Blitter, SmallerFormatsAreConverted)
{
    W32BlitterService blitter;
    struct Case
    {
        std::uint32_t format;
        std::vector<std::uint8_t> pixel;
        QRgb colour;
    };
    for (const Case& c :
         {Case{1, {77}, qRgb(77, 77, 77)}, Case{2, {0x00, 0x7C}, qRgb(255, 0, 0)},
          Case{5, {0x1F, 0x00}, qRgb(0, 0, 255)}, Case{6, {0xE0, 0x03}, qRgb(0, 255, 0)},
          Case{3, {1, 2, 3}, qRgb(3, 2, 1)}, Case{7, {9, 8, 7}, qRgb(7, 8, 9)}})
    {
        const auto bitmap = ZenBitmap::Create(1, 1, c.format);
        std::copy(c.pixel.begin(), c.pixel.end(), bitmap->data);
        QImage preview(2, 2, QImage::Format_RGB888);
        preview.fill(Qt::white);
        blitter.BitmapToImage(*bitmap, preview);
        EXPECT_EQ(preview.pixel(1, 1), c.colour) << c.format;
    }
}

TEST(Blitter, ARidiculousSizeIsRefusedWithALine)
{
    W32BlitterService blitter;
    const Support::LogCapture log;
    QImage preview(2, 2, QImage::Format_RGB888);
    preview.fill(Qt::white);
    blitter.BitmapToImage(*ZenBitmap::Create(1001, 1, 4), preview);
    EXPECT_EQ(preview.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_TRUE(log.Has("Ridiculous size for bitamp! Bail!"));
    blitter.BitmapToImage(*ZenBitmap::Create(1000, 1, 4), preview);
    EXPECT_EQ(preview.pixel(0, 0), qRgb(0, 0, 0));
    EXPECT_EQ(log.Messages().size(), 1U);
}
