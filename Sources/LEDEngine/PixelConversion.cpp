// SPDX-License-Identifier: MIT
#include "LEDEngine/PixelConversion.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

struct Colour
{
    std::uint8_t r;
    std::uint8_t g;
    std::uint8_t b;
    std::uint8_t intensity;

    /// Halves are truncated before the sum and the sum after the division.
    [[nodiscard]] std::uint8_t Luminance() const
    {
        return static_cast<std::uint8_t>((r + g + g / 2 + b / 2) / 3);
    }
    [[nodiscard]] std::uint8_t MinRG() const { return std::min(r, g); }
    [[nodiscard]] std::uint8_t MinRGB() const { return std::min(MinRG(), b); }
};

std::uint8_t Minus(int from, int amount)
{
    return static_cast<std::uint8_t>(from - amount);
}

/// Writes the channels of one pixel. There is one function for each colour layout, chosen once per
/// run.
template <PixelMapType Type>
void WritePixel(const Colour& c, std::uint8_t* out)
{
    const auto write = [out](auto... values) {
        std::uint8_t* next = out;
        ((*next++ = values), ...);
    };
    constexpr std::uint8_t none = 0;
    using enum PixelMapType;
    if constexpr (Type == RGB)
        write(c.r, c.g, c.b);
    else if constexpr (Type == RBG)
        write(c.r, c.b, c.g);
    else if constexpr (Type == GRB)
        write(c.g, c.r, c.b);
    else if constexpr (Type == GBR)
        write(c.g, c.b, c.r);
    else if constexpr (Type == BRG)
        write(c.b, c.r, c.g);
    else if constexpr (Type == BGR)
        write(c.b, c.g, c.r);
    else if constexpr (Type == RGBL)
        write(c.r, c.g, c.b, c.intensity);
    else if constexpr (Type == RGBA)
        write(c.r, c.g, c.b, none);
    else if constexpr (Type == RGBWPlus)
        write(c.r, c.g, c.b, c.Luminance());
    else if constexpr (Type == RGBWMinus)
        write(Minus(c.r, c.MinRGB()), Minus(c.g, c.MinRGB()), Minus(c.b, c.MinRGB()), c.MinRGB());
    else if constexpr (Type == L)
        write(c.Luminance());
    else if constexpr (Type == CMY)
        write(Minus(255, c.r), Minus(255, c.g), Minus(255, c.b));
    else if constexpr (Type == YMC)
        write(Minus(255, c.b), Minus(255, c.g), Minus(255, c.r));
    else if constexpr (Type == RGBXXX)
        write(c.r, c.g, c.b, none, none, none);
    else if constexpr (Type == RrGgBb)
        write(c.r, c.r, c.g, c.g, c.b, c.b);
    else if constexpr (Type == RGBAmber)
        write(c.r, c.g, c.b, c.MinRG());
    else if constexpr (Type == RGBWAmber)
        write(c.r, c.g, c.b, c.intensity, c.MinRG());
    else if constexpr (Type == RB)
        write(c.r, c.b);
    else if constexpr (Type == R)
        write(c.r);
    else if constexpr (Type == G)
        write(c.g);
    else if constexpr (Type == B)
        write(c.b);
}

constexpr int ChannelsOf(PixelMapType type)
{
    constexpr int channels[] = {3, 3, 3, 3, 3, 3, 4, 4, 4, 4, 1, 3, 3, 6, 6, 4, 5, 2, 1, 1, 1};
    return channels[static_cast<std::size_t>(type)];
}

template <PixelMapType Type>
void Convert(const PixelRun& run, std::span<const PixelSlot> slotList, const std::uint8_t* pixels,
             std::uint8_t* values)
{
    // Copies: the compiler must assume that a written byte changes the run itself.
    const std::uint32_t count = run.count;
    const std::uint8_t intensity = run.intensity;
    if (run.packed) {
        const std::uint8_t* pixel = pixels + std::size_t{run.first.pixel} * 4;
        std::uint8_t* out = values + run.first.channel;
        for (std::uint32_t i = 0; i < count; ++i, pixel += 4, out += ChannelsOf(Type))
            WritePixel<Type>({pixel[2], pixel[1], pixel[0], intensity}, out);
        return;
    }
    for (const PixelSlot& slot : slotList.subspan(run.firstSlot, count)) {
        const std::uint8_t* pixel = pixels + std::size_t{slot.pixel} * 4;
        WritePixel<Type>({pixel[2], pixel[1], pixel[0], intensity}, values + slot.channel);
    }
}

using ConvertFunction = void (*)(const PixelRun&, std::span<const PixelSlot>, const std::uint8_t*,
                                 std::uint8_t*);

template <int... Index>
constexpr auto MakeTable(std::integer_sequence<int, Index...>)
{
    return std::array<ConvertFunction, sizeof...(Index)>{
        &Convert<static_cast<PixelMapType>(Index)>...};
}

constexpr auto Converters = MakeTable(std::make_integer_sequence<int, 21>{});

} // namespace

void ConvertRun(const PixelRun& run, std::span<const PixelSlot> slotList,
                const std::uint8_t* pixels, std::uint8_t* values)
{
    const auto index = static_cast<std::size_t>(run.type);
    if (index < Converters.size())
        Converters[index](run, slotList, pixels, values);
}
