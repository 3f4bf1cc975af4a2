// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Dialogs/FixedDialog.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

/// Asks how many times an element is repeated in each direction, and in which order the wall is
/// patched. It can't be accepted while the counts make too many elements, and says so.
class LEDDialogDuplicateMappingElement : public FixedDialog
{
    Q_OBJECT

public:
    /// `mostElements` is the most that may be made at a time, with the one that is there.
    explicit LEDDialogDuplicateMappingElement(int mostElements, QWidget* parent = nullptr);

    /// Puts the keyboard on the first count, ready to be typed over.
    void FocusCount();

    [[nodiscard]] int GetAcross() const;
    [[nodiscard]] int GetDown() const;
    /// 0 from left to right, 1 from right to left, 2 from top to bottom, 3 from bottom to top.
    [[nodiscard]] int GetFirstDirection() const;
    /// 0 or 1, the entry of the second box.
    [[nodiscard]] int GetThenDirection() const;

public slots:
    /// Gives the second box the axis that the first one leaves.
    void updateCombobox2();

private:
    void JudgeCounts();

    int mostElements_;
    QSpinBox* spinHorzizontalCount = nullptr;
    QSpinBox* spinVerticalCount = nullptr;
    QComboBox* comboDirectionFirst = nullptr;
    QComboBox* comboDirectionThen = nullptr;
    QLabel* totalLabel_ = nullptr;
    QPushButton* okButton_ = nullptr;
};
