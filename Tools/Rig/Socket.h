// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace Rig {

using Address = std::array<std::uint8_t, 4>;

[[nodiscard]] std::optional<Address> ParseAddress(const std::string& text);
[[nodiscard]] std::string ToText(const Address& address);

/// A datagram as it came: valid until the next Receive.
struct Datagram
{
    std::span<const std::uint8_t> bytes;
    Address source{};
    std::uint16_t sourcePort = 0;
    Address destination{};  ///< as the sender wrote it
    bool broadcast = false; ///< the destination is none of this host's own addresses
};

/// One UDP socket on 0.0.0.0 that hears unicast and broadcast of all addresses of its host, and
/// sends from whichever of them it is told to: so that one rig can be many nodes.
class Socket
{
public:
    Socket() = default;
    ~Socket();
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    /// Says on standard error why when it fails.
    [[nodiscard]] bool Open(std::uint16_t port);
    /// Waits for a datagram no longer than told (less when a signal comes).
    void Wait(std::chrono::milliseconds longest) const;
    /// The next datagram that is already there, or nothing.
    [[nodiscard]] std::optional<Datagram> Receive();
    /// From 0.0.0.0 means: let the system choose. False when the system refused it.
    bool Send(std::span<const std::uint8_t> bytes, const Address& from, const Address& to,
              std::uint16_t port) const;

private:
    int handle_ = -1;
    std::array<std::uint8_t, 2048> buffer_{};
};

} // namespace Rig
