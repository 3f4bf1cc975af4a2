// SPDX-License-Identifier: MIT
#include "UI/Main/SelectionModeButton.h"

#include <QMenu>

#include "Model/DeviceManager.h"

SelectionModeButton::SelectionModeButton(DeviceManager& manager, QWidget& window)
    : QToolButton(&window)
    , manager_(manager)
    , actions_(window)
{
    setObjectName(QStringLiteral("selectionModeButton"));
    setAccessibleName(tr("Output selection"));
    setPopupMode(QToolButton::InstantPopup);
    setFocusPolicy(Qt::TabFocus);
    modes_ = {
        actions_.Add(
            {.objectName = "actionSelectionMode_None",
             .text = QT_TRANSLATE_NOOP("WEFTMain", "&No Output Selection"),
             .toolTip = QT_TRANSLATE_NOOP(
                 "WEFTMain", "No color selection notification on the device output itself."),
             .shortcut = "Ctrl+Shift+N",
             .icon = "icon_selectionmode_none.png"},
            this, &SelectionModeButton::ActionSelectionMode_None),
        actions_.Add(
            {.objectName = "actionSelectionMode_Solid",
             .text = QT_TRANSLATE_NOOP("WEFTMain", "&Solid Color Output Selection"),
             .toolTip = QT_TRANSLATE_NOOP(
                 "WEFTMain", "Solid color selection notification on the device output itself. "),
             .shortcut = "Ctrl+Shift+L",
             .icon = "icon_selectionmode.png"},
            this, &SelectionModeButton::ActionSelectionMode_Solid),
        actions_.Add(
            {.objectName = "actionSelectionMode_Flash",
             .text = QT_TRANSLATE_NOOP("WEFTMain", "&Flashing Output Selection"),
             .toolTip = QT_TRANSLATE_NOOP(
                 "WEFTMain",
                 "Flashing animated color selection notification on the device output itself."),
             .shortcut = "Ctrl+Shift+F",
             .icon = "icon_selectionmode_flash.png"},
            this, &SelectionModeButton::ActionSelectionMode_Flash)};
    auto* menu = new QMenu(this);
    for (QAction* mode : modes_)
        menu->addAction(mode);
    setMenu(menu);
    SetMode(manager.selectionMode);
}

void SelectionModeButton::SetMode(int mode)
{
    manager_.selectionMode = mode;
    setDefaultAction(modes_[static_cast<std::size_t>(mode)]);
}
