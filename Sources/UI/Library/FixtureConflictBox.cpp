// SPDX-License-Identifier: MIT
#include "UI/Library/FixtureConflictBox.h"

#include "Model/DeviceModel.h"
#include "UI/Dialogs/OperatorBoxes.h"

#include <QCoreApplication>

namespace {

QString Text(const char* text)
{
    return QCoreApplication::translate("FixtureConflictBox", text);
}

int Ask(OperatorBoxes& boxes, const QString& question, const QStringList& answers)
{
    OperatorBoxes::Choice choice;
    choice.icon = QMessageBox::Information;
    choice.title = Text("Fixture conflict");
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
               Text("The fixture \"%1 %2\" stored in the mapping file is different to the one in "
                    "your library.\n\nDo you want to overwrite the library fixture ?")
                   .arg(manufacturer, product),
               {Text("Yes, use the fixture from the mapping file"),
                Text("No, use the original fixture from the library")});
}

int AskAboutLibraryUpdate(OperatorBoxes& boxes)
{
    return Ask(boxes,
               Text("Conflict occured while updating your library.\n\nDo you want to overwrite "
                    "the local library fixture ?"),
               {Text("Overwrite"), Text("Skip"), Text("Cancel")});
}
