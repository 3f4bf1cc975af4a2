// SPDX-License-Identifier: MIT
#include "UI/Library/FixtureConflictBox.h"

#include <QCoreApplication>

#include "Model/DeviceModel.h"
#include "UI/Dialogs/OperatorBoxes.h"

namespace {

struct ConflictWords
{
    Q_DECLARE_TR_FUNCTIONS(FixtureConflictBox)
};

int Ask(OperatorBoxes& boxes, const QString& question, const QStringList& answers)
{
    OperatorBoxes::Choice choice;
    choice.icon = QMessageBox::Information;
    choice.title = ConflictWords::tr("Fixture conflict");
    choice.text = question;
    choice.buttons = answers;
    const int pressed = boxes.Choose(choice);
    // No button only when the program ends while the box is open: the library stays as it is.
    return pressed >= 0 ? pressed : KeepFixture;
}

} // namespace

int AskAboutDocumentFixture(OperatorBoxes& boxes, const QString& manufacturer,
                            const QString& product)
{
    return Ask(boxes,
               ConflictWords::tr(
                   "The fixture \"%1 %2\" stored in the mapping file is different to the one in "
                   "your library.\n\nDo you want to overwrite the library fixture ?")
                   .arg(manufacturer, product),
               {ConflictWords::tr("Yes, use the fixture from the mapping file"),
                ConflictWords::tr("No, use the original fixture from the library")});
}

int AskAboutLibraryUpdate(OperatorBoxes& boxes)
{
    return Ask(
        boxes,
        ConflictWords::tr(
            "Conflict occured while updating your library.\n\nDo you want to overwrite "
            "the local library fixture ?"),
        {ConflictWords::tr("Overwrite"), ConflictWords::tr("Skip"), ConflictWords::tr("Cancel")});
}
