// SPDX-License-Identifier: MIT
#include "UI/Main/SelectionModeButton.h"

#include <QMenu>
#include <QPainter>
#include <QStyle>

#include "Language/Language.h"
#include "Model/DeviceManager.h"
#include "UI/Widgets/DeskLook.h"

namespace {

/// The same icon in one colour, for a ground on which its own would not be seen.
QIcon InColour(const QIcon& icon, const QColor& colour)
{
    QIcon result;
    for (const QSize& size : icon.availableSizes()) {
        QPixmap picture = icon.pixmap(size);
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), colour);
        painter.end();
        result.addPixmap(picture);
    }
    return result;
}

} // namespace

SelectionModeButton::SelectionModeButton(DeviceManager& manager, QWidget& window)
    : QToolButton(&window)
    , manager_(manager)
    , actions_(window)
{
    setObjectName(QStringLiteral("selectionModeButton"));
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
    InEachLanguage(this, [this] {
        setAccessibleName(tr("Output selection"));
        SetMode(manager_.selectionMode);
    });
}

void SelectionModeButton::SetMode(int mode)
{
    manager_.selectionMode = mode;
    QAction* chosen = modes_[static_cast<std::size_t>(mode)];
    setDefaultAction(chosen);
    // Nobody shall begin a show with this on: the whole button says so, from across the desk.
    const bool marks = mode != 0;
    if (marks)
        setIcon(InColour(chosen->icon(), WarningInk()));
    setAccessibleDescription(marks ? tr("On: the selected fixtures don't show the picture")
                                   : QString());
    setProperty("warns", marks);
    // A style sheet reads a property only when the widget is polished.
    style()->unpolish(this);
    style()->polish(this);
}
