// SPDX-License-Identifier: MIT
#include "LEDEngine/OutputState.h"

#include <array>

#include "Log/Log.h"

namespace {

/// The 12th tick of a wait ends it: about 300 ms at 25 ms a tick.
constexpr std::uint32_t TicksBeforeTimeout = 11;

/// What one event leads to in one state.
struct Cell
{
    enum class Kind : std::uint8_t
    {
        Ignore,
        Stay,
        CreateClients,
        Enter,
        Wait ///< counts the tick, and enters when the wait is over
    };
    Kind kind = Kind::Ignore;
    OutputState next = OutputState::Disabled;
    const char* reason = nullptr;
};

constexpr Cell Enter(OutputState next, const char* reason = nullptr)
{
    return {Cell::Kind::Enter, next, reason};
}

constexpr Cell Wait(OutputState next, const char* reason)
{
    return {Cell::Kind::Wait, next, reason};
}

using enum OutputState;

constexpr Cell Ignore{};
constexpr Cell Stay{Cell::Kind::Stay};
constexpr Cell CreateClients{Cell::Kind::CreateClients};
constexpr Cell Local = Enter(UsingLocalSocket);
constexpr Cell Register = Enter(RegisteringToRemoteSocket);
constexpr Cell WaitForServer = Wait(UsingLocalSocket, "Server was not detected");
constexpr Cell WaitForRebind = Wait(RebindRemoteSocket, "Rebind socked did not succed, retrying");
constexpr Cell WaitForHost =
    Wait(RegisteringToRemoteSocket, "Registering remote client did not succed, retrying");
constexpr Cell Rebound = Enter(RegisteringToRemoteSocket, "Dmx socket rebound");
constexpr Cell Registered = Enter(SynchronizingRemoteDeviceList, "Remote client registered");
constexpr Cell DevicesSent = Enter(UsingRemoteSocket, "Sent device list to server");

// A row for each state, in the order of the numbers, and a column for each event: Initialize with a
// network, Tick, ServerDetected, ServerStopped, SocketRebound, ClientRegistered, DevicesSent. From
// DetermineSocketType on, ServerStopped leads to our own port however far the exchange had come.
using Row = std::array<Cell, OutputEventCount>;
constexpr std::array<Row, OutputStateCount> Table = {{
    {Enter(DetermineSocketType), Ignore, Ignore, Ignore, Ignore, Ignore, Ignore},
    {CreateClients, Ignore, Enter(RebindRemoteSocket), Ignore, Ignore, Ignore, Ignore},
    {Stay, WaitForServer, Register, Local, Ignore, Ignore, Ignore},
    {Stay, WaitForRebind, Ignore, Local, Rebound, Ignore, Ignore},
    {Register, WaitForHost, Ignore, Local, Ignore, Registered, Ignore},
    {Register, WaitForHost, Ignore, Local, Ignore, Ignore, DevicesSent},
    {Register, Ignore, Ignore, Local, Ignore, Ignore, Ignore},
}};

constexpr std::size_t IndexOf(auto value)
{
    return static_cast<std::size_t>(value);
}

Cell CellOf(const OutputSituation& now, OutputEvent event)
{
    if (IndexOf(now.state) >= OutputStateCount || IndexOf(event) >= OutputEventCount)
        return Ignore;
    if (event == OutputEvent::Initialize && !now.networkChosen)
        return now.state == Disabled ? Stay : Enter(Disabled);
    return Table[IndexOf(now.state)][IndexOf(event)];
}

/// Ticks and acknowledgements have no name: what they lead to is logged.
const char* NameOf(OutputEvent event)
{
    switch (event) {
    case OutputEvent::Initialize:
        return "Initialize";
    case OutputEvent::ServerDetected:
        return "Server detected";
    case OutputEvent::ServerStopped:
        return "Server stopped";
    default:
        return nullptr;
    }
}

} // namespace

const char* OutputStateText(OutputState state)
{
    switch (state) {
    case Disabled:
        return "Disabled state";
    case UsingLocalSocket:
        return "Using local socket state";
    case DetermineSocketType:
        return "Determine socket type state";
    case RebindRemoteSocket:
        return "Rebind remote socket state";
    case RegisteringToRemoteSocket:
        return "Registering to remote socket state";
    case SynchronizingRemoteDeviceList:
        return "Synchronizing remote device list state";
    case UsingRemoteSocket:
        return "Using remote socket state";
    }
    ZEN_LOG_ERROR("Unknown ArtNetOutput state");
    return "Unknown ArtNetOutput state";
}

OutputTransition TransitionOf(const OutputSituation& now, OutputEvent event)
{
    OutputTransition transition{.next = now.state, .retryCounter = now.retryCounter};
    const Cell cell = CellOf(now, event);
    if (cell.kind == Cell::Kind::Ignore)
        return transition;
    transition.event = NameOf(event);
    if (cell.kind == Cell::Kind::CreateClients)
        transition.action = OutputAction::CreateLocalClients;
    if (cell.kind == Cell::Kind::Wait)
        ++transition.retryCounter;
    transition.enters = cell.kind == Cell::Kind::Enter ||
                        (cell.kind == Cell::Kind::Wait && now.retryCounter >= TicksBeforeTimeout);
    if (transition.enters) {
        transition.next = cell.next;
        transition.reason = cell.reason;
    }
    return transition;
}

OutputStep EntryOf(OutputState state)
{
    switch (state) {
    case UsingLocalSocket:
        return {false, "Registering local ArtNet client", OutputAction::CreateLocalClients};
    case DetermineSocketType:
        return {.restartsWait = true};
    case RebindRemoteSocket:
        return {true, "Sending rebind DMX socket", OutputAction::SendRebind};
    case RegisteringToRemoteSocket:
        return {true, "Registering remote ArtNet client", OutputAction::RegisterWithHost};
    default: // SynchronizingRemoteDeviceList too: it shares the wait of the registration
        return {};
    }
}

OutputStep ExitOf(OutputState state)
{
    // Port 6454 is free before the host is asked to take it: the other order would make the host's
    // bind fail.
    if (state == UsingLocalSocket)
        return {false, "Destroying local ArtNet client", OutputAction::DestroyLocalClients};
    return {};
}
