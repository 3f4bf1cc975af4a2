// SPDX-License-Identifier: MIT
#include "UI/Widgets/ActionSet.h"

#include <QCoreApplication>
#include <QShortcut>
#include <QWidget>

#include "Language/Language.h"

QIcon ActionIcon(const char* file)
{
    return QIcon(QStringLiteral(":/bitmaps/Bin/bitmaps/") + QLatin1String(file));
}

QString WindowText(const char* text)
{
    return QCoreApplication::translate("WEFTMain", text);
}

void KeepKeysTo(QAction& action, std::initializer_list<QWidget*> widgets)
{
    action.setShortcutContext(Qt::WidgetShortcut);
    for (QWidget* widget : widgets) {
        if (widget->actions().contains(&action))
            continue; // It has the keys already.
        for (const QKeySequence& keys : action.shortcuts()) {
            auto* shortcut = new QShortcut(widget);
            shortcut->setKey(keys);
            shortcut->setContext(Qt::WidgetShortcut);
            QObject::connect(shortcut, &QShortcut::activated, &action, [&action] {
                if (action.isEnabled())
                    action.trigger();
            });
        }
    }
}

namespace {

void SayTexts(QAction& action, const ActionRow& row)
{
    action.setText(WindowText(row.text));
    action.setToolTip(row.toolTip ? WindowText(row.toolTip).trimmed() : QString());
    if (row.shortcut)
        action.setToolTip(QStringLiteral("%1 (%2)").arg(
            action.toolTip(), action.shortcut().toString(QKeySequence::NativeText)));
}

} // namespace

ActionSet::ActionSet(QWidget& window)
    : window_(window)
{}

QAction* ActionSet::AddWithoutSlot(const ActionRow& row)
{
    auto* action = new QAction(&window_);
    action->setObjectName(QLatin1String(row.objectName));
    action->setCheckable(row.checkable);
    if (row.icon)
        action->setIcon(ActionIcon(row.icon));
    if (row.shortcut)
        action->setShortcut(QKeySequence(QLatin1String(row.shortcut), QKeySequence::PortableText));
    InEachLanguage(action, [action, row] { SayTexts(*action, row); });
    action->setEnabled(false);
    window_.addAction(action);
    return action;
}
