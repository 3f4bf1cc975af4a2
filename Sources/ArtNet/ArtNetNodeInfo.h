// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include <boost/container/small_vector.hpp>

/// One Art-Net node as discovered. The texts are 8-bit, zero-filled, without a terminator when they
/// fill their field; no encoding is assumed.
struct ArtNetNodeInfo
{
    std::array<char, 64> name{}; ///< LongName of its reply, or ShortName where that is empty
    std::array<char, 16> ip{};   ///< dotted source address of its reply
    /// Port-Addresses, in the order of its pages and of their ports.
    boost::container::small_vector<std::uint16_t, 4> universes;

    [[nodiscard]] std::string_view Name() const;
    [[nodiscard]] std::string_view Ip() const;
    /// Cut to the field's size.
    void SetName(std::string_view text);
    void SetIp(std::string_view text);

    /// The texts up to their first zero byte, the universes one by one.
    bool operator==(const ArtNetNodeInfo& other) const;
};

/// One ArtPollReply, a page of a node: it has room for four ports.
struct ArtNetReply
{
    ArtNetNodeInfo node;        ///< with the universes of this page alone
    std::uint8_t bindIndex = 0; ///< which page, from 1; 0 where the node numbers none
    /// NetSwitch, SubSwitch and SwOut in one number: what tells pages without a number apart.
    std::uint32_t switches = 0;
};

/// A list of nodes with room for a usual rig in the object itself.
using ArtNetNodeList = boost::container::small_vector<ArtNetNodeInfo, 16>;
