// SPDX-License-Identifier: MIT
#include "Model/PatchTable.h"

#include <algorithm>
#include <tuple>

#include "FixtureModel/DMXMapping.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

PatchTable PatchTableOf(const MappedDeviceModel& document)
{
    std::vector<std::pair<PatchTarget, PatchSpan>> spans;
    spans.reserve(static_cast<std::size_t>(document.rowCount()));
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* element = document.GetElement(row);
        const DMXMappingArtNet* address = element ? element->GetArtNetMapping() : nullptr;
        if (!address)
            continue;
        const SentChannels channels =
            ChannelsSent(address->GetChannel(), SentChannelCount(element->GetFixture()));
        if (channels.AreNone())
            continue;
        spans.emplace_back(TargetOf(*address, document.GetMerging()),
                           PatchSpan{.row = row,
                                     .element = element->uniqueID,
                                     .channels = channels,
                                     .merged = IsMerged(*address, document.GetMerging())});
    }
    std::ranges::stable_sort(spans, {}, [](const auto& span) {
        return std::tie(span.first.portAddress, span.first.node);
    });
    PatchTable table;
    for (auto& [target, span] : spans) {
        if (table.empty() || table.back().target != target)
            table.push_back({std::move(target), {}});
        table.back().spans.push_back(span);
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
