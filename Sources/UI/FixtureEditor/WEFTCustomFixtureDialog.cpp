// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/WEFTCustomFixtureDialog.h"

#include <algorithm>
#include <utility>

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureEditor/ChannelTable.h"
#include "UI/FixtureEditor/ChannelValueDelegate.h"
#include "UI/FixtureEditor/FixtureForm.h"
#include "UI/FixtureEditor/WEFTCustomFixtureSizeDialog.h"
#include "UI/FixtureEditor/ZenPixelMap.h"
#include "UI/Widgets/InputFieldEnterFilter.h"

namespace {

constexpr QMargins DialogMargins(9, 7, 9, 9);

} // namespace

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
    form_ = new FixtureForm(*MakeDialogButtons(withApply));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(DialogMargins);
    layout->addWidget(form_);
    auto* delegate = new ChannelValueDelegate(layout_, boxes_, *this);
    form_->personalityTable->setItemDelegateForColumn(ChannelTable::ValueColumn, delegate);
    ShowNames(content);
    ShowSize();
    ShowLayout();
    Connect();
}

void WEFTCustomFixtureDialog::ShowNames(const Content& content)
{
    QStringList manufacturers = QStringList(content.manufacturer) + content.manufacturers;
    manufacturers.removeDuplicates();
    form_->comboManufacturer->addItems(manufacturers);
    form_->editProductName->setText(content.product);
    QLineEdit& field = GetManufacturer().trimmed().isEmpty() ? *form_->comboManufacturer->lineEdit()
                                                             : *form_->editProductName;
    field.setFocus();
    field.selectAll();
}

QDialogButtonBox* WEFTCustomFixtureDialog::MakeDialogButtons(bool withApply)
{
    QDialogButtonBox* buttons =
        MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply);
    // Desktops add mnemonics to these that others here have.
    buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    QPushButton* applyButton = buttons->button(QDialogButtonBox::Apply);
    applyButton->setText(tr("Apply"));
    applyButton->setVisible(withApply);
    connect(applyButton, &QPushButton::clicked, this, [this] {
        if (NamesCanBeUsed())
            emit apply();
    });
    return buttons;
}

void WEFTCustomFixtureDialog::Connect()
{
    auto* enterFilter = new InputFieldEnterFilter(this);
    const std::initializer_list<QWidget*> fields = {form_->editProductName,
                                                    form_->comboManufacturer, form_->nextChannel,
                                                    form_->automapStartChannel};
    for (QWidget* field : fields)
        field->installEventFilter(enterFilter);
    connect(form_->buttonModify, &QPushButton::clicked, this,
            &WEFTCustomFixtureDialog::updatePixelMap);
    connect(form_->buttonResetMapping, &QPushButton::clicked, this,
            &WEFTCustomFixtureDialog::resetPixelMap);
    connect(form_->buttonResetConstants, &QPushButton::clicked, this,
            &WEFTCustomFixtureDialog::resetConstants);
    connect(form_->buttonPatch, &QPushButton::clicked, this, &WEFTCustomFixtureDialog::autoMap);
    connect(form_->nextChannel, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &WEFTCustomFixtureDialog::nextChannelChanged);
    // Behind the last pixel the box shows the last channel. Typing that one means it.
    connect(form_->nextChannel->findChild<QLineEdit*>(), &QLineEdit::textEdited, this,
            [this] { nextChannelChanged(form_->nextChannel->value()); });
    connect(form_->pixelMapWidget, &ZenPixelMap::MapPixel, this,
            &WEFTCustomFixtureDialog::mapPixel);
    connect(form_->pixelMapWidget, &ZenPixelMap::UnmapPixel, this,
            &WEFTCustomFixtureDialog::unmapPixel);
    connect(form_->personalityTable, &QTableWidget::itemChanged, this,
            &WEFTCustomFixtureDialog::channelItemChanged);
}

QString WEFTCustomFixtureDialog::GetManufacturer() const
{
    return form_->comboManufacturer->currentText();
}

QString WEFTCustomFixtureDialog::GetProduct() const
{
    return form_->editProductName->text();
}

// ---- What the dialog shows ---------------------------------------------------------------------

/// What follows from the size: figures, and the limits of the fields.
void WEFTCustomFixtureDialog::ShowSize()
{
    const FixtureSize size = layout_.GetSize();
    form_->labelFixtureType->setText(QString::fromWCharArray(PixelMapTypeToText(size.type)));
    form_->labelFixtureWidth->setText(QString::number(size.width));
    form_->labelFixtureHeight->setText(QString::number(size.height));
    form_->labelChannelCount->setText(QString::number(size.channelCount));
    const QSignalBlocker blocker(form_->nextChannel);
    form_->nextChannel->setRange(1, std::max(size.channelCount, 1));
    const int lastStart = layout_.LastAutoMapStart();
    form_->buttonPatch->setEnabled(lastStart >= 1);
    form_->buttonPatch->setToolTip(lastStart >= 1
                                       ? QString()
                                       : tr("All pixels need %1 channels, the fixture has %2")
                                             .arg(layout_.GetPixelMap().GetTotalChannels())
                                             .arg(size.channelCount));
    form_->automapStartChannel->setMaximum(std::max(lastStart, 1));
    form_->automapStartChannel->setValue(1);
}

void WEFTCustomFixtureDialog::ShowLayout()
{
    form_->personalityTable->Show(layout_);
    form_->pixelMapWidget->Show(&layout_.GetPixelMap(), layout_.GetCellFaults(),
                                layout_.GetChannelCount());
    const QSignalBlocker blocker(form_->nextChannel);
    form_->nextChannel->setValue(layout_.GetNextChannel());
}

// ---- Pixels ------------------------------------------------------------------------------------

bool WEFTCustomFixtureDialog::Confirm(const QString& text)
{
    return boxes_.Confirm(this, tr("Warning"), text);
}

bool WEFTCustomFixtureDialog::ConfirmOverride()
{
    return Confirm(tr("Mapping this pixel would override channels defined with other pixels or "
                      "constants. Do you want to proceed and override?"));
}

void WEFTCustomFixtureDialog::nextChannelChanged(int channel)
{
    layout_.SetNextChannel(channel);
}

void WEFTCustomFixtureDialog::mapPixel(int pixel)
{
    if (!layout_.NextPixelFits()) {
        return boxes_.Warn(this, tr("Warning"),
                           tr("Mapping this pixel is not allowed because the channel limit would "
                              "be reached."));
    }
    if (layout_.IsMapped(pixel) &&
        !Confirm(
            tr("Do you want to remap this pixel to the channel %1?").arg(layout_.GetNextChannel())))
        return;
    if (layout_.NextPixelOverrides() && !ConfirmOverride())
        return;
    layout_.MapPixel(pixel);
    ShowLayout();
}

void WEFTCustomFixtureDialog::unmapPixel(int pixel)
{
    layout_.UnmapPixel(pixel);
    ShowLayout();
}

void WEFTCustomFixtureDialog::resetPixelMap()
{
    layout_.ResetMapping();
    ShowLayout();
}

void WEFTCustomFixtureDialog::autoMap()
{
    if (!layout_.AllPixelsFitUniverse()) {
        return boxes_.Notify(this, tr("Auto-Mapping"),
                             tr("Auto-patch not possible: the size of the fixture will overflow "
                                "DMX universe.\n\nSet a smaller width and/or height."));
    }
    AutoMapWalk walk;
    walk.corner = static_cast<GridCorner>(form_->corner->checkedId());
    walk.horizontal = form_->orientation->currentIndex() == 0;
    walk.snake = form_->snake->isChecked();
    const int start = form_->automapStartChannel->value();
    if (layout_.AutoMapOverrides(start) && !ConfirmOverride())
        return;
    layout_.AutoMap(start, walk);
    ShowLayout();
}

// ---- Constants and size ------------------------------------------------------------------------

void WEFTCustomFixtureDialog::resetConstants()
{
    layout_.ResetConstants();
    ShowLayout();
}

void WEFTCustomFixtureDialog::channelItemChanged(QTableWidgetItem* item)
{
    const int value = item->data(Qt::UserRole).toInt();
    if (value >= ChannelTable::FirstPixelValue)
        return;
    layout_.SetConstant(item->row() + 1, value);
    ShowLayout();
}

void WEFTCustomFixtureDialog::updatePixelMap()
{
    WEFTCustomFixtureSizeDialog dialog(WEFTCustomFixtureSizeDialog::Modify, layout_, boxes_, this);
    if (dialog.exec() == QDialog::Accepted)
        layout_.Resize(dialog.GetSize());
    layout_.AdvanceNextChannel();
    ShowSize();
    ShowLayout();
}

// ---- The end -----------------------------------------------------------------------------------

bool WEFTCustomFixtureDialog::NamesCanBeUsed()
{
    const QString fault = nameCheck_ ? nameCheck_(GetManufacturer(), GetProduct()) : QString();
    if (fault.isEmpty())
        return true;
    boxes_.Notify(this, tr("Fixture Not Saved"), fault);
    form_->editProductName->setFocus();
    form_->editProductName->selectAll();
    return false;
}

void WEFTCustomFixtureDialog::accept()
{
    if (NamesCanBeUsed())
        FixedDialog::accept();
}
