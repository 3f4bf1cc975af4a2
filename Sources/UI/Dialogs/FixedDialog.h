// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QDialogButtonBox>

/// A dialog of a fixed size, which is the told one (in device-independent pixels) or what its texts
/// need in the desktop's font.
class FixedDialog : public QDialog
{
    Q_OBJECT

public:
    FixedDialog(QSize told, QWidget* parent);

protected:
    /// Buttons that accept and reject the dialog, whose layout owns them.
    [[nodiscard]] QDialogButtonBox* MakeButtons(QDialogButtonBox::StandardButtons which);

    void showEvent(QShowEvent* event) override;

private:
    QSize told_;
};
