// SPDX-License-Identifier: MIT
#include "UI/Dialogs/OperatorBoxes.h"

#include <QFileDialog>
#include <QPushButton>

bool WidgetBoxes::Ask(QWidget* parent, const QString& title, const QString& text,
                      QMessageBox::StandardButton byDefault)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::Cancel,
                    parent);
    box.setDefaultButton(byDefault);
    return box.exec() == QMessageBox::Yes;
}

void WidgetBoxes::Notify(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::NoIcon, title, text, QMessageBox::Ok, parent);
    box.exec();
}

int WidgetBoxes::Choose(const Choice& choice)
{
    QMessageBox box(choice.icon, choice.title, choice.text);
    QList<QAbstractButton*> buttons;
    for (const QString& text : choice.buttons) {
        // More than one button of the reject role would leave Escape to Qt's guess.
        const bool rejects = buttons.size() == choice.onEscape;
        buttons.append(
            box.addButton(text, rejects ? QMessageBox::RejectRole : QMessageBox::AcceptRole));
        if (rejects)
            box.setEscapeButton(buttons.last());
    }
    if (!buttons.isEmpty())
        box.setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    box.exec();
    return buttons.indexOf(box.clickedButton());
}

QString WidgetBoxes::OpenFile(QWidget* parent, const QString& caption, const QString& directory,
                              const QString& filter)
{
    return QFileDialog::getOpenFileName(parent, caption, directory, filter);
}

QString WidgetBoxes::SaveFile(QWidget* parent, const QString& caption, const QString& directory,
                              const QString& filter)
{
    return QFileDialog::getSaveFileName(parent, caption, directory, filter);
}

QString WidgetBoxes::ChooseDirectory(QWidget* parent, const QString& caption)
{
    return QFileDialog::getExistingDirectory(parent, caption, QString(), QFileDialog::ShowDirsOnly);
}
