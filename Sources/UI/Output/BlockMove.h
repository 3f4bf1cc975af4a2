// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "Model/ElementChanges.h"
#include "Model/PatchMove.h"

class DeviceManager;
class QUndoStack;

/// Elements that the operator drags to other channels: what that would do, in words and channels,
/// and the step that does it.
class BlockMove
{
public:
    /// `manager` outlives the object.
    explicit BlockMove(const DeviceManager& manager)
        : manager_(manager)
    {}

    /// To these channels, or to another universe. `shown` is the universe for the preview.
    void To(const PatchTable& patch, const ElementIds& ids, const PatchShift& shift,
            const PatchTarget& shown);
    /// Nothing is moved any more.
    void Clear();

    /// Null while nothing is moved.
    [[nodiscard]] const PatchMove* Preview() const { return move_ ? &*move_ : nullptr; }
    /// What would be where, and what is wrong with it.
    [[nodiscard]] QString Words() const;
    /// Whether it can be done: channels that others have, too, can be put right later; channels
    /// beyond the end are not sent.
    [[nodiscard]] bool MayDrop() const { return move_ && move_->fits; }
    /// Does it as a step of the history, if it may be done and changes anything, and clears.
    void Drop(DeviceManager& manager, QUndoStack& history);

private:
    const DeviceManager& manager_;
    std::vector<ElementAddress> addresses_;
    std::optional<PatchMove> move_;
    std::optional<PatchTarget> refused_; ///< the universe they were dragged to can't be patched
};
