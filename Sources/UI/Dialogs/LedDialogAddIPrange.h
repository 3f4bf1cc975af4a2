// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Dialogs/FixedDialog.h"

class IPCtrlManualIPRange;
class QPushButton;

/// Asks for a range of addresses, such as 2.X.X.X, that names a network. Its results are
/// accepted, rejected and `Deleted`; what becomes of the range is its caller's work.
class LedDialogAddIPrange : public FixedDialog
{
    Q_OBJECT

public:
    static constexpr int Deleted = 2;

    explicit LedDialogAddIPrange(QWidget* parent = nullptr);

    /// Ready for a range that doesn't exist yet.
    void SetUpForNew();
    /// Ready to change this range or to delete it.
    void SetUpForEdit(const QString& range);

    /// The range as it stands in the fields: four parts, each a number or X.
    [[nodiscard]] QString GetRange() const;

public slots:
    void DeleteItem();

private:
    IPCtrlManualIPRange* confIP = nullptr;
    QPushButton* deleteButton = nullptr;
};
