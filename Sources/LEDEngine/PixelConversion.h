// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

#include "FixtureModel/PixelMap.h"

/// One pixel on its way to its channels: the index of the sampled pixel, and the index of its first
/// channel value.
struct PixelSlot
{
    std::uint32_t pixel = 0;
    std::uint32_t channel = 0;
};

/// Pixels of one colour layout. Pixel and channel i of a packed run follow from its first slot; the
/// pixels of a scattered run have a slot each.
struct PixelRun
{
    PixelMapType type = PixelMapType::RGB;
    std::uint8_t intensity = 255;
    bool packed = true;
    std::uint32_t count = 0;
    PixelSlot first;
    std::uint32_t firstSlot = 0; ///< of a scattered run, in the list of slots
};

/// Writes the channel values of a run. `pixels` holds 4 bytes a pixel: blue, green, red and a byte
/// without meaning. A type outside the table writes nothing.
void ConvertRun(const PixelRun& run, std::span<const PixelSlot> slotList,
                const std::uint8_t* pixels, std::uint8_t* values);
