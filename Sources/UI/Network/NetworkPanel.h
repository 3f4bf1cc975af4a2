// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include <QObject>
#include <QString>

class ArtNetNodeModel;
class DeviceManager;
class ExternalServerPreferences;
class GetIPRange;
class LEDDialogDMXUniverseMerging;
class LEDEngine;
class NetworkChoice;
struct NetworkListEntry;
class QAction;
class QToolBar;
class QUndoStack;
class QWidget;
class SteadyComboBox;
class UniverseMerging;

/// The network side at the end of the tool bar: which network the output uses, lamps for the
/// traffic, who sends the DMX, and the universe merger.
class NetworkPanel : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        GetIPRange& networks;
        NetworkChoice& choice;
        DeviceManager& manager;
        const ArtNetNodeModel& nodes;
        LEDEngine& engine;
        const ExternalServerPreferences& preferences;
        QUndoStack& undoStack;
        QToolBar& toolBar; ///< owns the widgets and actions
        QWidget* window;   ///< the parent of the dialogs and of the panel
    };
    /// All parts outlive the panel.
    explicit NetworkPanel(const Parts& parts);

public slots:
    /// The operator chose the current entry.
    void comboNetworkChanged(int index);
    /// Lets the operator change or delete the range that is the chosen network.
    void editManualIPRange();
    /// 0 is this program, 1 the host.
    void dmxSenderChanged(int sender);
    void ActionToggleMergingUniverses(bool checked);
    void ActionMergingUniversesSettings();

    /// Lists the networks as they are now. An open list stays as it is until it closes.
    void RefillNetworks();
    /// Shows whether the document merges.
    void ShowMerging();

signals:
    /// The host reported other settings of its DMX input, which the merger's dialog shows when
    /// open.
    void artNetDMXInputSettingsChanged(bool enabled, const std::wstring& ip);

private:
    void AddNetworks();
    void AddLamps();
    void AddSender();
    void AddMerger();
    QAction* AddMergerAction(const char* name, const char* icon);
    void AddManualIPRange();
    void Take(const QString& network);
    [[nodiscard]] QString AdaptersOf(const NetworkListEntry& entry) const;
    void ShowState(bool connected);
    [[nodiscard]] std::unique_ptr<LEDDialogDMXUniverseMerging>
    MakeMergingDialog(const UniverseMerging& merging) const;
    /// Shows the settings with these as a start. What the operator doesn't accept is taken back.
    void SetUpMerger(const UniverseMerging& proposed);
    [[nodiscard]] bool CanSetUpMerger() const;
    void CommitMerging(const UniverseMerging& merging);

    Parts parts_;
    SteadyComboBox* networkCombo_ = nullptr;
    SteadyComboBox* senderCombo_ = nullptr;
    QAction* mergerToggle_ = nullptr;
};
