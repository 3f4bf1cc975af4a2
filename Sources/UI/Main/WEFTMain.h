// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QMainWindow>

#include "Settings/SettingsBlock.h"
#include "UI/Main/FrameLoop.h"

class ArtNetNodeModel;
class DeviceManager;
class DocumentLife;
class ExternalServerPreferences;
class HostSettings;
class LEDEngine;
class NetworkChoice;
class QLabel;
class QTimer;
class StagePreview;

/// The main window: builds the program's parts in their order, owns them and wires them. What they
/// do is theirs.
class WEFTMain : public QMainWindow
{
    Q_OBJECT

public:
    /// Ends the process, after a line in the log, when the application mode is unknown or the
    /// operator has no library and quits.
    WEFTMain();
    ~WEFTMain() override;

    /// Loads the document of the mode, or begins one. Comes after the window is shown.
    void LoadFirstDocument();
    /// From here on the program ticks, until the process ends.
    void StartTimers();

    /// The host's name for people, empty when there is none.
    [[nodiscard]] QString GetHostName() const;

public slots:
    void UpdateEngine();
    void ProcessNodesList();
    void updateLEDEngine();
    void updatePreviewWindow();
    void DocumentSavedStateUpdated(bool saved);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void StartLogOfMode();
    void InstallServices();
    void BuildParts();
    void BuildWindow();
    void Wire();
    void LoadTestPicture();
    void LoadWindowSettings();
    void SaveWindowSettings();
    void FindDocument();
    QString AskForDocumentFolder();

    SettingsBlock settings_;
    FrameLoop::Selection selectionSet;
    std::unique_ptr<ExternalServerPreferences> preferences_;
    std::unique_ptr<ArtNetNodeModel> nodeModel_;
    std::unique_ptr<DeviceManager> deviceManager_;
    std::unique_ptr<LEDEngine> engine_;
    std::unique_ptr<FrameLoop> frameLoop_;
    std::unique_ptr<NetworkChoice> network_;
    std::unique_ptr<DocumentLife> document_;
    std::unique_ptr<HostSettings> hostSettings_;

    StagePreview* preview_ = nullptr;
    QLabel* networkLabel_ = nullptr;
    QLabel* outputLabel_ = nullptr;
    QTimer* engineTimer = nullptr;
    QTimer* nodesTimer = nullptr;
    QTimer* networkTimer = nullptr;
};
