// SPDX-License-Identifier: MIT
#include "UI/Dialogs/OperatorBoxes.h"

#include <QFileDialog>
#include <QPushButton>

namespace {

/// What a box tells may quote a file or a name, and Qt takes what looks like markup for markup.
class PlainBox final : public QMessageBox
{
public:
    PlainBox(Icon icon, const QString& title, const QString& text, StandardButtons buttons,
             QWidget* parent)
        : QMessageBox(icon, title, text, buttons, parent)
    {
        setTextFormat(Qt::PlainText);
    }
};

} // namespace

bool WidgetBoxes::Ask(QWidget* parent, const QString& title, const QString& text,
                      QMessageBox::StandardButton byDefault)
{
    PlainBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::Cancel,
                 parent);
    box.setDefaultButton(byDefault);
    return box.exec() == QMessageBox::Yes;
}

OperatorBoxes::UnsavedAnswer WidgetBoxes::AskToSave(QWidget* parent, const QString& title,
                                                    const QString& text)
{
    PlainBox box(QMessageBox::Question, title, text,
                 QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    // Some desktops call it "Close without Saving", which would not be true of each question.
    box.button(QMessageBox::Discard)->setText(QMessageBox::tr("Discard"));
    box.setDefaultButton(QMessageBox::Cancel);
    switch (box.exec()) {
    case QMessageBox::Save:
        return UnsavedAnswer::Save;
    case QMessageBox::Discard:
        return UnsavedAnswer::Discard;
    default:
        return UnsavedAnswer::Cancel;
    }
}

bool WidgetBoxes::Confirm(QWidget* parent, const QString& title, const QString& text)
{
    PlainBox box(QMessageBox::Warning, title, text, QMessageBox::Yes | QMessageBox::No, parent);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void WidgetBoxes::Notify(QWidget* parent, const QString& title, const QString& text)
{
    PlainBox box(QMessageBox::NoIcon, title, text, QMessageBox::Ok, parent);
    box.exec();
}

void WidgetBoxes::Warn(QWidget* parent, const QString& title, const QString& text)
{
    PlainBox box(QMessageBox::Warning, title, text, QMessageBox::Ok, parent);
    box.exec();
}

int WidgetBoxes::Choose(const Choice& choice)
{
    PlainBox box(choice.icon, choice.title, choice.text, QMessageBox::NoButton, choice.parent);
    QList<QAbstractButton*> buttons;
    for (const QString& text : choice.buttons) {
        // Qt gives Escape to a lone reject button, and sorts the buttons by their roles as the
        // desktop wants it; those of the action role stay in their order and out of Escape's way.
        const bool rejects = buttons.size() == choice.onEscape;
        const auto role = choice.onEscape < 0 ? QMessageBox::ActionRole : QMessageBox::AcceptRole;
        buttons.append(box.addButton(text, rejects ? QMessageBox::RejectRole : role));
        if (rejects)
            box.setEscapeButton(buttons.last());
    }
    box.setDefaultButton(qobject_cast<QPushButton*>(buttons.value(choice.byDefault)));
    box.exec();
    return static_cast<int>(buttons.indexOf(box.clickedButton()));
}

QString WidgetBoxes::OpenFile(QWidget* parent, const QString& caption, const QString& directory,
                              const QString& filter)
{
    return QFileDialog::getOpenFileName(parent, caption, directory, filter);
}

QStringList WidgetBoxes::OpenFiles(QWidget* parent, const QString& caption,
                                   const QString& directory, const QString& filter)
{
    return QFileDialog::getOpenFileNames(parent, caption, directory, filter);
}

QString WidgetBoxes::SaveFile(QWidget* parent, const QString& caption, const QString& directory,
                              const QString& filter, const QString& suffix)
{
    // With the suffix that is added to a bare name, so that the dialog asks before a file with the
    // whole name is written over.
    QFileDialog dialog(parent, caption, directory, filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(suffix);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString WidgetBoxes::ChooseDirectory(QWidget* parent, const QString& caption)
{
    return QFileDialog::getExistingDirectory(parent, caption, QString(), QFileDialog::ShowDirsOnly);
}
