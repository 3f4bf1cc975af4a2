// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Dialogs/FixedDialog.h"

class QCheckBox;
class QSpinBox;

/// Asks for the size of the canvas in pixels, and what becomes of the elements on it.
class LEDDialogCanvasSize : public FixedDialog
{
    Q_OBJECT

public:
    explicit LEDDialogCanvasSize(QWidget* parent = nullptr);

    /// Shows this size, held within 1 to 4096 a side.
    void SetSize(int width, int height);
    /// The size as it was accepted; before that, as it was set.
    [[nodiscard]] int GetWidth() const { return width_; }
    [[nodiscard]] int GetHeight() const { return height_; }
    [[nodiscard]] bool KeepsPositions() const;

    void accept() override;

private:
    QSpinBox* spinBoxWidth = nullptr;
    QSpinBox* spinBoxHeight = nullptr;
    QCheckBox* cbKeepPositions = nullptr;
    int width_ = 0;
    int height_ = 0;
};
