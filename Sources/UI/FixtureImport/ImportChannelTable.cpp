// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/ImportChannelTable.h"

#include <utility>

#include <QBrush>
#include <QTextDocument>

#include "FixtureModel/FixtureLayout.h"
#include "UI/Widgets/DeskLook.h"

using FixtureImport::ChannelReason;
using FixtureImport::ImportedChannel;
using FixtureImport::ImportedMode;

namespace {

QString PixelWords(PixelMapType type, int pixel, int component)
{
    return ImportChannelTable::tr("pixel %1, %2")
        .arg(pixel + 1)
        .arg(QString::fromStdWString(PixelComponentName(type, component)));
}

} // namespace

void ImportChannelTable::Show(const ImportedMode& mode)
{
    beginResetModel();
    rows_ = RowsOf(mode);
    endResetModel();
}

void ImportChannelTable::Clear()
{
    beginResetModel();
    rows_.clear();
    endResetModel();
}

std::vector<ImportChannelTable::Row> ImportChannelTable::RowsOf(const ImportedMode& mode)
{
    if (!mode.fixture)
        return {};
    if (mode.channels.empty())
        return RowsOf(*mode.fixture);
    std::vector<Row> rows;
    rows.reserve(mode.channels.size());
    const PixelMapType type = mode.fixture->pixelMap.GetType();
    for (const ImportedChannel& channel : mode.channels) {
        const bool isPixel = channel.reason == ChannelReason::Pixel;
        rows.push_back(
            {channel.name, channel.value < 0 ? QString() : QString::number(channel.value),
             isPixel ? PixelWords(type, channel.pixel, channel.component) : InWords(channel),
             isPixel});
    }
    return rows;
}

/// A fixture of a library: its channels have no names and no reasons.
std::vector<ImportChannelTable::Row> ImportChannelTable::RowsOf(const LEDFixture& fixture)
{
    std::vector<Row> rows;
    const PixelMapType type = fixture.pixelMap.GetType();
    for (const FixtureLayout::ChannelUse& use : FixtureLayout(fixture).GetChannelUses()) {
        if (use.pixel >= 0)
            rows.push_back({{}, {}, PixelWords(type, use.pixel, use.component), true});
        else if (use.value >= 0)
            rows.push_back({{}, QString::number(use.value), tr("constant"), false});
        else
            rows.push_back({{}, {}, tr("free for a desk"), false});
    }
    return rows;
}

int ImportChannelTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ImportChannelTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ImportChannelTable::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        switch (index.column()) {
        case NumberColumn:
            return index.row() + 1;
        case NameColumn:
            return row.name;
        case ValueColumn:
            return row.value;
        default:
            return row.reason;
        }
    case Qt::ToolTipRole: // a name may look like HTML
        return Qt::convertFromPlainText(index.column() == ReasonColumn ? row.reason : row.name);
    case Qt::ForegroundRole:
        return row.isPixel ? QBrush(CurrentLook().accent) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() == NumberColumn || index.column() == ValueColumn
                   ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                   : QVariant();
    default:
        return {};
    }
}

QVariant ImportChannelTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NumberColumn:
        return tr("Ch.");
    case NameColumn:
        return tr("Name");
    case ValueColumn:
        return tr("Value");
    default:
        return tr("What it gets");
    }
}
