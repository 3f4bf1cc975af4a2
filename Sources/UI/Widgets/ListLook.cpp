// SPDX-License-Identifier: MIT
#include "UI/Widgets/ListLook.h"

#include <QTreeView>

void SetUpList(QTreeView& view, const QString& objectName, const QString& accessibleName)
{
    view.setObjectName(objectName);
    view.setAccessibleName(accessibleName);
    view.setStyleSheet(QStringLiteral("font-size: 12px;"));
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setSortingEnabled(true);
    view.setUniformRowHeights(true);
}
