// SPDX-License-Identifier: MIT
#include "UI/Network/NodeList.h"

#include <optional>
#include <utility>

#include "LEDEngine/LEDEngine.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/Trouble.h"
#include "Platform/IPv4.h"
#include "UI/Network/NetworkChoice.h"
#include "UI/Widgets/ActionSet.h"
#include "UI/Widgets/DockList.h"
#include "UI/Widgets/ListColumns.h"
#include "UI/Widgets/TroubleDelegate.h"

NodeList::NodeList(ArtNetNodeModel& nodes, DeviceManager& manager, LEDEngine& engine,
                   const NetworkChoice& choice)
    : nodes_(nodes)
    , manager_(manager)
    , engine_(engine)
    , choice_(choice)
{
    auto* view = new DockList;
    view->SetNames("artNetNodes",
                   [] { return WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Fixture Nodes")); });
    view_ = view;
    view_->setIndentation(12); // of the ports
    view_->setModel(&nodes_);
    view_->setItemDelegate(new TroubleDelegate(TroubleRole, ArtNetNodeModel::NameColumn, view_));
    view_->sortByColumn(ArtNetNodeModel::IpColumn, Qt::AscendingOrder);
    columns_ =
        new ListColumns(*view_, {ArtNetNodeModel::NameColumn, ArtNetNodeModel::IpColumn,
                                 ArtNetNodeModel::UseCountColumn, ArtNetNodeModel::SubnetColumn,
                                 ArtNetNodeModel::UniverseColumn});
    // The ports of a node are always visible.
    connect(&nodes_, &ArtNetNodeModel::rowsInserted, view_,
            [this](const QModelIndex& parent, int first, int last) {
                view_->expand(parent);
                for (int row = first; row <= last; ++row)
                    view_->expand(nodes_.index(row, 0, parent));
            });
    connect(&nodes_, &ArtNetNodeModel::nodesChanged, this, &NodeList::RequestRows);
    connect(&choice_, &NetworkChoice::networkChanged, this, [this] { looks_ = 0; });
    connect(&choice_, &NetworkChoice::networkChanged, this, &NodeList::RebuildNodeRows);
    connect(&choice_, &NetworkChoice::networkChanged, this, &NodeList::ProcessNodesList);
    WatchDocument();
}

NodeList::~NodeList()
{
    view_->setModel(nullptr);
}

/// The rows count the elements that are sent to each address.
void NodeList::WatchDocument()
{
    const MappedDeviceModel* document = manager_.GetMappedDeviceModel();
    connect(document, &MappedDeviceModel::rowsInserted, this, &NodeList::RequestRows);
    connect(document, &MappedDeviceModel::rowsRemoved, this, &NodeList::RequestRows);
    connect(document, &MappedDeviceModel::dataChanged, this, &NodeList::RequestRows);
    connect(document, &MappedDeviceModel::modelReset, this, &NodeList::RequestRows);
}

void NodeList::WorkBetweenTicks()
{
    if (std::exchange(nodesDue_, false))
        ProcessNodesList();
    else if (std::exchange(rowsDue_, false))
        RebuildNodeRows();
    else
        nodes_.WriteWaitingRows();
}

void NodeList::ProcessNodesList()
{
    rowsDue_ = engine_.UpdateNodeList(nodes_) || rowsDue_;
    ++looks_;
    JudgeNodes();
}

/// Nodes are asked every 2.5 seconds: for the first ten, no answer means nothing yet.
void NodeList::JudgeNodes()
{
    constexpr int looksInTenSeconds = 10;
    const bool known = looks_ >= looksInTenSeconds && !choice_.GetNetworkBroadcast().empty();
    manager_.GetMappedDeviceModel()->SetAnsweringNodes(
        known ? std::optional(nodes_.GetAnsweringNodes()) : std::nullopt);
}

void NodeList::RebuildNodeRows()
{
    nodes_.Rebuild(*manager_.GetMappedDeviceModel(),
                   Platform::ParseIPv4(choice_.GetNetworkBroadcast()).value_or(0));
}
