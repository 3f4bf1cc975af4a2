// SPDX-License-Identifier: MIT
#include "UI/Output/UniverseTable.h"

#include <algorithm>
#include <tuple>

namespace {

bool ComesBefore(const UniverseRow& one, const UniverseRow& other)
{
    return std::tie(one.kind, one.target.portAddress, one.target.node) <
           std::tie(other.kind, other.target.portAddress, other.target.node);
}

} // namespace

void UniverseTable::SetRows(const UniverseRows& rows)
{
    for (std::size_t i = 0; i < std::max(rows.size(), rows_.size()); ++i) {
        const int row = static_cast<int>(i);
        const auto place = static_cast<std::ptrdiff_t>(i);
        while (i < rows_.size() && (i >= rows.size() || ComesBefore(rows_[i], rows[i]))) {
            beginRemoveRows({}, row, row);
            rows_.erase(rows_.begin() + place);
            frames_.erase(frames_.begin() + place);
            endRemoveRows();
        }
        if (i >= rows.size())
            return;
        if (i >= rows_.size() || ComesBefore(rows[i], rows_[i])) {
            beginInsertRows({}, row, row);
            rows_.insert(rows_.begin() + place, rows[i]);
            frames_.insert(frames_.begin() + place, QString());
            endInsertRows();
        } else if (rows_[i] != rows[i]) {
            rows_[i] = rows[i];
            emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
        }
    }
}

void UniverseTable::SetFrames(int row, std::optional<double> perSecond)
{
    QString text;
    if (perSecond)
        text = *perSecond > 0 ? QString::number(*perSecond, 'f', 1) : tr("none");
    QString& shown = frames_[static_cast<std::size_t>(row)];
    if (shown == text)
        return;
    shown = text;
    const QModelIndex cell = index(row, FramesColumn);
    emit dataChanged(cell, cell, {Qt::DisplayRole});
}

const UniverseRow* UniverseTable::Row(int row) const
{
    return row >= 0 && static_cast<std::size_t>(row) < rows_.size()
               ? &rows_[static_cast<std::size_t>(row)]
               : nullptr;
}

int UniverseTable::Find(const UniverseRow& wanted) const
{
    const auto found = std::ranges::find_if(
        rows_, [&wanted](const UniverseRow& row) { return row.IsSameUniverse(wanted); });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int UniverseTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int UniverseTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant UniverseTable::TextOf(std::size_t row, int column) const
{
    const UniverseRow& shown = rows_[row];
    switch (column) {
    case UniverseColumn:
        return UniverseLabel(shown.target.portAddress);
    case UsedColumn:
        return shown.kind == UniverseRow::Kind::Sent ? QVariant(shown.used) : QVariant();
    case WayColumn:
        return shown.way;
    default:
        return frames_[row];
    }
}

QVariant UniverseTable::data(const QModelIndex& index, int role) const
{
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= rows_.size())
        return {};
    const UniverseRow& shown = rows_[row];
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(row, index.column());
    case Qt::ToolTipRole:
        return shown.tip.isEmpty() ? QVariant() : AsTip(shown.way + QLatin1Char('\n') + shown.tip);
    case Qt::AccessibleTextRole:
        return index.column() == UsedColumn && shown.kind == UniverseRow::Kind::Sent
                   ? QVariant(tr("%1 of 512 channels").arg(shown.used))
                   : TextOf(row, index.column());
    case Qt::TextAlignmentRole:
        return index.column() == FramesColumn
                   ? QVariant(static_cast<int>(Qt::AlignRight | Qt::AlignVCenter))
                   : QVariant();
    case TroubleRole:
        return static_cast<int>(shown.trouble);
    default:
        return {};
    }
}

QVariant UniverseTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case UniverseColumn:
        return tr("Universe");
    case UsedColumn:
        return tr("Used");
    case WayColumn:
        return tr("Goes to");
    default:
        return tr("fps");
    }
}
