// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// One IPv4 address of a network adapter. Numbers have the first octet in the top byte.
struct NetworkInterface
{
    std::string ip; ///< dotted address
    std::uint32_t ipValue = 0;
    std::string broadcast; ///< the address with all host bits set, dotted
    std::uint32_t broadcastValue = 0;
    bool up = false;           ///< switched on, with a carrier
    std::string adapter;       ///< the adapter's name, such as "eth0"
    unsigned adapterIndex = 0; ///< another one after the adapter was removed and came back

    bool operator==(const NetworkInterface&) const = default;
};

namespace Platform {

/// One record for each IPv4 address of each adapter, loopback left out. Nothing when the system
/// does not answer, which says nothing about the adapters.
[[nodiscard]] std::optional<std::vector<NetworkInterface>> GetNetworkInterfaces();

/// Our address towards a peer: the one that the system would send from, by whatever adapter. 0 when
/// it has no way there. A broadcast address is a peer, too.
[[nodiscard]] std::uint32_t AddressTowards(std::uint32_t peer);

} // namespace Platform
