// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include <QItemSelectionModel>
#include <QSortFilterProxyModel>

/// The placed elements as the view shows them, always sorted.
class MappedObjectListProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit MappedObjectListProxy(QObject* parent = nullptr);

    /// The rows of these elements, whole and in as few ranges as they make: a selection model's
    /// work grows with their number. Ids without element are passed over.
    [[nodiscard]] QItemSelection RowsOf(const std::vector<std::int64_t>& uniqueIDs) const;
    /// Emits select() once, so that these elements and no others get selected.
    void SelectByUniqueIDs(const std::vector<std::int64_t>& uniqueIDs);

signals:
    void select(const QItemSelection& rows, QItemSelectionModel::SelectionFlags command);
};
