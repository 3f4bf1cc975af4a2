// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Main/WEFTMain.h"

/// The application with its one window, which is built after QApplication and destroyed before it.
class PixelWeftApp : public QApplication
{
    Q_OBJECT

public:
    PixelWeftApp(int& argc, char** argv);

    [[nodiscard]] WEFTMain& MainWindow() { return window_; }

    bool event(QEvent* event) override;

private:
    /// What must be set before the window is built: plain numbers for the first file that it reads,
    /// the look for the first box.
    struct Surroundings
    {
        Surroundings();
    };
    Surroundings surroundings_;
    WidgetBoxes boxes_;
    WEFTMain window_;
};
