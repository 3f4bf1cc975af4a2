// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "Platform/Neighbours.h"

/// Knows which destinations are present. A packet to a host that doesn't answer waits in the
/// system, is charged to our socket and is sent late if the host returns: two such hosts are enough
/// to starve all others. So the system is asked to look for a host before the first packet is sent
/// there, and a silent host gets nothing but that question until it answers. I/O thread only.
class ArtNetReach
{
public:
    /// Far more than a rig has. When there are more, all of them are looked for again.
    static constexpr std::size_t MaxDestinations = 4096;

    /// For sends by one adapter, or by any when the name is empty, from this address of ours, or
    /// from any when that is 0.
    ArtNetReach(const std::string& adapterName, std::uint32_t ownAddress);

    // Times are nanoseconds of the monotonic clock.

    /// Takes over what the system has found out since the last call.
    void Update(std::int64_t now);

    /// Makes these addresses known, and looks for those that need it.
    void LookFor(std::span<const std::uint32_t> addresses, std::int64_t now);

    enum class Verdict : std::uint8_t
    {
        Send,
        Wait, ///< the host was looked for a moment ago: an answer takes a millisecond or so
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
