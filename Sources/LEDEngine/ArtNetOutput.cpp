// SPDX-License-Identifier: MIT
#include "LEDEngine/ArtNetOutput.h"

#include <algorithm>
#include <utility>

#include "DebugVariables/DebugVariables.h"
#include "FixtureModel/DMXMapping.h"
#include "LEDEngine/TickGrid.h"
#include "Log/Log.h"
#include "Platform/Clock.h"
#include "Platform/IPv4.h"
#include "Platform/Text.h"

namespace {

constexpr char ClientName[] = "PixelWeft";

/// More than any network has; the list of a host that never ends is cut here.
constexpr std::size_t MaxRemoteNodes = 4096;

constexpr std::int64_t SourceCheckPeriod = 500'000'000;

} // namespace

ArtNetOutput::ArtNetOutput(HostLink& hostLink)
    : trigger(hostLink)
{}

ArtNetOutput::~ArtNetOutput()
{
    ChangeState(OutputState::Disabled);
}

bool ArtNetOutput::Initialize(const std::wstring& interface, const std::wstring& broadcast,
                              const std::wstring& receive, const UniverseMerging& mergingSettings)
{
    interfaceAddress = Platform::WideToUtf8(interface);
    broadcastAddress = Platform::WideToUtf8(broadcast);
    broadcastValue = Platform::ParseIPv4(broadcastAddress).value_or(0);
    receiveAddress = Platform::WideToUtf8(receive);
    merging = mergingSettings;
    ClearUniverses();
    inputUniverses.resize(static_cast<std::size_t>(merging.GetConsecutiveUniverses()));
    subscribersDirty = true;
    HandleEvent(OutputEvent::Initialize);
    return true;
}

// ---- The state machine --------------------------------------------------------------------------

void ArtNetOutput::HandleEvent(OutputEvent event)
{
    const auto transition = TransitionOf({state, broadcastValue != 0, retryCounter}, event);
    retryCounter = transition.retryCounter;
    if (transition.event)
        ZEN_LOG_INFO("%s in %s", transition.event, OutputStateText(state));
    if (transition.reason)
        ZEN_LOG_INFO("%s", transition.reason);
    if (transition.enters)
        ChangeState(transition.next);
    else
        Perform(transition.action);
}

void ArtNetOutput::ChangeState(OutputState next)
{
    ZEN_LOG_INFO("Exiting %s", OutputStateText(state));
    Perform(ExitOf(state));
    state = next;
    ZEN_LOG_INFO("Entering %s", OutputStateText(state));
    Perform(EntryOf(state));
}

void ArtNetOutput::Perform(const OutputStep& step)
{
    if (step.restartsWait)
        retryCounter = 0;
    if (step.text)
        ZEN_LOG_INFO("%s", step.text);
    Perform(step.action);
}

void ArtNetOutput::Perform(OutputAction action)
{
    switch (action) {
    case OutputAction::None:
        break;
    case OutputAction::CreateLocalClients:
        CreateLocalClients();
        break;
    case OutputAction::DestroyLocalClients:
        DestroyLocalClients();
        break;
    case OutputAction::SendRebind:
        trigger.SendRebind();
        break;
    case OutputAction::RegisterWithHost:
        RegisterWithHost();
        break;
    }
}

void ArtNetOutput::CreateLocalClients()
{
    // New clients are made before the old ones are destroyed: the interface stays in use, so the
    // service keeps its socket and its list of nodes.
    outputClient = std::make_unique<ArtNetClient>(interfaceAddress, broadcastAddress, ClientName);
    outputClient->FeedNodes({nodes.data(), nodes.size()});
    const auto firstUniverse = static_cast<std::uint32_t>(merging.GetFromStartAddress());
    inputClient = std::make_unique<ArtNetClient>(receiveAddress, std::string_view{}, firstUniverse,
                                                 merging.GetConsecutiveUniverses(), ClientName,
                                                 merging.IsEnabled());
}

void ArtNetOutput::DestroyLocalClients()
{
    outputClient.reset();
    inputClient.reset();
}

void ArtNetOutput::RegisterWithHost()
{
    trigger.RegisterClient(interfaceAddress, broadcastAddress, receiveAddress,
                           static_cast<std::uint16_t>(merging.GetFromStartAddress()),
                           static_cast<std::uint16_t>(merging.GetConsecutiveUniverses()),
                           ClientName);
}

// ---- Nodes and received DMX ---------------------------------------------------------------------

void ArtNetOutput::RefreshNodes()
{
    if (state == OutputState::UsingRemoteSocket)
        trigger.RequestDevices();
    if (state != OutputState::UsingLocalSocket)
        return;
    nodes.clear();
    NoteNodesVersion(outputClient->GetNodes(nodes));
}

bool ArtNetOutput::KnowsNodeInNetwork() const
{
    return std::ranges::any_of(nodes, [this](const ArtNetNodeInfo& node) {
        return Platform::IsInNetwork(broadcastValue, node.Ip());
    });
}

void ArtNetOutput::AddRemoteNode(const ArtNetNodeInfo& node, std::uint32_t total,
                                 std::uint32_t version)
{
    const bool usable = !node.Name().empty() && !node.Ip().empty();
    if (usable && remoteNodes.size() < MaxRemoteNodes)
        remoteNodes.push_back(node);
    if (remoteNodes.size() != total)
        return;
    nodes = remoteNodes;
    NoteNodesVersion(version);
}

void ArtNetOutput::NoteNodesVersion(std::uint32_t version)
{
    if (version == nodesVersion)
        return;
    nodesVersion = version;
    subscribersDirty = true;
}

void ArtNetOutput::CheckInput()
{
    CheckSources();
    if (!inputClient)
        return;
    // Polls and replies come in all the time: they say nothing about a console.
    const std::uint64_t taken = inputClient->GetTraffic().taken;
    if (taken > std::exchange(lastTaken_, taken))
        emit dataInOn();
}

ArtNetTraffic ArtNetOutput::GetInputTraffic() const
{
    return inputClient ? inputClient->GetTraffic() : ArtNetTraffic{};
}

ArtNetTraffic ArtNetOutput::GetOutputTraffic() const
{
    return outputClient ? outputClient->GetTraffic() : ArtNetTraffic{};
}

std::vector<ArtNetReceived> ArtNetOutput::GetReceived() const
{
    return inputClient && merging.IsEnabled() ? inputClient->GetReceived()
                                              : std::vector<ArtNetReceived>{};
}

std::vector<ArtNetOtherSender> ArtNetOutput::GetOtherSenders() const
{
    if (!outputClient)
        return {};
    std::vector<ArtNetOtherSender> senders = outputClient->GetOtherSenders();
    if (inputClient && !merging.IsEnabled()) { // the universes are kept all the same
        for (const ArtNetReceived& received : inputClient->GetReceived())
            senders.push_back({received.portAddress, received.sender});
    }
    std::erase_if(senders, [this](const ArtNetOtherSender& other) {
        return !Platform::IsInNetwork(broadcastValue, Platform::FormatIPv4(other.sender));
    });
    // Two sockets may hear the same broadcast.
    std::ranges::sort(senders);
    senders.erase(std::unique(senders.begin(), senders.end()), senders.end());
    return senders;
}

void ArtNetOutput::NoteFrameSent()
{
    lastFrameTime_ = Platform::MonotonicNanoseconds();
    ++framesSent_;
    emit dataOutOn();
}

void ArtNetOutput::CheckSources()
{
    const std::int64_t now = Platform::MonotonicNanoseconds();
    if (now - sourcesChecked_ < SourceCheckPeriod)
        return;
    sourcesChecked_ = now;
    auto conflicts = inputClient ? inputClient->GetSourceConflicts() : decltype(sourceConflicts_){};
    if (conflicts == sourceConflicts_)
        return;
    sourceConflicts_ = std::move(conflicts);
    emit sourceConflictsChanged(sourceConflicts_);
}

void ArtNetOutput::ReadInputUniverses()
{
    if (state == OutputState::UsingRemoteSocket)
        trigger.RequestDMXInput(static_cast<std::uint16_t>(merging.GetFromStartAddress()));
    if (state != OutputState::UsingLocalSocket)
        return;
    // The last answer of a host may have had another number of pages.
    inputUniverses.resize(static_cast<std::size_t>(merging.GetConsecutiveUniverses()));
    inputClient->ReadDmx(
        merging.GetFromStartAddress(),
        {inputUniverses.front().data(), inputUniverses.size() * DMXUniverse::ChannelCount});
}

void ArtNetOutput::MergeInputUniverses()
{
    if (!merging.IsEnabled())
        return;
    ReadInputUniverses();
    static const std::wstring allNodes = AutoNode;
    static constexpr InputPages::value_type silence{};
    const auto count = static_cast<std::size_t>(merging.GetConsecutiveUniverses());
    std::int32_t portAddress = merging.GetToStartAddress();
    for (std::size_t i = 0; i < count; ++i) {
        const auto& page = i < inputUniverses.size() ? inputUniverses[i] : silence;
        CopyToUniverse(static_cast<std::uint16_t>(portAddress++), allNodes, 1, page);
    }
}

// ---- Sending ------------------------------------------------------------------------------------

bool ArtNetOutput::SendUniverse(std::string_view address, const DMXUniverse& universe)
{
    if (state == OutputState::UsingRemoteSocket) {
        trigger.SendDmx(static_cast<std::uint16_t>(universe.portAddress), address,
                        {universe.channels.data(), universe.channels.size()});
        return true;
    }
    if (state != OutputState::UsingLocalSocket)
        return false;
    outputClient->SendDmx(address, static_cast<std::int32_t>(universe.portAddress),
                          {universe.channels.data(), universe.channels.size()});
    // The service sends later, so a failure is seen with the next universe.
    const std::int64_t errorTime = outputClient->GetLastSendError().time;
    if (errorTime == lastSendErrorTime)
        return true;
    lastSendErrorTime = errorTime;
    return false;
}

void ArtNetOutput::BeginSending()
{
    if (outputClient)
        outputClient->BeginFrame(TickGrid::FrameInterval(merging.IsEnabled()));
}

void ArtNetOutput::EndSending(bool sync)
{
    if (outputClient)
        outputClient->EndFrame(sync ? broadcastAddress : std::string());
}

void ArtNetOutput::SendWritten(std::string_view address, const DMXUniverse& universe,
                               SendResult& result)
{
    if (!universe.channels.empty())
        result.Add(SendUniverse(address, universe));
}

ArtNetOutput::SendResult ArtNetOutput::SendUnicastUniverses()
{
    SendResult result;
    for (const auto& [key, universe] : universes.Unicast()) {
        const std::string_view address = key.first.Text();
        if (Platform::IsInNetwork(broadcastValue, address))
            SendWritten(address, universe, result);
    }
    return result;
}

ArtNetOutput::SendResult ArtNetOutput::SendBroadcastUniverses()
{
    SendResult result;
    for (const auto& entry : universes.Broadcast())
        SendWritten(broadcastAddress, entry.second, result);
    return result;
}

void ArtNetOutput::CountSubscribers()
{
    ZEN_LOG_INFO("Detected devices version changed, clearing autounicast subscribers");
    subscribers.clear();
    const auto variables = Zen::DebugVariables::Global();
    const bool tells = variables && variables->GetBool(Zen::DebugVariables::Key("artnetdebug"));
    for (const ArtNetNodeInfo& node : nodes) {
        if (!Platform::IsInNetwork(broadcastValue, node.Ip()))
            continue;
        ++turn_;
        for (const std::uint16_t portAddress : node.universes) {
            Subscribers& known = subscribers[portAddress];
            if (!known.IsFirstPort(turn_))
                continue;
            if (tells)
                ZEN_LOG_INFO("Adding autounicast subscriber for Port-Address %d at IP: %s",
                             portAddress, std::string(node.Ip()).c_str());
            if (++known.count >= SubscribersForBroadcast)
                ZEN_LOG_INFO("Port-Address %d will use broadcast, number of subscribers is %d",
                             portAddress, known.count);
        }
    }
    subscribersDirty = false;
}

ArtNetOutput::SendResult ArtNetOutput::SendAutoUnicastUniverses()
{
    if (subscribersDirty)
        CountSubscribers();
    SendResult result;
    for (const ArtNetNodeInfo& node : nodes) {
        if (!Platform::IsInNetwork(broadcastValue, node.Ip()))
            continue;
        ++turn_;
        for (const std::uint16_t portAddress : node.universes) {
            const auto universe = universes.Broadcast().find(portAddress);
            if (universe == universes.Broadcast().end())
                continue;
            const auto subscriber = subscribers.find(portAddress);
            if (subscriber == subscribers.end()) {
                ZEN_LOG_ERROR("Tried to autounicast to Port-Address with no subscribers, forcing "
                              "subscribers update");
                subscribersDirty = true;
                return result;
            }
            if (subscriber->second.count < SubscribersForBroadcast &&
                subscriber->second.IsFirstPort(turn_))
                SendWritten(node.Ip(), universe->second, result);
        }
    }
    for (const auto& [portAddress, universe] : universes.Broadcast()) {
        const auto subscriber = subscribers.find(portAddress);
        if (subscriber != subscribers.end() && subscriber->second.count >= SubscribersForBroadcast)
            SendWritten(broadcastAddress, universe, result);
    }
    return result;
}
