// SPDX-License-Identifier: MIT
#include "UI/Dialogs/LEDDialogDuplicateMappingElement.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int FirstDownward = 2; ///< the first direction that goes down or up

/// A row of a form whose label leads to the widget.
void AddRow(QFormLayout& form, const QString& label, const QString& name, QWidget& widget)
{
    widget.setObjectName(name);
    auto* text = new QLabel(label);
    text->setBuddy(&widget);
    form.addRow(text, &widget);
}

QSpinBox* CountBox(QFormLayout& form, const QString& label, const QString& name,
                   const QString& accessibleName, int most)
{
    auto* box = new QSpinBox;
    box->setRange(1, most);
    box->setAccessibleName(accessibleName);
    AddRow(form, label, name, *box);
    return box;
}

} // namespace

LEDDialogDuplicateMappingElement::LEDDialogDuplicateMappingElement(int mostElements,
                                                                   QWidget* parent)
    : FixedDialog({350, 290}, parent)
    , mostElements_(mostElements)
{
    setObjectName(QStringLiteral("LEDDialogDuplicateMappingElement"));
    setWindowTitle(tr("Duplicate Element"));

    auto* heading = new QLabel(tr("Duplicate Mapping Element"));
    heading->setObjectName(QStringLiteral("label"));
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);

    auto* counts = new QGroupBox(tr("Count"));
    auto* countForm = new QFormLayout(counts);
    spinHorzizontalCount =
        CountBox(*countForm, tr("&Horizontally:"), QStringLiteral("spinHorzizontalCount"),
                 tr("Elements side by side"), mostElements);
    spinVerticalCount =
        CountBox(*countForm, tr("&Vertically:"), QStringLiteral("spinVerticalCount"),
                 tr("Elements one above the other"), mostElements);
    totalLabel_ = new QLabel;
    totalLabel_->setObjectName(QStringLiteral("totalLabel"));
    totalLabel_->setWordWrap(true);
    countForm->addRow(totalLabel_);

    auto* directions = new QGroupBox(tr("DMX Patch Direction"));
    auto* directionForm = new QFormLayout(directions);
    comboDirectionFirst = new QComboBox;
    comboDirectionFirst->addItems({tr("From left to right"), tr("From right to left"),
                                   tr("From top to bottom"), tr("From bottom to top")});
    comboDirectionFirst->setAccessibleName(tr("First direction of the addresses"));
    AddRow(*directionForm, tr("&First:"), QStringLiteral("comboDirectionFirst"),
           *comboDirectionFirst);
    comboDirectionThen = new QComboBox;
    comboDirectionThen->addItems({QString(), QString()});
    comboDirectionThen->setAccessibleName(tr("Second direction of the addresses"));
    AddRow(*directionForm, tr("&Then:"), QStringLiteral("comboDirectionThen"), *comboDirectionThen);

    QDialogButtonBox* buttons = MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    okButton_ = buttons->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(counts);
    layout->addWidget(directions);
    layout->addStretch();
    layout->addWidget(buttons);

    connect(comboDirectionFirst, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &LEDDialogDuplicateMappingElement::updateCombobox2);
    for (QSpinBox* count : {spinHorzizontalCount, spinVerticalCount})
        connect(count, qOverload<int>(&QSpinBox::valueChanged), this,
                &LEDDialogDuplicateMappingElement::JudgeCounts);
    updateCombobox2();
    JudgeCounts();
}

void LEDDialogDuplicateMappingElement::FocusCount()
{
    spinHorzizontalCount->setFocus();
    spinHorzizontalCount->selectAll();
}

void LEDDialogDuplicateMappingElement::updateCombobox2()
{
    // The entries are renamed, not replaced: what was chosen stays chosen.
    const bool firstInRows = comboDirectionFirst->currentIndex() < FirstDownward;
    comboDirectionThen->setItemText(0, firstInRows ? tr("From top to bottom")
                                                   : tr("From left to right"));
    comboDirectionThen->setItemText(1, firstInRows ? tr("From bottom to top")
                                                   : tr("From right to left"));
}

void LEDDialogDuplicateMappingElement::JudgeCounts()
{
    const qlonglong total = qlonglong{GetAcross()} * GetDown();
    const bool good = total <= mostElements_;
    const QLocale locale;
    totalLabel_->setText(good ? tr("Elements in all: %1").arg(locale.toString(total))
                              : tr("Elements in all: %1. No more than %2 can be made at a time.")
                                    .arg(locale.toString(total), locale.toString(mostElements_)));
    okButton_->setEnabled(good);
}

int LEDDialogDuplicateMappingElement::GetAcross() const
{
    return spinHorzizontalCount->value();
}

int LEDDialogDuplicateMappingElement::GetDown() const
{
    return spinVerticalCount->value();
}

int LEDDialogDuplicateMappingElement::GetFirstDirection() const
{
    return comboDirectionFirst->currentIndex();
}

int LEDDialogDuplicateMappingElement::GetThenDirection() const
{
    return comboDirectionThen->currentIndex();
}
