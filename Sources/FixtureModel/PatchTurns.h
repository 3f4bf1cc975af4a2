// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "FixtureModel/FreePatch.h"

/// How elements are patched one behind the other.
struct PatchRules
{
    static constexpr std::int32_t LargestGap = 511;

    PatchAddress start;
    /// Channels left free between two elements of a universe, 0 to LargestGap.
    std::int32_t gap = 0;
    /// An element that would reach beyond 512 begins the next universe. Otherwise addresses run on
    /// over the end of a universe, as a controller counts that uses all 512 channels: the element
    /// on the end loses what reaches beyond, since an element is sent in one universe, and the
    /// next one starts where the lost channels would end in the universe that follows.
    bool neverSplit = true;
    bool lineBeginsUniverse = false; ///< a row or column begins at channel 1 of a universe

    bool operator==(const PatchRules&) const = default;
};

/// An element that is patched when its turn comes.
struct PatchTurn
{
    std::int32_t channelCount = 0; ///< less than 0 counts as 0
    bool beginsLine = false;       ///< it is the first of a row or column
};

/// Where the elements start, in their order; nothing for those behind the last universe, 15/15. A
/// start or a gap out of its range is brought to the nearest that is in it. The start counts for
/// the first element, also when that begins a line.
[[nodiscard]] std::vector<std::optional<PatchAddress>>
AddressesInTurn(std::span<const PatchTurn> turns, const PatchRules& rules);
