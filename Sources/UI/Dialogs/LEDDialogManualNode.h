// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "Model/ArtNetNodeRecord.h"
#include "UI/Dialogs/FixedDialog.h"

class IPCtrlManualNodeIP;
class OperatorBoxes;
class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for a node that doesn't answer, or not yet: its name and its address. Its results are
/// accepted, rejected and `Deleted`; what becomes of the node is its caller's work.
class LEDDialogManualNode : public FixedDialog
{
    Q_OBJECT

public:
    static constexpr int Deleted = 2;

    /// Says why an address can't be taken; an empty text when it can.
    using Objection = std::function<QString(const QString& address)>;

    /// `boxes` outlives the dialog.
    LEDDialogManualNode(OperatorBoxes& boxes, Objection objection, QWidget* parent = nullptr);

    // A network is four parts with points between them, 255 for a part that can be typed.

    /// Ready for a node that doesn't exist yet.
    void SetUpForNew(const QString& network);
    /// Ready to change this node or to delete it. The parts that the network doesn't leave open
    /// are those of the network.
    void SetUpForEdit(const QString& name, const QString& address, const QString& network);

    /// The node as it stands in the fields.
    [[nodiscard]] ArtNetNodeRecord GetNode() const;

    /// Stays open while the address is not complete or can't be taken.
    void accept() override;

public slots:
    /// Deletes the node when the operator confirms it.
    void DeleteItem();

private:
    [[nodiscard]] QString WhyNotReady() const;
    void ShowState();

    OperatorBoxes& boxes_;
    Objection objection_;
    QLineEdit* confName = nullptr;
    IPCtrlManualNodeIP* confIP = nullptr;
    QLabel* hintLabel = nullptr;
    QPushButton* okButton = nullptr;
    QPushButton* deleteButton = nullptr;
};
