// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "FixtureModel/FreePatch.h"

/// Where the next of several elements starts that are patched one after the other: `taken` channels
/// behind the start of the one before. When this is channel 512 - `channelCount` or above, which is
/// so for the last one that would just fit, it starts at channel 1 of the next universe. The last
/// universe is followed by the first one of the next sub-net, the last sub-net by the first.
[[nodiscard]] PatchAddress NextInRun(const PatchAddress& before, std::int32_t taken,
                                     std::int32_t channelCount);

/// The same for elements of equal fixtures.
[[nodiscard]] inline PatchAddress NextInRun(const PatchAddress& before, std::int32_t channelCount)
{
    return NextInRun(before, channelCount, channelCount);
}
