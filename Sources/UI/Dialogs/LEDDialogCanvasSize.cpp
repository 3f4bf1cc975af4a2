// SPDX-License-Identifier: MIT
#include "UI/Dialogs/LEDDialogCanvasSize.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int LargestSide = 4096;

QSpinBox* SideBox(const QString& name, const QString& label, QFormLayout& form, const QFont& font)
{
    auto* box = new QSpinBox;
    box->setObjectName(name);
    box->setAccessibleName(label);
    box->setRange(1, LargestSide);
    auto* text = new QLabel(label);
    text->setFont(font);
    text->setBuddy(box);
    form.addRow(text, box);
    return box;
}

} // namespace

LEDDialogCanvasSize::LEDDialogCanvasSize(QWidget* parent)
    : FixedDialog({290, 200}, parent)
{
    setObjectName(QStringLiteral("LEDDialogCanvasSize"));
    setWindowTitle(tr("Canvas Size"));

    QFont labelFont(QStringLiteral("Lucida Grande"));
    auto* heading = new QLabel(tr("Change Canvas Size"));
    heading->setObjectName(QStringLiteral("label_4"));
    QFont headingFont = labelFont;
    headingFont.setBold(true);
    heading->setFont(headingFont);

    auto* form = new QFormLayout;
    spinBoxWidth = SideBox(QStringLiteral("spinBoxWidth"), tr("Width"), *form, labelFont);
    spinBoxHeight = SideBox(QStringLiteral("spinBoxHeight"), tr("Height"), *form, labelFont);

    cbKeepPositions = new QCheckBox(tr("Keep fixture position and size"));
    cbKeepPositions->setObjectName(QStringLiteral("cbKeepPositions"));
    cbKeepPositions->setChecked(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addLayout(form);
    layout->addWidget(cbKeepPositions);
    layout->addStretch();
    layout->addWidget(MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
}

void LEDDialogCanvasSize::SetSize(int width, int height)
{
    spinBoxWidth->setValue(width);
    spinBoxHeight->setValue(height);
    width_ = spinBoxWidth->value();
    height_ = spinBoxHeight->value();
    spinBoxWidth->setFocus();
    spinBoxWidth->selectAll();
}

bool LEDDialogCanvasSize::KeepsPositions() const
{
    return cbKeepPositions->isChecked();
}

void LEDDialogCanvasSize::accept()
{
    width_ = spinBoxWidth->value();
    height_ = spinBoxHeight->value();
    QDialog::accept();
}
