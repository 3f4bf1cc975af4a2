// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "FixtureModel/ChannelUse.h"
#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchTarget.h"

class MappedDeviceModel;

/// The part of a universe that one element is sent on.
struct PatchSpan
{
    int row = 0;              ///< of the document, as it was when the table was made
    std::int64_t element = 0; ///< its number in the document
    SentChannels channels;
    bool merged = false; ///< laid on top of received DMX

    bool operator==(const PatchSpan&) const = default;
};

/// One universe that elements are sent on, as a destination receives it.
struct PatchUniverse
{
    PatchTarget target;
    std::vector<PatchSpan> spans; ///< in the order in which they are written: the last one wins

    bool operator==(const PatchUniverse&) const = default;
};

/// What the document sends where: the engine's view of the patch, for whoever shows, checks or
/// prints it. By Port-Address, and of one Port-Address the chosen nodes before "Auto". An element
/// without an Art-Net address, or without a channel that is sent, is in none.
using PatchTable = std::vector<PatchUniverse>;

[[nodiscard]] PatchTable PatchTableOf(const MappedDeviceModel& document);

/// Who decides what a channel of a universe has.
struct ChannelOwner
{
    std::int32_t span = -1;          ///< index in the universe's spans, -1 for a channel of nobody
    std::int32_t fixtureChannel = 0; ///< of the span's element, counted from 1
    ChannelUse use;
    bool shared = false; ///< others write it, too, and lose

    bool operator==(const ChannelOwner&) const = default;
};
using ChannelOwners = std::array<ChannelOwner, 512>;

/// For channels 1 to 512 of a universe of this document's table. Free channels of an element that
/// is merged are of nobody where nothing else writes them: received DMX stays there.
[[nodiscard]] ChannelOwners OwnersOf(const PatchUniverse& universe,
                                     const MappedDeviceModel& document);
