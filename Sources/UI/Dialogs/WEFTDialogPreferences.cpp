// SPDX-License-Identifier: MIT
#include "UI/Dialogs/WEFTDialogPreferences.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "Settings/SettingsBlock.h"

namespace {

constexpr int ZoomFollowsSelection = 1;
constexpr int Spacing = 4;

template <typename Button>
Button* AddButton(const QString& name, const QString& text, QLayout& layout)
{
    auto* button = new Button(text);
    button->setObjectName(name);
    layout.addWidget(button);
    return button;
}

} // namespace

WEFTDialogPreferences::WEFTDialogPreferences(QWidget* parent)
    : FixedDialog({390, 405}, parent)
{
    setObjectName(QStringLiteral("WEFTDialogPreferences"));
    setWindowTitle(tr("Preferences"));

    auto* heading = new QLabel(tr("Pixel Weft Preferences"));
    heading->setObjectName(QStringLiteral("label_4"));
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(Spacing);
    layout->addWidget(heading);
    layout->addWidget(BuildInterfaceGroup());
    layout->addWidget(BuildFixturesGroup());
    layout->addWidget(BuildArtNetGroup());
    layout->addWidget(buttons);
}

QWidget* WEFTDialogPreferences::BuildInterfaceGroup()
{
    auto* group = new QGroupBox(tr("User interface"));
    group->setObjectName(QStringLiteral("groupUserInterfaceSettings"));
    auto* layout = new QVBoxLayout(group);
    layout->setSpacing(Spacing);
    layout->setContentsMargins(8, 2, 8, 6);
    checkShowGrid = AddButton<QCheckBox>(QStringLiteral("checkShowGrid"),
                                         tr("Draw grid on the canvas"), *layout);
    radioZoomCursor = AddButton<QRadioButton>(QStringLiteral("radioZoomCursor"),
                                              tr("Zoom follows cursor"), *layout);
    radioZoomSelection = AddButton<QRadioButton>(QStringLiteral("radioZoomSelection"),
                                                 tr("Zoom centers on selection"), *layout);
    checkSnapGrid =
        AddButton<QCheckBox>(QStringLiteral("checkSnapGrid"), tr("Snap fixtures to grid"), *layout);
    return group;
}

QWidget* WEFTDialogPreferences::BuildFixturesGroup()
{
    auto* group = new QGroupBox(tr("Fixtures"));
    group->setObjectName(QStringLiteral("groupBox"));
    auto* layout = new QVBoxLayout(group);
    layout->setSpacing(Spacing);
    layout->setContentsMargins(8, 2, 8, 6);
    auto* label = new QLabel(tr("Replace your local fixture library with the fixtures provided "
                                "with this version of the software."));
    label->setObjectName(QStringLiteral("restoreFixturesLabel"));
    label->setWordWrap(true);
    layout->addWidget(label);
    auto* restore = AddButton<QPushButton>(QStringLiteral("restoreFixturesButton"),
                                           tr("Restore Default Fixtures..."), *layout);
    restore->setAutoDefault(false);
    connect(restore, &QPushButton::clicked, this, &WEFTDialogPreferences::restoreFixtureClicked);
    return group;
}

QWidget* WEFTDialogPreferences::BuildArtNetGroup()
{
    auto* group = new QGroupBox(tr("Art-Net"));
    group->setObjectName(QStringLiteral("groupBox_2"));
    auto* layout = new QVBoxLayout(group);
    layout->setSpacing(Spacing);
    layout->setContentsMargins(8, 2, 8, 6);
    artNetBroadcast =
        AddButton<QRadioButton>(QStringLiteral("artNetBroadcast"), tr("Broadcast"), *layout);
    artNetAutoUnicast = AddButton<QRadioButton>(QStringLiteral("artNetAutoUnicast"),
                                                tr("Auto-Unicast (ArtPollReply)"), *layout);
    auto* choice = new QButtonGroup(this);
    choice->setObjectName(QStringLiteral("artNetButtonGroup"));
    choice->addButton(artNetBroadcast);
    choice->addButton(artNetAutoUnicast);
    return group;
}

void WEFTDialogPreferences::SetControls(const SettingsBlock& settings, bool autoUnicast)
{
    checkShowGrid->setChecked(settings.showGrid);
    {
        const QSignalBlocker quiet(checkSnapGrid);
        checkSnapGrid->setChecked(settings.snapToGrid);
    }
    const bool followsSelection = settings.zoomStyle == ZoomFollowsSelection;
    radioZoomSelection->setChecked(followsSelection);
    radioZoomCursor->setChecked(!followsSelection);
    artNetAutoUnicast->setChecked(autoUnicast);
    artNetBroadcast->setChecked(!autoUnicast);
}

bool WEFTDialogPreferences::GetShowGrid() const
{
    return checkShowGrid->isChecked();
}

bool WEFTDialogPreferences::GetSnapToGrid() const
{
    return checkSnapGrid->isChecked();
}

int WEFTDialogPreferences::GetZoomStyle() const
{
    return radioZoomCursor->isChecked() ? 0 : ZoomFollowsSelection;
}

bool WEFTDialogPreferences::GetAutoUnicast() const
{
    return artNetAutoUnicast->isChecked();
}

void WEFTDialogPreferences::restoreFixtureClicked()
{
    const auto answer =
        QMessageBox::warning(this, tr("Warning"),
                             tr("Do you want to install the provided fixture library ? \nThis will "
                                "overwrite your local fixture definitions."),
                             QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes)
        emit resetFixturesConfirmed();
}
