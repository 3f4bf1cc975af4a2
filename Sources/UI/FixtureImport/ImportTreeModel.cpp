// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/ImportTreeModel.h"

#include <utility>

#include <QBrush>
#include <QDir>
#include <QTextDocument>

#include "UI/FixtureImport/MapPicture.h"
#include "UI/Widgets/DeskLook.h"

using FixtureImport::ChoiceBelow;
using FixtureImport::ImportPlan;
using FixtureImport::PlanNode;
using FixtureImport::PlanState;
using FixtureImport::SameProduct;

namespace {

QVariant CheckStateOf(const PlanNode& node)
{
    const ChoiceBelow below = CountChoice(node);
    if (below.possible == 0)
        return {};
    if (below.chosen == 0)
        return Qt::Unchecked;
    return below.chosen == below.possible ? Qt::Checked : Qt::PartiallyChecked;
}

QString NameOf(const PlanNode& node)
{
    if (node.kind == PlanNode::Kind::UnreadFiles)
        return ImportTreeModel::tr("Files that can't be read");
    if (node.name.isEmpty())
        return ImportTreeModel::tr("(no name)");
    return node.name;
}

/// Of a group: how much of it will be imported.
QString GroupInWords(const PlanNode& node)
{
    if (node.kind == PlanNode::Kind::UnreadFiles)
        return QString::number(node.shown.size());
    const ChoiceBelow below = CountChoice(node);
    return below.possible == 0
               ? ImportTreeModel::tr("nothing to import")
               : ImportTreeModel::tr("%1 of %2 to import").arg(below.chosen).arg(below.possible);
}

QString TextOf(const PlanNode& node, int column)
{
    const auto& fixture = node.mode.fixture;
    switch (column) {
    case ImportTreeModel::NameColumn:
        return NameOf(node);
    case ImportTreeModel::SizeColumn:
        return fixture ? ImportTreeModel::tr("%1x%2")
                             .arg(fixture->pixelMap.GetWidth())
                             .arg(fixture->pixelMap.GetHeight())
                       : QString();
    case ImportTreeModel::ChannelsColumn:
        return fixture ? QString::number(fixture->GetChannelCount()) : QString();
    case ImportTreeModel::StateColumn:
        return node.IsLeaf() ? StateInWords(node) : GroupInWords(node);
    default:
        return {};
    }
}

QString ToolTipOf(const PlanNode& node, int column)
{
    switch (column) {
    case ImportTreeModel::NameColumn:
        return node.path.isEmpty()
                   ? NameOf(node)
                   : NameOf(node) + QLatin1Char('\n') + QDir::toNativeSeparators(node.path);
    case ImportTreeModel::MapColumn:
        return node.mode.fixture ? MapInWords(node.mode.fixture->pixelMap) : QString();
    default:
        return TextOf(node, column);
    }
}

QVariant InkOf(const PlanNode& node, int column)
{
    if (!node.IsLeaf())
        return {};
    if (node.state == PlanState::LeftOut && column == ImportTreeModel::StateColumn)
        return QBrush(CurrentLook().caution);
    return node.isChosen ? QVariant() : QBrush(CurrentLook().listTextFaded);
}

} // namespace

QString StateInWords(const PlanNode& fixture)
{
    switch (fixture.state) {
    case PlanState::New:
        return ImportTreeModel::tr("New");
    case PlanState::Known:
        return ImportTreeModel::tr("In the library already");
    case PlanState::Twice:
        return ImportTreeModel::tr("Another file has the same fixture");
    case PlanState::LeftOut:
        return InWords(fixture.mode.fault);
    case PlanState::Differs:
        break;
    }
    switch (fixture.Answer()) {
    case SameProduct::Replace:
        return ImportTreeModel::tr("Replaces the library's fixture");
    case SameProduct::KeepBoth:
        return ImportTreeModel::tr("New, as \"%1\"").arg(fixture.ProductInLibrary());
    default:
        return ImportTreeModel::tr("The library has another fixture of this name");
    }
}

ImportTreeModel::ImportTreeModel(ImportPlan& plan, QObject* parent)
    : QAbstractItemModel(parent)
    , plan_(plan)
{}

// ---- Changes -----------------------------------------------------------------------------------

void ImportTreeModel::Add(FixtureImport::ImportedFile file)
{
    plan_.Add(std::move(file),
              {[this](PlanNode& parent, int row) { beginInsertRows(IndexOf(parent), row, row); },
               [this] {
                   endInsertRows();
               }});
}

void ImportTreeModel::Search(const QString& text, std::optional<PlanState> state)
{
    beginResetModel();
    plan_.Search(text, state);
    endResetModel();
}

void ImportTreeModel::ChooseShown(bool chosen)
{
    ImportPlan::Choose(plan_.Top(), chosen);
    TellBelow(plan_.Top());
    emit choiceChanged();
}

void ImportTreeModel::Answer(const QModelIndex& fixture, SameProduct answer)
{
    PlanNode* node = NodeAt(fixture);
    if (!node || node->state != PlanState::Differs)
        return;
    ImportPlan::Answer(*node, answer);
    TellChange(*node);
}

void ImportTreeModel::AnswerAll(SameProduct answer)
{
    plan_.AnswerAll(answer);
    TellBelow(plan_.Top());
    emit choiceChanged();
}

/// Tells of a node with all above and below it.
void ImportTreeModel::TellChange(const PlanNode& node)
{
    for (const PlanNode* above = &node; above->parent; above = above->parent) {
        const QModelIndex changed = IndexOf(*above);
        emit dataChanged(changed, changed.siblingAtColumn(ColumnCount - 1));
    }
    TellBelow(node);
    emit choiceChanged();
}

void ImportTreeModel::TellBelow(const PlanNode& node)
{
    if (node.shown.empty())
        return;
    const QModelIndex parent = IndexOf(node);
    emit dataChanged(index(0, 0, parent), index(rowCount(parent) - 1, ColumnCount - 1, parent));
    for (const PlanNode* child : node.shown)
        TellBelow(*child);
}

// ---- Places ------------------------------------------------------------------------------------

PlanNode& ImportTreeModel::ParentNode(const QModelIndex& parent) const
{
    PlanNode* node = NodeAt(parent);
    return node ? *node : plan_.Top();
}

PlanNode* ImportTreeModel::NodeAt(const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    const auto* parent = static_cast<const PlanNode*>(index.internalPointer());
    return parent->shown[static_cast<std::size_t>(index.row())];
}

QModelIndex ImportTreeModel::IndexOf(const PlanNode& node) const
{
    const int row = RowOf(node);
    return row >= 0 ? createIndex(row, NameColumn, node.parent) : QModelIndex();
}

QModelIndex ImportTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, &ParentNode(parent));
}

QModelIndex ImportTreeModel::parent(const QModelIndex& index) const
{
    return index.isValid() ? IndexOf(*static_cast<const PlanNode*>(index.internalPointer()))
                           : QModelIndex();
}

int ImportTreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(ParentNode(parent).shown.size());
}

int ImportTreeModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

// ---- Data --------------------------------------------------------------------------------------

QVariant ImportTreeModel::data(const QModelIndex& index, int role) const
{
    const PlanNode* node = NodeAt(index);
    if (!node)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(*node, index.column());
    case Qt::AccessibleTextRole:
        return index.column() == MapColumn ? QVariant(ToolTipOf(*node, MapColumn)) : QVariant();
    case Qt::ToolTipRole: { // names may look like HTML
        const QString text = ToolTipOf(*node, index.column());
        return text.isEmpty() ? QVariant() : Qt::convertFromPlainText(text);
    }
    case Qt::CheckStateRole:
        return index.column() == NameColumn ? CheckStateOf(*node) : QVariant();
    case Qt::ForegroundRole:
        return InkOf(*node, index.column());
    case Qt::TextAlignmentRole:
        return index.column() == SizeColumn || index.column() == ChannelsColumn
                   ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                   : QVariant();
    default:
        return {};
    }
}

bool ImportTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    PlanNode* node = NodeAt(index);
    if (!node || role != Qt::CheckStateRole)
        return false;
    ImportPlan::Choose(*node, value.toInt() != Qt::Unchecked);
    TellChange(*node);
    return true;
}

Qt::ItemFlags ImportTreeModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    const PlanNode* node = NodeAt(index);
    if (node && index.column() == NameColumn && CountChoice(*node).possible > 0)
        flags |= Qt::ItemIsUserCheckable;
    if (node && node->IsLeaf())
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

QVariant ImportTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    const bool isNumber = section == SizeColumn || section == ChannelsColumn;
    if (role == Qt::TextAlignmentRole)
        return QVariant((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && section == ChannelsColumn)
        return tr("DMX channels");
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NameColumn:
        return tr("Fixture");
    case MapColumn:
        return tr("Pixels");
    case SizeColumn:
        return tr("Size");
    case ChannelsColumn:
        return tr("Ch.");
    default:
        return tr("What becomes of it");
    }
}
