// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A node that answers.
struct PatchNode
{
    std::wstring address; ///< dotted
    std::wstring name;
    std::vector<std::uint16_t> ports; ///< the Port-Addresses that it puts out

    bool operator==(const PatchNode&) const = default;
};

/// Somebody else who sends.
struct PatchSender
{
    std::uint16_t portAddress = 0;
    std::uint32_t address = 0; ///< first octet in the top byte

    bool operator==(const PatchSender&) const = default;
};

/// What is known of the network at the moment.
struct PatchNetwork
{
    std::uint32_t broadcast = 0;  ///< address of the chosen network, first octet in the top byte
    std::vector<PatchNode> nodes; ///< of this network
    /// Whether the nodes say where a universe goes when it goes to those alone that announced it.
    /// Programs like ours count there, and are in no list of nodes.
    bool knowsNodes = false;
    std::vector<PatchSender> senders;

    bool operator==(const PatchNetwork&) const = default;
};
