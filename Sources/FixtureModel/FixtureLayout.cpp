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
    , channelCount(std::clamp(fixture.GetChannelCount(), 0, LEDFixture::MaxChannels))
{
    CompleteConstants();
}

FixtureLayout::FixtureLayout(const FixtureSize& size)
    : pixelMap(size.width, size.height, size.type)
    , channelCount(size.channelCount)
{
    CompleteConstants();
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

/// No entry under a pixel, and one for every other channel. A walk through all cells: it follows
/// the last change of an operation, not each one.
void FixtureLayout::CompleteConstants()
{
    auto taken = pixelMap.GetCoveredChannels();
    std::erase_if(constants, [&](const StaticChannel& entry) {
        return taken.test(static_cast<std::size_t>(entry.channel));
    });
    for (const StaticChannel& entry : constants)
        taken.set(static_cast<std::size_t>(entry.channel));
    for (std::int32_t channel = 1; channel <= channelCount; ++channel) {
        if (!taken.test(static_cast<std::size_t>(channel)))
            constants.push_back({channel, StaticChannel::Unassigned});
    }
}

std::vector<FixtureLayout::ChannelUse> FixtureLayout::GetChannelUses() const
{
    std::vector<ChannelUse> uses(static_cast<std::size_t>(channelCount));
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
    nextChannelValue = pixelMap.GetHighestStartChannel() <= 0
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
    for (const std::int32_t other : pixelMap.GetPixelsOverlapping(nextChannelValue))
        SetStart(other, 0);
    SetStart(cell, nextChannelValue);
    CompleteConstants();
    AdvanceNextChannel();
}

void FixtureLayout::UnmapPixel(std::int32_t cell)
{
    if (!IsMapped(cell))
        return;
    SetStart(cell, 0);
    CompleteConstants();
}

void FixtureLayout::ResetMapping()
{
    pixelMap.Clear();
    CompleteConstants();
    nextChannelValue = 1;
}

// ---- Constants ---------------------------------------------------------------------------------

void FixtureLayout::SetConstant(std::int32_t channel, std::int32_t value)
{
    if (channel < 1 || channel > channelCount)
        return;
    // Pixels of a file may overlap: all that cover the channel go, in one walk.
    const std::int32_t perPixel = pixelMap.GetChannelsPerPixel();
    const auto& starts = pixelMap.GetChannels();
    for (std::size_t cell = 0; cell < starts.size(); ++cell) {
        if (starts[cell] <= channel && channel < std::int64_t{starts[cell]} + perPixel)
            SetStart(static_cast<std::int32_t>(cell), 0);
    }
    CompleteConstants();
    constants.Set(channel, value);
}

void FixtureLayout::ResetConstants()
{
    constants.clear();
    CompleteConstants();
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
        SetStart(cell, channel);
        channel += pixelMap.GetChannelsPerPixel();
    }
    CompleteConstants();
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
    // Cells without a pixel are among those beyond a count below the channels of one pixel.
    const bool nothingThere =
        std::ranges::none_of(pixelMap.GetPixelsBeyondChannel(size.channelCount),
                             [this](std::int32_t cell) { return IsMapped(cell); }) &&
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
    // Channels that go lose their entries, and channels that come are free: a file may have had a
    // constant behind the last channel.
    const std::int32_t kept = std::min(count, channelCount);
    constants.RemoveRange(kept + 1, std::max(count, channelCount) - kept);
    channelCount = count;
    CompleteConstants();
}
