// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QAbstractTableModel>

#include "Model/Repatch.h"

/// A plan as a table: a row for each element in the new order. The rows stay the same in number.
class RepatchTable final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        NumberColumn, ///< in the new order, from 1
        DescriptionColumn,
        PresentColumn,
        NewColumn,
        NodeColumn,
        ProblemColumn,
        ColumnCount
    };

    /// `repatch` outlives the table.
    explicit RepatchTable(const Repatch& repatch, QObject* parent = nullptr);

    /// Shows another plan of the same elements.
    void Show(std::vector<RepatchRow> rows);
    [[nodiscard]] const std::vector<RepatchRow>& Rows() const { return rows_; }
    /// The next row behind this one that is in trouble, going on at the top; -1 without any.
    [[nodiscard]] int NextInTrouble(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] QString TextOf(int row, int column) const;

    const Repatch& repatch_;
    std::vector<RepatchRow> rows_;
};
