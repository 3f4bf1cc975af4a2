// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "ArtNet/ArtNetReceived.h"
#include "FixtureModel/UniverseMerging.h"
#include "LEDEngine/OutputState.h"
#include "LEDEngine/RateMeter.h"
#include "UI/Output/UniverseRows.h"

/// What goes out, read now and then from document and output, without a window. Reading costs
/// little while nothing changed: rows are built again only when what they tell of did.
class UniverseWatch
{
public:
    /// Both outlive the object.
    UniverseWatch(const MappedDeviceModel& document, const ArtNetOutput& output, NodeNames names);

    /// The next look builds the rows again: elements were added, patched or changed in another way.
    void NoteDocument() { documentChanged_ = true; }
    /// The same for nodes that have other names.
    void NoteNodes() { rowsDue_ = true; }

    /// True when the rows, or what they stand for, are no longer as they were.
    bool Look();
    /// Counts frames, for the rates. `now` is in nanoseconds of the monotonic clock.
    void CountFrames(std::int64_t now);
    /// The rates begin anew: nobody counted for a while.
    void ForgetFrames();

    [[nodiscard]] const UniverseRows& Rows() const { return rows_; }
    [[nodiscard]] const PatchTable& Patch() const { return patch_; }
    /// Another number whenever an element is sent elsewhere than before.
    [[nodiscard]] std::uint32_t PatchVersion() const { return patchVersion_; }
    /// What the last frame had on the channels of this universe from 1 on; those behind the end
    /// were not sent. Valid until the next frame.
    [[nodiscard]] std::span<const std::uint8_t> ValuesOf(const UniverseRow& row) const;
    /// Frames of this universe a second; nothing until they were counted twice.
    [[nodiscard]] std::optional<double> FramesOf(const UniverseRow& row) const;

private:
    /// What the rows depend on beside the elements.
    struct Circumstances
    {
        UniverseMerging merging;
        bool autoUnicast = false;
        OutputState state = OutputState::Disabled;
        bool suspended = false;
        std::uint32_t broadcast = 0;
        std::uint32_t nodesVersion = 0;
        std::vector<std::uint64_t> received; ///< Port-Address and sender of each universe

        bool operator==(const Circumstances&) const = default;
    };
    [[nodiscard]] Circumstances ReadCircumstances() const;

    const MappedDeviceModel& document_;
    const ArtNetOutput& output_;
    const NodeNames names_;
    bool documentChanged_ = true;
    bool rowsDue_ = true;
    Circumstances circumstances_;
    PatchTable patch_;
    std::uint32_t patchVersion_ = 0;
    UniverseRows rows_;
    std::vector<ArtNetReceived> received_;
    RateMeter sent_;
    std::map<std::uint16_t, RateMeter> receivedRates_; ///< by Port-Address
};
