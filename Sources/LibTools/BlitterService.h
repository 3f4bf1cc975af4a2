// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/Installable.h"
#include "LibTools/ZenBitmap.h"

#include <cstdint>

#include <QImage>

/// A part of a bitmap, in pixels.
struct BlitRect
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// Copies pixels between bitmaps and images, for previews; the engine does its own sampling.
class BlitterService : public T_Installable<BlitterService>
{
public:
    /// Nearest neighbour. Pixels that a rectangle names outside of its bitmap are left out. The
    /// bitmaps have the same bytes per pixel, or the target has four; nothing happens otherwise,
    /// for an empty target and for a bitmap without pixels.
    virtual void StretchBlit(const ZenBitmap& source, const BlitRect& sourceRect, ZenBitmap& target,
                             const BlitRect& targetRect) = 0;
    /// An image into a 4-byte bitmap of the same size; nothing happens for any other.
    virtual void ImageToBitmap(const QImage& image, ZenBitmap& bitmap) = 0;
    /// A bitmap into an image of Format_RGB888, scaled to the image's size. A bitmap of more than
    /// 1000 pixels in a direction is refused with a line in the log.
    virtual void BitmapToImage(const ZenBitmap& bitmap, QImage& image) = 0;
    /// A plain copy at equal size and format, a stretch otherwise.
    virtual void Blit(const ZenBitmap& source, ZenBitmap& target) = 0;
};
