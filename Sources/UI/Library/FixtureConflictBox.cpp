// SPDX-License-Identifier: MIT
#include "UI/Library/FixtureConflictBox.h"

#include "Model/DeviceModel.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace {

QString Text(const char* text)
{
    return QCoreApplication::translate("FixtureConflictBox", text);
}

/// The number of the pressed button.
int Ask(const QString& question, const QStringList& answers)
{
    QMessageBox box(QMessageBox::Information, Text("Fixture conflict"), question);
    box.setObjectName(QStringLiteral("fixtureConflictBox"));
    QList<QAbstractButton*> buttons;
    for (const QString& answer : answers) {
        // A button of this role is never taken for the one that Escape presses.
        QPushButton* button = box.addButton(answer, QMessageBox::ActionRole);
        if (buttons.isEmpty())
            box.setDefaultButton(button);
        buttons.append(button);
    }
    box.exec();
    const int pressed = static_cast<int>(buttons.indexOf(box.clickedButton()));
    // None only when the program ends under the box: the library stays as it is.
    return pressed >= 0 ? pressed : KeepFixture;
}

} // namespace

int AskAboutDocumentFixture(const QString& manufacturer, const QString& product)
{
    return Ask(Text("The fixture \"%1 %2\" stored in the mapping file is different to the one in "
                    "your library.\n\nDo you want to overwrite the library fixture ?")
                   .arg(manufacturer, product),
               {Text("Yes, use the fixture from the mapping file"),
                Text("No, use the original fixture from the library")});
}

int AskAboutLibraryUpdate(const QString& /*manufacturer*/, const QString& /*product*/)
{
    return Ask(Text("Conflict occured while updating your library.\n\nDo you want to overwrite "
                    "the local library fixture ?"),
               {Text("Overwrite"), Text("Skip"), Text("Cancel")});
}
