// SPDX-License-Identifier: MIT
#include "FixtureModel/ChannelUse.h"

#include <algorithm>

#include "FixtureModel/LEDFixture.h"

namespace {

void AddPixels(const PixelMap& map, std::vector<ChannelUse>& uses)
{
    const std::int32_t n = map.GetChannelsPerPixel();
    const auto count = static_cast<std::int32_t>(uses.size());
    const auto& cells = map.GetChannels();
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        if (!IsPixelConverted(cells[cell], n, count))
            continue;
        const std::int32_t end = std::min(cells[cell] - 1 + n, count);
        for (std::int32_t index = cells[cell] - 1; index < end; ++index) {
            uses[static_cast<std::size_t>(index)] = {.kind = ChannelUse::Kind::Pixel,
                                                     .cell = static_cast<std::int32_t>(cell),
                                                     .component = index - (cells[cell] - 1)};
        }
    }
}

} // namespace

bool IsConverted(const LEDFixture& fixture)
{
    constexpr std::int32_t maxSize = 1000;
    return fixture.pixelMap.GetWidth() <= maxSize && fixture.pixelMap.GetHeight() <= maxSize;
}

std::int32_t SentChannelCount(const LEDFixture& fixture)
{
    return std::clamp(fixture.GetChannelCount(), 0, LEDFixture::MaxChannels);
}

bool IsPixelConverted(std::int32_t cell, std::int32_t channelsPerPixel, std::int32_t channelCount)
{
    return channelsPerPixel > 0 && cell >= 1 &&
           cell <= LEDFixture::MaxChannels - channelsPerPixel && cell <= channelCount;
}

std::vector<ChannelUse> ChannelUsesOf(const LEDFixture& fixture)
{
    std::vector<ChannelUse> uses(static_cast<std::size_t>(SentChannelCount(fixture)));
    if (!IsConverted(fixture))
        return uses;
    AddPixels(fixture.pixelMap, uses);
    for (const StaticChannel& entry : fixture.staticChannels) {
        if (entry.channel < 1 || static_cast<std::size_t>(entry.channel) > uses.size())
            continue;
        const bool free = entry.value < 0;
        uses[static_cast<std::size_t>(entry.channel - 1)] = {
            .kind = free ? ChannelUse::Kind::Free : ChannelUse::Kind::Constant,
            .value = free ? 0 : entry.value};
    }
    return uses;
}
