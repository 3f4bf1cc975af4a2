// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/WEFTCustomFixtureSizeDialog.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Widgets/InputFieldEnterFilter.h"
#include "UI/Widgets/LabelledField.h"

namespace {

constexpr int LongestSide = 512;

// By the number of the type.
constexpr std::array TypeNames = {"RGB",
                                  "RBG",
                                  "GRB",
                                  "GBR",
                                  "BRG",
                                  "BGR",
                                  "RGBL",
                                  "RGBA (Alpha)",
                                  "RGBWP (RGBW+)",
                                  "RGBWM (RGBW-/RGBW)",
                                  "L",
                                  "CMY",
                                  "YMC",
                                  "RGBXXX",
                                  "RrGgBb",
                                  "RGB+Amber",
                                  "RGBW+Amber",
                                  "RB",
                                  "R",
                                  "G",
                                  "B"};

/// A row of the form.
template <class Field>
Field* AddField(QGridLayout& form, const char* objectName, const QString& label, int columns = 1)
{
    const int row = form.rowCount();
    QLabel* buddy = nullptr;
    auto* field = MakeField<Field>(objectName, label, buddy);
    form.addWidget(buddy, row, 0);
    form.addWidget(field, row, 1, 1, columns);
    return field;
}

} // namespace

WEFTCustomFixtureSizeDialog::WEFTCustomFixtureSizeDialog(Form form, FixtureLayout layout,
                                                         OperatorBoxes& boxes, QWidget* parent)
    : FixedDialog({316, 180}, parent)
    , layout_(std::move(layout))
    , boxes_(boxes)
{
    setObjectName(QStringLiteral("WEFTCustomFixtureSizeDialog"));
    setWindowTitle(form == Create ? tr("Create New Fixture") : tr("Modify Fixture Settings"));
    setModal(true);
    Build(form);
    ShowSize(layout_.GetSize());
    connect(spinFixtureWidth, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &WEFTCustomFixtureSizeDialog::widthChanged);
    connect(spinFixtureHeight, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &WEFTCustomFixtureSizeDialog::heightChanged);
    connect(channelsCountEnabled, &QCheckBox::stateChanged, this,
            &WEFTCustomFixtureSizeDialog::channelsCountEnabledChanged);
    connect(comboFixtureType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &WEFTCustomFixtureSizeDialog::updateMaxPixels);
}

void WEFTCustomFixtureSizeDialog::Build(Form form)
{
    auto* fields = new QGridLayout;
    fields->setColumnStretch(1, 1);
    comboFixtureType = AddField<QComboBox>(*fields, "comboFixtureType", tr("&Type:"), 2);
    for (const char* name : TypeNames)
        comboFixtureType->addItem(QLatin1String(name));
    comboFixtureType->setMaxVisibleItems(comboFixtureType->count());
    spinFixtureWidth = AddField<QSpinBox>(*fields, "spinFixtureWidth", tr("&Width:"));
    fields->addWidget(new QLabel(tr("Pixels")), fields->rowCount() - 1, 2);
    spinFixtureHeight = AddField<QSpinBox>(*fields, "spinFixtureHeight", tr("&Height:"));
    fields->addWidget(new QLabel(tr("Pixels")), fields->rowCount() - 1, 2);
    channelCount = AddField<QSpinBox>(*fields, "channelCount", tr("&Channels:"));
    channelsCountEnabled = new QCheckBox(tr("Custom &Size"));
    channelsCountEnabled->setObjectName(QStringLiteral("channelsCountEnabled"));
    fields->addWidget(channelsCountEnabled, fields->rowCount() - 1, 2);
    auto* enterFilter = new InputFieldEnterFilter(this);
    for (QSpinBox* box : {spinFixtureWidth, spinFixtureHeight, channelCount})
        box->installEventFilter(enterFilter);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    buttons->button(QDialogButtonBox::Ok)->setText(form == Create ? tr("Create") : tr("Modify"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &WEFTCustomFixtureSizeDialog::OKClicked);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* column = new QVBoxLayout(this);
    column->addLayout(fields);
    column->addStretch();
    column->addWidget(buttons);
    // The box is above the field that it frees.
    setTabOrder(spinFixtureHeight, channelsCountEnabled);
    setTabOrder(channelsCountEnabled, channelCount);
}

/// A file may hold sizes that nobody can enter here: their fields take them all the same, so that
/// nothing changes unless the operator changes it.
void WEFTCustomFixtureSizeDialog::ShowSize(const FixtureSize& size)
{
    comboFixtureType->setCurrentIndex(static_cast<int>(size.type));
    spinFixtureWidth->setRange(1, std::max(LongestSide, size.width));
    spinFixtureWidth->setValue(size.width);
    spinFixtureHeight->setRange(1, std::max(LongestSide, size.height));
    spinFixtureHeight->setValue(size.height);
    channelCount->setRange(std::min(ChannelsPerPixel(size.type), size.channelCount),
                           std::max(LEDFixture::MaxChannels, size.channelCount));
    channelCount->setValue(size.channelCount);
    const bool isCustom = size.channelCount != layout_.GetPixelMap().GetTotalChannels();
    channelsCountEnabled->setChecked(isCustom);
    channelCount->setEnabled(isCustom);
}

FixtureSize WEFTCustomFixtureSizeDialog::GetSize() const
{
    return {spinFixtureWidth->value(), spinFixtureHeight->value(),
            static_cast<PixelMapType>(comboFixtureType->currentIndex()), channelCount->value()};
}

// ---- What the operator sets --------------------------------------------------------------------

void WEFTCustomFixtureSizeDialog::widthChanged(int)
{
    UpdateChannelCount();
}

void WEFTCustomFixtureSizeDialog::heightChanged(int)
{
    UpdateChannelCount();
}

void WEFTCustomFixtureSizeDialog::channelsCountEnabledChanged(int enabled)
{
    UpdateChannelCount();
    channelCount->setEnabled(enabled != 0);
}

void WEFTCustomFixtureSizeDialog::updateMaxPixels(int)
{
    UpdateChannelCount();
}

void WEFTCustomFixtureSizeDialog::UpdateChannelCount()
{
    const QSignalBlocker blocker(channelCount);
    const FixtureSize size = GetSize();
    const int perPixel = ChannelsPerPixel(size.type);
    channelCount->setMinimum(perPixel);
    if (channelsCountEnabled->isChecked())
        return;
    const std::int64_t all = std::int64_t{size.width} * size.height * perPixel;
    channelCount->setValue(static_cast<int>(std::min<std::int64_t>(all, channelCount->maximum())));
}

void WEFTCustomFixtureSizeDialog::OKClicked()
{
    const FixtureLayout::Loss loss = layout_.LossOf(GetSize());
    const QString warning =
        loss == FixtureLayout::Loss::Everything
            ? tr("Modifying fixture size will reset the current pixel mapping and eventually "
                 "remove channels with constants. Do you want to continue anyway?")
        : loss == FixtureLayout::Loss::RemovedChannels
            ? tr("You are decreasing the Channel count and will lose any pixel or constant "
                 "defined on those removed channels. Do you want to continue anyway?")
            : QString();
    if (warning.isEmpty() || boxes_.Confirm(this, tr("Warning"), warning))
        accept();
}
