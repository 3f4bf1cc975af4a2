// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "FixtureModel/VideoMapping.h"
#include "LibTools/ZenBitmap.h"

/// Nearest-neighbour sampling of a picture through an element's rotated and mirrored rectangle. The
/// picture is stretched over the canvas, whatever the size of the picture is.
namespace ElementSampling {

/// The part of a source that decides where its pixels lie in memory. Offsets stay valid as long as
/// it stays the same.
struct SourceShape
{
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bytesPerRow = 0;
    std::int32_t bytesPerPixel = 0;

    bool operator==(const SourceShape&) const = default;
};

[[nodiscard]] SourceShape ShapeOf(const ZenBitmap& source);

/// The size of the canvas in scene pixels.
struct CanvasSize
{
    std::int32_t width = 0;
    std::int32_t height = 0;

    bool operator==(const CanvasSize&) const = default;
};

/// The offset of a sample that falls outside the canvas: its pixel is black.
inline constexpr std::int32_t OutsideCanvas = -1;

/// The byte offset in the source for each of columns x rows pixels of an element, row by row. The
/// arithmetic is in 32-bit floats throughout, so that every machine picks the same pixel. A
/// rectangle that is not finite, a source without pixels or one of fewer than 3 bytes a pixel gives
/// OutsideCanvas.
void ComputeOffsets(const VideoMapping& mapping, CanvasSize canvas, const SourceShape& source,
                    std::int32_t columns, std::int32_t rows, std::span<std::int32_t> offsets);

/// A pixel of a picture, from its top left.
struct PicturePixel
{
    std::int32_t x = 0;
    std::int32_t y = 0;

    bool operator==(const PicturePixel&) const = default;
};

/// Where one pixel of an element is sampled, by the arithmetic of ComputeOffsets. None outside of
/// the canvas, and for a pixel that the element hasn't.
[[nodiscard]] std::optional<PicturePixel> SampleOf(const VideoMapping& mapping, CanvasSize canvas,
                                                   const SourceShape& source, std::int32_t columns,
                                                   std::int32_t rows, std::int32_t pixel);

/// The pixel of an element that covers this place, in fractions of the canvas. None beside the
/// element.
[[nodiscard]] std::optional<std::int32_t> PixelUnder(const VideoMapping& mapping, CanvasSize canvas,
                                                     std::int32_t columns, std::int32_t rows,
                                                     PointF place);

/// Copies the pixels at `offsets` to `target`, 4 bytes each: blue, green, red and a byte without
/// meaning. The source has the shape that the offsets were computed for.
void CopyPixels(const ZenBitmap& source, std::span<const std::int32_t> offsets,
                std::uint8_t* target);

} // namespace ElementSampling
