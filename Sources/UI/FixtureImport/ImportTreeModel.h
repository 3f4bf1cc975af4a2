// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QAbstractItemModel>

#include "FixtureImport/ImportPlan.h"

/// What an import found, as rows with check boxes. What can't be imported has none, and says why.
class ImportTreeModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        NameColumn,
        MapColumn, ///< painted by ImportTreeDelegate
        SizeColumn,
        ChannelsColumn,
        StateColumn,
        ColumnCount
    };

    /// The plan outlives the model, which makes all its changes from here on.
    explicit ImportTreeModel(FixtureImport::ImportPlan& plan, QObject* parent = nullptr);

    void Add(FixtureImport::ImportedFile file);
    /// All rows are replaced.
    void Search(const QString& text, std::optional<FixtureImport::PlanState> state);
    void ChooseShown(bool chosen);
    void Answer(const QModelIndex& fixture, FixtureImport::SameProduct answer);
    void AnswerAll(FixtureImport::SameProduct answer);

    /// Null for an invalid index.
    [[nodiscard]] FixtureImport::PlanNode* NodeAt(const QModelIndex& index) const;
    /// Invalid for a node that the search hides.
    [[nodiscard]] QModelIndex IndexOf(const FixtureImport::PlanNode& node) const;

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

signals:
    /// Other fixtures are chosen than before.
    void choiceChanged();

private:
    [[nodiscard]] FixtureImport::PlanNode& ParentNode(const QModelIndex& parent) const;
    void TellChange(const FixtureImport::PlanNode& node);
    void TellBelow(const FixtureImport::PlanNode& node);

    FixtureImport::ImportPlan& plan_;
};

/// What becomes of a fixture, or why nothing does.
[[nodiscard]] QString StateInWords(const FixtureImport::PlanNode& fixture);
