// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "UI/Widgets/ActionSet.h"

class LEDTestPatternControl;
class OperatorBoxes;

/// The operator's side of the test picture: its two entries in the File menu, and the steps from
/// picture to picture.
class TestPatternPanel : public QObject
{
    Q_OBJECT

public:
    /// All three outlive the panel; `window` is the parent of the file dialogs.
    TestPatternPanel(LEDTestPatternControl& control, OperatorBoxes& boxes, QWidget& window);

public slots:
    void ActionChooseTestImage();
    void ActionChooseTestImageDirectory();
    void ActionNextTestImage();
    void ActionPreviousTestImage();

signals:
    /// A sentence for the status line.
    void told(const QString& words);

private:
    /// A choice that failed changes nothing.
    void TellNotShown(const QString& reason);

    LEDTestPatternControl& control_;
    OperatorBoxes& boxes_;
    QWidget& window_;
    ActionSet actions_;
};
