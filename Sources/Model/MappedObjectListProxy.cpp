// SPDX-License-Identifier: MIT
#include "Model/MappedObjectListProxy.h"

#include <algorithm>
#include <utility>

#include "LibTools/NaturalOrder.h"
#include "Model/MappedDeviceModel.h"

namespace {

/// So many rows may come or go in a sorted table; for more, two sortings cost less.
constexpr int Few = 8;

} // namespace

MappedObjectListProxy::MappedObjectListProxy(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setDynamicSortFilter(true);
}

void MappedObjectListProxy::setSourceModel(QAbstractItemModel* document)
{
    // Qt's own connections are between ours: the rows are in the order of the document when it
    // takes them over, so that they are one range.
    const auto pause = [this](const QModelIndex&, int first, int last) {
        PauseSorting(first, last);
    };
    connect(document, &QAbstractItemModel::rowsAboutToBeInserted, this, pause);
    connect(document, &QAbstractItemModel::rowsAboutToBeRemoved, this, pause);
    QSortFilterProxyModel::setSourceModel(document);
    connect(document, &QAbstractItemModel::rowsInserted, this, &MappedObjectListProxy::GoOnSorting);
    connect(document, &QAbstractItemModel::rowsRemoved, this, &MappedObjectListProxy::GoOnSorting);
}

void MappedObjectListProxy::PauseSorting(int first, int last)
{
    if (last - first < Few || sortColumn() < 0)
        return;
    pausedColumn_ = sortColumn();
    pausedOrder_ = sortOrder();
    sort(-1);
}

void MappedObjectListProxy::GoOnSorting()
{
    if (pausedColumn_ >= 0)
        sort(std::exchange(pausedColumn_, -1), pausedOrder_);
}

bool MappedObjectListProxy::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    return IsBefore(left.data().toString(), right.data().toString());
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
