// SPDX-License-Identifier: MIT
#include "UI/TestPattern/TestPatternPanel.h"

#include <QDir>

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
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Choose &Test Image..."),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Choose test image")},
                 this, &TestPatternPanel::ActionChooseTestImage);
    actions_.Add({.objectName = "actionChoose_Test_Image_Dir",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Choose Test Image &Directory..."),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Choose test image directory")},
                 this, &TestPatternPanel::ActionChooseTestImageDirectory);
    connect(&control_, &LEDTestPatternControl::directoryHasNone, this,
            [this](const QString& directory) {
                emit told(WindowText(QT_TRANSLATE_NOOP("WEFTMain",
                                                       "No test image can be read in %1: is its "
                                                       "disk connected?"))
                              .arg(QDir::toNativeSeparators(directory)));
            });
}

void TestPatternPanel::ActionChooseTestImage()
{
    const QString file = boxes_.OpenFile(
        &window_, WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Open Test Image")), QString(),
        WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Image Files (%1)"))
            .arg(LEDTestPatternControl::NameFilters().join(QLatin1Char(' '))));
    if (file.isEmpty())
        return;
    const QString failure = control_.SetFile(file);
    if (!failure.isEmpty())
        TellNotShown(WindowText(QT_TRANSLATE_NOOP("WEFTMain", "The picture %1 can't be read: %2."))
                         .arg(QDir::toNativeSeparators(file), failure));
}

void TestPatternPanel::ActionChooseTestImageDirectory()
{
    const QString directory = boxes_.ChooseDirectory(
        &window_, WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Choose Test Image Directory")));
    if (!directory.isEmpty() && !control_.SetDirectory(directory))
        TellNotShown(WindowText(QT_TRANSLATE_NOOP("WEFTMain", "The folder %1 has no picture that "
                                                              "can be read."))
                         .arg(QDir::toNativeSeparators(directory)));
}

void TestPatternPanel::TellNotShown(const QString& reason)
{
    boxes_.Notify(
        &window_, WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Test Image Not Read")),
        WindowText(QT_TRANSLATE_NOOP("WEFTMain", "%1\n\nThe test image stays the one before."))
            .arg(reason));
}

void TestPatternPanel::ActionNextTestImage()
{
    control_.Next();
}

void TestPatternPanel::ActionPreviousTestImage()
{
    control_.Previous();
}
