// SPDX-License-Identifier: MIT
// The part of ArtNetOutput that decides between the own port and the host.
#include "LEDEngine/ArtNetOutput.h"
#include "LEDEngine/ArtNetTrigger.h"
#include "Log/Log.h"

namespace {

constexpr char ClientName[] = "PixelWeft";

/// The 12th tick of a wait is its end: about 300 ms at the engine's rate.
constexpr std::uint32_t TicksBeforeTimeout = 11;

constexpr std::size_t IndexOf(OutputState state)
{
    return static_cast<std::size_t>(state);
}

constexpr std::size_t IndexOf(OutputEvent event)
{
    return static_cast<std::size_t>(event);
}

/// What the log says of an event that a state handles; ticks and acknowledgements speak for
/// themselves.
void LogEvent(OutputEvent event, OutputState state)
{
    if (event == OutputEvent::Initialize)
        ZEN_LOG_INFO("Initialize in %s", OutputStateText(state));
    else if (event == OutputEvent::ServerDetected)
        ZEN_LOG_INFO("Server detected in %s", OutputStateText(state));
    else if (event == OutputEvent::ServerStopped)
        ZEN_LOG_INFO("Server stopped in %s", OutputStateText(state));
}

} // namespace

// A row for each state, a column for each event; null is an event that the state ignores. From the
// third row on ServerStopped leads to the local socket, however far the machine had come.
const ArtNetOutput::HandlerTable ArtNetOutput::handlers = {{
    // Initialize, Tick, ServerDetected, ServerStopped, SocketRebound, ClientRegistered, DevicesSent
    // Disabled
    {&ArtNetOutput::BeginWhenChosen, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr},
    // UsingLocalSocket
    {&ArtNetOutput::RebuildClientsOrDisable, nullptr,
     &ArtNetOutput::GoTo<OutputState::RebindRemoteSocket>, nullptr, nullptr, nullptr, nullptr},
    // DetermineSocketType
    {&ArtNetOutput::StayOrDisable, &ArtNetOutput::WaitForServer,
     &ArtNetOutput::GoTo<OutputState::RegisteringToRemoteSocket>,
     &ArtNetOutput::GoTo<OutputState::UsingLocalSocket>, nullptr, nullptr, nullptr},
    // RebindRemoteSocket
    {&ArtNetOutput::StayOrDisable, &ArtNetOutput::WaitForRebind, nullptr,
     &ArtNetOutput::GoTo<OutputState::UsingLocalSocket>, &ArtNetOutput::Rebound, nullptr, nullptr},
    // RegisteringToRemoteSocket
    {&ArtNetOutput::RegisterAnewOrDisable, &ArtNetOutput::WaitForRegistration, nullptr,
     &ArtNetOutput::GoTo<OutputState::UsingLocalSocket>, nullptr, &ArtNetOutput::Registered,
     nullptr},
    // SynchronizingRemoteDeviceList
    {&ArtNetOutput::RegisterAnewOrDisable, &ArtNetOutput::WaitForRegistration, nullptr,
     &ArtNetOutput::GoTo<OutputState::UsingLocalSocket>, nullptr, nullptr,
     &ArtNetOutput::DevicesSent},
    // UsingRemoteSocket
    {&ArtNetOutput::RegisterAnewOrDisable, nullptr, nullptr,
     &ArtNetOutput::GoTo<OutputState::UsingLocalSocket>, nullptr, nullptr, nullptr},
}};

void ArtNetOutput::HandleEvent(OutputEvent event)
{
    if (IndexOf(state) >= OutputStateCount || IndexOf(event) >= OutputEventCount)
        return;
    const Handler handler = handlers[IndexOf(state)][IndexOf(event)];
    if (!handler)
        return;
    LogEvent(event, state);
    (this->*handler)();
}

void ArtNetOutput::ChangeState(OutputState next)
{
    // Also into the present state: that is how a wait begins again.
    Exit();
    state = next;
    Enter();
}

void ArtNetOutput::Exit()
{
    ZEN_LOG_INFO("Exiting %s", OutputStateText(state));
    if (state != OutputState::UsingLocalSocket)
        return;
    // Port 6454 is free before the host is told to take it: the other order would make its bind
    // fail.
    ZEN_LOG_INFO("Destroying local ArtNet client");
    outputClient.reset();
    inputClient.reset();
}

void ArtNetOutput::Enter()
{
    ZEN_LOG_INFO("Entering %s", OutputStateText(state));
    switch (state) {
    case OutputState::UsingLocalSocket:
        ZEN_LOG_INFO("Registering local ArtNet client");
        CreateLocalClients();
        break;
    case OutputState::DetermineSocketType:
        retryCounter = 0;
        break;
    case OutputState::RebindRemoteSocket:
        retryCounter = 0;
        ZEN_LOG_INFO("Sending rebind DMX socket");
        if (trigger)
            trigger->SendRebind();
        break;
    case OutputState::RegisteringToRemoteSocket:
        retryCounter = 0;
        ZEN_LOG_INFO("Registering remote ArtNet client");
        RegisterWithHost();
        break;
    case OutputState::SynchronizingRemoteDeviceList: // shares the wait of the registration
    case OutputState::Disabled:
    case OutputState::UsingRemoteSocket:
        break;
    }
}

void ArtNetOutput::CreateLocalClients()
{
    // New clients come before the old ones go: the interface stays represented, so the service
    // keeps its socket and its list of nodes.
    outputClient = std::make_unique<ArtNetClient>(interfaceAddress, broadcastAddress, ClientName);
    outputClient->FeedNodes({nodes.data(), nodes.size()});
    const auto firstUniverse = static_cast<std::uint32_t>(merging.GetFromStartAddress());
    inputClient = std::make_unique<ArtNetClient>(receiveAddress, std::string_view{}, firstUniverse,
                                                 merging.GetConsecutiveUniverses(), ClientName);
}

void ArtNetOutput::RegisterWithHost()
{
    if (!trigger)
        return;
    trigger->RegisterClient(interfaceAddress, broadcastAddress, receiveAddress,
                            static_cast<std::uint16_t>(merging.GetFromStartAddress()),
                            static_cast<std::uint16_t>(merging.GetConsecutiveUniverses()),
                            ClientName);
}

// ---- The cells of the table ---------------------------------------------------------------------

void ArtNetOutput::BeginWhenChosen()
{
    if (broadcastValue != 0)
        ChangeState(OutputState::DetermineSocketType);
}

void ArtNetOutput::RebuildClientsOrDisable()
{
    if (broadcastValue != 0)
        CreateLocalClients();
    else
        ChangeState(OutputState::Disabled);
}

void ArtNetOutput::StayOrDisable()
{
    if (broadcastValue == 0)
        ChangeState(OutputState::Disabled);
}

void ArtNetOutput::RegisterAnewOrDisable()
{
    ChangeState(broadcastValue != 0 ? OutputState::RegisteringToRemoteSocket
                                    : OutputState::Disabled);
}

bool ArtNetOutput::CountTick()
{
    return retryCounter++ >= TicksBeforeTimeout;
}

void ArtNetOutput::WaitForServer()
{
    if (!CountTick())
        return;
    ZEN_LOG_INFO("Server was not detected");
    ChangeState(OutputState::UsingLocalSocket);
}

void ArtNetOutput::WaitForRebind()
{
    if (!CountTick())
        return;
    ZEN_LOG_INFO("Rebind socked did not succed, retrying");
    ChangeState(OutputState::RebindRemoteSocket);
}

void ArtNetOutput::WaitForRegistration()
{
    if (!CountTick())
        return;
    ZEN_LOG_INFO("Registering remote client did not succed, retrying");
    ChangeState(OutputState::RegisteringToRemoteSocket);
}

void ArtNetOutput::Rebound()
{
    ZEN_LOG_INFO("Dmx socket rebound");
    ChangeState(OutputState::RegisteringToRemoteSocket);
}

void ArtNetOutput::Registered()
{
    ZEN_LOG_INFO("Remote client registered");
    ChangeState(OutputState::SynchronizingRemoteDeviceList);
}

void ArtNetOutput::DevicesSent()
{
    ZEN_LOG_INFO("Sent device list to server");
    ChangeState(OutputState::UsingRemoteSocket);
}
