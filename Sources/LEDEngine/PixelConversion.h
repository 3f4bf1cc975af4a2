// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

#include "FixtureModel/PixelMap.h"

/// Where one pixel is converted to: the index of the sampled pixel, and the index of its first
/// channel value.
struct PixelSlot
{
    std::uint32_t pixel = 0;
    std::uint32_t channel = 0;
};

/// Pixels of one colour layout. In a packed run pixels and channels follow each other from the
/// first slot on; in a scattered run each pixel has a slot of its own.
struct PixelRun
{
    PixelMapType type = PixelMapType::RGB;
    std::uint8_t intensity = 255;
    bool packed = true;
    std::uint32_t count = 0;
    PixelSlot first;
    std::uint32_t firstSlot = 0; ///< of a scattered run: index in the list of slots
};

/// Writes the channel values of a run. `pixels` holds 4 bytes a pixel: blue, green, red and a byte
/// without meaning. A type outside the table writes nothing.
void ConvertRun(const PixelRun& run, std::span<const PixelSlot> slotList,
                const std::uint8_t* pixels, std::uint8_t* values);
