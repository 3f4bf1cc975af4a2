// SPDX-License-Identifier: MIT
#include "UI/Widgets/DockList.h"

#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

#include "Language/Language.h"

DockList::DockList(QWidget* parent)
    : QTreeView(parent)
{
    setStyleSheet(QStringLiteral("font-size: 12px;"));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSortingEnabled(true);
    setUniformRowHeights(true);
}

void DockList::SetNames(const char* objectName, const std::function<QString()>& accessibleName)
{
    setObjectName(QLatin1String(objectName));
    InEachLanguage(this, [this, accessibleName] { setAccessibleName(accessibleName()); });
}

void DockList::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    const int side = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(side);
}

bool DockList::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QTreeView::viewportEvent(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const QModelIndex index = indexAt(help.pos());
    const bool isCut = sizeHintForIndex(index).width() > visualRect(index).width();
    if (!isCut || !index.data(Qt::ToolTipRole).isNull())
        return QTreeView::viewportEvent(event);
    // A name may look like HTML.
    QToolTip::showText(help.globalPos(),
                       QStringLiteral("<span style=\"white-space: pre\">%1</span>")
                           .arg(index.data().toString().toHtmlEscaped()),
                       viewport(), visualRect(index));
    return true;
}
