// SPDX-License-Identifier: MIT
#include "UI/Commands/SavedState.h"

#include <QScopedValueRollback>
#include <QUndoStack>

#include "Model/DeviceManager.h"

SavedState::SavedState(DeviceManager& manager, QUndoStack& history)
    : manager_(manager)
    , history_(history)
{
    connect(&history, &QUndoStack::indexChanged, this, &SavedState::FollowHistory);
    connect(&manager, &DeviceManager::signalDocumentSavedState, this, &SavedState::FollowOthers);
}

void SavedState::FollowHistory()
{
    // Steps that are forgotten can't be taken back any more.
    if (history_.count() == 0 && historyDiffers_)
        othersDiffer_ = true;
    historyDiffers_ = !history_.isClean();
    const QScopedValueRollback<bool> guard(telling_, true);
    manager_.SetDocumentDirty(historyDiffers_ || othersDiffer_);
}

void SavedState::FollowOthers(bool saved)
{
    if (telling_)
        return;
    othersDiffer_ = !saved;
    if (saved) {
        history_.setClean();
        historyDiffers_ = false;
    }
}
