// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include <QItemSelectionModel>
#include <QSortFilterProxyModel>

/// The placed elements as the view shows them, always sorted, with numbers by their value. When
/// many come or go at once, wherever they are among the others, the rows move a few times and not
/// once for each.
class MappedObjectListProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit MappedObjectListProxy(QObject* parent = nullptr);

    void setSourceModel(QAbstractItemModel* document) override;

    /// The rows of these elements, whole and in as few ranges as they make: a selection model's
    /// work grows with their number. Ids without element are passed over.
    [[nodiscard]] QItemSelection RowsOf(const std::vector<std::int64_t>& uniqueIDs) const;
    /// Emits select() once, so that these elements and no others get selected.
    void SelectByUniqueIDs(const std::vector<std::int64_t>& uniqueIDs);

signals:
    void select(const QItemSelection& rows, QItemSelectionModel::SelectionFlags command);

protected:
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    void PauseSorting(int first, int last);
    void GoOnSorting();

    int pausedColumn_ = -1; ///< the column of the sorting that pauses, -1 for none
    Qt::SortOrder pausedOrder_ = Qt::AscendingOrder;
};
