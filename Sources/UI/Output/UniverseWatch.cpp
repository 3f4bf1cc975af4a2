// SPDX-License-Identifier: MIT
#include "UI/Output/UniverseWatch.h"

#include <algorithm>
#include <utility>

#include "FixtureModel/DMXMapping.h"
#include "LEDEngine/ArtNetOutput.h"
#include "Model/MappedDeviceModel.h"

UniverseWatch::UniverseWatch(const MappedDeviceModel& document, const ArtNetOutput& output,
                             NodeNames names)
    : document_(document)
    , output_(output)
    , names_(std::move(names))
{}

UniverseWatch::Circumstances UniverseWatch::ReadCircumstances() const
{
    Circumstances now{.merging = document_.GetMerging(),
                      .autoUnicast = document_.IsAutoUnicast(),
                      .state = output_.GetState(),
                      .suspended = output_.outputSuspended,
                      .broadcast = output_.GetBroadcastValue(),
                      .nodesVersion = output_.GetNodesVersion(),
                      .received = {}};
    constexpr int bitsOfSender = 32;
    for (const ArtNetReceived& each : received_)
        now.received.push_back(std::uint64_t{each.portAddress} << bitsOfSender | each.sender);
    return now;
}

bool UniverseWatch::Look()
{
    received_ = output_.GetReceived();
    Circumstances now = ReadCircumstances();
    const bool merges = now.merging != circumstances_.merging;
    const bool patched = std::exchange(documentChanged_, false) || merges;
    const bool due = std::exchange(rowsDue_, false) || patched || now != circumstances_;
    if (!due)
        return false;
    circumstances_ = std::move(now);
    if (patched) {
        PatchTable patch = PatchTableOf(document_);
        if (patch != patch_)
            ++patchVersion_;
        patch_ = std::move(patch);
    }
    UniverseRows rows = UniverseRowsOf(document_, patch_, output_, received_, names_);
    const bool differs = rows != rows_;
    rows_ = std::move(rows);
    return differs || patched; // spans may have changed where no row tells of it
}

void UniverseWatch::CountFrames(std::int64_t now)
{
    sent_.Read(output_.GetFramesSent(), now);
    std::erase_if(receivedRates_, [this](const auto& rate) {
        return std::ranges::find(received_, rate.first, &ArtNetReceived::portAddress) ==
               received_.end();
    });
    for (const ArtNetReceived& each : received_)
        receivedRates_[each.portAddress].Read(each.packets, now);
}

void UniverseWatch::ForgetFrames()
{
    sent_ = {};
    receivedRates_.clear();
}

std::span<const std::uint8_t> UniverseWatch::ValuesOf(const UniverseRow& row) const
{
    const std::uint16_t portAddress = row.target.portAddress;
    if (row.kind == UniverseRow::Kind::Received) {
        const ArtNetOutput::InputPages& pages = output_.GetInputPages();
        const int page = portAddress - output_.GetMerging().GetFromStartAddress();
        const bool isKept = page >= 0 && static_cast<std::size_t>(page) < pages.size();
        return isKept ? std::span<const std::uint8_t>(pages[static_cast<std::size_t>(page)])
                      : std::span<const std::uint8_t>();
    }
    const auto channelsOf = [](const auto& table, const auto& key) {
        const auto found = table.find(key);
        return found == table.end() ? std::span<const std::uint8_t>()
                                    : std::span<const std::uint8_t>(found->second.channels.data(),
                                                                    found->second.channels.size());
    };
    const ArtNetUniverses& universes = output_.GetUniverses();
    if (row.target.node == AutoNode)
        return channelsOf(universes.Broadcast(), portAddress);
    return channelsOf(universes.Unicast(),
                      ArtNetUniverses::UnicastKey(NodeAddress(row.target.node), portAddress));
}

std::optional<double> UniverseWatch::FramesOf(const UniverseRow& row) const
{
    const auto rateOf = [](const RateMeter& meter) {
        return meter.IsKnown() ? std::optional(meter.PerSecond()) : std::nullopt;
    };
    if (row.kind == UniverseRow::Kind::Sent)
        return row.isSent && !ValuesOf(row).empty() ? rateOf(sent_) : 0;
    const auto rate = receivedRates_.find(row.target.portAddress);
    return rate == receivedRates_.end() ? std::nullopt : rateOf(rate->second);
}
