// SPDX-License-Identifier: MIT
#include "UI/Network/NetworkPanel.h"

#include <algorithm>

#include <QAction>
#include <QLabel>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolBar>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Language/Language.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"
#include "UI/Dialogs/LEDDialogDMXUniverseMerging.h"
#include "UI/Dialogs/LedDialogAddIPrange.h"
#include "UI/Network/NetworkChoice.h"
#include "UI/Network/TrafficLamps.h"
#include "UI/Widgets/ActionSet.h"
#include "UI/Widgets/SteadyComboBox.h"

namespace {

const QString NewRange = QStringLiteral("new");
const QString EditRange = QStringLiteral("edit");

/// With a label before it; the texts are untranslated.
SteadyComboBox* AddCombo(QToolBar& toolBar, const QString& objectName, const char* label,
                         const char* name)
{
    auto* words = new QLabel;
    toolBar.addWidget(words);
    auto* combo = new SteadyComboBox(&toolBar);
    combo->setObjectName(objectName);
    InEachLanguage(combo, [words, combo, label, name] {
        words->setText(NetworkPanel::tr(label));
        combo->setAccessibleName(NetworkPanel::tr(name));
    });
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    toolBar.addWidget(combo);
    return combo;
}

} // namespace

NetworkPanel::NetworkPanel(const Parts& parts)
    : QObject(parts.window)
    , parts_(parts)
{
    AddNetworks();
    parts_.toolBar.addSeparator();
    AddLamps();
    parts_.toolBar.addSeparator();
    AddSender();
    parts_.toolBar.addSeparator();
    AddMerger();
    parts_.toolBar.addSeparator();
}

// ---- Building ----------------------------------------------------------------------------------

void NetworkPanel::AddNetworks()
{
    networkCombo_ = AddCombo(parts_.toolBar, QStringLiteral("networkCombo"),
                             QT_TR_NOOP("Network: "), QT_TR_NOOP("Network"));
    connect(networkCombo_, qOverload<int>(&QComboBox::activated), this,
            &NetworkPanel::comboNetworkChanged);
    connect(networkCombo_, &SteadyComboBox::closed, this, &NetworkPanel::RefillNetworks);
    connect(&parts_.choice, &NetworkChoice::networkChanged, this, &NetworkPanel::RefillNetworks);
    InEachLanguage(this, [this] { RefillNetworks(); });
}

void NetworkPanel::AddLamps()
{
    auto* lamps = new TrafficLamps(parts_.engine.GetOutput(), parts_.choice, parts_.toolBar, this);
    connect(&parts_.choice, &NetworkChoice::networkChanged, lamps, &TrafficLamps::Refresh);
}

void NetworkPanel::AddSender()
{
    senderCombo_ = AddCombo(parts_.toolBar, QStringLiteral("senderCombo"), QT_TR_NOOP(" Sender: "),
                            QT_TR_NOOP("Sender"));
    const QString ourselves = QStringLiteral("PixelWeft");
    const QString host = ApplicationMode::Instance().HostName();
    senderCombo_->addItem(ourselves, ourselves);
    senderCombo_->addItem(host, host);
    senderCombo_->setEnabled(!host.isEmpty());
    connect(senderCombo_, qOverload<int>(&QComboBox::activated), this,
            &NetworkPanel::dmxSenderChanged);
}

QAction* NetworkPanel::AddMergerAction(const char* name, const char* icon)
{
    QAction* action = parts_.toolBar.addAction(ActionIcon(icon), QString());
    action->setObjectName(QLatin1String(name));
    // It is in no menu, so the keyboard must reach it here.
    parts_.toolBar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return action;
}

void NetworkPanel::AddMerger()
{
    mergerToggle_ = AddMergerAction("actionMergerToggle", "icon_merge.png");
    mergerToggle_->setCheckable(true);
    connect(mergerToggle_, &QAction::toggled, this, &NetworkPanel::ActionToggleMergingUniverses);
    QAction* settings = AddMergerAction("actionMergerSettings", "icon_gear.png");
    settings->setEnabled(CanSetUpMerger());
    connect(settings, &QAction::triggered, this, &NetworkPanel::ActionMergingUniversesSettings);
    InEachLanguage(this, [this, settings] {
        mergerToggle_->setText(tr("Merger"));
        settings->setText(tr("Merger properties"));
        settings->setToolTip(tr("Merger properties..."));
        ShowMerging();
    });
}

// ---- The network -------------------------------------------------------------------------------

void NetworkPanel::RefillNetworks()
{
    // The list is filled when it closes.
    if (networkCombo_->IsOpen())
        return;
    const QSignalBlocker silent(networkCombo_);
    const QString chosen = parts_.choice.GetNetworkText();
    networkCombo_->clear();
    networkCombo_->addItem(tr("Disabled"), QStringLiteral(""));
    bool connected = chosen.isEmpty();
    for (const NetworkListEntry& entry : parts_.networks.GetNetworks()) {
        const QString text = QString::fromStdWString(entry.text);
        networkCombo_->addItem(text, text);
        const int row = networkCombo_->count() - 1;
        if (!entry.connected)
            networkCombo_->SetTone(row, SteadyComboBox::Tone::Faded);
        networkCombo_->setItemData(row, AdaptersOf(entry), Qt::ToolTipRole);
        connected = connected || (text == chosen && entry.connected);
    }
    networkCombo_->addItem(tr("New..."), NewRange);
    // "Disabled" names no network: its data is the empty text.
    networkCombo_->setCurrentIndex(std::max(0, networkCombo_->findData(chosen)));
    if (parts_.networks.HasManualRange(chosen.toStdWString()))
        networkCombo_->addItem(tr("Edit..."), EditRange);
    ShowState(connected);
}

/// A line for each adapter that has the network now.
QString NetworkPanel::AdaptersOf(const NetworkListEntry& entry) const
{
    QStringList lines;
    for (const auto& [ip, network] : parts_.networks.FindMatching(entry.text)) {
        const QString text = network.up ? tr("Adapter %1, our address in it is %2")
                                        : tr("Adapter %1, our address in it is %2: not connected");
        lines.append(
            text.arg(QString::fromStdWString(network.adapter), QString::fromStdWString(ip)));
    }
    return lines.isEmpty() ? tr("No adapter has this network now") : lines.join(QLatin1Char('\n'));
}

void NetworkPanel::ShowState(bool connected)
{
    const QString chosen = parts_.choice.GetNetworkText();
    const QString adapter = parts_.choice.GetAdapter();
    const QString address = QString::fromStdWString(parts_.choice.GetNetworkIP());
    QString state;
    if (chosen.isEmpty())
        state = tr("No network is chosen: nothing is sent");
    else if (address.isEmpty())
        state = tr("No adapter has the network %1 now: nothing is sent").arg(chosen);
    else if (connected)
        state =
            tr("Network %1 on adapter %2, our address in it is %3").arg(chosen, adapter, address);
    else
        state = tr("Network %1 on adapter %2, our address in it is %3: not connected")
                    .arg(chosen, adapter, address);
    networkCombo_->setToolTip(state);
    networkCombo_->setAccessibleDescription(state);
    networkCombo_->setProperty("absent", !connected);
    // A style sheet reads a property only when the widget is polished.
    networkCombo_->style()->unpolish(networkCombo_);
    networkCombo_->style()->polish(networkCombo_);
}

void NetworkPanel::comboNetworkChanged(int)
{
    const QSignalBlocker silent(networkCombo_);
    const QString entry = networkCombo_->currentData().toString();
    if (entry == NewRange)
        AddManualIPRange();
    else if (entry == EditRange)
        editManualIPRange();
    else
        Take(entry);
    parts_.manager.SetDocumentDirty(true);
    // Behind "New..." and "Edit..." too the list goes back to the chosen network.
    RefillNetworks();
}

void NetworkPanel::Take(const QString& network)
{
    // Also when it is chosen already: the operator wants us to look again.
    parts_.choice.Choose(network);
    parts_.choice.ClearStaleAddresses(parts_.nodes, parts_.undoStack);
    parts_.choice.updateArtNetOutput();
}

void NetworkPanel::AddManualIPRange()
{
    LedDialogAddIPrange dialog(parts_.window);
    dialog.SetUpForNew();
    if (dialog.exec() != QDialog::Accepted)
        return;
    parts_.networks.AddManualRange(dialog.GetRange().toStdWString());
    Take(dialog.GetRange());
}

void NetworkPanel::editManualIPRange()
{
    const QString before = parts_.choice.GetNetworkText();
    LedDialogAddIPrange dialog(parts_.window);
    dialog.SetUpForEdit(before);
    const int result = dialog.exec();
    const QString after = result == LedDialogAddIPrange::Deleted ? QString() : dialog.GetRange();
    if (result == QDialog::Rejected || after == before)
        return;
    parts_.networks.RemoveManualRange(before.toStdWString());
    if (!after.isEmpty())
        parts_.networks.AddManualRange(after.toStdWString());
    Take(after);
}

// ---- The sender --------------------------------------------------------------------------------

void NetworkPanel::dmxSenderChanged(int sender)
{
    parts_.engine.GetTrigger().hostSendsDMX = sender;
}

// ---- The merger --------------------------------------------------------------------------------

void NetworkPanel::ShowMerging()
{
    const UniverseMerging& merging = parts_.manager.GetMappedDeviceModel()->GetMerging();
    const QSignalBlocker silent(mergerToggle_);
    mergerToggle_->setChecked(merging.IsEnabled());
    // Without a host there are no settings to open: the ranges are those of the file.
    const bool isStuck = !CanSetUpMerger() && !merging.IsEnabled() && merging.RangesOverlap();
    mergerToggle_->setEnabled(!isStuck);
    mergerToggle_->setToolTip(isStuck ? tr("The merger's ranges in this document overlap")
                                      : tr("Toggle merger on/off"));
}

void NetworkPanel::ActionToggleMergingUniverses(bool checked)
{
    UniverseMerging merging = parts_.manager.GetMappedDeviceModel()->GetMerging();
    merging.SetEnabled(checked);
    if (!checked || !merging.RangesOverlap()) {
        CommitMerging(merging);
        return;
    }
    // The nodes of a range would be sent the desk's channels and ours in turn.
    ShowMerging();
    SetUpMerger(merging);
}

void NetworkPanel::CommitMerging(const UniverseMerging& merging)
{
    MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    // A dialog that changed nothing must not cost a frame.
    if (merging == document.GetMerging())
        return;
    parts_.manager.SetDocumentDirty(true);
    document.SetMerging(merging);
    ShowMerging();
    parts_.choice.updateArtNetOutput();
}

void NetworkPanel::ActionMergingUniversesSettings()
{
    SetUpMerger(parts_.manager.GetMappedDeviceModel()->GetMerging());
}

void NetworkPanel::SetUpMerger(const UniverseMerging& proposed)
{
    const UniverseMerging original = parts_.manager.GetMappedDeviceModel()->GetMerging();
    const auto dialog = MakeMergingDialog(proposed);
    if (!dialog)
        return;
    connect(dialog.get(), &LEDDialogDMXUniverseMerging::apply, this,
            [&] { CommitMerging(dialog->GetUniverseMerging()); });
    connect(this, &NetworkPanel::artNetDMXInputSettingsChanged, dialog.get(),
            &LEDDialogDMXUniverseMerging::ArtNetDMXInputSettingsChanged);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    CommitMerging(accepted ? dialog->GetUniverseMerging() : original);
}

bool NetworkPanel::CanSetUpMerger() const
{
    return parts_.preferences.mode != ApplicationMode::NoHost;
}

std::unique_ptr<LEDDialogDMXUniverseMerging>
NetworkPanel::MakeMergingDialog(const UniverseMerging& merging) const
{
    const ExternalServerPreferences& host = parts_.preferences;
    switch (host.mode) {
    case ApplicationMode::BesideReelCommand:
        return std::make_unique<LEDDialogDMXUniverseMerging>(
            merging, parts_.choice.GetNetworkText(), host.artNetIPAddress, host.IsArtNet(),
            parts_.window);
    case ApplicationMode::BesideLoomTap:
        return std::make_unique<LEDDialogDMXUniverseMerging>(merging, parts_.window);
    default:
        return nullptr;
    }
}
