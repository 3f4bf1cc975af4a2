// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "FixtureImport/Definition.h"
#include "FixtureImport/ImportedFixture.h"

namespace FixtureImport {

/// What a channel holds while the light is to be on and still.
struct SteadyValue
{
    std::int32_t value = StaticChannel::Unassigned; ///< 0 to 255, or Unassigned to leave it free
    std::int32_t fine = 0;                          ///< for the second and any further byte
    ChannelReason reason = ChannelReason::Free;
    const ChannelRange* range = nullptr; ///< of the definition, that the value is in; may be null
};

/// From the channel's own ranges and its default, whatever else the fixture has.
[[nodiscard]] SteadyValue SteadyValueOf(const ChannelDefinition& channel);

/// The range that holds a value, null for a gap.
[[nodiscard]] const ChannelRange* RangeAt(const ChannelDefinition& channel, std::int32_t value);

} // namespace FixtureImport
