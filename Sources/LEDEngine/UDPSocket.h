// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <system_error>

#include "Platform/UdpSockets.h"

/// The datagram socket of the control channel: it hears on port 6455 and sends to port 6456. It
/// never waits, so its owner drains it from a timer. Main thread only.
class UDPSocket
{
public:
    static constexpr std::uint16_t LocalPort = 6455;
    static constexpr std::uint16_t RemotePort = 6456;

    UDPSocket() = default;
    ~UDPSocket();
    UDPSocket(const UDPSocket&) = delete;
    UDPSocket& operator=(const UDPSocket&) = delete;

    /// Opens a socket that sends to this address (first octet in the top byte).
    bool Initialize(std::uint32_t address);
    /// A new socket in place of one that no longer sends. It is not bound: what comes to our port
    /// no longer arrives, until the owner makes a new object.
    bool Reinitialize();
    /// Takes port 6455 on all interfaces.
    bool Bind();

    /// One datagram to port 6456 of the remote address. False without a socket or when the system
    /// refused it; why stands in GetLastError.
    bool Send(std::span<const std::byte> bytes);
    /// The next datagram that is already there: its length, cut to `buffer`, and its sender. False
    /// when there is none.
    bool Receive(std::span<std::byte> buffer, std::size_t& length, Platform::Endpoint& sender);

    /// Only the address counts: the port is always 6456.
    void SetRemoteAddress(const Platform::Endpoint& endpoint);

    [[nodiscard]] bool IsOpen() const { return open; }
    [[nodiscard]] std::error_code GetLastError() const { return lastError_; }

    bool SetNonBlocking();
    bool SetBroadcast();
    bool SetReuseAddress();
    bool SetSendBufferSize();
    bool SetReceiveBufferSize();

private:
    bool Configure();
    [[nodiscard]] bool HasSocket() const { return socket > 0; }

    Platform::Endpoint remoteAddress;
    Platform::Endpoint localAddress; ///< the remote address as Initialize was given it
    std::int32_t socket = 0;         ///< 0 or less is none
    bool open = false;
    std::error_code lastError_;
};
