// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <QToolButton>

class DeviceManager;
class QAction;

/// Chooses how the selection shows on the fixtures themselves: not at all, in solid colour,
/// flashing. The button wears the mode in force.
class SelectionModeButton : public QToolButton
{
    Q_OBJECT

public:
    /// `modes` are the actions of the modes 0, 1 and 2. All outlive the button.
    SelectionModeButton(DeviceManager& manager, const std::array<QAction*, 3>& modes,
                        QWidget* parent = nullptr);

    void SetMode(int mode);

private:
    DeviceManager& manager_;
    std::array<QAction*, 3> modes_;
};
