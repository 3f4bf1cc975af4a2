// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

/// A plain raster of pixels, row after row. A pixel of a 4-byte or 3-byte bitmap holds blue, green,
/// red in this order; the fourth byte is 255 in the test image and has no meaning to the engine.
struct ZenBitmap
{
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint8_t* data = nullptr;
    bool ownsData = false; ///< `data` came from new[] and goes with the bitmap
    std::int32_t bytesPerRow = 0;
    std::uint32_t format = 0;

    ZenBitmap() = default;
    ZenBitmap(const ZenBitmap&) = delete;
    ZenBitmap& operator=(const ZenBitmap&) = delete;
    ~ZenBitmap();

    /// Bytes per pixel of a format code: 1 for code 1; 2 for codes 2, 5 and 6; 3 for codes 3 and 7;
    /// 4 for code 4; 0 for any other.
    [[nodiscard]] static constexpr std::int32_t BytesPerPixel(std::uint32_t format)
    {
        switch (format) {
        case 1:
            return 1;
        case 2:
        case 5:
        case 6:
            return 2;
        case 3:
        case 7:
            return 3;
        case 4:
            return 4;
        default:
            return 0;
        }
    }

    /// A zeroed bitmap with pixels of its own. Nothing when a size is negative, when the size in
    /// bytes doesn't fit a signed 32-bit number, or when the memory can't be had.
    [[nodiscard]] static std::unique_ptr<ZenBitmap> Create(std::int32_t width, std::int32_t height,
                                                           std::uint32_t format);
};
