// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Installed on the input fields of a dialog, it swallows Return and Enter: an operator who
/// ends a number with them doesn't mean to end the dialog.
class InputFieldEnterFilter final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};
