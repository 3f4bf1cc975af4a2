// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <unordered_map>

#include <QFlags>
#include <QString>

#include "FixtureModel/PatchOverlaps.h"
#include "Model/Trouble.h"

class DMXMappingArtNet;
class MappedLedItem;
class UniverseMerging;

/// What can be wrong with where an element is sent.
enum class PatchFault : std::uint8_t
{
    MixedUniverse = 1, ///< its universe is broadcast and also sent to a chosen node
    CutOff = 2,        ///< some of its channels, or all, are outside of 1 to 512
    SilentNode = 4,    ///< its node is one that should answer, and does not
    SharedChannels = 8 ///< another element is sent on some of its channels
};
Q_DECLARE_FLAGS(PatchFaults, PatchFault)
Q_DECLARE_OPERATORS_FOR_FLAGS(PatchFaults)

/// By the elements' numbers. Elements without any have no entry.
using FaultyElements = std::unordered_map<std::int64_t, PatchFaults>;

/// Where an element with this address is sent, for the arithmetic of overlaps. Views the address.
[[nodiscard]] PatchedElement PatchedElementOf(const MappedLedItem& element,
                                              const DMXMappingArtNet& address,
                                              const UniverseMerging& merging);

/// Of all elements of a document, in the universes that the merger puts them into. `answering` are
/// the addresses that answer or need not; none are judged while it is empty.
[[nodiscard]] FaultyElements
FindPatchFaults(std::span<MappedLedItem* const> elements, const UniverseMerging& merging,
                const std::optional<std::set<std::wstring>>& answering);

[[nodiscard]] Trouble TroubleOf(PatchFaults faults);

/// What is wrong with this element and what to do, a line for each; empty without faults.
[[nodiscard]] QString PatchFaultsText(const MappedLedItem& element, PatchFaults faults);
