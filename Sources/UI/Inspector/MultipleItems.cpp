// SPDX-License-Identifier: MIT
#include "UI/Inspector/MultipleItems.h"

#include <QCoreApplication>
#include <QStandardItemModel>

#include "UI/Widgets/SteadyComboBox.h"

QString MultipleItemsText()
{
    return QCoreApplication::translate("Inspector", "(multiple items selected)");
}

QString SharedText(const Shared<std::wstring>& text)
{
    return text.mixed ? MultipleItemsText() : QString::fromStdWString(text.value);
}

void ShowMultipleItemsRow(SteadyComboBox& list)
{
    list.insertItem(0, MultipleItemsText());
    list.SetTone(0, SteadyComboBox::Tone::Mixed);
    if (auto* rows = qobject_cast<QStandardItemModel*>(list.model()))
        rows->item(0)->setFlags(Qt::ItemIsEnabled);
    list.setCurrentIndex(0);
}
