// SPDX-License-Identifier: MIT
#include "LEDEngine/UniverseRoute.h"

#include <algorithm>

#include "FixtureModel/DMXMapping.h"
#include "LEDEngine/ArtNetOutput.h"
#include "Platform/IPv4.h"
#include "Platform/Text.h"

namespace {

using Way = UniverseRoute::Way;

bool Sends(OutputState state)
{
    return state == OutputState::UsingLocalSocket || state == OutputState::UsingRemoteSocket;
}

UniverseRoute RouteToSubscribers(const ArtNetOutput& output, std::uint16_t portAddress)
{
    UniverseRoute route{.way = Way::Subscribers, .nodes = {}};
    for (const ArtNetNodeInfo& node : output.GetNodes()) {
        if (std::ranges::find(node.universes, portAddress) != node.universes.end() &&
            Platform::IsInNetwork(output.GetBroadcastValue(), node.Ip()))
            route.nodes.emplace_back(node.Ip());
    }
    if (route.nodes.size() >= ArtNetOutput::SubscribersForBroadcast)
        return {.way = Way::Broadcast, .nodes = {}};
    if (route.nodes.empty())
        route.way = Way::NoSubscriber;
    return route;
}

} // namespace

UniverseRoute RouteOf(const ArtNetOutput& output, bool autoUnicast, std::uint16_t portAddress,
                      std::wstring_view node)
{
    if (output.outputSuspended)
        return {.way = Way::HostSends, .nodes = {}};
    if (!Sends(output.GetState()))
        return {.way = output.GetBroadcastValue() == 0 ? Way::NoNetwork : Way::NoPort, .nodes = {}};
    if (node != AutoNode) {
        const std::string address = Platform::WideToUtf8(std::wstring(node));
        if (!Platform::IsInNetwork(output.GetBroadcastValue(), address))
            return {.way = Way::OutsideNetwork, .nodes = {}};
        return {.way = Way::Node, .nodes = {address}};
    }
    if (autoUnicast && output.KnowsNodeInNetwork())
        return RouteToSubscribers(output, portAddress);
    return {.way = Way::Broadcast, .nodes = {}};
}
