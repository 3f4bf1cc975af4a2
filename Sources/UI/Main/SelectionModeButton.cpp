// SPDX-License-Identifier: MIT
#include "UI/Main/SelectionModeButton.h"

#include <QAction>
#include <QMenu>

#include "Model/DeviceManager.h"

SelectionModeButton::SelectionModeButton(DeviceManager& manager,
                                         const std::array<QAction*, 3>& modes, QWidget* parent)
    : QToolButton(parent)
    , manager_(manager)
    , modes_(modes)
{
    setObjectName(QStringLiteral("selectionModeButton"));
    setAccessibleName(tr("Output selection"));
    setPopupMode(QToolButton::InstantPopup);
    setFocusPolicy(Qt::TabFocus);
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
