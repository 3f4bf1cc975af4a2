// SPDX-License-Identifier: MIT
#include "Model/ArtNetNodeModel.h"

#include <algorithm>
#include <array>
#include <deque>
#include <iterator>
#include <set>
#include <tuple>

#include "Language/Language.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/IPv4.h"
#include "Platform/Text.h"

namespace {

QString KeyOf(const ArtNetNodeRecord& record)
{
    return QString::fromLatin1(record.ip.data(), static_cast<int>(record.ip.size()));
}

/// This program, or the host beside it: seen on the network, but no target for output.
bool IsOwnKind(const ArtNetNodeRecord& record)
{
    return record.name.find("PixelWeft") != std::string::npos ||
           record.name.find("ReelCommand") != std::string::npos;
}

/// Nodes send their names in an encoding that no packet tells: a name that is no UTF-8 is read as
/// Latin-1.
QString TextOf(const std::string& name)
{
    const QString text = QString::fromStdString(name);
    return text.toStdString() == name ? text : QString::fromLatin1(name.c_str());
}

bool SamePorts(const ArtNetNodeRecord& a, const ArtNetNodeRecord& b)
{
    return std::ranges::equal(a.universes, b.universes, {}, &ArtNetNodeRecord::Port::first,
                              &ArtNetNodeRecord::Port::first);
}

QList<QStandardItem*> ItemsOf(const std::array<QString, ArtNetNodeModel::ColumnCount>& cells)
{
    QList<QStandardItem*> items;
    for (const QString& cell : cells)
        items.append(new QStandardItem(cell));
    return items;
}

} // namespace

ArtNetNodeModel::ArtNetNodeModel(QObject* parent)
    : QStandardItemModel(parent)
{
    setColumnCount(ColumnCount);
    InEachLanguage(this, [this] {
        setHorizontalHeaderLabels({tr("Name"), tr("IP"), tr("Nb"), tr("Sub"), tr("Univ")});
        written_ = 0; // the ports have names
    });
}

ArtNetNodeModel::~ArtNetNodeModel() = default;

// ---- Discovery ---------------------------------------------------------------------------------

bool ArtNetNodeModel::NoteSeen(const std::vector<ArtNetNodeRecord>& incoming)
{
    bool differs = false;
    ++updates_;
    for (const ArtNetNodeRecord& record : incoming) {
        const auto [place, isNew] = seen_.try_emplace(record.ip, nodes.size());
        if (isNew) {
            nodes.push_back({record, updates_});
            differs = true;
            continue;
        }
        Seen& known = nodes[place->second];
        differs = differs || !SamePorts(known.node, record) || known.node.name != record.name;
        known.lastHeard = updates_;
        known.node.useCount = 0;
        known.node.name = record.name;
        known.node.universes = record.universes;
    }
    ForgetOldest();
    return differs;
}

void ArtNetNodeModel::ForgetOldest()
{
    if (nodes.size() <= MaxNodes)
        return;
    std::vector<std::uint64_t> ages;
    for (const Seen& seen : nodes)
        ages.push_back(seen.lastHeard);
    std::ranges::sort(ages);
    const std::size_t excess = nodes.size() - MaxNodes;
    const std::uint64_t limit = ages[excess - 1];
    // Of the nodes heard at the limit itself, only as many go as necessary.
    auto atLimit =
        excess - static_cast<std::size_t>(std::ranges::lower_bound(ages, limit) - ages.begin());
    std::erase_if(nodes, [&](const Seen& seen) {
        const bool goes = seen.lastHeard < limit || (seen.lastHeard == limit && atLimit > 0);
        if (seen.lastHeard == limit && goes)
            --atLimit;
        const auto offline = goes ? offlineNodes.find(KeyOf(seen.node)) : offlineNodes.end();
        if (offline != offlineNodes.end() && !offline->manual)
            offlineNodes.erase(offline);
        return goes;
    });
    seen_.clear();
    for (std::size_t i = 0; i < nodes.size(); ++i)
        seen_.emplace(nodes[i].node.ip, i);
}

ArtNetNodeRecord* ArtNetNodeModel::FindSeen(const std::string& ip)
{
    const auto found = seen_.find(ip);
    return found == seen_.end() ? nullptr : &nodes[found->second].node;
}

bool ArtNetNodeModel::UpdateNodes(const std::vector<ArtNetNodeRecord>& incoming)
{
    const bool seenChanged = NoteSeen(incoming);
    // As a rule the same nodes answer in the same order, every second.
    if (!seenChanged && std::ranges::equal(incoming, answering_, {}, &ArtNetNodeRecord::ip))
        return false;
    answering_.clear();
    Table answering;
    for (const ArtNetNodeRecord& record : incoming) {
        answering_.push_back(record.ip);
        const QString key = KeyOf(record);
        if (!answering.contains(key))
            answering.insert(key, record);
    }
    if (!seenChanged && answering.keys() == liveNodes.keys())
        return false;
    for (auto node = liveNodes.cbegin(); node != liveNodes.cend(); ++node) {
        if (!answering.contains(node.key()) && !offlineNodes.contains(node.key()))
            offlineNodes.insert(node.key(), node.value());
    }
    for (auto node = answering.begin(); node != answering.end();) {
        if (!liveNodes.contains(node.key()))
            offlineNodes.remove(node.key());
        node = IsOwnKind(*node) ? answering.erase(node) : std::next(node);
    }
    liveNodes.swap(answering);
    RebuildAllNodes();
    emit nodesChanged();
    return true;
}

// ---- Tables ------------------------------------------------------------------------------------

void ArtNetNodeModel::RebuildAllNodes()
{
    allNodes = liveNodes;
    const auto keys = offlineNodes.keys();
    for (const QString& key : keys) {
        if (allNodes.contains(key))
            offlineNodes.remove(key);
        else
            allNodes.insert(key, offlineNodes.value(key));
    }
}

bool ArtNetNodeModel::AddManualNode(const ArtNetNodeRecord& record)
{
    const QString key = KeyOf(record);
    if (offlineNodes.contains(key) || allNodes.contains(key))
        return false;
    allNodes.insert(key, record);
    AddRow(record);
    WriteWaitingRows();
    offlineNodes.insert(key, record);
    emit nodesChanged();
    return true;
}

std::vector<ArtNetNodeRecord> ArtNetNodeModel::GetManualNodes() const
{
    std::vector<ArtNetNodeRecord> manual;
    std::ranges::copy_if(allNodes, std::back_inserter(manual), &ArtNetNodeRecord::manual);
    return manual;
}

ArtNetNodeRecord* ArtNetNodeModel::GetNode(const QString& address)
{
    for (Table* table : {&offlineNodes, &liveNodes}) {
        const auto found = table->find(address);
        if (found != table->end())
            return &found.value();
    }
    return nullptr;
}

QString ArtNetNodeModel::GetNodeName(const QString& address)
{
    const ArtNetNodeRecord* record = GetNode(address);
    return record ? NameText(*record) : QString();
}

QString ArtNetNodeModel::NameText(const ArtNetNodeRecord& record)
{
    return TextOf(record.name);
}

bool ArtNetNodeModel::IsManualNode(const QString& address) const
{
    return offlineNodes.value(address).manual;
}

void ArtNetNodeModel::ReinsertNode(const QString& address)
{
    const auto found = offlineNodes.find(address);
    if (found == offlineNodes.end())
        return;
    const ArtNetNodeRecord record = found.value();
    offlineNodes.erase(found);
    offlineNodes.insert(KeyOf(record), record);
    RebuildAllNodes();
    emit nodesChanged();
}

void ArtNetNodeModel::RemoveNode(const QString& address)
{
    if (offlineNodes.remove(address) == 0)
        return;
    allNodes.remove(address);
    emit nodesChanged();
}

void ArtNetNodeModel::Clear()
{
    offlineNodes.clear();
    liveNodes.clear();
    answering_.clear();
    allNodes.clear();
    emit nodesChanged();
}

// ---- Rows --------------------------------------------------------------------------------------

/// The results of one walk over the elements of a document.
struct ArtNetNodeModel::Walk
{
    std::deque<ArtNetNodeRecord> rows; ///< one for each address, sub-net and universe
    std::set<QString> usedAddresses;
    std::set<std::tuple<QString, std::int32_t, std::int32_t>> targets;
};

void ArtNetNodeModel::Rebuild(const MappedDeviceModel& document, std::uint32_t broadcast)
{
    rows_.clear();
    written_ = 0;
    const auto isShown = [broadcast](const ArtNetNodeRecord& record) {
        return record.manual || Platform::IsInNetwork(broadcast, record.ip);
    };
    const Walk walk = CountUses(document);
    for (ArtNetNodeRecord row : walk.rows) {
        row.useCount = (row.mirrorsLiveNode ? liveNodes : offlineNodes).value(KeyOf(row)).useCount;
        if (isShown(row))
            AddRow(row);
    }
    RebuildAllNodes();
    std::ranges::stable_sort(rows_, {}, [](const RowText& row) { return row.cells[NameColumn]; });
    for (auto node = allNodes.cbegin(); node != allNodes.cend(); ++node) {
        if (!walk.usedAddresses.contains(node.key()) && isShown(*node))
            AddRow(*node);
    }
    for (const Seen& seen : nodes) {
        if (Platform::IsInNetwork(broadcast, seen.node.ip))
            AddNodeRow(seen.node);
    }
    WriteWaitingRows();
    emit usesCounted();
}

ArtNetNodeModel::Walk ArtNetNodeModel::CountUses(const MappedDeviceModel& document)
{
    for (Table* table : {&liveNodes, &offlineNodes}) {
        for (ArtNetNodeRecord& record : *table)
            record.useCount = 0;
    }
    for (Seen& seen : nodes) {
        seen.node.useCount = 0;
        for (ArtNetNodeRecord::Port& port : seen.node.universes)
            port.second = 0;
    }
    Walk walk;
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* element = document.GetElement(row);
        const DMXMappingArtNet* mapping = element ? element->GetArtNetMapping() : nullptr;
        if (mapping && !mapping->IsAuto())
            CountUse(walk, *mapping, element->description);
    }
    return walk;
}

void ArtNetNodeModel::CountUse(Walk& walk, const DMXMappingArtNet& mapping,
                               const std::wstring& description)
{
    ArtNetNodeRecord fresh;
    fresh.name =
        Platform::WideToUtf8(mapping.GetIpName().empty() ? description : mapping.GetIpName());
    fresh.ip = Platform::WideToUtf8(mapping.GetIpconf());
    const QString address = KeyOf(fresh);
    const auto live = liveNodes.find(address);
    ArtNetNodeRecord& entry = live != liveNodes.end() ? live.value()
                              : offlineNodes.contains(address)
                                  ? offlineNodes[address]
                                  : offlineNodes.insert(address, fresh).value();
    ++entry.useCount;
    if (!walk.targets.emplace(address, mapping.GetSubnet(), mapping.GetUniverse()).second)
        return;
    walk.usedAddresses.insert(address);
    fresh.mirrorsLiveNode = live != liveNodes.end();
    if (!fresh.mirrorsLiveNode) {
        entry.subnet = mapping.GetSubnet();
        entry.universe = mapping.GetUniverse();
        fresh = entry;
    }
    // Each target has a row with its own universe, also when targets share one address.
    fresh.subnet = mapping.GetSubnet();
    fresh.universe = mapping.GetUniverse();
    walk.rows.push_back(std::move(fresh));
}

void ArtNetNodeModel::AddRow(const ArtNetNodeRecord& record)
{
    if (ArtNetNodeRecord* node = FindSeen(record.ip)) {
        if (record.useCount == 0)
            return; // the node has its own row
        const auto port = std::ranges::find(node->universes, record.subnet * 16 + record.universe,
                                            &ArtNetNodeRecord::Port::first);
        if (port != node->universes.end()) {
            node->useCount = record.useCount;
            ++port->second;
            return;
        }
    }
    rows_.push_back({{TextOf(record.name), KeyOf(record), QString::number(record.useCount),
                      QString::number(record.subnet), QString::number(record.universe)},
                     {}});
}

void ArtNetNodeModel::AddNodeRow(const ArtNetNodeRecord& node)
{
    RowText row{{TextOf(node.name), KeyOf(node), QString::number(node.useCount), {}, {}}, {}};
    for (const ArtNetNodeRecord::Port& port : node.universes)
        row.ports.push_back(port.first);
    rows_.push_back(std::move(row));
}

// A row whose texts are unchanged is left alone, so that it keeps its place in the view and its
// selection. A new row costs some 20 microseconds; written all at once, a flood of unknown nodes
// would delay the frames.
void ArtNetNodeModel::WriteWaitingRows()
{
    const int wanted = static_cast<int>(rows_.size());
    const int first = written_;
    std::size_t ports = 0;
    for (; written_ < std::min(wanted, first + RowsAtOnce) && ports < PortsAtOnce; ++written_) {
        WriteRow(written_);
        ports += rows_[static_cast<std::size_t>(written_)].ports.size();
    }
    if (written_ > first) // the trouble changes with which nodes answer
        emit dataChanged(index(first, NameColumn), index(written_ - 1, UniverseColumn),
                         {TroubleRole, Qt::ToolTipRole});
    const int surplus = std::min(rowCount() - wanted, RowsAtOnce);
    if (written_ == wanted && surplus > 0)
        removeRows(rowCount() - surplus, surplus);
}

void ArtNetNodeModel::WriteRow(int row)
{
    const RowText& text = rows_[static_cast<std::size_t>(row)];
    const auto count = static_cast<int>(text.ports.size());
    const auto portCells = [&](int port) {
        const int portAddress = text.ports[static_cast<std::size_t>(port)];
        return std::array<QString, ColumnCount>{tr("Port %1").arg(port),
                                                {},
                                                {},
                                                QString::number(portAddress >> 4 & 0xF),
                                                QString::number(portAddress & 0xF)};
    };
    if (row < rowCount()) {
        WriteCells(*invisibleRootItem(), row, text.cells);
        QStandardItem& node = *item(row);
        for (int port = 0; port < count; ++port)
            WriteCells(node, port, portCells(port));
        if (node.rowCount() > count)
            node.removeRows(count, node.rowCount() - count);
        return;
    }
    // Complete before it is appended: one signal for a node and its ports.
    const QList<QStandardItem*> cells = ItemsOf(text.cells);
    for (int port = 0; port < count; ++port)
        WriteCells(*cells.front(), port, portCells(port));
    appendRow(cells);
}

void ArtNetNodeModel::WriteCells(QStandardItem& parent, int row,
                                 const std::array<QString, ColumnCount>& cells) const
{
    if (row == parent.rowCount()) {
        parent.appendRow(ItemsOf(cells));
        return;
    }
    for (int column = 0; column < ColumnCount; ++column) {
        QStandardItem& cell = *parent.child(row, column);
        const QString& text = cells[static_cast<std::size_t>(column)];
        if (cell.text() != text)
            cell.setText(text);
    }
}

// ---- Trouble -----------------------------------------------------------------------------------

bool ArtNetNodeModel::Answers(const QString& address) const
{
    return liveNodes.contains(address) ||
           std::ranges::find(answering_, address.toStdString()) != answering_.end();
}

std::set<std::wstring> ArtNetNodeModel::GetAnsweringNodes() const
{
    std::set<std::wstring> addresses;
    for (const std::string& ip : answering_)
        addresses.insert(QString::fromStdString(ip).toStdWString());
    for (const ArtNetNodeRecord& record : GetManualNodes())
        addresses.insert(KeyOf(record).toStdWString());
    return addresses;
}

Trouble ArtNetNodeModel::TroubleOf(const QModelIndex& top) const
{
    const QString address = top.siblingAtColumn(IpColumn).data().toString();
    if (liveNodes.contains(address)) // A universe beside it is none of its own.
        return top.siblingAtColumn(UniverseColumn).data().toString().isEmpty() ? Trouble::None
                                                                               : Trouble::Caution;
    if (IsManualNode(address) || Answers(address))
        return Trouble::None;
    return top.siblingAtColumn(UseCountColumn).data().toInt() > 0 ? Trouble::Fault
                                                                  : Trouble::Caution;
}

QString ArtNetNodeModel::WordsFor(const QModelIndex& top) const
{
    const QString address = top.siblingAtColumn(IpColumn).data().toString();
    if (IsManualNode(address))
        return tr("Entered by hand: it need not answer.");
    switch (TroubleOf(top)) {
    case Trouble::Caution:
        return liveNodes.contains(address)
                   ? tr("Fixtures are sent to this universe of %1, which has no port for it. "
                        "Choose one of its ports, or set the node.")
                         .arg(address)
                   : tr("%1 has answered and does so no longer. No fixture is sent to it.")
                         .arg(address);
    case Trouble::Fault:
        return tr("Fixtures are sent to %1, which does not answer. Check its power, its cable and "
                  "its address, or choose another node.")
            .arg(address);
    default:
        return liveNodes.contains(address)
                   ? QString()
                   : tr("A program like this one, or the media program: it is not offered as a "
                        "node.");
    }
}

QVariant ArtNetNodeModel::data(const QModelIndex& index, int role) const
{
    if ((role != TroubleRole && role != Qt::ToolTipRole) || !index.isValid())
        return QStandardItemModel::data(index, role);
    const QModelIndex top = index.parent().isValid() ? index.parent() : index;
    if (role == TroubleRole)
        return static_cast<int>(TroubleOf(top));
    const QString words = WordsFor(top);
    return words.isEmpty() ? QVariant() : words;
}
