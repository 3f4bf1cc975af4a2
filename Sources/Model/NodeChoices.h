// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QString>

class ArtNetNodeModel;

/// A node that elements can be sent to.
struct NodeChoice
{
    QString name;
    QString address; ///< dotted
    int useCount = 0;

    /// "Left (2.0.0.10)"
    [[nodiscard]] QString Text() const { return QStringLiteral("%1 (%2)").arg(name, address); }
};

/// The nodes that the operator chooses from, by their addresses: those that are known in the
/// network of this broadcast address, and those that the operator entered, wherever they are. Only
/// the latter without a network.
[[nodiscard]] std::vector<NodeChoice> NodeChoices(ArtNetNodeModel& nodes,
                                                  std::optional<std::uint32_t> network);
