// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// What the output asks of the channel to a host program. Each call is one attempt and never waits
/// for an answer; false when the message could not be sent. Answers arrive in a later tick.
class HostLink
{
public:
    /// Asks the host to take the Art-Net port.
    virtual bool SendRebind() = 0;
    /// Registers this program with the host. Addresses are dotted text; `universeCount` universes
    /// from `firstPortAddress` on are those that the host is to receive for us.
    virtual bool RegisterClient(std::string_view interfaceAddress,
                                std::string_view broadcastAddress, std::string_view receiveAddress,
                                std::uint16_t firstPortAddress, std::uint16_t universeCount,
                                std::string_view name) = 0;
    /// Asks for the nodes that the host knows.
    virtual bool RequestDevices() = 0;
    /// Asks for the DMX that the host received, from this Port-Address on.
    virtual bool RequestDMXInput(std::uint16_t firstPortAddress) = 0;
    /// Hands one universe of at most 512 channels to the host, which sends it to `address`.
    virtual bool SendDmx(std::uint16_t portAddress, std::string_view address,
                         std::span<const std::uint8_t> channels) = 0;

protected:
    ~HostLink() = default;
};
