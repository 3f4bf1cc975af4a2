// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "FixtureModel/PixelMap.h"

/// One channel of a fixture that no pixel drives.
struct StaticChannel
{
    static constexpr std::int32_t Unassigned = -1;
    /// A fixture has the channels of one universe at most.
    static constexpr std::int32_t LastChannel = 512;

    std::int32_t channel = 0;        ///< 1 to LastChannel
    std::int32_t value = Unassigned; ///< 0 to 255, or Unassigned for a free channel

    bool operator==(const StaticChannel&) const = default;
};

/// The constants and the free channels of a fixture in the order of their adding, one entry a
/// channel at most. A range is a start channel and a count.
class StaticChannelList : public std::vector<StaticChannel>
{
public:
    using std::vector<StaticChannel>::vector;

    [[nodiscard]] const StaticChannel* Find(std::int32_t channel) const;
    void Set(std::int32_t channel, std::int32_t value);
    void SetUnassigned(std::int32_t start, std::int32_t count);
    void RemoveRange(std::int32_t start, std::int32_t count);
    [[nodiscard]] bool HasValueInRange(std::int32_t start, std::int32_t count) const;
    /// 0 for an empty list.
    [[nodiscard]] std::int32_t GetHighestChannel() const;

    /// The <StaticChannel> children of an <LEDFixture> element; nothing, after one line in the log,
    /// when one is wrong, repeated or under a pixel.
    [[nodiscard]] static std::optional<StaticChannelList>
    FromXml(const tinyxml2::XMLElement& fixture, const PixelMap& pixelMap);
};
