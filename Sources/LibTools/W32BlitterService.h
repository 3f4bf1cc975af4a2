// SPDX-License-Identifier: MIT
#pragma once

#include "LibTools/BlitterService.h"

class W32BlitterService final : public BlitterService
{
public:
    void StretchBlit(const ZenBitmap& source, const BlitRect& sourceRect, ZenBitmap& target,
                     const BlitRect& targetRect) override;
    void ImageToBitmap(const QImage& image, ZenBitmap& bitmap) override;
    void BitmapToImage(const ZenBitmap& bitmap, QImage& image) override;
    void Blit(const ZenBitmap& source, ZenBitmap& target) override;
};
