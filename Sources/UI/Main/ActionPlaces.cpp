// SPDX-License-Identifier: MIT
#include "UI/Main/ActionTable.h"

#include <array>

#include <QtGlobal>

#include "UI/Main/WEFTMain.h"

namespace {

using enum ActionId;

// What works on copies of elements has no slot yet.
constexpr std::array<ActionRow, static_cast<std::size_t>(Count)> rows = {{
    {CanvasSize, "actionCanvas_Size", QT_TRANSLATE_NOOP("WEFTMain", "Canvas Size..."),
     QT_TRANSLATE_NOOP("WEFTMain", "Adjust the canvas dimensions"), "Ctrl+Shift+R", false,
     "icon_canvassize.png", &WEFTMain::ActionCanvasSize},
    {Import, "actionImport", QT_TRANSLATE_NOOP("WEFTMain", "Import..."),
     QT_TRANSLATE_NOOP("WEFTMain", "Open an existing mapping file "), "Ctrl+O", false,
     "icon_fileopen.png", &WEFTMain::ActionImport},
    {Export, "actionExport", QT_TRANSLATE_NOOP("WEFTMain", "Export..."),
     QT_TRANSLATE_NOOP("WEFTMain", "Save mapping to a mapping file "), "Ctrl+Shift+S", false,
     "icon_filesaveas.png", &WEFTMain::ActionExport},
    {Save, "actionSave_File", QT_TRANSLATE_NOOP("WEFTMain", "Save"),
     QT_TRANSLATE_NOOP("WEFTMain", "Save mapping to current file"), "Ctrl+S", false,
     "icon_filesave.png", &WEFTMain::ActionSaveFile},
    {ZoomIn, "actionZoom_In", QT_TRANSLATE_NOOP("WEFTMain", "Zoom In"),
     QT_TRANSLATE_NOOP("WEFTMain", "Zoom In"), "+", false, "icon_zoomin.png",
     &WEFTMain::ActionZoomIn},
    {ZoomOut, "actionZoom_Out", QT_TRANSLATE_NOOP("WEFTMain", "Zoom Out"),
     QT_TRANSLATE_NOOP("WEFTMain", "Zoom Out"), "-", false, "icon_zoomout.png",
     &WEFTMain::ActionZoomOut},
    {DisplayPixelGrid, "actionDisplay_Pixel_Grid",
     QT_TRANSLATE_NOOP("WEFTMain", "Display Pixel Grid"),
     QT_TRANSLATE_NOOP("WEFTMain", "Display pixel grid"), "Ctrl+G", true, "icon_grid.png",
     &WEFTMain::ActionDisplayPixelGrid},
    {SelectAll, "actionSelect_All", QT_TRANSLATE_NOOP("WEFTMain", "Select All"), nullptr, "Ctrl+A",
     false, nullptr, &WEFTMain::ActionSelectAll},
    {CropCanvas, "actionCrop_Canvas", QT_TRANSLATE_NOOP("WEFTMain", "Crop to selection"),
     QT_TRANSLATE_NOOP("WEFTMain", "Crop canvas to selected devices"), "Ctrl+Shift+C", false,
     "icon_cropcanvas.png", &WEFTMain::ActionCropCanvasToSelectedDevices},
    {Exit, "actionExit", QT_TRANSLATE_NOOP("WEFTMain", "Exit"), nullptr, nullptr, false, nullptr,
     &WEFTMain::ActionQuit},
    {AlignLeft, "actionAlign_Left", QT_TRANSLATE_NOOP("WEFTMain", "Align Left"), nullptr, nullptr,
     false, "icon_alignleft.png", &WEFTMain::ActionAlignLeft},
    {AlignCenter, "actionAlign_Center", QT_TRANSLATE_NOOP("WEFTMain", "Align Center"), nullptr,
     nullptr, false, "icon_aligncenter.png", &WEFTMain::ActionAlignCenter},
    {AlignRight, "actionAlign_Right", QT_TRANSLATE_NOOP("WEFTMain", "Align Right"), nullptr,
     nullptr, false, "icon_alignright.png", &WEFTMain::ActionAlignRight},
    {AlignTop, "actionAlign_Top", QT_TRANSLATE_NOOP("WEFTMain", "Align Top"), nullptr, nullptr,
     false, "icon_aligntop.png", &WEFTMain::ActionAlignTop},
    {AlignMiddle, "actionAlign_Middle", QT_TRANSLATE_NOOP("WEFTMain", "Align Middle"), nullptr,
     nullptr, false, "icon_aligncmiddle.png", &WEFTMain::ActionAlignMiddle},
    {AlignBottom, "actionAlign_Bottom", QT_TRANSLATE_NOOP("WEFTMain", "Align Bottom"), nullptr,
     nullptr, false, "icon_alignbottom.png", &WEFTMain::ActionAlignBottom},
    {DistributeHorizontally, "actionDistribute_Horizontally",
     QT_TRANSLATE_NOOP("WEFTMain", "Distribute Horizontally"), nullptr, nullptr, false,
     "icon_aligndistrhorz.png", &WEFTMain::ActionAlignDistributeHorizontally},
    {DistributeVertically, "actionDistribute_Vertically",
     QT_TRANSLATE_NOOP("WEFTMain", "Distribute Vertically"), nullptr, nullptr, false,
     "icon_aligndistrvert.png", &WEFTMain::ActionAlignDistributeVertically},
    {RotateRight90, "actionRotate_Right_90", QT_TRANSLATE_NOOP("WEFTMain", "Rotate Right 90°"),
     nullptr, "Ctrl+R", false, "icon_rotateright90.png", &WEFTMain::ActionRotateRight90},
    {RotateLeft90, "actionRotate_Left_90", QT_TRANSLATE_NOOP("WEFTMain", "Rotate Left 90°"),
     nullptr, nullptr, false, "icon_rotateleft90.png", &WEFTMain::ActionRotateLeft90},
    {ChooseTestImage, "actionChoose_Test_Image",
     QT_TRANSLATE_NOOP("WEFTMain", "Choose Test Image..."),
     QT_TRANSLATE_NOOP("WEFTMain", "Choose test image"), nullptr, false, nullptr,
     &WEFTMain::ActionChooseTestImage},
    {ChooseTestImageDir, "actionChoose_Test_Image_Dir",
     QT_TRANSLATE_NOOP("WEFTMain", "Choose Test Image Directory..."),
     QT_TRANSLATE_NOOP("WEFTMain", "Choose test image directory"), nullptr, false, nullptr,
     &WEFTMain::ActionChooseTestImageDirectory},
    {Delete, "actionActionDelete", QT_TRANSLATE_NOOP("WEFTMain", "Delete"),
     QT_TRANSLATE_NOOP("WEFTMain", "Delete device from the mapping canvas"), "Backspace", false,
     "icon_delete.png", &WEFTMain::RemoveSelectedRectangle},
    {New, "actionNew", QT_TRANSLATE_NOOP("WEFTMain", "New..."),
     QT_TRANSLATE_NOOP("WEFTMain", "Creates an empty canvas"), "Ctrl+N", false, "icon_filenew.png",
     &WEFTMain::ActionNew},
    {About, "actionAbout", QT_TRANSLATE_NOOP("WEFTMain", "About"), nullptr, nullptr, false, nullptr,
     &WEFTMain::ActionAbout},
    {Preferences, "actionPreferences", QT_TRANSLATE_NOOP("WEFTMain", "Preferences..."), nullptr,
     "Ctrl+,", false, nullptr, &WEFTMain::ActionPreferences},
    {DuplicateElement, "actionDuplicate_Element",
     QT_TRANSLATE_NOOP("WEFTMain", "Duplicate Element..."),
     QT_TRANSLATE_NOOP("WEFTMain", "Duplicate element to create a wall."), "Ctrl+D", false, nullptr,
     nullptr},
    {Copy, "actionCopy", QT_TRANSLATE_NOOP("WEFTMain", "Copy"),
     QT_TRANSLATE_NOOP("WEFTMain", "Copy selected element(s)"), "Ctrl+C", false, nullptr, nullptr},
    {Paste, "actionPaste", QT_TRANSLATE_NOOP("WEFTMain", "Paste element(s)"), nullptr, "Ctrl+V",
     false, nullptr, nullptr},
    {SnapToGrid, "actionSnapToGrid", QT_TRANSLATE_NOOP("WEFTMain", "SnapToGrid"),
     QT_TRANSLATE_NOOP("WEFTMain", "Snap fixtures to the grid"), nullptr, true,
     "icon_snap_grid.png", &WEFTMain::ActionToggleSnapToGrid},
    {SelectionModeSolid, "actionSelectionMode_Solid",
     QT_TRANSLATE_NOOP("WEFTMain", "Solid Color Output Selection"),
     QT_TRANSLATE_NOOP("WEFTMain",
                       "Solid color selection notification on the device output itself. "),
     nullptr, false, "icon_selectionmode.png", &WEFTMain::ActionSelectionMode_Solid},
    {SelectionModeNone, "actionSelectionMode_None",
     QT_TRANSLATE_NOOP("WEFTMain", "No Output Selection"),
     QT_TRANSLATE_NOOP("WEFTMain", "No color selection notification on the device output itself."),
     nullptr, false, "icon_selectionmode_none.png", &WEFTMain::ActionSelectionMode_None},
    {SelectionModeFlash, "actionSelectionMode_Flash",
     QT_TRANSLATE_NOOP("WEFTMain", "Flashing Output Selection"),
     QT_TRANSLATE_NOOP(
         "WEFTMain", "Flashing animated color selection notification on the device output itself."),
     nullptr, false, "icon_selectionmode_flash.png", &WEFTMain::ActionSelectionMode_Flash},
    {ImportFixtures, "actionImport_fixtures", QT_TRANSLATE_NOOP("WEFTMain", "Import Fixtures..."),
     nullptr, nullptr, false, nullptr, &WEFTMain::ActionImportFixtures},
}};

constexpr bool InOrder()
{
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (static_cast<std::size_t>(rows[i].id) != i)
            return false;
    }
    return true;
}
static_assert(InOrder(), "a row is found by its id");

constexpr std::array fileEntries = {New,
                                    Save,
                                    Separator,
                                    Import,
                                    Export,
                                    Separator,
                                    ImportFixtures,
                                    Separator,
                                    ChooseTestImage,
                                    ChooseTestImageDir,
                                    Separator,
                                    Preferences,
                                    Separator,
                                    Exit};
constexpr std::array editEntries = {Separator, SelectAll, Delete,           Separator, Copy,
                                    Paste,     Separator, DuplicateElement, Separator};
constexpr std::array alignEntries = {AlignLeft,           AlignCenter, AlignRight,
                                     Separator,           AlignTop,    AlignMiddle,
                                     AlignBottom,         Separator,   DistributeHorizontally,
                                     DistributeVertically};
constexpr std::array rotateEntries = {RotateRight90, RotateLeft90};
constexpr std::array canvasEntries = {CropCanvas, CanvasSize, DisplayPixelGrid, Separator};
constexpr std::array helpEntries = {About};
constexpr std::array toolBarEntries = {SnapToGrid, DisplayPixelGrid, Separator, CropCanvas,
                                       ZoomOut,    ZoomIn,           Separator};

constexpr MenuRow fileMenu = {"menuFile", QT_TRANSLATE_NOOP("WEFTMain", "File"), fileEntries};
constexpr MenuRow editMenu = {"menuEdit", QT_TRANSLATE_NOOP("WEFTMain", "Edit"), editEntries};
constexpr MenuRow alignMenu = {"menuAlign", QT_TRANSLATE_NOOP("WEFTMain", "Align"), alignEntries};
constexpr MenuRow rotateMenu = {"menuRotate_2", QT_TRANSLATE_NOOP("WEFTMain", "Rotate"),
                                rotateEntries};
constexpr MenuRow canvasMenu = {"menuImage", QT_TRANSLATE_NOOP("WEFTMain", "Canvas"),
                                canvasEntries};
constexpr MenuRow helpMenu = {"menuAbout", QT_TRANSLATE_NOOP("WEFTMain", "Help"), helpEntries};

} // namespace

QIcon ActionIcon(const char* file)
{
    return QIcon(QStringLiteral(":/bitmaps/Bin/bitmaps/") + QLatin1String(file));
}

std::span<const ActionRow> ActionTable()
{
    return rows;
}

const MenuRow& FileMenu()
{
    return fileMenu;
}

const MenuRow& EditMenu()
{
    return editMenu;
}

const MenuRow& AlignMenu()
{
    return alignMenu;
}

const MenuRow& RotateMenu()
{
    return rotateMenu;
}

const MenuRow& CanvasMenu()
{
    return canvasMenu;
}

const MenuRow& HelpMenu()
{
    return helpMenu;
}

std::span<const ActionId> ToolBarActions()
{
    return toolBarEntries;
}
