// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QMainWindow>

#include "Model/ElementGeometry.h"
#include "Settings/SettingsBlock.h"
#include "UI/Dialogs/WEFTDialogPreferences.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Main/FrameLoop.h"
#include "UI/Main/MainWindowForm.h"
#include "UI/Main/OperatorNotices.h"

class ArtNetNodeModel;
class DeviceManager;
class DocumentLife;
class EditorController;
class ExternalServerPreferences;
class HostSettings;
class LEDEngine;
class LEDTestPatternControl;
class LibraryPanel;
class NetworkChoice;
class NetworkPanel;
class OperatorBoxes;
class QTimer;
class QUndoStack;
class QUndoView;
class SelectionModeButton;
class UnsavedWork;
class WeftMapEditorScene;
class ZoomControls;

/// The main window: builds the program's parts in their order, owns them and wires them. What they
/// do is theirs.
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
    /// when the program ticks: the lights don't wait for the answer.
    void GuardUnsavedWork();
    /// From here on the program ticks, until the process ends.
    void StartTimers();

    /// The host's name for people, empty when there is none.
    [[nodiscard]] QString GetHostName() const;

public slots:
    void ActionNew();
    void ActionImport();
    void ActionExport();
    void ActionSaveFile();
    void ActionQuit();
    void ActionCanvasSize();
    void ActionAbout();
    void ActionPreferences();

    void ActionSelectAll();
    void RemoveSelectedRectangle();
    void ActionCropCanvasToSelectedDevices();
    void ActionAlign(ElementGeometry::AlignMode mode);
    void ActionAlignLeft() { ActionAlign(ElementGeometry::AlignLeft); }
    void ActionAlignCenter() { ActionAlign(ElementGeometry::AlignCenter); }
    void ActionAlignRight() { ActionAlign(ElementGeometry::AlignRight); }
    void ActionAlignTop() { ActionAlign(ElementGeometry::AlignTop); }
    void ActionAlignMiddle() { ActionAlign(ElementGeometry::AlignMiddle); }
    void ActionAlignBottom() { ActionAlign(ElementGeometry::AlignBottom); }
    void ActionAlignDistribute(ElementGeometry::DistributeMode mode);
    void ActionAlignDistributeHorizontally()
    {
        ActionAlignDistribute(ElementGeometry::DistributeHorizontally);
    }
    void ActionAlignDistributeVertically()
    {
        ActionAlignDistribute(ElementGeometry::DistributeVertically);
    }
    void ActionRotateRight90();
    void ActionRotateLeft90();

    void ActionZoomIn();
    void ActionZoomOut();
    void ActionDisplayPixelGrid();
    void ActionToggleSnapToGrid();

    void ActionChooseTestImage();
    void ActionChooseTestImageDirectory();
    void ActionNextTestImage();
    void ActionPreviousTestImage();
    void SetTestPatternImage(QPixmap* picture);

    void ActionSelectionMode_None();
    void ActionSelectionMode_Solid();
    void ActionSelectionMode_Flash();

    void ActionImportFixtures();
    void RemoveLocalFixturesAndReset();

    void UpdateEngine();
    void ProcessNodesList();
    void RebuildNodeRows();
    void updateLEDEngine();
    void DocumentSavedStateUpdated(bool saved);

protected:
    /// Also called without an event, by ActionQuit.
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildParts();
    void LoadTestPicture();
    void BuildTestPattern();
    void BuildUndo();
    void BuildCanvas();
    void BuildLists();
    void BuildEditor();
    void BuildDocument();
    void BuildToolBar();
    void BuildTimers();
    void Wire();
    void WireDocument();
    void WireCanvas();
    void WireHost();
    void SetUpListColumns();
    void LoadWindowSettings();
    void SaveWindowSettings();
    void FindDocument();
    void OfferUnsavedWork();
    void ApplyPreferences();
    void ReadSelection();
    void WorkBetweenTicks();
    void ShowGrid(bool on);
    void SnapToGrid(bool on);

    OperatorBoxes& boxes_;
    OperatorNotices notices_;
    WEFTDialogPreferences preferencesDialog_;
    SettingsBlock settings_;
    EditorDisplayState display_;
    FrameLoop::Selection selectionSet;
    MainWindowForm form_;
    std::unique_ptr<ExternalServerPreferences> preferences_;
    std::unique_ptr<ArtNetNodeModel> nodeModel_;
    std::unique_ptr<DeviceManager> deviceManager_;
    std::unique_ptr<LEDEngine> engine_;
    std::unique_ptr<FrameLoop> frameLoop_;
    std::unique_ptr<NetworkChoice> network_;
    std::unique_ptr<LEDTestPatternControl> testPattern_;
    std::unique_ptr<QUndoView> undoView_;
    std::unique_ptr<WeftMapEditorScene> scene_;
    std::unique_ptr<EditorController> editor_;
    std::unique_ptr<LibraryPanel> libraryPanel_;
    std::unique_ptr<DocumentLife> document_;
    std::unique_ptr<UnsavedWork> unsavedWork_;
    std::unique_ptr<HostSettings> hostSettings_;

    QUndoStack* undoStack_ = nullptr;
    QAction* undoAction_ = nullptr;
    QAction* redoAction_ = nullptr;
    ZoomControls* zoom_ = nullptr;
    SelectionModeButton* selectionModeButton_ = nullptr;
    NetworkPanel* networkPanel_ = nullptr;
    bool engineFailed_ = false;
    bool nodesDue_ = false;    ///< the node list waits for the pause after a tick
    bool nodeRowsDue_ = false; ///< its rows do
    QTimer* engineTimer = nullptr;
    QTimer* nodesTimer = nullptr;
    QTimer* networkTimer = nullptr;
};
