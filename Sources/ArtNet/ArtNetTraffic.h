// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <system_error>

/// What has passed the port that a client works on, since it was opened: counts that only grow, but
/// begin again with another port. All clients of a port share them.
struct ArtNetTraffic
{
    std::uint64_t taken = 0;  ///< ArtDmx packets of kept universes, of the sender that counts
    std::uint64_t sent = 0;   ///< packets of frames that the system took from us
    std::uint64_t failed = 0; ///< packets that it refused
    std::uint64_t late = 0;   ///< packets that could not leave in time and were dropped

    std::int32_t universesIn = 0; ///< how many of the client's universes someone sends now
    /// The last failed send, which stays after later successes, and when it was in nanoseconds of
    /// the monotonic clock; 0 while there was none.
    std::error_code sendError;
    std::int64_t sendErrorTime = 0;
    std::error_code portError; ///< why we don't have the Art-Net port; none while we have it
};
