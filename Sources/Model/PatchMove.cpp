// SPDX-License-Identifier: MIT
#include "Model/PatchMove.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "FixtureModel/DMXMapping.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

namespace {

constexpr int UniversesInSubnet = 16;

/// The Port-Address that an element has to name to end up in this universe.
int PatchedAs(const PatchTarget& target, const UniverseMerging& merging)
{
    const int distance = merging.GetToStartAddress() - merging.GetFromStartAddress();
    const int before = target.portAddress - distance;
    const bool isMerged =
        merging.IsEnabled() && target.node == AutoNode && merging.IsInFromRange(before);
    return isMerged ? before : target.portAddress;
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

void SetChannels(std::bitset<512>& bits, const SentChannels& channels)
{
    for (int channel = std::max(channels.first, 1); channel <= channels.last; ++channel)
        bits.set(static_cast<std::size_t>(channel - 1));
}

} // namespace

std::vector<ElementAddress> ShiftedAddresses(const MappedDeviceModel& document,
                                             const PatchTable& patch, const ElementIds& ids,
                                             const PatchShift& shift)
{
    std::vector<ElementAddress> shifted;
    for (const std::int64_t id : ids) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const DMXMappingArtNet* present = element ? element->GetArtNetMapping() : nullptr;
        if (!present)
            continue;
        DMXMappingArtNet address = *present;
        address.SetChannel(address.GetChannel() + shift.channels);
        if (shift.to && TargetOf(address, document.GetMerging()) != *shift.to) {
            const int portAddress = PatchedAs(*shift.to, document.GetMerging());
            address.SetSubnet(portAddress / UniversesInSubnet);
            address.SetUniverse(portAddress % UniversesInSubnet);
            if (address.GetIpconf() != shift.to->node)
                address.SetNode(shift.to->node, NodeNameOf(shift.to->node, patch, document));
        }
        shifted.push_back({id, std::move(address)});
    }
    return shifted;
}

PatchMove PreviewMove(const MappedDeviceModel& document, const PatchTable& patch,
                      const std::vector<ElementAddress>& moved, const PatchTarget& universe)
{
    PatchMove move;
    std::unordered_set<std::int64_t> ids;
    for (const ElementAddress& each : moved) {
        ids.insert(each.uniqueID);
        const MappedLedItem* element = document.GetItemByUniqueID(each.uniqueID);
        if (!element || !each.address)
            continue;
        const int count = SentChannelCount(element->GetFixture());
        const int first = each.address->GetChannel();
        move.fits = move.fits && first >= 1 && first + count - 1 <= 512;
        if (TargetOf(*each.address, document.GetMerging()) == universe)
            SetChannels(move.channels,
                        ChannelsSent(std::max(first, 1), first < 1 ? count + first - 1 : count));
    }
    for (const PatchUniverse& each : patch) {
        if (each.target != universe)
            continue;
        for (const PatchSpan& span : each.spans) {
            if (!ids.contains(span.element))
                SetChannels(move.taken, span.channels);
        }
    }
    move.taken &= move.channels;
    return move;
}
