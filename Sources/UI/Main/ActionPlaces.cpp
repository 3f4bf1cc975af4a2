// SPDX-License-Identifier: MIT
#include "UI/Main/ActionPlaces.h"

#include <array>

#include <QtGlobal>

namespace {

constexpr const char* Separator = nullptr;

constexpr std::array fileEntries = {"actionNew",
                                    "actionSave_File",
                                    Separator,
                                    "actionImport",
                                    "actionExport",
                                    "actionExport_Patch",
                                    "actionVersions",
                                    Separator,
                                    "actionImport_fixtures",
                                    "actionImport_fixture_folder",
                                    "actionExport_fixtures",
                                    Separator,
                                    "actionChoose_Test_Image",
                                    "actionChoose_Test_Image_Dir",
                                    Separator,
                                    "actionPreferences",
                                    Separator,
                                    "actionExit"};
constexpr std::array editEntries = {"actionUndo",
                                    "actionRedo",
                                    Separator,
                                    "actionSelect_All",
                                    "actionActionDelete",
                                    Separator,
                                    "actionCopy",
                                    "actionPaste",
                                    Separator,
                                    "actionDuplicate_Element",
                                    "actionRepatch",
                                    Separator,
                                    "actionFlipHorizontal",
                                    "actionFlipVertical",
                                    "menuAlign",
                                    "menuRotate_2",
                                    Separator,
                                    "actionEdit_Properties",
                                    "actionEdit_Description"};
constexpr std::array canvasEntries = {
    "actionCrop_Canvas", "actionCanvas_Size", "actionDisplay_Pixel_Grid",
    "actionSnapToGrid",  Separator,           "actionIdentify"};
constexpr std::array viewEntries = {"view_dockWidgetFixtureLibrary",
                                    "view_dockWidgetMappedFixtures",
                                    "view_dockWidgetArtNetNodes",
                                    "view_dockWidgetUniverses",
                                    "view_dockWidgetProblems",
                                    "actionInspector",
                                    "view_toolBar",
                                    Separator,
                                    "actionZoom_In",
                                    "actionZoom_Out",
                                    "actionZoom_Fit",
                                    "actionZoom_Fit_Selection",
                                    "actionZoom_Actual_Pixels",
                                    Separator,
                                    "actionReset_Layout",
                                    Separator,
                                    "actionNight_Look"};
constexpr std::array helpEntries = {"actionAbout"};

constexpr std::array menuBar = {
    ActionPlaces::Menu{"menuFile", QT_TRANSLATE_NOOP("WEFTMain", "&File"), fileEntries},
    ActionPlaces::Menu{"menuEdit", QT_TRANSLATE_NOOP("WEFTMain", "&Edit"), editEntries},
    ActionPlaces::Menu{"menuImage", QT_TRANSLATE_NOOP("WEFTMain", "&Canvas"), canvasEntries},
    ActionPlaces::Menu{"menuView", QT_TRANSLATE_NOOP("WEFTMain", "&View"), viewEntries},
    ActionPlaces::Menu{"menuAbout", QT_TRANSLATE_NOOP("WEFTMain", "&Help"), helpEntries}};

constexpr std::array toolBar = {
    "actionSnapToGrid", "selectionModeButton", "actionDisplay_Pixel_Grid",
    Separator,          "actionCrop_Canvas",   "actionZoom_Out",
    "zoomCombo",        "actionZoom_In",       Separator};

constexpr std::array keysOfElements = {"actionActionDelete", "actionSelect_All", "actionZoom_In",
                                       "actionZoom_Out"};

} // namespace

std::span<const ActionPlaces::Menu> ActionPlaces::MenuBar()
{
    return menuBar;
}

std::span<const char* const> ActionPlaces::ToolBar()
{
    return toolBar;
}

std::span<const char* const> ActionPlaces::KeysOfElements()
{
    return keysOfElements;
}
