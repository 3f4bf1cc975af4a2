// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

class LEDFixture;

/// What drives one channel of a fixture.
struct ChannelUse
{
    enum class Kind : std::uint8_t
    {
        Nothing, ///< the fixture says nothing of it: sent as 0
        Pixel,
        Constant,
        Free ///< a desk may drive it: 0, or what is received where the element is merged
    };

    Kind kind = Kind::Nothing;
    std::int32_t cell = -1;      ///< index of the pixel's cell in the map, row by row; -1 for none
    std::int32_t component = -1; ///< of the pixel, counted from 0: see PixelComponentName
    std::int32_t value = 0;      ///< of a constant

    bool operator==(const ChannelUse&) const = default;
};

/// A fixture whose map has more columns or rows than 1000 is not converted: it is sent as 0.
[[nodiscard]] bool IsConverted(const LEDFixture& fixture);

/// The channels of a fixture that are sent, 0 to 512.
[[nodiscard]] std::int32_t SentChannelCount(const LEDFixture& fixture);

/// Whether a pixel of `channelsPerPixel` channels that begins on channel `cell` is converted: it
/// begins among the fixture's channels and ends below channel 512.
[[nodiscard]] bool IsPixelConverted(std::int32_t cell, std::int32_t channelsPerPixel,
                                    std::int32_t channelCount);

/// The fixture's channels from 1 on, SentChannelCount of them. A constant or free channel wins over
/// a pixel on the same channel, and of two pixels the later cell.
[[nodiscard]] std::vector<ChannelUse> ChannelUsesOf(const LEDFixture& fixture);
