// SPDX-License-Identifier: MIT
#include "UI/Dialogs/FixedDialog.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QPushButton>

FixedDialog::FixedDialog(QSize requested, QWidget* parent)
    : QDialog(parent)
    , requested_(requested)
{
    setFixedSize(requested);
}

QDialogButtonBox* FixedDialog::MakeButtons(QDialogButtonBox::StandardButtons which)
{
    auto* buttons = new QDialogButtonBox(which);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

FixedDialog::ButtonsWithDelete FixedDialog::MakeButtonsWithDelete()
{
    QDialogButtonBox* buttons = MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    const ButtonsWithDelete made = {new QHBoxLayout, buttons->button(QDialogButtonBox::Ok),
                                    buttons->button(QDialogButtonBox::Cancel),
                                    new QPushButton(tr("Delete"))};
    made.ok->setObjectName(QStringLiteral("okButton"));
    made.cancel->setObjectName(QStringLiteral("cancelButton"));
    made.cancel->setText(tr("Cancel"));
    made.remove->setObjectName(QStringLiteral("deleteButton"));
    made.remove->setAutoDefault(false);
    made.row->addWidget(made.remove);
    made.row->addWidget(buttons);
    return made;
}

void FixedDialog::showEvent(QShowEvent* event)
{
    // Only now the fonts of the style are known. A wrapped text needs its height at this width.
    const int width = std::max(requested_.width(), layout()->totalMinimumSize().width());
    const int height = layout()->hasHeightForWidth() ? layout()->minimumHeightForWidth(width)
                                                     : layout()->totalMinimumSize().height();
    setFixedSize(width, std::max(requested_.height(), height));
    QDialog::showEvent(event);
}
