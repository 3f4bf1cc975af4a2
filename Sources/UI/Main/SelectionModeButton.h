// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <QToolButton>

#include "UI/Widgets/ActionSet.h"

class DeviceManager;

/// Chooses how the selection shows on the fixtures themselves: not at all, in solid colour,
/// flashing. The button shows the current mode.
class SelectionModeButton : public QToolButton
{
    Q_OBJECT

public:
    /// `manager` outlives the button, `window` owns the button and its actions.
    SelectionModeButton(DeviceManager& manager, QWidget& window);

public slots:
    void ActionSelectionMode_None() { SetMode(0); }
    void ActionSelectionMode_Solid() { SetMode(1); }
    void ActionSelectionMode_Flash() { SetMode(2); }

private:
    void SetMode(int mode);

    DeviceManager& manager_;
    ActionSet actions_;
    std::array<QAction*, 3> modes_{}; ///< by the number of their mode
};
