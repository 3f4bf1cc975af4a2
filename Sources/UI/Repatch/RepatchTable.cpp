// SPDX-License-Identifier: MIT
#include "UI/Repatch/RepatchTable.h"

#include <utility>

#include <QBrush>
#include <QTextDocument>

#include "Model/PatchText.h"
#include "UI/Widgets/DeskLook.h"

namespace {

QString NodeText(const DMXMappingArtNet& address)
{
    const bool hasName = !address.IsAuto() && !address.GetIpName().empty();
    return QString::fromStdWString(hasName ? address.GetIpName() : address.GetIpconf());
}

} // namespace

RepatchTable::RepatchTable(const Repatch& repatch, QObject* parent)
    : QAbstractTableModel(parent)
    , repatch_(repatch)
{}

void RepatchTable::Show(std::vector<RepatchRow> rows)
{
    if (rows.size() != rows_.size()) {
        beginResetModel();
        rows_ = std::move(rows);
        endResetModel();
        return;
    }
    rows_ = std::move(rows);
    if (!rows_.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

int RepatchTable::NextInTrouble(int row) const
{
    const int count = rowCount();
    for (int step = 1; step <= count; ++step) {
        const int next = (row + step + count) % count;
        if (rows_[static_cast<std::size_t>(next)].faults)
            return next;
    }
    return -1;
}

int RepatchTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RepatchTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString RepatchTable::TextOf(int row, int column) const
{
    const RepatchRow& planned = rows_[static_cast<std::size_t>(row)];
    const Repatch::Element& element = repatch_.Elements()[planned.element];
    switch (column) {
    case NumberColumn:
        return QString::number(row + 1);
    case DescriptionColumn:
        return element.description;
    case PresentColumn:
        return element.address ? AddressText(*element.address) : tr("none");
    case NewColumn:
        return planned.address ? AddressText(*planned.address) : tr("none");
    case NodeColumn:
        return planned.address ? NodeText(*planned.address) : QString();
    case ProblemColumn:
        return planned.Words();
    default:
        return {};
    }
}

QVariant RepatchTable::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const RepatchRow& planned = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(index.row(), index.column());
    case Qt::ToolTipRole: // a description may look like HTML
        return Qt::convertFromPlainText(
            TextOf(index.row(), planned.faults ? ProblemColumn : index.column()));
    case Qt::TextAlignmentRole:
        return index.column() == NumberColumn ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                              : QVariant();
    case Qt::ForegroundRole: // what stays as it is
        return repatch_.Changes(planned) ? QVariant() : QBrush(CurrentLook().listTextFaded);
    case TroubleRole:
        return static_cast<int>(planned.GetTrouble());
    default:
        return {};
    }
}

QVariant RepatchTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NumberColumn:
        return tr("No.");
    case DescriptionColumn:
        return tr("Description");
    case PresentColumn:
        return tr("Now");
    case NewColumn:
        return tr("New");
    case NodeColumn:
        return tr("Node");
    case ProblemColumn:
        return tr("Problem");
    default:
        return {};
    }
}
