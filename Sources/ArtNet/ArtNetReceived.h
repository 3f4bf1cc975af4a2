// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// A universe that someone sends to us now.
struct ArtNetReceived
{
    std::uint16_t portAddress = 0;
    std::uint32_t sender = 0;  ///< the one whose channels count, first octet in the top byte
    std::uint64_t packets = 0; ///< taken of it since the universe is kept; only grows

    bool operator==(const ArtNetReceived&) const = default;
};
