// SPDX-License-Identifier: MIT
#include "Model/PatchMove.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_set>
#include <utility>

#include "FixtureModel/DMXMapping.h"
#include "Model/EditedAddresses.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

namespace {

constexpr int LastPortAddress = 255; // of an element

/// The Port-Address that an element has to name to end up in this universe, nothing when none leads
/// there.
std::optional<int> PatchedAs(const PatchTarget& target, const UniverseMerging& merging)
{
    const int distance = merging.GetToStartAddress() - merging.GetFromStartAddress();
    const int before = target.portAddress - distance;
    const bool isMerged =
        merging.IsEnabled() && target.node == AutoNode && merging.IsInFromRange(before);
    const int named = isMerged ? before : target.portAddress;
    const bool isSentOn =
        !isMerged && merging.IsEnabled() && merging.IsInFromRange(target.portAddress);
    return isSentOn || named > LastPortAddress ? std::nullopt : std::optional(named);
}

/// What the elements of this node call it.
std::wstring NodeNameOf(const std::wstring& node, const PatchTable& patch,
                        const MappedDeviceModel& document)
{
    for (const PatchUniverse& universe : patch) {
        if (universe.target.node != node || universe.spans.empty())
            continue;
        const MappedLedItem* element = document.GetElement(universe.spans.front().row);
        const DMXMappingArtNet* address = element ? element->GetArtNetMapping() : nullptr;
        if (address && address->GetIpconf() == node)
            return address->GetIpName();
    }
    return {};
}

std::bitset<512> BitsOf(const SentChannels& channels)
{
    std::bitset<512> bits;
    for (int channel = std::max(channels.first, 1); channel <= channels.last; ++channel)
        bits.set(static_cast<std::size_t>(channel - 1));
    return bits;
}

/// What the moved elements would do in one universe.
struct MovedChannels
{
    std::bitset<512> channels;
    std::bitset<512> taken;
};

} // namespace

bool MayBePatched(const PatchTarget& universe, const UniverseMerging& merging)
{
    return PatchedAs(universe, merging).has_value();
}

std::vector<ElementAddress> ShiftedAddresses(const MappedDeviceModel& document,
                                             const PatchTable& patch, const ElementIds& ids,
                                             const PatchShift& shift)
{
    int portAddress = 0;
    std::wstring nodeName;
    if (shift.to) {
        const auto named = PatchedAs(*shift.to, document.GetMerging());
        if (!named)
            return {};
        portAddress = *named;
        nodeName = NodeNameOf(shift.to->node, patch, document);
    }
    return EditedAddresses(ids, document, [&](const MappedLedItem&, DMXMappingArtNet address) {
        address.SetChannel(address.GetChannel() + shift.channels);
        if (shift.to && TargetOf(address, document.GetMerging()) != *shift.to) {
            address.SetPortAddress(portAddress);
            if (address.GetIpconf() != shift.to->node)
                address.SetNode(shift.to->node, nodeName);
        }
        return std::optional(std::move(address));
    });
}

PatchMove PreviewMove(const MappedDeviceModel& document, const PatchTable& patch,
                      const std::vector<ElementAddress>& moved, const PatchTarget& universe)
{
    PatchMove move;
    std::map<PatchTarget, MovedChannels> targets;
    std::unordered_set<std::int64_t> ids;
    for (const ElementAddress& each : moved) {
        ids.insert(each.uniqueID);
        const MappedLedItem* element = document.GetItemByUniqueID(each.uniqueID);
        if (!element || !each.address)
            continue;
        const int count = SentChannelCount(element->GetFixture());
        const int first = each.address->GetChannel();
        move.fits = move.fits && first >= 1 && first + count - 1 <= 512;
        const std::bitset<512> bits =
            BitsOf(ChannelsSent(std::max(first, 1), first < 1 ? count + first - 1 : count));
        MovedChannels& there = targets[TargetOf(*each.address, document.GetMerging())];
        there.taken |= there.channels & bits; // two that are moved meet
        there.channels |= bits;
    }
    for (const PatchUniverse& each : patch) {
        const auto there = targets.find(each.target);
        if (there == targets.end())
            continue;
        for (const PatchSpan& span : each.spans) {
            if (!ids.contains(span.element))
                there->second.taken |= there->second.channels & BitsOf(span.channels);
        }
    }
    for (const auto& [target, there] : targets)
        move.shared += static_cast<int>(there.taken.count());
    if (const auto shown = targets.find(universe); shown != targets.end()) {
        move.channels = shown->second.channels;
        move.taken = shown->second.taken;
    }
    return move;
}
