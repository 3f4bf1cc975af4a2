// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QAbstractTableModel>

#include "Model/PatchProblem.h"

class DeviceManager;

/// The problems of a patch as rows, gravest first. A problem that stays keeps its row, so that
/// views keep their selection; only what came, went or changed is told.
class ProblemsModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        SeverityColumn,
        MatterColumn,
        ElementsColumn,
        UniverseColumn,
        EffectColumn,
        ColumnCount
    };
    /// Of more problems nobody reads, and a list of thousands would cost a tick.
    static constexpr std::size_t MostRows = 1000;

    /// `manager` outlives the model, which names its elements.
    explicit ProblemsModel(const DeviceManager& manager, QObject* parent = nullptr);

    /// In the order of OrderOf.
    void Show(const std::vector<PatchProblem>& problems);
    /// Null for a row that is none.
    [[nodiscard]] const PatchProblem* GetProblem(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] QString TextOf(const PatchProblem& problem, int column) const;

    const DeviceManager& manager_;
    std::vector<PatchProblem> rows_;
};
