// SPDX-License-Identifier: MIT
#include "Model/NodeChoices.h"

#include "Model/ArtNetNodeModel.h"
#include "Platform/IPv4.h"

std::vector<NodeChoice> NodeChoices(ArtNetNodeModel& nodes, std::optional<std::uint32_t> network)
{
    std::vector<NodeChoice> choices;
    const ArtNetNodeModel::Table& all = nodes.GetAllNodes();
    for (auto node = all.begin(); node != all.end(); ++node) {
        if (node->manual || (network && Platform::IsInNetwork(*network, node->ip)))
            choices.push_back({nodes.GetNodeName(node.key()), node.key(), node->useCount});
    }
    return choices;
}
