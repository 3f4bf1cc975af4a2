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
    bool up = false; ///< switched on, with a carrier

    bool operator==(const NetworkInterface&) const = default;
};

namespace Platform {

/// One record for each IPv4 address of each adapter, loopback left out. Nothing when the system
/// does not answer, which says nothing about the adapters.
[[nodiscard]] std::optional<std::vector<NetworkInterface>> GetNetworkInterfaces();

/// The name of the adapter ("eth0") that has this address now, or else of one whose network it lies
/// in: when an adapter's address changes, its network usually stays. Empty when there is neither.
[[nodiscard]] std::string AdapterNameFor(std::uint32_t address);

/// The addresses that the adapter of this name has now; those of all adapters, loopback left out,
/// when the name is empty.
[[nodiscard]] std::vector<std::uint32_t> AddressesOf(const std::string& adapter);

/// Our address towards a peer: the one that the system would send from, by this adapter or by any
/// when the name is empty. 0 when it has no way there. A broadcast address is a peer, too.
[[nodiscard]] std::uint32_t AddressTowards(std::uint32_t peer, const std::string& adapter);

/// The system's number for the adapter of this name now, 0 when there is none. An adapter that was
/// removed and comes back has a new one.
[[nodiscard]] unsigned AdapterIndexOf(const std::string& name);

} // namespace Platform
