// SPDX-License-Identifier: MIT
#pragma once

#include <span>

/// Where the actions of the rooms go in menus and tool bar. Each entry is the object name of an
/// action, a submenu or a widget of the window; null is a separator.
namespace ActionPlaces {

/// One menu of the menu bar with its entries in order. The title is the untranslated one.
struct Menu
{
    const char* objectName;
    const char* title;
    std::span<const char* const> entries;
};

/// In the order of the menu bar.
[[nodiscard]] std::span<const Menu> MenuBar();

/// The tool bar up to the network panel.
[[nodiscard]] std::span<const char* const> ToolBar();

/// The actions whose keys are for the elements alone: they work while the canvas or the list of the
/// elements has the focus.
[[nodiscard]] std::span<const char* const> KeysOfElements();

} // namespace ActionPlaces
