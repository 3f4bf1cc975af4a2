// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Dialogs/FixedDialog.h"

/// What this program is and who made it. The two lines of credits come from the program's
/// resources.
class WEFTAboutDialog : public FixedDialog
{
    Q_OBJECT

public:
    explicit WEFTAboutDialog(QWidget* parent = nullptr, const QString& creditsFile = QStringLiteral(
                                                            ":/text/Docs/Credits.txt"));
};
