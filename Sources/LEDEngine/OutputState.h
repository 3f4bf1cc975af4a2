// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

/// How universes leave at the moment, or what the output waits for. The numbers and texts stand in
/// logs.
enum class OutputState : std::uint32_t
{
    Disabled = 0,
    UsingLocalSocket = 1,
    DetermineSocketType = 2,
    RebindRemoteSocket = 3,
    RegisteringToRemoteSocket = 4,
    SynchronizingRemoteDeviceList = 5,
    UsingRemoteSocket = 6
};
inline constexpr std::size_t OutputStateCount = 7;

/// "Using local socket state" and the like; another value is logged and gives "Unknown ArtNetOutput
/// state".
[[nodiscard]] const char* OutputStateText(OutputState state);

enum class OutputEvent : std::uint32_t
{
    Initialize = 0,       ///< the network or the merger's settings were chosen anew
    Tick = 1,             ///< the engine's timer, every 25 ms
    ServerDetected = 2,   ///< a host answered
    ServerStopped = 3,    ///< the host has been silent for too long
    SocketRebound = 4,    ///< the host took the Art-Net port
    ClientRegistered = 5, ///< the host took our registration
    DevicesSent = 6       ///< the host asked for our nodes and has them
};
inline constexpr std::size_t OutputEventCount = 7;
