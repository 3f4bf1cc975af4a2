// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/WEFTCustomFixtureDialog.h"

#include <utility>

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Widgets/InputFieldEnterFilter.h"

WEFTCustomFixtureDialog::WEFTCustomFixtureDialog(const Content& content, bool withApply,
                                                 NameCheck nameCheck, OperatorBoxes& boxes,
                                                 QWidget* parent)
    : FixedDialog({922, 560}, parent)
    , layout_(content.layout)
    , nameCheck_(std::move(nameCheck))
    , boxes_(boxes)
{
    setObjectName(QStringLiteral("WEFTCustomFixtureDialog"));
    setWindowTitle(tr("Edit LED Fixture"));
    setModal(true);
    auto* enterFilter = new InputFieldEnterFilter(this);
    editProductName = new QLineEdit(content.product);
    editProductName->setObjectName(QStringLiteral("editProductName"));
    editProductName->installEventFilter(enterFilter);
    comboManufacturer = new QComboBox;
    comboManufacturer->setObjectName(QStringLiteral("comboManufacturer"));
    comboManufacturer->setEditable(true);
    comboManufacturer->setInsertPolicy(QComboBox::NoInsert);
    comboManufacturer->addItem(content.manufacturer);
    comboManufacturer->addItems(content.manufacturers);
    comboManufacturer->installEventFilter(enterFilter);
    QDialogButtonBox* buttons =
        MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply);
    buttons->button(QDialogButtonBox::Apply)->setVisible(withApply);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, [this] {
        if (NamesCanBeUsed())
            emit apply();
    });
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Product Name:"), editProductName);
    form->addRow(tr("&Manufacturer:"), comboManufacturer);
    form->addRow(buttons);
    editProductName->setFocus();
    editProductName->selectAll();
}

QString WEFTCustomFixtureDialog::GetManufacturer() const
{
    return comboManufacturer->currentText();
}

QString WEFTCustomFixtureDialog::GetProduct() const
{
    return editProductName->text();
}

bool WEFTCustomFixtureDialog::NamesCanBeUsed()
{
    const QString fault = nameCheck_ ? nameCheck_(GetManufacturer(), GetProduct()) : QString();
    if (fault.isEmpty())
        return true;
    boxes_.Notify(this, tr("Fixture Not Saved"), fault);
    editProductName->setFocus();
    editProductName->selectAll();
    return false;
}

void WEFTCustomFixtureDialog::accept()
{
    if (NamesCanBeUsed())
        FixedDialog::accept();
}
