// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

// The decision between our own port and a host, without a socket: which state follows an event, and
// what is to be done. ArtNetOutput does it.

/// How universes are sent at the moment, or what the output waits for. The numbers and texts appear
/// in logs.
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
    Initialize = 0,       ///< the choice of network or the merging settings were applied
    Tick = 1,             ///< the engine's timer, every 25 ms
    ServerDetected = 2,   ///< a host answered
    ServerStopped = 3,    ///< the host has been silent for too long
    SocketRebound = 4,    ///< the host took the Art-Net port
    ClientRegistered = 5, ///< the host accepted our registration
    DevicesSent = 6       ///< the host asked for our nodes and got them
};
inline constexpr std::size_t OutputEventCount = 7;

enum class OutputAction : std::uint8_t
{
    None,
    CreateLocalClients,
    DestroyLocalClients,
    SendRebind,
    RegisterWithHost
};

/// All that decides what an event leads to.
struct OutputSituation
{
    OutputState state = OutputState::Disabled;
    bool networkChosen = false;
    std::uint32_t retryCounter = 0; ///< ticks since the present wait began
};

/// What an event leads to. An event that the state ignores leaves everything as it is.
struct OutputTransition
{
    OutputState next = OutputState::Disabled;
    /// Whether `next` is entered, with the exit and entry steps. A state that is entered from
    /// itself begins its wait again.
    bool enters = false;
    OutputAction action = OutputAction::None; ///< of an event that enters no state
    std::uint32_t retryCounter = 0;
    const char* event = nullptr;  ///< the event's name for the log, null when it is not logged
    const char* reason = nullptr; ///< a further line for the log, or null
};

/// The table of states and events. An unknown state or event is ignored.
[[nodiscard]] OutputTransition TransitionOf(const OutputSituation& now, OutputEvent event);

/// What entering or leaving a state does, in this order.
struct OutputStep
{
    bool restartsWait = false;
    const char* text = nullptr; ///< a line for the log, or null
    OutputAction action = OutputAction::None;
};
[[nodiscard]] OutputStep EntryOf(OutputState state);
[[nodiscard]] OutputStep ExitOf(OutputState state);
