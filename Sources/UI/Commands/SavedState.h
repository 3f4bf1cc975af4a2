// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class DeviceManager;
class QUndoStack;

/// Whether the document is as its file has it. Undo and redo that come back to the step of the last
/// save make it saved again, unless something changed meanwhile that no step takes back. It tells
/// DeviceManager, which tells all others; a save is told to DeviceManager in the usual way.
class SavedState : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object.
    SavedState(DeviceManager& manager, QUndoStack& history);

private:
    void FollowHistory();
    void FollowOthers(bool saved);

    DeviceManager& manager_;
    QUndoStack& history_;
    bool historyDiffers_ = false;
    bool othersDiffer_ = false; ///< what is no step: the network, preferences, an import
    bool telling_ = false;
};
