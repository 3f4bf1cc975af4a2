// SPDX-License-Identifier: MIT
#include "LibTools/W32BlitterService.h"

#include "Log/Log.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace {

constexpr std::int32_t maxPreviewSize = 1000;

std::size_t Index(std::int64_t value)
{
    return static_cast<std::size_t>(value);
}

/// Sizes and stride agree with the pixels that the record claims to have.
bool HasPixels(const ZenBitmap& bitmap)
{
    const std::int64_t rowSize =
        std::int64_t{bitmap.width} * ZenBitmap::BytesPerPixel(bitmap.format);
    return bitmap.data && bitmap.width > 0 && bitmap.height > 0 && rowSize > 0 &&
           bitmap.bytesPerRow >= rowSize;
}

BlitRect Whole(const ZenBitmap& bitmap)
{
    return {0, 0, bitmap.width, bitmap.height};
}

/// Blue, green, red, 255 from a pixel of 1 (grey), 2 (five bits a colour), 3 or 4 bytes.
std::array<std::uint8_t, 4> ToBgra(const std::uint8_t* pixel, std::int32_t bytesPerPixel)
{
    const auto widen = [](unsigned five) {
        return static_cast<std::uint8_t>((five << 3U) | (five >> 2U));
    };
    switch (bytesPerPixel) {
    case 1:
        return {pixel[0], pixel[0], pixel[0], 255};
    case 2: {
        const unsigned bits = pixel[0] + 256U * pixel[1];
        return {widen(bits & 31U), widen((bits >> 5U) & 31U), widen((bits >> 10U) & 31U), 255};
    }
    default:
        return {pixel[0], pixel[1], pixel[2], 255};
    }
}

void CopyPixel(const std::uint8_t* from, std::int32_t fromBytes, std::uint8_t* to,
               std::int32_t toBytes)
{
    if (fromBytes == toBytes)
        std::memcpy(to, from, Index(toBytes));
    else
        std::memcpy(to, ToBgra(from, fromBytes).data(), 4);
}

/// One direction of a stretch: which target positions lie inside, and where each comes from.
struct Axis
{
    std::int64_t sourceStart;
    std::int64_t sourceSize; ///< of the bitmap
    std::int64_t targetStart;
    std::int64_t step; ///< 16.16
    std::int64_t first;
    std::int64_t last; ///< one past the last

    Axis(std::int32_t from, std::int32_t fromLength, std::int32_t fromSize, std::int32_t to,
         std::int32_t toLength, std::int32_t toSize)
        : sourceStart(from)
        , sourceSize(fromSize)
        , targetStart(to)
        , step((std::int64_t{fromLength} << 16) / toLength)
        , first(std::max<std::int64_t>(0, -std::int64_t{to}))
        , last(std::min<std::int64_t>(toLength, std::int64_t{toSize} - to))
    {}

    [[nodiscard]] std::int64_t Source(std::int64_t i) const
    {
        return sourceStart + ((i * step) >> 16);
    }
    [[nodiscard]] bool HasSource(std::int64_t i) const
    {
        return Source(i) >= 0 && Source(i) < sourceSize;
    }
};

} // namespace

void W32BlitterService::StretchBlit(const ZenBitmap& source, const BlitRect& sourceRect,
                                    ZenBitmap& target, const BlitRect& targetRect)
{
    if (targetRect.width <= 0 || targetRect.height <= 0 || sourceRect.width < 0 ||
        sourceRect.height < 0 || !HasPixels(source) || !HasPixels(target))
        return;
    const std::int32_t fromBytes = ZenBitmap::BytesPerPixel(source.format);
    const std::int32_t toBytes = ZenBitmap::BytesPerPixel(target.format);
    if (fromBytes != toBytes && toBytes != 4)
        return;

    const Axis across(sourceRect.x, sourceRect.width, source.width, targetRect.x, targetRect.width,
                      target.width);
    const Axis down(sourceRect.y, sourceRect.height, source.height, targetRect.y, targetRect.height,
                    target.height);
    for (std::int64_t j = down.first; j < down.last; ++j) {
        if (!down.HasSource(j))
            continue;
        const auto* fromRow = source.data + Index(down.Source(j) * source.bytesPerRow);
        auto* toRow = target.data + Index((down.targetStart + j) * target.bytesPerRow);
        for (std::int64_t i = across.first; i < across.last; ++i) {
            if (across.HasSource(i))
                CopyPixel(fromRow + Index(across.Source(i) * fromBytes), fromBytes,
                          toRow + Index((across.targetStart + i) * toBytes), toBytes);
        }
    }
}

void W32BlitterService::ImageToBitmap(const QImage& image, ZenBitmap& bitmap)
{
    if (image.width() != bitmap.width || image.height() != bitmap.height || !HasPixels(bitmap) ||
        ZenBitmap::BytesPerPixel(bitmap.format) != 4)
        return;
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    for (std::int32_t y = 0; y < pixels.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        auto* to = bitmap.data + Index(std::int64_t{y} * bitmap.bytesPerRow);
        for (std::int32_t x = 0; x < pixels.width(); ++x, to += 4) {
            to[0] = static_cast<std::uint8_t>(qBlue(row[x]));
            to[1] = static_cast<std::uint8_t>(qGreen(row[x]));
            to[2] = static_cast<std::uint8_t>(qRed(row[x]));
            to[3] = static_cast<std::uint8_t>(qAlpha(row[x]));
        }
    }
}

void W32BlitterService::BitmapToImage(const ZenBitmap& bitmap, QImage& image)
{
    if (bitmap.width > maxPreviewSize || bitmap.height > maxPreviewSize) {
        ZEN_LOG_ERROR("Ridiculous size for bitamp! Bail!");
        return;
    }
    if (image.isNull() || image.format() != QImage::Format_RGB888 || !HasPixels(bitmap))
        return;
    const auto scaled = ZenBitmap::Create(image.width(), image.height(), 4);
    if (!scaled)
        return;
    StretchBlit(bitmap, Whole(bitmap), *scaled, Whole(*scaled));
    for (std::int32_t y = 0; y < scaled->height; ++y) {
        const auto* from = scaled->data + Index(std::int64_t{y} * scaled->bytesPerRow);
        auto* to = image.scanLine(y);
        for (std::int32_t x = 0; x < scaled->width; ++x, from += 4, to += 3) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
        }
    }
}

void W32BlitterService::Blit(const ZenBitmap& source, ZenBitmap& target)
{
    if (!HasPixels(source) || !HasPixels(target))
        return;
    const bool alike = source.width == target.width && source.height == target.height &&
                       source.format == target.format;
    if (!alike) {
        StretchBlit(source, Whole(source), target, Whole(target));
        return;
    }
    const std::int64_t rowSize =
        std::int64_t{source.width} * ZenBitmap::BytesPerPixel(source.format);
    for (std::int64_t y = 0; y < source.height; ++y)
        std::memmove(target.data + Index(y * target.bytesPerRow),
                     source.data + Index(y * source.bytesPerRow), Index(rowSize));
}
