// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <QString>

#include "ArtNet/ArtNetReceived.h"
#include "FixtureModel/PatchTarget.h"
#include "LEDEngine/UniverseRoute.h"
#include "Model/PatchTable.h"
#include "Model/Trouble.h"

class ArtNetOutput;
class MappedDeviceModel;

/// One universe in use, as the list of universes tells it.
struct UniverseRow
{
    enum class Kind : std::uint8_t
    {
        Sent,
        Received ///< for the merger
    };

    Kind kind = Kind::Sent;
    PatchTarget target; ///< of a received one the universe alone
    int used = 0;       ///< channels that elements are sent on
    bool isSent = false;
    bool hasInput = false; ///< it begins as what is received
    QString way;           ///< where it goes, or who sends it, in words
    Trouble trouble = Trouble::None;
    QString tip;

    [[nodiscard]] bool IsSameUniverse(const UniverseRow& other) const
    {
        return kind == other.kind && target == other.target;
    }
    bool operator==(const UniverseRow&) const = default;
};
using UniverseRows = std::vector<UniverseRow>;

/// The name of the node with this dotted address, empty when none is known.
using NodeNames = std::function<QString(const QString&)>;

/// "0/4 (4)": sub-net and universe, and the Port-Address.
[[nodiscard]] QString UniverseLabel(std::uint16_t portAddress);

/// Lines of plain text as a tip: a name in them may look like HTML.
[[nodiscard]] QString AsTip(const QString& text);

/// Whether the universe is one of the merger's output and begins as what someone sends to us now.
[[nodiscard]] bool HasInput(const PatchTarget& target, const UniverseMerging& merging,
                            const std::vector<ArtNetReceived>& received);

/// The universes that are sent, by Port-Address and node, and behind them the received ones.
/// `patch` is the document's table.
[[nodiscard]] UniverseRows UniverseRowsOf(const MappedDeviceModel& document,
                                          const PatchTable& patch, const ArtNetOutput& output,
                                          const std::vector<ArtNetReceived>& received,
                                          const NodeNames& names);

/// Where a universe goes, in words: "broadcast", names of nodes, or "nobody" with the reason.
[[nodiscard]] QString WayText(const UniverseRoute& route, const PatchTarget& target,
                              const NodeNames& names);
