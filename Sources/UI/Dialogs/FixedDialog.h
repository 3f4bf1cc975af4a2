// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QDialogButtonBox>

class QHBoxLayout;
class QPushButton;
class QScrollArea;

/// A dialog of a fixed size: the requested one (in device-independent pixels), or more where its
/// texts need more in the desktop's font. On a screen that is too small for that its contents
/// scroll above the buttons.
class FixedDialog : public QDialog
{
    Q_OBJECT

public:
    FixedDialog(QSize requested, QWidget* parent);

    void setVisible(bool visible) override;

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

    /// Another size from now on, for a dialog whose texts changed.
    void Request(QSize requested);
    void showEvent(QShowEvent* event) override;

private:
    void Fit();
    [[nodiscard]] QSize NeededSize() const;
    void MakeContentsScroll();
    [[nodiscard]] QSize ScrollingSize() const;

    QSize requested_;
    QDialogButtonBox* buttons_ = nullptr;
    QScrollArea* scroll_ = nullptr; ///< when the screen is too small
};
