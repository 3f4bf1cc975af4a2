// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class ArtNetOutput;

/// Who gets a universe, and why.
struct UniverseRoute
{
    enum class Way : std::uint8_t
    {
        NoNetwork,     ///< nobody: no network is chosen, or it is not connected
        NoPort,        ///< nobody: the output waits for its port
        HostSends,     ///< nobody from us: the host program sends by itself
        Broadcast,     ///< every node of the network, also where more announced it than are told
                       ///< one by one
        Node,          ///< the node that its elements name
        Subscribers,   ///< the nodes that announced it
        NoSubscriber,  ///< nobody: no node announced it, and each universe goes to those alone
        OutsideNetwork ///< nobody: the node that its elements name is not in the network
    };

    Way way = Way::NoNetwork;
    /// Dotted, of the nodes for Subscribers, of the one for Node; else empty.
    std::vector<std::string> nodes;

    [[nodiscard]] bool IsSent() const
    {
        return way == Way::Broadcast || way == Way::Node || way == Way::Subscribers;
    }
};

/// The way of a universe in the frames that the output sends now. `node` is AutoNode or dotted;
/// `autoUnicast` is the document's choice. Walks all nodes: the answer stays true until the
/// generation of the node list, the network, the output's state or the document changes.
[[nodiscard]] UniverseRoute RouteOf(const ArtNetOutput& output, bool autoUnicast,
                                    std::uint16_t portAddress, std::wstring_view node);
