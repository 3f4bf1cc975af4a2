// SPDX-License-Identifier: MIT
#include "UI/Widgets/ActionSet.h"

#include <QCoreApplication>
#include <QWidget>

QIcon ActionIcon(const char* file)
{
    return QIcon(QStringLiteral(":/bitmaps/Bin/bitmaps/") + QLatin1String(file));
}

QString WindowText(const char* text)
{
    return QCoreApplication::translate("WEFTMain", text);
}

ActionSet::ActionSet(QWidget& window)
    : window_(window)
{}

QAction* ActionSet::AddWithoutSlot(const ActionRow& row)
{
    auto* action = new QAction(&window_);
    action->setObjectName(QLatin1String(row.objectName));
    action->setText(WindowText(row.text));
    if (row.toolTip)
        action->setToolTip(WindowText(row.toolTip).trimmed());
    action->setCheckable(row.checkable);
    if (row.icon)
        action->setIcon(ActionIcon(row.icon));
    if (row.shortcut) {
        action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        action->setToolTip(QStringLiteral("%1 (%2)").arg(
            action->toolTip(), action->shortcut().toString(QKeySequence::NativeText)));
    }
    action->setEnabled(false);
    window_.addAction(action);
    return action;
}
