// SPDX-License-Identifier: MIT
#include "UI/Output/LivePatchCheck.h"

#include <limits>
#include <utility>

#include "LEDEngine/LEDEngine.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/Clock.h"
#include "Platform/IPv4.h"
#include "Platform/Text.h"

namespace {

constexpr std::int64_t Millisecond = 1'000'000;
constexpr std::int64_t Period = 300 * Millisecond;
constexpr std::int64_t Portion = 2 * Millisecond;

std::vector<PatchNode> NodesOf(const ArtNetNodeModel& nodes, std::uint32_t broadcast)
{
    std::vector<PatchNode> answering;
    for (const ArtNetNodeRecord& record : nodes.GetLiveNodes()) {
        if (!Platform::IsInNetwork(broadcast, record.ip))
            continue;
        PatchNode& node = answering.emplace_back();
        node.address = Platform::Utf8ToWide(record.ip);
        node.name = ArtNetNodeModel::NameText(record).toStdWString();
        for (const ArtNetNodeRecord::Port& port : record.universes)
            node.ports.push_back(port.first);
    }
    return answering;
}

} // namespace

LivePatchCheck::LivePatchCheck(const Parts& parts)
    : parts_(parts)
{}

LivePatchCheck::Stamp LivePatchCheck::StampNow() const
{
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    return {.document = document.GetRevision(),
            .patch = document.GetPatchRevision(),
            .library = parts_.manager.GetDeviceModel()->GetRevision(),
            .autoUnicast = document.IsAutoUnicast()};
}

/// Nothing while no network is chosen. Until the nodes have had the time to answer, there are none.
std::optional<PatchNetwork> LivePatchCheck::NetworkNow() const
{
    const ArtNetOutput& output = parts_.engine.GetOutput();
    if (output.GetBroadcastValue() == 0)
        return std::nullopt;
    PatchNetwork network;
    network.broadcast = output.GetBroadcastValue();
    if (parts_.manager.GetMappedDeviceModel()->KnowsAnsweringNodes()) {
        network.nodes = NodesOf(parts_.nodes, network.broadcast);
        network.knowsNodes = output.KnowsNodeInNetwork();
    }
    for (const ArtNetOtherSender& other : output.GetOtherSenders())
        network.senders.push_back({other.portAddress, other.sender});
    return network;
}

/// False when everything is as it was at the last pass.
bool LivePatchCheck::BeginPass()
{
    const Stamp stamp = StampNow();
    std::optional<PatchNetwork> network = NetworkNow();
    if (stamp_ == stamp && network_ == network)
        return false;
    stamp_ = stamp;
    network_ = std::move(network);
    return true;
}

void LivePatchCheck::WorkBetweenTicks()
{
    if (!passRuns_) {
        const std::int64_t now = Platform::MonotonicNanoseconds();
        if (now - begun_ < Period)
            return;
        begun_ = now;
        passRuns_ = BeginPass();
    }
    if (passRuns_)
        Work(Portion);
}

void LivePatchCheck::Finish()
{
    passRuns_ = BeginPass() || passRuns_;
    while (passRuns_)
        Work(std::numeric_limits<std::int32_t>::max());
}

void LivePatchCheck::Work(std::int64_t nanoseconds)
{
    passRuns_ = !check_.Work({*parts_.manager.GetMappedDeviceModel(),
                              parts_.manager.GetDeviceModel(), network_ ? &*network_ : nullptr},
                             nanoseconds);
    if (!passRuns_ && std::exchange(generation_, check_.GetGeneration()) != check_.GetGeneration())
        emit problemsChanged();
}
