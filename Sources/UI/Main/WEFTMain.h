// SPDX-License-Identifier: MIT
#pragma once

#include <future>
#include <memory>

#include <QMainWindow>
#include <QUndoStack>

#include "LibTools/SaveResult.h"
#include "Settings/SettingsBlock.h"
#include "UI/Dialogs/OperatorNotices.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Main/EventPace.h"
#include "UI/Main/FrameLoop.h"
#include "UI/Widgets/ActionSet.h"

class ArtNetNodeModel;
class DeviceManager;
class DisplayControls;
class DocumentLife;
class EditorActionSet;
class EditorController;
class ElementList;
class ExternalServerPreferences;
class FilesToOpen;
class HostSettings;
class IdentifyInWindow;
class InspectorInWindow;
class LEDEngine;
class LEDTestPatternControl;
class LibraryPanel;
class MainWindowForm;
class NetworkChoice;
class NetworkPanel;
class NodeList;
class OperatorBoxes;
class OutputInWindow;
class PatchExport;
class PixelInspector;
class QTimer;
class QUndoView;
class Repatching;
class SavedState;
class ServicesInUse;
class StatusLine;
class TestPatternPanel;
class UnsavedWork;
class WEFTDialogPreferences;
class WeftMapEditorScene;

/// The main window: builds the parts of the program in their order, owns them and wires them. What
/// a part does is its own matter.
class WEFTMain : public QMainWindow
{
    Q_OBJECT

public:
    /// `boxes` outlives the window. Ends the process, after a line in the log, when the application
    /// mode is unknown or the operator has no library and quits.
    explicit WEFTMain(OperatorBoxes& boxes);
    ~WEFTMain() override;

    /// Loads the document of the mode, or begins one. Comes after the window is shown.
    void LoadFirstDocument();
    /// Offers the work that a crash left unsaved, and keeps the work of this run from now on. Comes
    /// when the program ticks: the output doesn't wait for the answer.
    void GuardUnsavedWork();
    /// From here on the program ticks, until the process ends.
    void StartTimers();
    /// Mappings and libraries that were opened outside of the window. Returns at once; what they
    /// ask comes when the operator is free for it.
    void OpenFiles(const QStringList& paths);

public slots:
    void ActionQuit();
    void ActionAbout();
    void ActionPreferences();
    void ActionResetLayout();
    void ActionNightLook(bool on);
    void SetTestPatternImage(QPixmap* picture);

    /// One tick.
    void UpdateEngine();
    /// Builds the engine's buffers for the elements that there are now.
    void updateLEDEngine();
    void DocumentSavedStateUpdated(bool saved);

protected:
    /// Also called without an event, by ActionQuit.
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildParts();
    void BuildTestPattern();
    void BuildDocks();
    void BuildCanvas();
    void BuildDocument();
    void BuildToolBar();
    void BuildTimers();
    void AddActions();
    void WireEngine();
    void WireCanvas();
    void WireDocument();
    void WireSaveTrouble();
    void WireHost();
    void LoadWindowSettings();
    void SaveWindowSettings();
    void FindDocument();
    void ApplyPreferences(const WEFTDialogPreferences& dialog);
    void ReadSelection();
    void ShowNotice(const OperatorNotices::Notice& notice);
    /// Ticks when it is time, until a save is on the disk. No event is handled meanwhile.
    void TickUntil(const std::future<SaveResult>& written);

    // The order matters: members are destroyed from the last to the first, each before what it
    // uses. The services are freed after all that may still write a file, and before the engine.
    OperatorBoxes& boxes_;
    OperatorNotices notices_;
    ActionSet actions_;
    SettingsBlock settings_;
    EditorDisplayState display_;
    FrameLoop::Selection selectionSet;
    std::unique_ptr<ExternalServerPreferences> preferences_;
    std::unique_ptr<ArtNetNodeModel> nodeModel_;
    std::unique_ptr<DeviceManager> deviceManager_;
    std::unique_ptr<LEDEngine> engine_;
    std::unique_ptr<FrameLoop> frameLoop_;
    std::unique_ptr<EventPace> pace_;
    std::unique_ptr<NetworkChoice> network_;
    std::unique_ptr<HostSettings> hostSettings_;
    std::unique_ptr<MainWindowForm> form_;
    std::unique_ptr<WeftMapEditorScene> scene_;
    QUndoStack undoStack_;
    std::unique_ptr<SavedState> savedState_;
    std::unique_ptr<ElementList> elementList_;
    std::unique_ptr<NodeList> nodeList_;
    std::unique_ptr<OutputInWindow> output_;
    std::unique_ptr<LibraryPanel> libraryPanel_;
    std::unique_ptr<EditorController> editor_;
    std::unique_ptr<Repatching> repatching_;
    std::unique_ptr<EditorActionSet> editorActions_;
    std::unique_ptr<DisplayControls> displayControls_;
    std::unique_ptr<InspectorInWindow> inspector_;
    std::unique_ptr<DocumentLife> document_;
    std::unique_ptr<PatchExport> patchExport_;
    std::unique_ptr<IdentifyInWindow> identify_;
    std::unique_ptr<ServicesInUse> services_;
    std::unique_ptr<UnsavedWork> unsavedWork_;
    std::unique_ptr<QUndoView> undoView_;
    std::unique_ptr<LEDTestPatternControl> testPattern_;
    std::unique_ptr<TestPatternPanel> testPatternPanel_;
    std::unique_ptr<StatusLine> statusLine_;
    std::unique_ptr<PixelInspector> pixelInspector_;
    std::unique_ptr<FilesToOpen> filesToOpen_;

    NetworkPanel* networkPanel_ = nullptr;
    bool engineFailed_ = false;
    bool ticking_ = false;
    QTimer* engineTimer = nullptr;
    QTimer* nodesTimer = nullptr;
    QTimer* networkTimer = nullptr;
};
