// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Two senders of one received universe. Addresses have the first octet in the top byte.
struct ArtNetSourceConflict
{
    std::uint16_t portAddress = 0;
    std::uint32_t taken = 0;   ///< the sender whose channels count
    std::uint32_t ignored = 0; ///< the other; of several the one that was heard last

    bool operator==(const ArtNetSourceConflict&) const = default;
};
