// SPDX-License-Identifier: MIT
#include "LibTools/ZenBitmap.h"

#include <cstddef>
#include <limits>
#include <new>

ZenBitmap::~ZenBitmap()
{
    if (ownsData)
        delete[] data;
}

std::unique_ptr<ZenBitmap> ZenBitmap::Create(std::int32_t width, std::int32_t height,
                                             std::uint32_t format)
{
    if (width < 0 || height < 0)
        return nullptr;
    constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
    const std::int64_t rowSize = std::int64_t{width} * BytesPerPixel(format);
    if (rowSize > limit) // Before it goes into a product that could leave 64 bits.
        return nullptr;
    const std::int64_t size = rowSize * height;
    if (size > limit)
        return nullptr;

    auto bitmap = std::make_unique<ZenBitmap>();
    bitmap->data = new (std::nothrow) std::uint8_t[static_cast<std::size_t>(size)]();
    if (!bitmap->data)
        return nullptr;
    bitmap->ownsData = true;
    bitmap->width = width;
    bitmap->height = height;
    bitmap->bytesPerRow = static_cast<std::int32_t>(rowSize);
    bitmap->format = format;
    return bitmap;
}
