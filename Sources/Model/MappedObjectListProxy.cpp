// SPDX-License-Identifier: MIT
#include "Model/MappedObjectListProxy.h"

#include <QSet>

#include "Model/MappedDeviceModel.h"

MappedObjectListProxy::MappedObjectListProxy(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setDynamicSortFilter(true);
}

void MappedObjectListProxy::SelectByUniqueIDs(const QList<qint64>& uniqueIDs)
{
    const QSet<qint64> wanted(uniqueIDs.begin(), uniqueIDs.end());
    for (int row = 0; row < rowCount(); ++row) {
        const QModelIndex cell = index(row, MappedDeviceModel::IdentifierColumn);
        const bool selected = wanted.contains(cell.data(Qt::UserRole).toLongLong());
        emit select(cell, (selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect) |
                              QItemSelectionModel::Rows);
    }
}
