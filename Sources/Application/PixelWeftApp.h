// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

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
    /// Makes the numbers of our files plain again before the window reads the first one.
    struct PlainNumbers
    {
        PlainNumbers();
    };
    PlainNumbers plainNumbers_;
    WEFTMain window_;
};
