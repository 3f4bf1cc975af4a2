// SPDX-License-Identifier: MIT
#include "UI/Dialogs/LEDDialogManualNode.h"

#include <utility>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Widgets/IPCtrlManual.h"

namespace {

/// What a node itself can hold as its name.
constexpr int LongestName = 63;

} // namespace

LEDDialogManualNode::LEDDialogManualNode(OperatorBoxes& boxes, Objection objection, QWidget* parent)
    : FixedDialog({320, 160}, parent)
    , boxes_(boxes)
    , objection_(std::move(objection))
{
    setObjectName(QStringLiteral("LEDDialogManualNode"));
    setWindowTitle(tr("Manual IP"));

    confName = new QLineEdit;
    confName->setObjectName(QStringLiteral("confName"));
    confName->setAccessibleName(tr("Name"));
    confName->setMaxLength(LongestName);
    confIP = new IPCtrlManualNodeIP;
    confIP->setObjectName(QStringLiteral("confIP"));
    confIP->setAccessibleName(tr("IP Address"));
    hintLabel = new QLabel;
    hintLabel->setObjectName(QStringLiteral("hintLabel"));
    hintLabel->setTextFormat(Qt::PlainText);
    hintLabel->setWordWrap(true);

    auto* form = new QFormLayout;
    form->addRow(tr("&Name:"), confName);
    form->addRow(tr("&IP Address:"), confIP);

    const ButtonsWithDelete buttons = MakeButtonsWithDelete();
    okButton = buttons.ok;
    deleteButton = buttons.remove;
    connect(deleteButton, &QPushButton::clicked, this, &LEDDialogManualNode::DeleteItem);
    for (const QLineEdit* part : confIP->findChildren<QLineEdit*>())
        connect(part, &QLineEdit::textChanged, this, &LEDDialogManualNode::ShowState);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(hintLabel, 1);
    layout->addLayout(buttons.row);
    setTabOrder(buttons.cancel, deleteButton);
}

void LEDDialogManualNode::SetUpForNew(const QString& network)
{
    confIP->Clear();
    confName->clear();
    confIP->SetIP(network);
    deleteButton->hide();
    ShowState();
}

void LEDDialogManualNode::SetUpForEdit(const QString& name, const QString& address,
                                       const QString& network)
{
    confIP->Clear();
    confIP->SetIPAndMask(address, network);
    confName->setText(name);
    deleteButton->show();
    ShowState();
}

ArtNetNodeRecord LEDDialogManualNode::GetNode() const
{
    ArtNetNodeRecord node;
    node.ip = confIP->GetIP().toStdString();
    node.name = confName->text().trimmed().toStdString();
    node.manual = true;
    return node;
}

/// Empty when the address is complete and can be taken.
QString LEDDialogManualNode::WhyNotReady() const
{
    const QString address = confIP->GetIP();
    const QStringList parts = address.split(QLatin1Char('.'));
    for (int place = 0; place < parts.size(); ++place) {
        bool isNumber = false;
        static_cast<void>(parts[place].toUInt(&isNumber));
        if (!isNumber)
            return tr("Part %1 of the address is missing: a number from 0 to 255").arg(place + 1);
    }
    return objection_(address);
}

void LEDDialogManualNode::ShowState()
{
    const QString why = WhyNotReady();
    hintLabel->setText(why);
    confIP->setAccessibleDescription(why);
    okButton->setEnabled(why.isEmpty());
}

void LEDDialogManualNode::accept()
{
    // The network goes on while the dialog is open: a node of this address may answer now.
    ShowState();
    if (okButton->isEnabled())
        QDialog::accept();
}

void LEDDialogManualNode::DeleteItem()
{
    if (boxes_.Ask(this, tr("Delete manual address"),
                   tr("If you delete this manual address, addresses of all mapped fixtures that "
                      "use it will be set to auto."),
                   QMessageBox::Cancel))
        done(Deleted);
}
