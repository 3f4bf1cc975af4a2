// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QDialogButtonBox>

class QHBoxLayout;
class QPushButton;

/// A dialog of a fixed size: the requested one (in device-independent pixels), or more where its
/// texts need more in the desktop's font.
class FixedDialog : public QDialog
{
    Q_OBJECT

public:
    FixedDialog(QSize requested, QWidget* parent);

protected:
    /// Buttons that accept and reject the dialog, whose layout owns them.
    [[nodiscard]] QDialogButtonBox* MakeButtons(QDialogButtonBox::StandardButtons which);
    /// OK and Cancel, and apart from them Delete, which the keyboard reaches last.
    struct ButtonsWithDelete
    {
        QHBoxLayout* row;
        QPushButton* ok;
        QPushButton* cancel;
        QPushButton* remove;
    };
    /// A layout owns the row. `remove` does nothing yet.
    [[nodiscard]] ButtonsWithDelete MakeButtonsWithDelete();

    void showEvent(QShowEvent* event) override;

private:
    QSize requested_;
};
