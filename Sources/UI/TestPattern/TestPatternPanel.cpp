// SPDX-License-Identifier: MIT
#include "UI/TestPattern/TestPatternPanel.h"

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/TestPattern/LEDTestPatternControl.h"

TestPatternPanel::TestPatternPanel(LEDTestPatternControl& control, OperatorBoxes& boxes,
                                   QWidget& window)
    : control_(control)
    , boxes_(boxes)
    , window_(window)
    , actions_(window)
{
    actions_.Add({.objectName = "actionChoose_Test_Image",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Choose Test Image..."),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Choose test image")},
                 this, &TestPatternPanel::ActionChooseTestImage);
    actions_.Add({.objectName = "actionChoose_Test_Image_Dir",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Choose Test Image Directory..."),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Choose test image directory")},
                 this, &TestPatternPanel::ActionChooseTestImageDirectory);
}

void TestPatternPanel::ActionChooseTestImage()
{
    const QString file = boxes_.OpenFile(
        &window_, WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Open Test Image")), QString(),
        WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Image Files (*.bmp *.png *.gif)")));
    if (!file.isEmpty())
        control_.SetFile(file);
}

void TestPatternPanel::ActionChooseTestImageDirectory()
{
    const QString directory = boxes_.ChooseDirectory(
        &window_, WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Choose Test Image Directory")));
    if (!directory.isEmpty())
        control_.SetDirectory(directory);
}

void TestPatternPanel::ActionNextTestImage()
{
    control_.Next();
}

void TestPatternPanel::ActionPreviousTestImage()
{
    control_.Previous();
}
