// SPDX-License-Identifier: MIT
#include "UI/Dialogs/WEFTDialogPreferences.h"

#include <algorithm>

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "Language/Language.h"
#include "Settings/SettingsBlock.h"
#include "UI/Widgets/LabelledField.h"

namespace {

constexpr int ZoomFollowsSelection = 1;
constexpr int FieldSpacing = 4;

template <typename Button>
Button* AddButton(const QString& name, const QString& text, QLayout& layout)
{
    auto* button = new Button(text);
    button->setObjectName(name);
    layout.addWidget(button);
    return button;
}

QBoxLayout* AddGroup(const QString& name, const QString& title, QLayout& dialog)
{
    auto* group = new QGroupBox(title);
    group->setObjectName(name);
    auto* layout = new QVBoxLayout(group);
    layout->setSpacing(FieldSpacing);
    layout->setContentsMargins(8, 2, 8, 6);
    dialog.addWidget(group);
    return layout;
}

} // namespace

WEFTDialogPreferences::WEFTDialogPreferences(QWidget* parent)
    : FixedDialog({390, 435}, parent)
{
    setObjectName(QStringLiteral("WEFTDialogPreferences"));
    setWindowTitle(tr("Preferences"));

    auto* heading = new QLabel(tr("PixelWeft Preferences"));
    heading->setObjectName(QStringLiteral("label_4"));
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(FieldSpacing);
    layout->addWidget(heading);
    AddInterfaceGroup(*layout);
    AddFixturesGroup(*layout);
    AddArtNetGroup(*layout);
    layout->addWidget(MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
}

void WEFTDialogPreferences::AddInterfaceGroup(QLayout& dialog)
{
    QBoxLayout* layout =
        AddGroup(QStringLiteral("groupUserInterfaceSettings"), tr("User interface"), dialog);
    AddLanguage(*layout);
    checkShowGrid = AddButton<QCheckBox>(QStringLiteral("checkShowGrid"),
                                         tr("Draw grid on the canvas"), *layout);
    radioZoomCursor = AddButton<QRadioButton>(QStringLiteral("radioZoomCursor"),
                                              tr("Zoom follows cursor"), *layout);
    radioZoomSelection = AddButton<QRadioButton>(QStringLiteral("radioZoomSelection"),
                                                 tr("Zoom centers on selection"), *layout);
    checkSnapGrid =
        AddButton<QCheckBox>(QStringLiteral("checkSnapGrid"), tr("Snap fixtures to grid"), *layout);
}

void WEFTDialogPreferences::AddLanguage(QBoxLayout& group)
{
    auto* row = new QHBoxLayout;
    QLabel* label = nullptr;
    comboLanguage = MakeField<QComboBox>("comboLanguage", tr("&Language:"), label);
    comboLanguage->addItem(tr("As the system"), QString());
    for (const Language::Known& language : Language::AllKnown())
        comboLanguage->addItem(QString::fromUtf8(language.name), QLatin1String(language.code));
    row->addWidget(label);
    row->addWidget(comboLanguage, 1);
    group.addLayout(row);
}

void WEFTDialogPreferences::AddFixturesGroup(QLayout& dialog)
{
    QLayout* layout = AddGroup(QStringLiteral("groupBox"), tr("Fixtures"), dialog);
    auto* label = new QLabel(tr("Replace your local fixture library with the fixtures provided "
                                "with this version of the software."));
    label->setObjectName(QStringLiteral("restoreFixturesLabel"));
    label->setWordWrap(true);
    layout->addWidget(label);
    auto* restore = AddButton<QPushButton>(QStringLiteral("restoreFixturesButton"),
                                           tr("Restore Default Fixtures..."), *layout);
    restore->setAutoDefault(false);
    connect(restore, &QPushButton::clicked, this, &WEFTDialogPreferences::restoreFixtureClicked);
}

void WEFTDialogPreferences::AddArtNetGroup(QLayout& dialog)
{
    QLayout* layout = AddGroup(QStringLiteral("groupBox_2"), tr("Art-Net"), dialog);
    artNetBroadcast =
        AddButton<QRadioButton>(QStringLiteral("artNetBroadcast"), tr("Broadcast"), *layout);
    artNetAutoUnicast = AddButton<QRadioButton>(QStringLiteral("artNetAutoUnicast"),
                                                tr("Auto-Unicast (ArtPollReply)"), *layout);
    auto* choice = new QButtonGroup(this);
    choice->setObjectName(QStringLiteral("artNetButtonGroup"));
    choice->addButton(artNetBroadcast);
    choice->addButton(artNetAutoUnicast);
    artNetSync = AddButton<QCheckBox>(QStringLiteral("artNetSync"),
                                      tr("Synchronise nodes (ArtSync)"), *layout);
    artNetSync->setToolTip(tr("Nodes that know ArtSync put a whole frame out together. For walls "
                              "of several nodes that tear."));
}

void WEFTDialogPreferences::SetControls(const SettingsBlock& settings, bool autoUnicast,
                                        bool artSync)
{
    comboLanguage->setCurrentIndex(std::max(0, comboLanguage->findData(settings.language)));
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
    artNetSync->setChecked(artSync);
}

QString WEFTDialogPreferences::GetLanguage() const
{
    return comboLanguage->currentData().toString();
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

bool WEFTDialogPreferences::GetArtSync() const
{
    return artNetSync->isChecked();
}

void WEFTDialogPreferences::restoreFixtureClicked()
{
    const auto answer =
        QMessageBox::warning(this, tr("Warning"),
                             tr("Do you want to install the provided fixture library ? \nThis will "
                                "overwrite your local fixture definitions."),
                             QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel);
    if (answer == QMessageBox::Yes)
        emit resetFixturesConfirmed();
}
