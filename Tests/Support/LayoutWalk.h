// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "FixtureModel/FixtureLayout.h"

namespace Support {

/// Gives a number from 0 to below the limit: from a random generator, or from a fuzzer's input.
using Below = std::function<int(int limit)>;

[[nodiscard]] inline FixtureSize AnySize(const Below& below)
{
    const bool whole = below(4) == 0; // all channels of a universe
    return {below(6) + 1, below(6) + 1, static_cast<PixelMapType>(below(21)),
            whole ? LEDFixture::MaxChannels : below(80)};
}

/// Does one operation on the pixels or constants, also one that is refused.
inline void LayAnyhow(FixtureLayout& layout, const Below& below)
{
    const int cell = below(static_cast<int>(layout.GetPixelMap().GetChannels().size()));
    const int channel = below(layout.GetChannelCount() + 5) - 1;
    const int operation = below(16);
    if (operation < 4)
        layout.SetNextChannel(channel);
    if (operation < 8)
        layout.MapPixel(cell);
    else if (operation < 10)
        layout.UnmapPixel(cell);
    else if (operation < 13)
        layout.SetConstant(channel, below(257) - 1);
    else if (operation == 13 && below(4) == 0)
        layout.ResetMapping();
    else if (operation == 14 && below(4) == 0)
        layout.ResetConstants();
    else if (operation == 15)
        layout.AutoMap(std::min(channel, layout.LastAutoMapStart() + below(2)),
                       {static_cast<GridCorner>(below(4)), below(2) == 0, below(2) == 0});
}

/// Takes another size, or another channel count alone.
inline void ResizeAnyhow(FixtureLayout& layout, const Below& below)
{
    FixtureSize size = layout.GetSize();
    size.channelCount = std::clamp(size.channelCount + below(21) - 10, 0, LEDFixture::MaxChannels);
    layout.Resize(below(4) == 0 ? AnySize(below) : size);
}

/// Pixels that overlap or lie beyond the channels. Files have some; no operation adds one.
[[nodiscard]] inline std::ptrdiff_t FaultyCells(const FixtureLayout& layout)
{
    return std::ranges::count_if(layout.GetCellFaults(),
                                 [](const auto& fault) { return fault.overlaps || fault.beyond; });
}

/// What breaks the rules of a layout, or what it says wrongly of its channels and cells; empty when
/// all is well.
[[nodiscard]] inline std::string FaultOf(const FixtureLayout& layout)
{
    const PixelMap& map = layout.GetPixelMap();
    const auto& starts = map.GetChannels();
    if (std::int64_t{map.GetWidth()} * map.GetHeight() != std::ssize(starts))
        return "the number of cells";
    std::vector<FixtureLayout::ChannelUse> uses(static_cast<std::size_t>(layout.GetChannelCount()));
    std::array<int, 513> pixels{};
    std::array<int, 513> entries{};
    const auto eachChannel = [&](std::size_t cell, const auto& visit) {
        for (int i = 0; i < map.GetChannelsPerPixel() && starts[cell] != 0; ++i) {
            if (const std::int64_t at = std::int64_t{starts[cell]} + i; at >= 1 && at <= 512)
                visit(static_cast<std::size_t>(at), i);
        }
    };
    for (std::size_t cell = 0; cell < starts.size(); ++cell) {
        eachChannel(cell, [&](std::size_t channel, int component) {
            ++pixels[channel];
            if (channel <= uses.size())
                uses[channel - 1] = {static_cast<int>(cell), component};
        });
    }
    for (const StaticChannel& entry : layout.GetConstants()) {
        const auto channel = static_cast<std::size_t>(entry.channel);
        if (++entries.at(channel) > 1 || pixels[channel] > 0)
            return "the entry of channel " + std::to_string(channel);
        if (channel <= uses.size())
            uses[channel - 1].value = entry.value;
    }
    for (std::size_t channel = 1; channel <= uses.size(); ++channel) {
        if (pixels[channel] + entries[channel] == 0)
            return "no entry of channel " + std::to_string(channel);
    }
    if (layout.GetChannelUses() != uses)
        return "the uses of the channels";
    const auto faults = layout.GetCellFaults();
    for (std::size_t cell = 0; cell < starts.size(); ++cell) {
        bool overlaps = false;
        int inside = 0;
        eachChannel(cell, [&](std::size_t channel, int) {
            overlaps |= pixels[channel] > 1;
            inside += channel <= uses.size() ? 1 : 0;
        });
        const bool beyond = starts[cell] != 0 && inside != map.GetChannelsPerPixel();
        if (faults.at(cell).overlaps != overlaps || faults.at(cell).beyond != beyond)
            return "the faults of cell " + std::to_string(cell);
    }
    return {};
}

} // namespace Support
