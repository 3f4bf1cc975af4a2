// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "Platform/Neighbours.h"

/// Knows which destinations are there. What is sent to a host that doesn't answer waits in the
/// system, is charged to our socket and leaves late if the host returns: two such hosts are enough
/// to starve all others. So the system is asked to look for a host before the first packet goes
/// there, and a silent one gets nothing but that question until it answers. I/O thread only.
class ArtNetReach
{
public:
    /// Far more than a rig has; what is known beyond it is learnt anew.
    static constexpr std::size_t MaxDestinations = 4096;

    /// For sends by one adapter, or by any when the name is empty.
    explicit ArtNetReach(const std::string& adapterName);

    // Times are nanoseconds of the monotonic clock.

    /// Takes in what the system has found out since the last call.
    void Update(std::int64_t now);

    /// Makes these addresses known, and looks for those that need it.
    void LookFor(std::span<const std::uint32_t> addresses, std::int64_t now);

    enum class Verdict : std::uint8_t
    {
        Send,
        Wait, ///< it was looked for a moment ago: an answer takes a millisecond or so
        Drop
    };
    [[nodiscard]] Verdict Judge(std::uint32_t address, std::int64_t now) const;

private:
    enum class State : std::uint8_t
    {
        New,
        Direct, ///< no host on our cables: a broadcast, ourselves, behind a router
        Answers,
        Asked,
        Silent
    };
    struct Destination
    {
        State state = State::New;
        std::int64_t asked = 0;
    };

    void Apply(const std::vector<Platform::Neighbour>& changes, std::int64_t now);
    void Ask(std::uint32_t address, std::int64_t now);

    Platform::NeighbourTable neighbours_;
    std::unordered_map<std::uint32_t, Destination> destinations_;
    std::vector<std::uint32_t> doubtful_; ///< of the present LookFor
};
