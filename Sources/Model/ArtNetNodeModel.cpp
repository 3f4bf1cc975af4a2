// SPDX-License-Identifier: MIT
#include "Model/ArtNetNodeModel.h"

#include <algorithm>
#include <set>

namespace {

QString KeyOf(const ArtNetNodeRecord& record)
{
    return QString::fromLatin1(record.ip.data(), static_cast<int>(record.ip.size()));
}

/// We, and the host beside us: on the network, and no place to send light to.
bool IsOwnKind(const ArtNetNodeRecord& record)
{
    return record.name.find("PixelWeft") != std::string::npos ||
           record.name.find("ReelCommand") != std::string::npos;
}

} // namespace

ArtNetNodeModel::ArtNetNodeModel(QObject* parent)
    : QStandardItemModel(parent)
{}

ArtNetNodeModel::~ArtNetNodeModel() = default;

bool ArtNetNodeModel::NoteSeen(const std::vector<ArtNetNodeRecord>& incoming)
{
    bool news = false;
    for (const ArtNetNodeRecord& record : incoming) {
        const auto known = std::ranges::find(nodes, record.ip, &ArtNetNodeRecord::ip);
        if (known == nodes.end()) {
            nodes.push_back(record);
            news = true;
            continue;
        }
        known->useCount = 0;
        known->universes = record.universes;
    }
    return news;
}

bool ArtNetNodeModel::UpdateNodes(const std::vector<ArtNetNodeRecord>& incoming)
{
    const bool news = NoteSeen(incoming);
    std::set<QString> addresses;
    for (const ArtNetNodeRecord& record : incoming)
        addresses.insert(KeyOf(record));
    const auto live = liveNodes.keys();
    if (!news && std::ranges::equal(addresses, live))
        return false;
    for (auto node = liveNodes.begin(); node != liveNodes.end(); ++node) {
        if (!offlineNodes.contains(node.key()))
            offlineNodes.insert(node.key(), node.value());
    }
    liveNodes.clear();
    for (const ArtNetNodeRecord& record : incoming) {
        const QString key = KeyOf(record);
        offlineNodes.remove(key);
        if (!IsOwnKind(record) && !liveNodes.contains(key))
            liveNodes.insert(key, record);
    }
    RebuildAllNodes();
    return true;
}

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
    sort(0, Qt::AscendingOrder);
}

bool ArtNetNodeModel::AddManualNode(const ArtNetNodeRecord& record)
{
    const QString key = KeyOf(record);
    if (offlineNodes.contains(key) || allNodes.contains(key))
        return false;
    allNodes.insert(key, record);
    offlineNodes.insert(key, record);
    return true;
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
    return record ? QString::fromStdString(record->name) : QString();
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
}

void ArtNetNodeModel::RemoveNode(const QString& address)
{
    if (offlineNodes.remove(address) > 0)
        allNodes.remove(address);
}

void ArtNetNodeModel::Clear()
{
    offlineNodes.clear();
    liveNodes.clear();
    allNodes.clear();
}
