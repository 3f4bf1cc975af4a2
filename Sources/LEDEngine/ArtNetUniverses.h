// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <boost/container/flat_map.hpp>
#include <boost/container/small_vector.hpp>
#include <boost/container/static_vector.hpp>

#include "LEDEngine/ElementDMX.h"

/// The content of one universe. The size is the highest channel written so far; so many channels
/// are sent.
struct DMXUniverse
{
    static constexpr std::size_t ChannelCount = 512;

    boost::container::static_vector<std::uint8_t, ChannelCount> channels;
    std::uint32_t portAddress = 0;
};

/// A node's address as text, kept in the object itself so that the tables of a frame need no heap.
/// A text that cannot be an IPv4 address (too long, beyond ASCII) contains a "?" afterwards, so
/// that cutting it never makes an address of it.
class NodeAddress
{
public:
    explicit NodeAddress(std::wstring_view address);

    [[nodiscard]] std::string_view Text() const { return text_.data(); }
    auto operator<=>(const NodeAddress&) const = default;

private:
    std::array<char, 16> text_{};
};

/// The universes of one frame. Each frame builds them from nothing: a universe that no element and
/// no merged input writes is not sent. The tables keep their memory, so a frame like the one before
/// allocates nothing.
class ArtNetUniverses
{
public:
    using UnicastKey = std::pair<NodeAddress, std::uint16_t>;
    using BroadcastTable = boost::container::flat_map<
        std::uint16_t, DMXUniverse, std::less<>,
        boost::container::small_vector<std::pair<std::uint16_t, DMXUniverse>, 16>>;
    using UnicastTable = boost::container::flat_map<
        UnicastKey, DMXUniverse, std::less<>,
        boost::container::small_vector<std::pair<UnicastKey, DMXUniverse>, 16>>;

    void Clear();

    /// The universe of this Port-Address, added when it doesn't exist: a broadcast universe when
    /// `address` is exactly "Auto", otherwise one for that address. The reference is valid until
    /// the next universe is added. Adding universes in sorted order moves no other universe.
    DMXUniverse& Get(std::uint16_t portAddress, const std::wstring& address);

    [[nodiscard]] const BroadcastTable& Broadcast() const { return broadcast_; }
    [[nodiscard]] const UnicastTable& Unicast() const { return unicast_; }
    /// Of both kinds.
    [[nodiscard]] std::size_t Count() const { return broadcast_.size() + unicast_.size(); }

private:
    BroadcastTable broadcast_;
    UnicastTable unicast_;
};

// Channels are 1-based. What runs past channel 512 is cut; a first channel below 1 or above 512
// writes nothing.

/// Plain copy: the tags have no meaning here, and a free channel is sent as 0.
void CopyChannels(DMXUniverse& universe, std::int32_t first, std::span<const std::uint8_t> values);

/// Pixels and constants overwrite, free channels leave the universe as it is.
void BlendChannels(DMXUniverse& universe, std::int32_t first, const ElementDMX& element);
