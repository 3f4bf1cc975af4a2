// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include <QString>
#include <QStringView>

#include "Model/PatchTable.h"

class MappedDeviceModel;

/// What the cell of one channel shows beside its value.
struct UniverseCell
{
    enum class Ground : std::uint8_t
    {
        Free,    ///< nothing writes it
        Owned,   ///< by an element, which gives it its tint
        Received ///< of the desk whose DMX is merged
    };

    Ground ground = Ground::Free;
    std::uint8_t tint = 0;    ///< 0 to UniverseCells::Tints - 1, unlike that of the cells beside it
    bool begins = false;      ///< the first one of its owner, or of a run of its channels
    bool ends = false;        ///< the last one
    bool shared = false;      ///< another element writes it, too
    bool cut = false;         ///< its pixel has channels beyond 512
    std::int64_t element = 0; ///< number of its owner in the document, 0 for none

    bool operator==(const UniverseCell&) const = default;
};

/// The cells of channels 1 to 512.
struct UniverseCells
{
    static constexpr int Tints = 4;

    ChannelOwners owners;
    std::array<UniverseCell, 512> cells;

    /// Of a universe of the document's table; null for one without elements. `hasInput`: it begins
    /// as what is received.
    [[nodiscard]] static UniverseCells Of(const PatchUniverse* universe, bool hasInput,
                                          const MappedDeviceModel& document);
};

/// A channel that the operator asks for.
struct WantedChannel
{
    std::optional<int> portAddress; ///< none: that of the universe that is shown
    int channel = 1;                ///< 1 to 512

    bool operator==(const WantedChannel&) const = default;
};

/// "97" is a channel, "4/97" one of a Port-Address, "0/4/97" one of a sub-net's universe. Nothing
/// for any other text.
[[nodiscard]] std::optional<WantedChannel> ReadWantedChannel(QStringView text);
