// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QString>

#include "Model/ArtNetNodeRecord.h"
#include "Model/ElementChanges.h"

class ArtNetNodeModel;
class DeviceManager;
class InspectorCanvas;
class LEDDialogManualNode;
class NodeComboBox;
class OperatorBoxes;
class QUndoStack;

/// Lets the operator enter, change and delete manual nodes, each as one step of the undo history
/// together with the addresses of the elements that are sent to the node.
class ManualNodeEditing
{
public:
    struct Parts
    {
        DeviceManager& manager;
        ArtNetNodeModel& nodes;
        QUndoStack& undoStack;
        OperatorBoxes& boxes;
        InspectorCanvas& canvas;
        NodeComboBox& list; ///< knows the network and what is offered; its window owns the dialogs
    };
    /// All parts outlive this object.
    explicit ManualNodeEditing(const Parts& parts);

    /// A new node, to which these elements are sent. `ids` must not change while the dialog is
    /// open.
    void Enter(const ElementIds& ids);
    /// The manual node of this address; nothing when there is none.
    void Edit(const QString& address);
    /// The document goes, and with it what an open dialog asks about.
    void Stop();

private:
    int Ask(LEDDialogManualNode& dialog);
    [[nodiscard]] QString ObjectionTo(const QString& address, const QString& own) const;
    void Replace(const std::optional<ArtNetNodeRecord>& before,
                 const std::optional<ArtNetNodeRecord>& after, const ElementIds& ids);
    [[nodiscard]] ElementIds ElementsSentTo(const QString& address) const;

    Parts parts_;
    LEDDialogManualNode* openDialog_ = nullptr;
};
