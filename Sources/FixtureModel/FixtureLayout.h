// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "FixtureModel/AutoMapWalk.h"
#include "FixtureModel/LEDFixture.h"
#include "FixtureModel/PixelMap.h"
#include "FixtureModel/StaticChannelList.h"

/// What a change of a fixture's settings is about.
struct FixtureSize
{
    std::int32_t width = 1;  ///< columns, at least 1
    std::int32_t height = 1; ///< rows, at least 1
    PixelMapType type = PixelMapType::RGB;
    std::int32_t channelCount = 0; ///< 0 to LEDFixture::MaxChannels

    bool operator==(const FixtureSize&) const = default;
};

/// The pixels and constants of one fixture while they are laid on its channels. After every
/// operation each channel from 1 to the channel count is covered by a pixel or has one entry among
/// the constants, with a value or unassigned; a channel under a pixel has none. Pixels of a file
/// may overlap or lie beyond the channel count: they are kept until the operator moves them.
///
/// It asks no questions: the caller puts those that the predicates suggest. Cells are indexes row
/// by row from the top left, and must be inside the map.
class FixtureLayout
{
public:
    /// What one channel carries: a component of a pixel, a constant, or nothing.
    struct ChannelUse
    {
        std::int32_t pixel = -1;                        ///< the cell, -1 for none
        std::int32_t component = 0;                     ///< of the pixel, from 0
        std::int32_t value = StaticChannel::Unassigned; ///< of the constant

        bool operator==(const ChannelUse&) const = default;
    };

    /// What is wrong with the pixel of a cell.
    struct CellFault
    {
        bool overlaps = false; ///< shares a channel of a universe with another pixel
        bool beyond = false;   ///< has a channel that the fixture hasn't

        bool operator==(const CellFault&) const = default;
    };

    /// What a new size would lose.
    enum class Loss
    {
        None,
        Everything,     ///< all pixels, as the grid or its colours change
        RemovedChannels ///< what lies on the channels that go
    };

    /// A fixture whose automatic count is above the channels of a universe gets these.
    explicit FixtureLayout(const LEDFixture& fixture);
    /// A layout without pixels and constants.
    explicit FixtureLayout(const FixtureSize& size);

    [[nodiscard]] const PixelMap& GetPixelMap() const { return pixelMap; }
    [[nodiscard]] const StaticChannelList& GetConstants() const { return constants; }
    [[nodiscard]] std::int32_t GetChannelCount() const { return channelCount; }
    [[nodiscard]] FixtureSize GetSize() const;
    /// By channel, from channel 1 to the channel count.
    [[nodiscard]] std::vector<ChannelUse> GetChannelUses() const;
    /// By cell.
    [[nodiscard]] std::vector<CellFault> GetCellFaults() const;

    // ---- Pixels one by one ---------------------------------------------------------------------

    /// The channel on which MapPixel puts a pixel. It can be behind the last channel.
    [[nodiscard]] std::int32_t GetNextChannel() const { return nextChannelValue; }
    void SetNextChannel(std::int32_t channel) { nextChannelValue = channel; }
    /// To the channel behind a pixel that starts on the next channel; to 1 while there is no pixel.
    void AdvanceNextChannel();

    [[nodiscard]] bool IsMapped(std::int32_t cell) const { return Start(cell) != 0; }
    /// Whether a pixel on the next channel ends within the channel count.
    [[nodiscard]] bool NextPixelFits() const;
    /// Whether it would take channels of a pixel or a constant.
    [[nodiscard]] bool NextPixelOverrides() const;
    /// Puts the cell's pixel on the next channel, with what was there taken off, and advances.
    /// Nothing changes when it doesn't fit.
    void MapPixel(std::int32_t cell);
    void UnmapPixel(std::int32_t cell);
    /// Takes off all pixels, and starts with channel 1 again.
    void ResetMapping();

    // ---- Constants -----------------------------------------------------------------------------

    /// 0 to 255, or StaticChannel::Unassigned. A pixel on the channel is taken off. A channel that
    /// the fixture hasn't changes nothing.
    void SetConstant(std::int32_t channel, std::int32_t value);
    void ResetConstants();

    // ---- All pixels at once --------------------------------------------------------------------

    /// Whether one universe can hold the pixels of all cells.
    [[nodiscard]] bool AllPixelsFitUniverse() const;
    /// The last channel from which the pixels of all cells end within the channel count; below 1
    /// when there is none.
    [[nodiscard]] std::int32_t LastAutoMapStart() const;
    /// Whether auto-mapping from this channel would take channels of constants.
    [[nodiscard]] bool AutoMapOverrides(std::int32_t startChannel) const;
    /// Lays all cells in the order of the walk, one behind the other, in place of what was mapped.
    /// Nothing changes when they don't fit.
    void AutoMap(std::int32_t startChannel, const AutoMapWalk& walk);

    // ---- Size ----------------------------------------------------------------------------------

    [[nodiscard]] Loss LossOf(const FixtureSize& size) const;
    void Resize(const FixtureSize& size);

private:
    [[nodiscard]] std::int32_t Start(std::int32_t cell) const;
    void SetStart(std::int32_t cell, std::int32_t channel);
    void CompleteConstants();
    void ChangeChannelCount(std::int32_t count);

    PixelMap pixelMap;
    StaticChannelList constants;
    std::int32_t channelCount;
    std::int32_t nextChannelValue = 1;
};
