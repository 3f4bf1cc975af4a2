// SPDX-License-Identifier: MIT
#include "UI/Dialogs/LedDialogAddIPrange.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "UI/Widgets/IPCtrlManual.h"

LedDialogAddIPrange::LedDialogAddIPrange(QWidget* parent)
    : FixedDialog({280, 120}, parent)
{
    setObjectName(QStringLiteral("LedDialogAddIPrange"));
    setWindowTitle(tr("IP Range"));

    confIP = new IPCtrlManualIPRange;
    confIP->setObjectName(QStringLiteral("confIP"));
    confIP->setAccessibleName(tr("IP Range"));
    auto* hint = new QLabel(tr("X stands for any number, as in 2.X.X.X"));
    hint->setObjectName(QStringLiteral("hintLabel"));

    auto* form = new QFormLayout;
    form->addRow(tr("Addresses:"), confIP);

    const ButtonsWithDelete buttons = MakeButtonsWithDelete();
    deleteButton = buttons.remove;
    connect(deleteButton, &QPushButton::clicked, this, &LedDialogAddIPrange::DeleteItem);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(hint);
    layout->addStretch();
    layout->addLayout(buttons.row);
    setTabOrder(buttons.cancel, deleteButton);
}

void LedDialogAddIPrange::SetUpForNew()
{
    confIP->Clear();
    confIP->SetIP(QStringLiteral("X.X.X.X"));
    deleteButton->hide();
}

void LedDialogAddIPrange::SetUpForEdit(const QString& range)
{
    confIP->Clear();
    confIP->SetIP(range);
    deleteButton->show();
}

QString LedDialogAddIPrange::GetRange() const
{
    return confIP->GetIPWithWildcards();
}

void LedDialogAddIPrange::DeleteItem()
{
    done(Deleted);
}
