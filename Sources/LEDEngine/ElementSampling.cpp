// SPDX-License-Identifier: MIT
#include "LEDEngine/ElementSampling.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ElementSampling {

namespace {

/// Three corners of the rectangle in fractions of the canvas; the fourth follows from them.
struct Corners
{
    PointF topLeft;
    PointF topRight;
    PointF bottomLeft;
};

Corners CornersOf(const VideoMapping& mapping, CanvasSize canvas)
{
    const auto canvasWidth = static_cast<float>(canvas.width);
    const auto canvasHeight = static_cast<float>(canvas.height);
    // Half sizes in canvas pixels: a rotated rectangle keeps its shape on a canvas that isn't
    // square.
    const float halfWidth = mapping.width * 0.5F * canvasWidth;
    const float halfHeight = mapping.height * 0.5F * canvasHeight;
    const auto corner = [&](float signX, float signY) {
        const PointF turned =
            rotatePoint({signX * halfWidth, signY * halfHeight}, mapping.rotation);
        return PointF{mapping.centerX + turned.x / canvasWidth,
                      mapping.centerY + turned.y / canvasHeight};
    };
    PointF topLeft = corner(-1.0F, -1.0F);
    PointF topRight = corner(1.0F, -1.0F);
    PointF bottomLeft = corner(-1.0F, 1.0F);
    PointF bottomRight = corner(1.0F, 1.0F);
    if (mapping.flipHorizontal) {
        std::swap(topLeft, topRight);
        std::swap(bottomLeft, bottomRight);
    }
    if (mapping.flipVertical) {
        std::swap(topLeft, bottomLeft);
        std::swap(topRight, bottomRight);
    }
    return {topLeft, topRight, bottomLeft};
}

/// True for 0 to 1, the ends included; false for anything else, NaN too.
bool IsOnCanvas(float fraction)
{
    return fraction >= 0.0F && fraction <= 1.0F;
}

std::int32_t PixelAt(float fraction, std::int32_t size)
{
    const auto pixel = static_cast<std::int32_t>(static_cast<float>(size) * fraction);
    return std::clamp(pixel, 0, size - 1);
}

} // namespace

SourceShape ShapeOf(const ZenBitmap& source)
{
    return {source.width, source.height, source.bytesPerRow,
            ZenBitmap::BytesPerPixel(source.format)};
}

void ComputeOffsets(const VideoMapping& mapping, CanvasSize canvas, const SourceShape& source,
                    std::int32_t columns, std::int32_t rows, std::span<std::int32_t> offsets)
{
    if (source.width < 1 || source.height < 1 || source.bytesPerPixel < 3) {
        std::ranges::fill(offsets, OutsideCanvas);
        return;
    }
    const Corners corners = CornersOf(mapping, canvas);
    const auto width = static_cast<float>(columns);
    const auto height = static_cast<float>(rows);
    const PointF across{corners.topRight.x - corners.topLeft.x,
                        corners.topRight.y - corners.topLeft.y};
    const PointF down{corners.bottomLeft.x - corners.topLeft.x,
                      corners.bottomLeft.y - corners.topLeft.y};
    std::size_t next = 0;
    for (std::int32_t row = 0; row < rows; ++row) {
        const float fy = static_cast<float>(row) + 0.5F;
        for (std::int32_t column = 0; column < columns; ++column) {
            const float fx = static_cast<float>(column) + 0.5F;
            const float u = corners.topLeft.x + fx * across.x / width + fy * down.x / height;
            const float v = corners.topLeft.y + fx * across.y / width + fy * down.y / height;
            offsets[next++] = IsOnCanvas(u) && IsOnCanvas(v)
                                  ? PixelAt(u, source.width) * source.bytesPerPixel +
                                        PixelAt(v, source.height) * source.bytesPerRow
                                  : OutsideCanvas;
        }
    }
}

void CopyPixels(const ZenBitmap& source, std::span<const std::int32_t> offsets,
                std::uint8_t* target)
{
    // A pixel of four bytes is one load and one store; this loop takes half of a frame's time.
    if (ZenBitmap::BytesPerPixel(source.format) == 4) {
        for (const std::int32_t offset : offsets) {
            std::uint32_t pixel = 0;
            if (offset >= 0)
                std::memcpy(&pixel, source.data + offset, sizeof pixel);
            std::memcpy(target, &pixel, sizeof pixel);
            target += sizeof pixel;
        }
        return;
    }
    for (const std::int32_t offset : offsets) {
        std::memset(target, 0, 4);
        if (offset >= 0)
            std::memcpy(target, source.data + offset, 3);
        target += 4;
    }
}

} // namespace ElementSampling
