// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <QItemSelectionModel>
#include <QList>
#include <QSortFilterProxyModel>

/// The placed elements as the view shows them, always sorted.
class MappedObjectListProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit MappedObjectListProxy(QObject* parent = nullptr);

    /// Emits select() for each row: to select it when its element is among `uniqueIDs`, otherwise
    /// to deselect it.
    void SelectByUniqueIDs(const QList<qint64>& uniqueIDs);

signals:
    void select(const QModelIndex& index, QItemSelectionModel::SelectionFlags command);
};
