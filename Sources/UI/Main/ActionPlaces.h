// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include <QIcon>

class WEFTMain;

/// Every action of the window that the table describes. Undo and redo come from the undo stack.
enum class ActionId
{
    CanvasSize,
    Import,
    Export,
    Save,
    ZoomIn,
    ZoomOut,
    DisplayPixelGrid,
    SelectAll,
    CropCanvas,
    Exit,
    AlignLeft,
    AlignCenter,
    AlignRight,
    AlignTop,
    AlignMiddle,
    AlignBottom,
    DistributeHorizontally,
    DistributeVertically,
    RotateRight90,
    RotateLeft90,
    ChooseTestImage,
    ChooseTestImageDir,
    Delete,
    New,
    About,
    Preferences,
    DuplicateElement,
    Copy,
    Paste,
    SnapToGrid,
    SelectionModeSolid,
    SelectionModeNone,
    SelectionModeFlash,
    ImportFixtures,
    Count,
    Separator ///< in the lists of menus and tool bar only
};

/// One row of the table: all there is to know of an action. Texts are the untranslated ones.
struct ActionRow
{
    ActionId id;
    const char* objectName;
    const char* text;
    const char* toolTip;  ///< null: Qt shows the text
    const char* shortcut; ///< portable text, null for none
    bool checkable;
    const char* icon; ///< as ActionIcon takes it, null for none
    /// What it does. An action without a slot has nothing to act on and is disabled.
    void (WEFTMain::*slot)();
};

/// The icon of this file among the program's bitmaps ("icon_undo.png").
[[nodiscard]] QIcon ActionIcon(const char* file);

/// The rows, in the order of ActionId.
[[nodiscard]] std::span<const ActionRow> ActionTable();

/// One menu of the menu bar or a submenu, with its entries in order.
struct MenuRow
{
    const char* objectName;
    const char* title;
    std::span<const ActionId> entries;
};

[[nodiscard]] const MenuRow& FileMenu();
[[nodiscard]] const MenuRow& EditMenu(); ///< without undo, redo and the submenus
[[nodiscard]] const MenuRow& AlignMenu();
[[nodiscard]] const MenuRow& RotateMenu();
[[nodiscard]] const MenuRow& CanvasMenu();
[[nodiscard]] const MenuRow& HelpMenu();

/// The actions of the tool bar that come from the table; the window puts its widgets between them.
[[nodiscard]] std::span<const ActionId> ToolBarActions();
