// SPDX-License-Identifier: MIT
#include "UI/Inspector/MultipleItems.h"

#include <QBrush>
#include <QComboBox>
#include <QCoreApplication>
#include <QStandardItemModel>

#include "UI/Widgets/DeskLook.h"

QString MultipleItemsText()
{
    return QCoreApplication::translate("Inspector", "(multiple items selected)");
}

QString SharedText(const Shared<std::wstring>& text)
{
    return text.mixed ? MultipleItemsText() : QString::fromStdWString(text.value);
}

void ColourMultipleItemsRow(QComboBox& list)
{
    list.setItemData(0, QBrush(CurrentLook().mixed), Qt::BackgroundRole);
    list.setItemData(0, QBrush(CurrentLook().mixedText), Qt::ForegroundRole);
}

void ShowMultipleItemsRow(QComboBox& list)
{
    list.insertItem(0, MultipleItemsText());
    ColourMultipleItemsRow(list);
    if (auto* rows = qobject_cast<QStandardItemModel*>(list.model()))
        rows->item(0)->setFlags(Qt::ItemIsEnabled);
    list.setCurrentIndex(0);
}
