// SPDX-License-Identifier: MIT
#include "UI/Dialogs/LEDDialogDMXUniverseMerging.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyle>
#include <QVBoxLayout>

#include "UI/Dialogs/MergerPicture.h"
#include "UI/Widgets/InputFieldEnterFilter.h"

namespace {

constexpr int LastOfSixteen = 15;
constexpr int Spacing = 4;
constexpr QMargins GroupMargins(8, 2, 8, 6);
constexpr QSize ToggleIcon(32, 32);
constexpr QSize WarningIcon(32, 32);
constexpr QSize DialogSize(467, 545);
constexpr QSize SizeWithoutSource(467, 0); ///< as high as the rest is

QGroupBox* MakeGroup(const QString& name, const QString& title)
{
    auto* group = new QGroupBox(title);
    group->setObjectName(name);
    return group;
}

QLabel* MakeLabel(const QString& name, const QString& text)
{
    auto* label = new QLabel(text);
    label->setObjectName(name);
    return label;
}

QFormLayout* MakeForm(QGroupBox& group)
{
    auto* form = new QFormLayout(&group);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setSpacing(Spacing);
    form->setContentsMargins(GroupMargins);
    return form;
}

} // namespace

/// A spin box with its label, and the slot that takes its changes.
struct LEDDialogDMXUniverseMerging::Number
{
    QString name;
    QString label;
    int least;
    int most;
    int value;
    void (LEDDialogDMXUniverseMerging::*changed)(int);
};

LEDDialogDMXUniverseMerging::LEDDialogDMXUniverseMerging(const UniverseMerging& settings,
                                                         QWidget* parent)
    : FixedDialog(SizeWithoutSource, parent)
    , merging_(settings)
{
    Build();
    DMXSourceGroup->hide();
    merging_.SetMergerDMXSource(MergerDMXSource::PixelWeft);
}

LEDDialogDMXUniverseMerging::LEDDialogDMXUniverseMerging(const UniverseMerging& settings,
                                                         const QString& ownAddress,
                                                         const std::wstring& reelCommandAddress,
                                                         bool reelCommandOffers, QWidget* parent)
    : FixedDialog(DialogSize, parent)
    , merging_(settings)
{
    Build();
    PixelWeftIP->setText(tr("(%1)").arg(ownAddress));
    ArtNetDMXInputSettingsChanged(reelCommandOffers, reelCommandAddress);
}

// ---- The form ----------------------------------------------------------------------------------

void LEDDialogDMXUniverseMerging::Build()
{
    setObjectName(QStringLiteral("LEDDialogDMXUniverseMerging"));
    setWindowTitle(tr("DMX Universe Merging"));
    setModal(true);
    enterFilter_ = new InputFieldEnterFilter(this);

    auto* runs = new QGridLayout;
    runs->addWidget(MakeFromGroup(), 0, 0, 2, 1);
    runs->addWidget(MakeToGroup(), 0, 1);
    runs->addLayout(MakeToggle(), 1, 1);

    DMXSourceGroup = MakeSourceGroup();
    buttonBox =
        MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply);
    connect(buttonBox->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &LEDDialogDMXUniverseMerging::apply);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(Spacing);
    layout->addLayout(runs);
    layout->addWidget(MakeExplanation());
    layout->addLayout(MakeRunWarnings());
    layout->addLayout(MakeUnicastWarning());
    layout->addWidget(DMXSourceGroup);
    layout->addStretch();
    layout->addWidget(buttonBox);
    CheckOverlap();
    FromStartSubnet->setFocus();
    FromStartSubnet->selectAll();
}

QGroupBox* LEDDialogDMXUniverseMerging::MakeFromGroup()
{
    auto* group = MakeGroup(QStringLiteral("FromGroupBox"), tr("Merge From:"));
    QFormLayout* form = MakeForm(*group);
    FromStartSubnet = AddNumber({QStringLiteral("FromStartSubnet"), tr("Start Subnet:"), 0,
                                 LastOfSixteen, static_cast<int>(merging_.GetFromStartSubnet()),
                                 &LEDDialogDMXUniverseMerging::fromStartSubnetChanged},
                                *group, *form);
    AddNumber({QStringLiteral("FromStartUniverse"), tr("Start Universe:"), 0, LastOfSixteen,
               static_cast<int>(merging_.GetFromStartUniverse()),
               &LEDDialogDMXUniverseMerging::fromStartUniverseChanged},
              *group, *form);
    AddNumber({QStringLiteral("ConsecutiveUniverses"), tr("Consecutive Universes:"), 1,
               UniverseMerging::MaxConsecutiveUniverses, merging_.GetConsecutiveUniverses(),
               &LEDDialogDMXUniverseMerging::consecutiveUniversesChanged},
              *group, *form);
    return group;
}

QGroupBox* LEDDialogDMXUniverseMerging::MakeToGroup()
{
    auto* group = MakeGroup(QStringLiteral("ToGroupBox"), tr("Merge To:"));
    QFormLayout* form = MakeForm(*group);
    AddNumber({QStringLiteral("ToStartSubnet"), tr("Start Subnet:"), 0, LastOfSixteen,
               static_cast<int>(merging_.GetToStartSubnet()),
               &LEDDialogDMXUniverseMerging::toStartSubnetChanged},
              *group, *form);
    AddNumber({QStringLiteral("ToStartUniverse"), tr("Start Universe:"), 0, LastOfSixteen,
               static_cast<int>(merging_.GetToStartUniverse()),
               &LEDDialogDMXUniverseMerging::toStartUniverseChanged},
              *group, *form);
    return group;
}

QSpinBox* LEDDialogDMXUniverseMerging::AddNumber(const Number& number, const QGroupBox& group,
                                                 QFormLayout& form)
{
    auto* box = new QSpinBox;
    box->setObjectName(number.name);
    box->setAccessibleName(group.title() + QLatin1Char(' ') + number.label);
    box->setRange(number.least, number.most);
    box->setValue(number.value);
    box->installEventFilter(enterFilter_);
    connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, number.changed);
    QLabel* label = MakeLabel(number.name + QStringLiteral("Label"), number.label);
    label->setBuddy(box);
    form.addRow(label, box);
    return box;
}

QLayout* LEDDialogDMXUniverseMerging::MakeToggle()
{
    auto* button = new QPushButton(
        QIcon(QStringLiteral(":/bitmaps/Bin/bitmaps/icon_merge_button.png")), QString());
    button->setObjectName(QStringLiteral("ToggleMergingUniversesButton"));
    button->setAccessibleName(tr("Toggle merger on/off"));
    button->setToolTip(button->accessibleName());
    button->setIconSize(ToggleIcon);
    button->setAutoDefault(false);
    button->setCheckable(true);
    button->setChecked(merging_.IsEnabled());
    connect(button, &QPushButton::toggled, this, &LEDDialogDMXUniverseMerging::enabledChanged);

    mergerStatusLabel = MakeLabel(QStringLiteral("mergerStatusLabel"), QString());
    enabledChanged(merging_.IsEnabled());
    auto* row = new QHBoxLayout;
    row->addWidget(button);
    row->addWidget(mergerStatusLabel, 1);
    return row;
}

QGroupBox* LEDDialogDMXUniverseMerging::MakeExplanation()
{
    auto* group = MakeGroup(QStringLiteral("groupBox"), tr("How It Works..."));
    auto* text = MakeLabel(QStringLiteral("explanationLabel"),
                           tr("Merge both DMX Input and PixelWeft from one range of universes and "
                              "output to another range of universes."));
    text->setWordWrap(true);
    picture_ = new MergerPicture;
    picture_->setObjectName(QStringLiteral("mergerPicture"));

    auto* layout = new QVBoxLayout(group);
    layout->setSpacing(Spacing);
    layout->setContentsMargins(GroupMargins);
    layout->addWidget(text);
    layout->addWidget(picture_, 0, Qt::AlignHCenter);
    return group;
}

/// What is wrong with the runs, in one place, since one of the two is said at a time.
QLayout* LEDDialogDMXUniverseMerging::MakeRunWarnings()
{
    auto* place = new QGridLayout;
    const auto add = [&](const QString& name, const QString& text) {
        QLabel* warning = MakeLabel(name, text);
        warning->setWordWrap(true);
        // Nothing moves under the mouse when the warning appears.
        QSizePolicy keepsPlace = warning->sizePolicy();
        keepsPlace.setRetainSizeWhenHidden(true);
        warning->setSizePolicy(keepsPlace);
        place->addWidget(warning, 0, 0);
        return warning;
    };
    universeOverlapWarning =
        add(QStringLiteral("universeOverlapWarning"),
            tr("Universe ranges \"Merge From\" and \"Merge To\" should never overlap."));
    universeOverlapWarning->setStyleSheet(QStringLiteral("color: rgb(252, 0, 0);"));
    netWarning = add(QStringLiteral("netWarning"),
                     tr("A range goes beyond universe 15/15 into net 1, where no fixture can be "
                        "patched."));
    return place;
}

QLayout* LEDDialogDMXUniverseMerging::MakeUnicastWarning()
{
    QLabel* icon = MakeLabel(QStringLiteral("unicastWarningIcon"), QString());
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(WarningIcon));
    QLabel* text = MakeLabel(QStringLiteral("unicastWarning"),
                             tr("Merger cannot operate with fixtures set in Unicast and no fixture "
                                "should send directly to its output range of universes."));
    text->setWordWrap(true);
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * Spacing);
    row->addWidget(icon);
    row->addWidget(text, 1);
    return row;
}

QGroupBox* LEDDialogDMXUniverseMerging::MakeSourceGroup()
{
    auto* group = MakeGroup(QStringLiteral("DMXSourceGroup"), tr("DMX Source:"));
    auto* grid = new QGridLayout(group);
    grid->setSpacing(Spacing);
    grid->setContentsMargins(GroupMargins);
    grid->setColumnStretch(1, 1);
    auto* choice = new QButtonGroup(this);
    choice->setObjectName(QStringLiteral("DMXSource"));
    const auto add = [&](const QString& name, const QString& text) {
        auto* source = new QRadioButton(text);
        source->setObjectName(name);
        grid->addWidget(source, grid->count() / 2, 0);
        choice->addButton(source);
        return source;
    };
    const auto addAddress = [&](const QString& name, const QString& text) {
        QLabel* address = MakeLabel(name, text);
        grid->addWidget(address, grid->count() / 2, 1);
        return address;
    };
    DMXSourcePixelWeft = add(QStringLiteral("DMXSourcePixelWeft"), tr("PixelWeft"));
    PixelWeftIP = addAddress(QStringLiteral("PixelWeftIP"), tr("(2.X.X.X)"));
    DMXSourceReelCommand = add(QStringLiteral("DMXSourceReelCommand"), tr("ReelCommand"));
    ReelCommandIP = addAddress(QStringLiteral("ReelCommandIP"), tr("(ALL)"));
    connect(choice, QOverload<QAbstractButton*>::of(&QButtonGroup::buttonClicked), this,
            &LEDDialogDMXUniverseMerging::DMXSourceUpdated);
    return group;
}

// ---- What the operator sets --------------------------------------------------------------------

void LEDDialogDMXUniverseMerging::enabledChanged(bool enabled)
{
    merging_.SetEnabled(enabled);
    mergerStatusLabel->setText(enabled ? tr("Merger On") : tr("Merger Off"));
}

void LEDDialogDMXUniverseMerging::fromStartSubnetChanged(int subnet)
{
    merging_.SetFromStartSubnet(static_cast<std::uint32_t>(subnet));
    CheckOverlap();
}

void LEDDialogDMXUniverseMerging::fromStartUniverseChanged(int universe)
{
    merging_.SetFromStartUniverse(static_cast<std::uint32_t>(universe));
    CheckOverlap();
}

void LEDDialogDMXUniverseMerging::consecutiveUniversesChanged(int count)
{
    merging_.SetConsecutiveUniverses(count);
    CheckOverlap();
}

void LEDDialogDMXUniverseMerging::toStartSubnetChanged(int subnet)
{
    merging_.SetToStartSubnet(static_cast<std::uint32_t>(subnet));
    CheckOverlap();
}

void LEDDialogDMXUniverseMerging::toStartUniverseChanged(int universe)
{
    merging_.SetToStartUniverse(static_cast<std::uint32_t>(universe));
    CheckOverlap();
}

void LEDDialogDMXUniverseMerging::DMXSourceUpdated(QAbstractButton* button)
{
    if (button == DMXSourcePixelWeft)
        merging_.SetMergerDMXSource(MergerDMXSource::PixelWeft);
    else if (button == DMXSourceReelCommand)
        merging_.SetMergerDMXSource(MergerDMXSource::ReelCommand);
}

void LEDDialogDMXUniverseMerging::ArtNetDMXInputSettingsChanged(bool enabled,
                                                                const std::wstring& ip)
{
    ReelCommandIP->setText(tr("(%1)").arg(QString::fromStdWString(ip)));
    DMXSourceReelCommand->setEnabled(enabled);
    const bool isReelCommand = merging_.GetMergerDMXSource() == MergerDMXSource::ReelCommand;
    QRadioButton* shown = isReelCommand && enabled ? DMXSourceReelCommand : DMXSourcePixelWeft;
    shown->setChecked(true);
}

void LEDDialogDMXUniverseMerging::CheckOverlap()
{
    const bool overlaps = merging_.RangesOverlap();
    buttonBox->button(QDialogButtonBox::Ok)->setEnabled(!overlaps);
    buttonBox->button(QDialogButtonBox::Apply)->setEnabled(!overlaps);
    universeOverlapWarning->setVisible(overlaps);
    netWarning->setVisible(!overlaps && merging_.LeavesNet());
    picture_->Show(merging_);
}
