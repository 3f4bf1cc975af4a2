// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

/// What this program is and who made it. The two lines of credits come from the program's
/// resources.
class WEFTAboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit WEFTAboutDialog(QWidget* parent = nullptr, const QString& creditsFile = QStringLiteral(
                                                            ":/text/Docs/Credits.txt"));
};
