// SPDX-License-Identifier: MIT
// What the window's actions do: they ask the part whose work it is.
#include "UI/Main/WEFTMain.h"

#include <QAction>
#include <QDialog>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Dialogs/LEDDialogCanvasSize.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Dialogs/WEFTAboutDialog.h"
#include "UI/Editor/EditorController.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Library/LibraryPanel.h"
#include "UI/Main/DocumentLife.h"
#include "UI/Main/SelectionModeButton.h"
#include "UI/Main/ZoomControls.h"
#include "UI/TestPattern/LEDTestPatternControl.h"

// ---- The document ------------------------------------------------------------------------------

void WEFTMain::ActionNew()
{
    document_->ActionNew();
}

void WEFTMain::ActionImport()
{
    document_->ActionImport();
}

void WEFTMain::ActionExport()
{
    document_->ActionExport();
}

void WEFTMain::ActionSaveFile()
{
    document_->Save();
}

void WEFTMain::ActionCanvasSize()
{
    LEDDialogCanvasSize dialog(this);
    int width = 0;
    int height = 0;
    deviceManager_->GetCanvasSize(width, height);
    dialog.SetSize(width, height);
    if (dialog.exec() == QDialog::Accepted)
        editor_->ResizeCanvas(dialog.GetWidth(), dialog.GetHeight(), dialog.KeepsPositions());
}

void WEFTMain::ActionAbout()
{
    WEFTAboutDialog(this).exec();
}

// ---- The canvas --------------------------------------------------------------------------------

void WEFTMain::ActionSelectAll()
{
    editor_->ActionSelectAll();
}

void WEFTMain::RemoveSelectedRectangle()
{
    scene_->RemoveSelectedRectangle();
}

void WEFTMain::ActionCropCanvasToSelectedDevices()
{
    editor_->ActionCropCanvasToSelectedDevices();
}

void WEFTMain::ActionAlign(ElementGeometry::AlignMode mode)
{
    editor_->ActionAlign(mode);
}

void WEFTMain::ActionAlignDistribute(ElementGeometry::DistributeMode mode)
{
    editor_->ActionAlignDistribute(mode);
}

void WEFTMain::ActionRotateRight90()
{
    editor_->ActionRotateRight90();
}

void WEFTMain::ActionRotateLeft90()
{
    editor_->ActionRotateLeft90();
}

// ---- What the user sets ------------------------------------------------------------------------

void WEFTMain::ActionPreferences()
{
    preferencesDialog_.SetControls(settings_,
                                   deviceManager_->GetMappedDeviceModel()->IsAutoUnicast());
    if (preferencesDialog_.exec() == QDialog::Accepted)
        ApplyPreferences();
}

void WEFTMain::ApplyPreferences()
{
    SnapToGrid(preferencesDialog_.GetSnapToGrid());
    if (preferencesDialog_.GetShowGrid() != settings_.showGrid)
        ShowGrid(preferencesDialog_.GetShowGrid());
    settings_.zoomStyle = preferencesDialog_.GetZoomStyle();
    settings_.Save();
    editor_->SetZoomStyle(settings_.zoomStyle);
    MappedDeviceModel& document = *deviceManager_->GetMappedDeviceModel();
    if (preferencesDialog_.GetAutoUnicast() != document.IsAutoUnicast()) {
        document.SetAutoUnicast(preferencesDialog_.GetAutoUnicast());
        deviceManager_->SetDocumentDirty(true);
    }
}

void WEFTMain::ShowGrid(bool on)
{
    settings_.showGrid = on;
    settings_.Save();
    display_.showGrid = on;
    form_.Action(ActionId::DisplayPixelGrid)->setChecked(on);
    scene_->RedrawCanvas();
}

void WEFTMain::SnapToGrid(bool on)
{
    settings_.snapToGrid = on;
    settings_.Save();
    display_.snapToGrid = on;
    form_.Action(ActionId::SnapToGrid)->setChecked(on);
}

void WEFTMain::ActionDisplayPixelGrid()
{
    ShowGrid(form_.Action(ActionId::DisplayPixelGrid)->isChecked());
}

void WEFTMain::ActionToggleSnapToGrid()
{
    SnapToGrid(form_.Action(ActionId::SnapToGrid)->isChecked());
}

void WEFTMain::ActionZoomIn()
{
    zoom_->ActionZoomIn();
}

void WEFTMain::ActionZoomOut()
{
    zoom_->ActionZoomOut();
}

void WEFTMain::ActionSelectionMode_None()
{
    selectionModeButton_->SetMode(0);
}

void WEFTMain::ActionSelectionMode_Solid()
{
    selectionModeButton_->SetMode(1);
}

void WEFTMain::ActionSelectionMode_Flash()
{
    selectionModeButton_->SetMode(2);
}

// ---- The test picture --------------------------------------------------------------------------

void WEFTMain::ActionChooseTestImage()
{
    const QString file = boxes_.OpenFile(this, tr("Open Test Image"), QString(),
                                         tr("Image Files (*.bmp *.png *.gif)"));
    if (!file.isEmpty())
        testPattern_->SetFile(file);
}

void WEFTMain::ActionChooseTestImageDirectory()
{
    const QString directory = boxes_.ChooseDirectory(this, tr("Choose Test Image Directory"));
    if (!directory.isEmpty())
        testPattern_->SetDirectory(directory);
}

void WEFTMain::ActionNextTestImage()
{
    testPattern_->Next();
}

void WEFTMain::ActionPreviousTestImage()
{
    testPattern_->Previous();
}

void WEFTMain::SetTestPatternImage(QPixmap* picture)
{
    if (picture)
        deviceManager_->GetMappedDeviceModel()->SetTestImage(*picture);
    updateLEDEngine();
}

// ---- The library -------------------------------------------------------------------------------

void WEFTMain::ActionImportFixtures()
{
    libraryPanel_->ActionImportFixtures();
}

void WEFTMain::RemoveLocalFixturesAndReset()
{
    // The fixtures that the document uses go: its changes are not asked about.
    deviceManager_->SetDocumentDirty(false);
    libraryPanel_->RemoveLocalFixtures();
    ActionNew();
}
