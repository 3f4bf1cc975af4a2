// SPDX-License-Identifier: MIT
#include "Model/DeviceListProxy.h"

#include "LibTools/NaturalOrder.h"
#include "LibTools/SearchWords.h"
#include "Model/DeviceModel.h"

namespace {

int CountFixtures(const QAbstractItemModel& model)
{
    int count = 0;
    for (int row = 0; row < model.rowCount(); ++row)
        count += model.rowCount(model.index(row, 0));
    return count;
}

} // namespace

DeviceListProxy::DeviceListProxy(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setDynamicSortFilter(true);
    setRecursiveFilteringEnabled(true);
}

void DeviceListProxy::SetFilter(const QString& text)
{
    words_ = SearchWords(text);
    invalidateFilter();
}

int DeviceListProxy::CountShown() const
{
    return CountFixtures(*this);
}

int DeviceListProxy::CountAll() const
{
    return sourceModel() ? CountFixtures(*sourceModel()) : 0;
}

bool DeviceListProxy::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (words_.isEmpty())
        return true;
    if (!parent.isValid()) // A manufacturer shows with any of its fixtures.
        return false;
    const QModelIndex product = sourceModel()->index(row, DeviceModel::ProductColumn, parent);
    return HasAllWords(
        ForSearch(parent.data().toString() + QLatin1Char(' ') + product.data().toString()), words_);
}

bool DeviceListProxy::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const bool isManufacturer = !left.parent().isValid();
    const QString a = left.data().toString();
    const QString b = right.data().toString();
    if (left.column() == DeviceModel::NameColumn || (!isManufacturer && a != b))
        return IsBefore(a, b);
    // What the column does not tell apart is in the order of names, whichever way it is sorted.
    const QString first = left.siblingAtColumn(DeviceModel::NameColumn).data().toString();
    const QString second = right.siblingAtColumn(DeviceModel::NameColumn).data().toString();
    return sortOrder() == Qt::AscendingOrder ? IsBefore(first, second) : IsBefore(second, first);
}
