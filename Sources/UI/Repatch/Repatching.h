// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QObject>

#include "Model/ElementChanges.h"
#include "Model/Repatch.h"
#include "UI/Widgets/ActionSet.h"

class ArtNetNodeModel;
class DeviceManager;
class QUndoStack;
class RepatchDialog;

/// The action that gives the selected elements new addresses, as one step.
class Repatching final : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        ArtNetNodeModel& nodes;
        QUndoStack& undoStack;
        QWidget& window;
        /// The selected elements, after a gesture that still runs has ended.
        std::function<ElementIds()> takeSelection;
        /// The chosen network as dotted text, with 255 for each open part; empty for none.
        std::function<QString()> network;
    };

    /// All parts outlive this object.
    explicit Repatching(Parts parts);

    /// The window owns it.
    [[nodiscard]] QAction* Action() const { return repatch_; }
    /// The action is for one element or more.
    void FollowSelection(int count);

public slots:
    /// Asks how the selected elements are patched. The order and the rules of the last time are
    /// offered again, with the lowest address that the elements have now.
    void ActionRepatch();

private:
    void OfferNodes(RepatchDialog& dialog) const;

    Parts parts_;
    ActionSet actions_;
    QAction* repatch_ = nullptr;
    RepatchOptions options_; ///< of the last time
};
