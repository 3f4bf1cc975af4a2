// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <system_error>

#include "Platform/UdpSockets.h"

/// The datagram socket of the control channel: it receives on port 6455 of the loopback address and
/// sends to port 6456. No call waits, so the owner empties it from a timer. Main thread only.
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
    /// Replaces a socket that no longer sends. The new one is not bound: nothing is received until
    /// the owner makes a new object.
    bool Reinitialize();
    /// Binds port 6455 of 127.0.0.1.
    bool Bind();

    /// One datagram to port 6456 of the remote address. False without a socket or when the system
    /// refuses it; GetLastError gives the reason.
    bool Send(std::span<const std::byte> bytes);
    /// The next datagram that is already there: its length, cut to `buffer`, and its sender. False
    /// when there is none.
    bool Receive(std::span<std::byte> buffer, std::size_t& length, Platform::Endpoint& sender);

    /// Takes the address; the port is always 6456.
    void SetRemoteAddress(const Platform::Endpoint& endpoint);

    [[nodiscard]] std::error_code GetLastError() const { return lastError_; }

    // The options that Initialize and Reinitialize set, for the present socket.
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
