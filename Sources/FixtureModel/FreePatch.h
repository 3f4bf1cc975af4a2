// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

/// A place on the wire: where an element starts.
struct PatchAddress
{
    // Of Art-Net. Wider than an address, since a document may hold any number.
    static constexpr std::int64_t LastChannel = 512;
    static constexpr std::int64_t UniversesInSubnet = 16;
    static constexpr std::int64_t SubnetCount = 16;

    /// The greatest channel at which an element of so many channels starts and still ends in its
    /// universe; 1 for one that is too long for any.
    [[nodiscard]] static constexpr std::int32_t LastStart(std::int32_t channelCount)
    {
        return static_cast<std::int32_t>(
            std::clamp<std::int64_t>(LastChannel + 1 - channelCount, 1, LastChannel));
    }

    std::int32_t subnet = 0;
    std::int32_t universe = 0;
    std::int32_t channel = 1; ///< 1-based

    bool operator==(const PatchAddress&) const = default;
};

/// Where an element starts and how many channels it takes.
struct PatchedSpan
{
    PatchAddress start;
    std::int32_t channelCount = 0;
};

/// The place for a new element of `channelCount` channels, behind everything in `patched`; in the
/// next universe where 512 channels don't suffice. Universes in `taken`, as sub-net x 16 +
/// universe, are passed over, and the channel stays as it is then.
[[nodiscard]] PatchAddress NextFreePatch(std::span<const PatchedSpan> patched,
                                         std::int32_t channelCount,
                                         std::span<const std::int32_t> taken);
