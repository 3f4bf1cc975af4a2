// SPDX-License-Identifier: MIT
#include "LEDEngine/IdentifyLight.h"

namespace {

constexpr std::size_t BytesPerPixel = 4;
constexpr PixelColour FirstColour{255, 0, 0};
constexpr PixelColour LastColour{0, 0, 255};
constexpr PixelColour Dark{};

void Paint(std::span<std::uint8_t> pixels, std::size_t cell, PixelColour colour)
{
    const auto pixel = pixels.subspan(cell * BytesPerPixel, BytesPerPixel);
    pixel[0] = colour.blue;
    pixel[1] = colour.green;
    pixel[2] = colour.red;
}

} // namespace

void PaintLight(const IdentifyLight& light, std::int64_t now, const PixelEnds& ends,
                std::span<std::uint8_t> pixels)
{
    for (std::size_t cell = 0; cell < pixels.size() / BytesPerPixel; ++cell)
        Paint(pixels, cell, light.colour);
    if (!light.marksEnds || !ends.Differ())
        return;
    // On and dark in turn: on and the light's own colour would not be seen where the two are equal.
    const bool isOn = (now - light.since) % BlinkPeriod < BlinkPeriod / 2;
    Paint(pixels, ends.first.cell, isOn ? FirstColour : Dark);
    Paint(pixels, ends.last.cell, isOn ? LastColour : Dark);
}
