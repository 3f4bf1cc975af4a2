// SPDX-License-Identifier: MIT
#include "Model/MappedObjectListProxy.h"

#include <algorithm>

#include "Model/MappedDeviceModel.h"

MappedObjectListProxy::MappedObjectListProxy(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setDynamicSortFilter(true);
}

QItemSelection MappedObjectListProxy::RowsOf(const std::vector<std::int64_t>& uniqueIDs) const
{
    const auto* document = qobject_cast<const MappedDeviceModel*>(sourceModel());
    std::vector<int> rows;
    rows.reserve(uniqueIDs.size());
    for (const std::int64_t id : uniqueIDs) {
        const QModelIndex row = mapFromSource(document->GetIndexOfUniqueID(id));
        if (row.isValid())
            rows.push_back(row.row());
    }
    std::ranges::sort(rows);
    QItemSelection selection;
    const int lastColumn = columnCount() - 1;
    for (std::size_t first = 0; first < rows.size();) {
        std::size_t last = first;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1)
            ++last;
        selection.append(QItemSelectionRange(index(rows[first], 0), index(rows[last], lastColumn)));
        first = last + 1;
    }
    return selection;
}

void MappedObjectListProxy::SelectByUniqueIDs(const std::vector<std::int64_t>& uniqueIDs)
{
    emit select(RowsOf(uniqueIDs), QItemSelectionModel::ClearAndSelect);
}
