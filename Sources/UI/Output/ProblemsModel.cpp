// SPDX-License-Identifier: MIT
#include "UI/Output/ProblemsModel.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "Language/Language.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

namespace {

constexpr int NamesInCell = 4;
constexpr int NamesInToolTip = 30;

/// How many of the first problems of `these` come before the first of `others`.
std::size_t CountBefore(std::span<const PatchProblem> these, std::span<const PatchProblem> others)
{
    if (others.empty())
        return these.size();
    const auto end = std::ranges::find_if(
        these, [&](const PatchProblem& problem) { return OrderOf(problem, others.front()) >= 0; });
    return static_cast<std::size_t>(end - these.begin());
}

} // namespace

ProblemsModel::ProblemsModel(const DeviceManager& manager, QObject* parent)
    : QAbstractTableModel(parent)
    , manager_(manager)
{
    connect(&manager, &DeviceManager::elementsRenamed, this, [this] {
        if (!rows_.empty())
            emit dataChanged(index(0, ElementsColumn), index(rowCount() - 1, ElementsColumn));
    });
    connect(&Language::Instance(), &Language::changed, this, [this] {
        emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
        if (!rows_.empty())
            emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    });
}

void ProblemsModel::Show(const std::vector<PatchProblem>& problems)
{
    auto wanted = std::span(problems).first(std::min(problems.size(), MostRows));
    std::size_t row = 0;
    while (row < rows_.size() || !wanted.empty()) {
        const auto present = std::span<const PatchProblem>(rows_).subspan(row);
        const int first = static_cast<int>(row);
        if (const std::size_t gone = CountBefore(present, wanted); gone > 0) {
            beginRemoveRows({}, first, first + static_cast<int>(gone) - 1);
            const auto begin = std::next(rows_.begin(), first);
            rows_.erase(begin, std::next(begin, static_cast<std::ptrdiff_t>(gone)));
            endRemoveRows();
        } else if (const std::size_t fresh = CountBefore(wanted, present); fresh > 0) {
            beginInsertRows({}, first, first + static_cast<int>(fresh) - 1);
            const auto added = wanted.first(fresh);
            rows_.insert(std::next(rows_.begin(), first), added.begin(), added.end());
            endInsertRows();
            row += fresh;
            wanted = wanted.subspan(fresh);
        } else {
            if (rows_[row] != wanted.front()) {
                rows_[row] = wanted.front();
                emit dataChanged(index(first, 0), index(first, ColumnCount - 1));
            }
            ++row;
            wanted = wanted.subspan(1);
        }
    }
}

const PatchProblem* ProblemsModel::GetProblem(int row) const
{
    return row >= 0 && row < rowCount() ? &rows_[static_cast<std::size_t>(row)] : nullptr;
}

int ProblemsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ProblemsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString ProblemsModel::TextOf(const PatchProblem& problem, int column) const
{
    switch (column) {
    case SeverityColumn:
        return SeverityText(problem.trouble);
    case MatterColumn:
        return MatterText(problem);
    case ElementsColumn:
        return ProblemElementsText(problem, *manager_.GetMappedDeviceModel(), NamesInCell);
    case UniverseColumn:
        return ProblemUniverseText(problem);
    case EffectColumn:
        return EffectText(problem);
    default:
        return {};
    }
}

QVariant ProblemsModel::data(const QModelIndex& index, int role) const
{
    const PatchProblem* problem = index.isValid() ? GetProblem(index.row()) : nullptr;
    if (!problem)
        return {};
    if (role == Qt::DisplayRole)
        return TextOf(*problem, index.column());
    if (role == TroubleRole)
        return static_cast<int>(problem->trouble);
    const bool hasMore = problem->elements.size() > NamesInCell;
    if (role == Qt::ToolTipRole && index.column() == ElementsColumn && hasMore)
        return ProblemElementsText(*problem, *manager_.GetMappedDeviceModel(), NamesInToolTip)
            .toHtmlEscaped();
    return {};
}

QVariant ProblemsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case SeverityColumn:
        return tr("Severity");
    case MatterColumn:
        return tr("Problem");
    case ElementsColumn:
        return tr("Elements");
    case UniverseColumn:
        return tr("Universe");
    case EffectColumn:
        return tr("What it does");
    default:
        return {};
    }
}
