// SPDX-License-Identifier: MIT
#pragma once

#include <QFormLayout>
#include <QLabel>
#include <QString>

/// Another text for the label of a field, whose name for screen readers follows.
inline void SetLabel(QLabel& label, const QString& text)
{
    label.setText(text);
    label.buddy()->setAccessibleName(
        QString(text).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
}

/// A field of a form with its object name, and the label that leads to it; both belong to the
/// layout that takes them. What screen readers say is the label without its mnemonic and colon.
template <class Field>
[[nodiscard]] Field* MakeField(const char* objectName, const QString& label, QLabel*& buddy)
{
    auto* field = new Field;
    field->setObjectName(QLatin1String(objectName));
    buddy = new QLabel;
    buddy->setBuddy(field);
    SetLabel(*buddy, label);
    return field;
}

/// The same as a row of the form.
template <class Field>
[[nodiscard]] Field* AddRow(QFormLayout& rows, const char* objectName, const QString& label)
{
    QLabel* buddy = nullptr;
    auto* field = MakeField<Field>(objectName, label, buddy);
    rows.addRow(buddy, field);
    return field;
}
