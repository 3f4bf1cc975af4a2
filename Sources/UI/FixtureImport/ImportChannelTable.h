// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QAbstractTableModel>

#include "FixtureImport/ImportedFixture.h"

/// The channels of an imported fixture: what each one gets, and why.
class ImportChannelTable final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        NumberColumn,
        NameColumn,
        ValueColumn,
        ReasonColumn,
        ColumnCount
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Nothing is shown of a mode that is left out.
    void Show(const FixtureImport::ImportedMode& mode);
    void Clear();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    struct Row
    {
        QString name;
        QString value;
        QString reason;
        bool isPixel = false;
    };
    [[nodiscard]] static std::vector<Row> RowsOf(const FixtureImport::ImportedMode& mode);
    [[nodiscard]] static std::vector<Row> RowsOf(const LEDFixture& fixture);

    std::vector<Row> rows_;
};
