// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include <QAbstractTableModel>

#include "UI/Output/UniverseRows.h"

/// The rows of the universes in use for a view. A row stays the same one, with its selection, while
/// its universe is in use.
class UniverseTable final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        UniverseColumn,
        UsedColumn, ///< of 512, as a number; of received universes nothing
        WayColumn,
        FramesColumn,
        ColumnCount
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Brings the rows to these by as few changes as it takes. Both old and new rows are in the
    /// order of UniverseRowsOf.
    void SetRows(const UniverseRows& rows);
    /// Shows this many frames a second in a row; nothing while that is not known.
    void SetFrames(int row, std::optional<double> perSecond);

    [[nodiscard]] const UniverseRow* Row(int row) const;
    /// The row of a universe, -1 when it has none.
    [[nodiscard]] int Find(const UniverseRow& wanted) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] QVariant TextOf(std::size_t row, int column) const;

    UniverseRows rows_;
    std::vector<QString> frames_; ///< of each row, as shown
};
