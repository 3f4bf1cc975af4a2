// SPDX-License-Identifier: MIT
#pragma once

#include <bitset>
#include <optional>
#include <vector>

#include "Model/ElementChanges.h"
#include "Model/PatchTable.h"

class MappedDeviceModel;
class UniverseMerging;

/// How elements are patched elsewhere together.
struct PatchShift
{
    int channels = 0; ///< added to each first channel
    /// The universe that they are to end up in; nothing: each stays in its own.
    std::optional<PatchTarget> to;
};

/// Whether an element can be patched so that it ends up in this universe: not in one above
/// Port-Address 255, nor in a received one, which the merger sends on as another.
[[nodiscard]] bool MayBePatched(const PatchTarget& universe, const UniverseMerging& merging);

/// The addresses of these elements after the shift, in the order of `ids`. With merging on, what is
/// to end up in the merger's output is patched into the received run, since the merger sends it
/// on. Elements without an Art-Net address are left out; into a universe that can't be patched none
/// is moved. `patch` is the document's.
[[nodiscard]] std::vector<ElementAddress> ShiftedAddresses(const MappedDeviceModel& document,
                                                           const PatchTable& patch,
                                                           const ElementIds& ids,
                                                           const PatchShift& shift);

/// What elements would do at other addresses, and where in the shown universe. Channel 1 is bit 0.
struct PatchMove
{
    std::bitset<512> channels; ///< that they would be sent on
    std::bitset<512> taken;    ///< of these, those that another element is sent on, too
    int shared = 0;            ///< the channels that are taken, of all universes together
    bool fits = true; ///< each of them has all of its channels within 1 to 512, in any universe

    bool operator==(const PatchMove&) const = default;
};

/// `moved` are addresses of elements of this document, whose patch is `patch`; `universe` is the
/// shown one.
[[nodiscard]] PatchMove PreviewMove(const MappedDeviceModel& document, const PatchTable& patch,
                                    const std::vector<ElementAddress>& moved,
                                    const PatchTarget& universe);
