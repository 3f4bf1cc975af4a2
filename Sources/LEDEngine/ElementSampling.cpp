// SPDX-License-Identifier: MIT
#include "LEDEngine/ElementSampling.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ElementSampling {

namespace {

/// The pixels of an element on the canvas: its top left corner, and the ways along its upper and
/// its left edge, in fractions of the canvas.
struct Grid
{
    PointF topLeft;
    PointF across;
    PointF down;
    float columns = 1;
    float rows = 1;

    /// The centre of a pixel.
    [[nodiscard]] PointF CentreOf(std::int32_t column, std::int32_t row) const
    {
        const float fx = static_cast<float>(column) + 0.5F;
        const float fy = static_cast<float>(row) + 0.5F;
        return {topLeft.x + fx * across.x / columns + fy * down.x / rows,
                topLeft.y + fx * across.y / columns + fy * down.y / rows};
    }
};

Grid GridOf(const VideoMapping& mapping, CanvasSize canvas, std::int32_t columns, std::int32_t rows)
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
    return {.topLeft = topLeft,
            .across = {topRight.x - topLeft.x, topRight.y - topLeft.y},
            .down = {bottomLeft.x - topLeft.x, bottomLeft.y - topLeft.y},
            .columns = static_cast<float>(columns),
            .rows = static_cast<float>(rows)};
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

bool HasPixels(const SourceShape& source)
{
    return source.width >= 1 && source.height >= 1 && source.bytesPerPixel >= 3;
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
    if (!HasPixels(source)) {
        std::ranges::fill(offsets, OutsideCanvas);
        return;
    }
    const Grid grid = GridOf(mapping, canvas, columns, rows);
    std::size_t next = 0;
    for (std::int32_t row = 0; row < rows; ++row) {
        for (std::int32_t column = 0; column < columns; ++column) {
            const auto [u, v] = grid.CentreOf(column, row);
            offsets[next++] = IsOnCanvas(u) && IsOnCanvas(v)
                                  ? PixelAt(u, source.width) * source.bytesPerPixel +
                                        PixelAt(v, source.height) * source.bytesPerRow
                                  : OutsideCanvas;
        }
    }
}

std::optional<PicturePixel> SampleOf(const VideoMapping& mapping, CanvasSize canvas,
                                     const SourceShape& source, std::int32_t columns,
                                     std::int32_t rows, std::int32_t pixel)
{
    if (!HasPixels(source) || columns < 1 || pixel < 0 || pixel / columns >= rows)
        return std::nullopt;
    const auto [u, v] =
        GridOf(mapping, canvas, columns, rows).CentreOf(pixel % columns, pixel / columns);
    if (!IsOnCanvas(u) || !IsOnCanvas(v))
        return std::nullopt;
    return PicturePixel{PixelAt(u, source.width), PixelAt(v, source.height)};
}

std::optional<std::int32_t> PixelUnder(const VideoMapping& mapping, CanvasSize canvas,
                                       std::int32_t columns, std::int32_t rows, PointF place)
{
    const Grid grid = GridOf(mapping, canvas, columns, rows);
    const float area = grid.across.x * grid.down.y - grid.across.y * grid.down.x;
    const PointF from{place.x - grid.topLeft.x, place.y - grid.topLeft.y};
    // The shares of both edges that lead from the corner to the place. An element without area, or
    // one that isn't finite, makes no numbers of them, which are not within anything.
    const float right = (from.x * grid.down.y - from.y * grid.down.x) / area * grid.columns;
    const float down = (grid.across.x * from.y - grid.across.y * from.x) / area * grid.rows;
    if (!(right >= 0.0F && right < grid.columns && down >= 0.0F && down < grid.rows))
        return std::nullopt;
    return static_cast<std::int32_t>(down) * columns + static_cast<std::int32_t>(right);
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
