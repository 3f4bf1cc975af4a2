// SPDX-License-Identifier: MIT
#include "Model/PatchTable.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/UniverseMerging.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

namespace {

/// A span with its target, as numbers that sort fast: there are thousands of spans and few nodes.
struct Placed
{
    std::uint16_t portAddress = 0;
    std::size_t node = 0; ///< in the order of the nodes' texts
    PatchSpan span;
};

std::vector<std::wstring_view> NodesOf(const std::vector<const DMXMappingArtNet*>& addresses,
                                       const UniverseMerging& merging)
{
    std::vector<std::wstring_view> nodes;
    for (const DMXMappingArtNet* address : addresses) {
        const std::wstring_view node = TargetNode(*address, merging);
        if (nodes.empty() || nodes.back() != node) // often the one before
            nodes.push_back(node);
    }
    std::ranges::sort(nodes);
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    return nodes;
}

} // namespace

PatchTable PatchTableOf(const MappedDeviceModel& document)
{
    const UniverseMerging& merging = document.GetMerging();
    std::vector<Placed> spans;
    std::vector<const DMXMappingArtNet*> addresses; // of the spans
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* element = document.GetElement(row);
        const DMXMappingArtNet* address = element ? element->GetArtNetMapping() : nullptr;
        if (!address)
            continue;
        const SentChannels channels =
            ChannelsSent(address->GetChannel(), SentChannelCount(element->GetFixture()));
        if (channels.AreNone())
            continue;
        spans.push_back({.portAddress = TargetPortAddress(*address, merging),
                         .span = {.row = row,
                                  .element = element->uniqueID,
                                  .channels = channels,
                                  .merged = IsMerged(*address, merging)}});
        addresses.push_back(address);
    }
    const std::vector<std::wstring_view> nodes = NodesOf(addresses, merging);
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const auto node = std::ranges::lower_bound(nodes, TargetNode(*addresses[i], merging));
        spans[i].node = static_cast<std::size_t>(node - nodes.begin());
    }
    std::ranges::stable_sort(
        spans, {}, [](const Placed& placed) { return std::pair(placed.portAddress, placed.node); });
    PatchTable table;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const Placed& placed = spans[i];
        if (i == 0 || placed.portAddress != spans[i - 1].portAddress ||
            placed.node != spans[i - 1].node)
            table.push_back({{std::wstring(nodes[placed.node]), placed.portAddress}, {}});
        table.back().spans.push_back(placed.span);
    }
    return table;
}

ChannelOwners OwnersOf(const PatchUniverse& universe, const MappedDeviceModel& document)
{
    ChannelOwners owners;
    for (std::size_t i = 0; i < universe.spans.size(); ++i) {
        const PatchSpan& span = universe.spans[i];
        const MappedLedItem* element = document.GetElement(span.row);
        if (!element)
            continue;
        const std::vector<ChannelUse> uses = ChannelUsesOf(element->GetFixture());
        const auto count = std::min<std::size_t>(
            uses.size(), static_cast<std::size_t>(span.channels.last - span.channels.first + 1));
        for (std::size_t channel = 0; channel < count; ++channel) {
            if (span.merged && uses[channel].kind == ChannelUse::Kind::Free)
                continue;
            ChannelOwner& owner =
                owners[static_cast<std::size_t>(span.channels.first - 1) + channel];
            owner = {.span = static_cast<std::int32_t>(i),
                     .fixtureChannel = static_cast<std::int32_t>(channel) + 1,
                     .use = uses[channel],
                     .shared = owner.span >= 0};
        }
    }
    return owners;
}
