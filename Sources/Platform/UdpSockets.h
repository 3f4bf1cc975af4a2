// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <system_error>

namespace Platform {

/// An IPv4 address, first octet in the top byte, and a port, as people write it.
struct Endpoint
{
    std::uint32_t address = 0;
    std::uint16_t port = 0;

    bool operator==(const Endpoint&) const = default;
};

// A plain IPv4 datagram socket is a number above 0. The caller closes it. Each function says
// whether the system accepted the call, and logs nothing.

/// 0 when the system gives no socket.
[[nodiscard]] int OpenUdp() noexcept;
bool CloseUdp(int socket) noexcept;

bool SetUdpNonBlocking(int socket) noexcept;
bool SetUdpBroadcast(int socket) noexcept;
bool SetUdpReuseAddress(int socket) noexcept;
bool SetUdpSendBuffer(int socket, int bytes) noexcept;
bool SetUdpReceiveBuffer(int socket, int bytes) noexcept;

/// Address 0 is every adapter.
bool BindUdp(int socket, const Endpoint& endpoint) noexcept;

/// Sends one datagram; no error when the system took it.
std::error_code SendUdp(int socket, const Endpoint& to, std::span<const std::byte> bytes) noexcept;

/// The size of the next datagram that holds anything, cut to `buffer`, and where it came from;
/// below 1 when there is none.
std::ptrdiff_t ReceiveUdp(int socket, std::span<std::byte> buffer, Endpoint& from) noexcept;

/// Whether the same send may succeed a moment later: the socket would block or is still busy.
[[nodiscard]] bool IsRecoverable(const std::error_code& error) noexcept;

} // namespace Platform
