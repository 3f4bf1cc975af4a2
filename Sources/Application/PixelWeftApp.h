// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Main/WEFTMain.h"

/// The application with its one window, which is built after QApplication and goes before it.
class PixelWeftApp : public QApplication
{
    Q_OBJECT

public:
    PixelWeftApp(int& argc, char** argv);

    [[nodiscard]] WEFTMain& MainWindow() { return window_; }

    bool event(QEvent* event) override;

private:
    /// What must stand before the window: plain numbers for the first file it reads, the look of
    /// the desk for the first box.
    struct Ground
    {
        Ground();
    };
    Ground ground_;
    WidgetBoxes boxes_;
    WEFTMain window_;
};
