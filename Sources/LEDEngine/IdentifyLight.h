// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// A colour as it is sampled from a picture, before it is converted for a fixture.
struct PixelColour
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const PixelColour&) const = default;
};

/// One element that is lit in place of the picture, so that a person finds it on the stage.
/// Constants of its fixture, such as a dimmer's, stay as they are.
struct IdentifyLight
{
    std::int64_t element = 0; ///< its identifier in the document, 0 for none
    PixelColour colour{255, 255, 255};
    bool marksEnds = true;   ///< its first and last pixel blink in red and blue
    bool othersDark = false; ///< all pixels of other elements are black
    std::int64_t since = 0;  ///< when blinking began, in nanoseconds of the monotonic clock
};

/// The pixels of an element with the lowest and the highest first channel: where its cable comes
/// in, and where it ends.
struct PixelEnds
{
    struct Pixel
    {
        std::size_t cell = 0; ///< index in the element's pixels
        std::int32_t channel = 0;
    };

    Pixel first;
    Pixel last;

    /// Takes one pixel more. Of several on the same channel the first one counts.
    void Take(std::size_t cell, std::int32_t channel)
    {
        if (first.channel == 0 || channel < first.channel)
            first = {cell, channel};
        if (channel > last.channel)
            last = {cell, channel};
    }
    /// Elements of one pixel, or of none, can't be turned round.
    [[nodiscard]] bool Differ() const { return first.channel < last.channel; }
};

/// How long a marked pixel is on and off again, in nanoseconds.
inline constexpr std::int64_t BlinkPeriod = 500'000'000;

/// Paints the light over the pixels of its element: 4 bytes each, blue, green, red and a byte
/// without meaning.
void PaintLight(const IdentifyLight& light, std::int64_t now, const PixelEnds& ends,
                std::span<std::uint8_t> pixels);
