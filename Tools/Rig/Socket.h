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

/// Four dotted octets; any other text gives nothing.
[[nodiscard]] std::optional<Address> ParseAddress(const std::string& text);
[[nodiscard]] std::string ToText(const Address& address);

/// A received datagram, valid until the next Receive.
struct Datagram
{
    std::span<const std::uint8_t> bytes;
    Address source{};
    std::uint16_t sourcePort = 0;
    Address destination{};  ///< as the sender wrote it
    bool broadcast = false; ///< the destination is none of this host's own addresses
};

/// One UDP socket on 0.0.0.0 that hears unicast and broadcast of all addresses of its host and can
/// send from each of them, so that one rig can be many nodes.
class Socket
{
public:
    Socket() = default;
    ~Socket();
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    /// Writes the reason to standard error when it fails.
    [[nodiscard]] bool Open(std::uint16_t port);
    /// Waits for a datagram, no longer than this (less when a signal comes).
    void Wait(std::chrono::milliseconds longest) const;
    /// The next datagram that has come in, or nothing.
    [[nodiscard]] std::optional<Datagram> Receive();
    /// With `from` 0.0.0.0 the system chooses the address. False when the system refuses the send.
    bool Send(std::span<const std::uint8_t> bytes, const Address& from, const Address& to,
              std::uint16_t port) const;

private:
    int handle_ = -1;
    std::array<std::uint8_t, 2048> buffer_{};
};

} // namespace Rig
