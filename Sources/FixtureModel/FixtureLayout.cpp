// SPDX-License-Identifier: MIT
#include "FixtureModel/FixtureLayout.h"

#include <algorithm>
#include <array>

namespace {

bool HasPixels(const PixelMap& map)
{
    return std::ranges::any_of(map.GetChannels(), [](std::int32_t start) { return start != 0; });
}

/// Calls `visit` with each channel of the pixel that a fixture can have.
template <class Visit>
void ForEachChannel(std::int32_t start, std::int32_t count, const Visit& visit)
{
    for (std::int32_t component = 0; component < count; ++component) {
        const std::int64_t channel = std::int64_t{start} + component;
        if (channel >= 1 && channel <= LEDFixture::MaxChannels)
            visit(static_cast<std::int32_t>(channel), component);
    }
}

} // namespace

FixtureLayout::FixtureLayout(const LEDFixture& fixture)
    : pixelMap(fixture.pixelMap)
    , constants(fixture.staticChannels)
    , channelCount(fixture.GetChannelCount())
{
    FillConstants();
}

FixtureLayout::FixtureLayout(const FixtureSize& size)
    : pixelMap(size.width, size.height, size.type)
    , channelCount(size.channelCount)
{
    FillConstants();
}

FixtureSize FixtureLayout::GetSize() const
{
    return {pixelMap.GetWidth(), pixelMap.GetHeight(), pixelMap.GetType(), channelCount};
}

std::int32_t FixtureLayout::Start(std::int32_t cell) const
{
    return pixelMap.GetChannels().at(static_cast<std::size_t>(cell));
}

void FixtureLayout::SetStart(std::int32_t cell, std::int32_t channel)
{
    pixelMap.SetCell(cell % pixelMap.GetWidth(), cell / pixelMap.GetWidth(), channel);
}

/// Every channel that neither a pixel nor an entry has is unassigned.
void FixtureLayout::FillConstants()
{
    const auto covered = pixelMap.GetCoveredChannels();
    for (std::int32_t channel = 1; channel <= channelCount; ++channel) {
        if (!covered.test(static_cast<std::size_t>(channel)) && !constants.Find(channel))
            constants.Set(channel, StaticChannel::Unassigned);
    }
}

std::vector<FixtureLayout::ChannelUse> FixtureLayout::GetChannelUses() const
{
    std::vector<ChannelUse> uses(static_cast<std::size_t>(std::max(channelCount, 0)));
    const auto use = [&](std::int32_t channel, const ChannelUse& what) {
        if (channel <= channelCount)
            uses[static_cast<std::size_t>(channel - 1)] = what;
    };
    const std::int32_t perPixel = pixelMap.GetChannelsPerPixel();
    const auto& starts = pixelMap.GetChannels();
    for (std::size_t cell = 0; cell < starts.size(); ++cell) {
        if (starts[cell] == 0)
            continue;
        ForEachChannel(starts[cell], perPixel, [&](std::int32_t channel, std::int32_t component) {
            use(channel, {static_cast<std::int32_t>(cell), component, StaticChannel::Unassigned});
        });
    }
    for (const StaticChannel& constant : constants)
        use(constant.channel, {-1, 0, constant.value});
    return uses;
}

std::vector<FixtureLayout::CellFault> FixtureLayout::GetCellFaults() const
{
    const std::int32_t perPixel = pixelMap.GetChannelsPerPixel();
    const auto& starts = pixelMap.GetChannels();
    std::array<int, LEDFixture::MaxChannels + 1> pixelsOn{};
    for (const std::int32_t start : starts) {
        if (start != 0)
            ForEachChannel(start, perPixel, [&](std::int32_t channel, std::int32_t) {
                ++pixelsOn.at(static_cast<std::size_t>(channel));
            });
    }
    std::vector<CellFault> faults(starts.size());
    for (std::size_t cell = 0; cell < starts.size(); ++cell) {
        const std::int32_t start = starts[cell];
        if (start == 0)
            continue;
        faults[cell].beyond = start < 1 || std::int64_t{start} + perPixel - 1 > channelCount;
        ForEachChannel(start, perPixel, [&](std::int32_t channel, std::int32_t) {
            faults[cell].overlaps |= pixelsOn.at(static_cast<std::size_t>(channel)) > 1;
        });
    }
    return faults;
}

// ---- Pixels one by one -------------------------------------------------------------------------

void FixtureLayout::AdvanceNextChannel()
{
    nextChannelValue = pixelMap.GetHighestStartChannel() == 0
                           ? 1
                           : nextChannelValue + pixelMap.GetChannelsPerPixel();
}

bool FixtureLayout::NextPixelFits() const
{
    return nextChannelValue >= 1 &&
           nextChannelValue <= channelCount + 1 - pixelMap.GetChannelsPerPixel();
}

bool FixtureLayout::NextPixelOverrides() const
{
    return constants.HasValueInRange(nextChannelValue, pixelMap.GetChannelsPerPixel()) ||
           !pixelMap.GetPixelsOverlapping(nextChannelValue).empty();
}

void FixtureLayout::MapPixel(std::int32_t cell)
{
    if (!NextPixelFits())
        return;
    SetPixel(cell, nextChannelValue);
    AdvanceNextChannel();
}

void FixtureLayout::SetPixel(std::int32_t cell, std::int32_t channel)
{
    UnmapPixel(cell);
    for (const std::int32_t other : pixelMap.GetPixelsOverlapping(channel))
        UnmapPixel(other);
    SetStart(cell, channel);
    constants.RemoveRange(channel, pixelMap.GetChannelsPerPixel());
}

void FixtureLayout::UnmapPixel(std::int32_t cell)
{
    if (!IsMapped(cell))
        return;
    SetStart(cell, 0);
    FillConstants();
}

void FixtureLayout::ResetMapping()
{
    pixelMap.Clear();
    FillConstants();
    nextChannelValue = 1;
}

// ---- Constants ---------------------------------------------------------------------------------

void FixtureLayout::SetConstant(std::int32_t channel, std::int32_t value)
{
    if (channel < 1 || channel > channelCount)
        return;
    for (std::int32_t cell = pixelMap.GetPixelForChannel(channel); cell >= 0;
         cell = pixelMap.GetPixelForChannel(channel))
        UnmapPixel(cell);
    constants.Set(channel, value);
}

void FixtureLayout::ResetConstants()
{
    constants.clear();
    FillConstants();
}

// ---- All pixels at once ------------------------------------------------------------------------

bool FixtureLayout::AllPixelsFitUniverse() const
{
    const auto cells = static_cast<std::int64_t>(pixelMap.GetChannels().size());
    return cells <= LEDFixture::MaxChannels / pixelMap.GetChannelsPerPixel();
}

std::int32_t FixtureLayout::LastAutoMapStart() const
{
    return channelCount + 1 - pixelMap.GetTotalChannels();
}

bool FixtureLayout::AutoMapOverrides(std::int32_t startChannel) const
{
    return constants.HasValueInRange(startChannel, pixelMap.GetTotalChannels());
}

void FixtureLayout::AutoMap(std::int32_t startChannel, const AutoMapWalk& walk)
{
    if (startChannel < 1 || startChannel > LastAutoMapStart())
        return;
    ResetMapping();
    std::int32_t channel = startChannel;
    for (const std::int32_t cell : walk.Cells(pixelMap.GetWidth(), pixelMap.GetHeight())) {
        SetPixel(cell, channel);
        channel += pixelMap.GetChannelsPerPixel();
    }
}

// ---- Size --------------------------------------------------------------------------------------

FixtureLayout::Loss FixtureLayout::LossOf(const FixtureSize& size) const
{
    const FixtureSize present = GetSize();
    if (size.width != present.width || size.height != present.height || size.type != present.type) {
        const bool empty =
            !HasPixels(pixelMap) && std::ranges::all_of(constants, [](const StaticChannel& entry) {
                return entry.value == StaticChannel::Unassigned;
            });
        return empty ? Loss::None : Loss::Everything;
    }
    const std::int32_t removed = channelCount - size.channelCount;
    if (removed <= 0)
        return Loss::None;
    const bool nothingThere = pixelMap.GetPixelsBeyondChannel(size.channelCount).empty() &&
                              !constants.HasValueInRange(size.channelCount + 1, removed);
    return nothingThere ? Loss::None : Loss::RemovedChannels;
}

void FixtureLayout::Resize(const FixtureSize& size)
{
    const FixtureSize present = GetSize();
    if (size.width != present.width || size.height != present.height || size.type != present.type) {
        pixelMap = PixelMap(size.width, size.height, size.type);
        ResetMapping();
    } else if (size.channelCount < channelCount) {
        for (const std::int32_t cell : pixelMap.GetPixelsBeyondChannel(size.channelCount))
            SetStart(cell, 0);
    }
    ChangeChannelCount(size.channelCount);
}

void FixtureLayout::ChangeChannelCount(std::int32_t count)
{
    constants.RemoveRange(count + 1, channelCount - count);
    channelCount = count;
    FillConstants();
}
