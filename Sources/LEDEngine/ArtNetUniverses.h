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

/// The content of one universe. The size is the highest channel written so far, and what goes out.
struct DMXUniverse
{
    static constexpr std::size_t ChannelCount = 512;

    boost::container::static_vector<std::uint8_t, ChannelCount> channels;
    std::uint32_t portAddress = 0;
};

/// A node's address as text, in the object itself so that a frame's tables need no heap. A text
/// that can be no IPv4 address (too long, beyond ASCII) keeps a mark that makes it none.
class NodeAddress
{
public:
    explicit NodeAddress(std::wstring_view address);

    [[nodiscard]] std::string_view Text() const { return text_.data(); }
    auto operator<=>(const NodeAddress&) const = default;

private:
    std::array<char, 16> text_{};
};

/// The universes of one frame, built from nothing each time: what nobody writes doesn't go out. The
/// tables keep their memory, so a frame like the one before allocates nothing.
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

    /// The universe of this Port-Address, made when it isn't there: among those for everybody when
    /// `address` is exactly "Auto", else among those of that address. The reference stays good
    /// until the next universe is made. Universes made in sorted order cost no moves.
    DMXUniverse& Get(std::uint16_t portAddress, const std::wstring& address);

    [[nodiscard]] const BroadcastTable& Broadcast() const { return broadcast_; }
    [[nodiscard]] const UnicastTable& Unicast() const { return unicast_; }

private:
    BroadcastTable broadcast_;
    UnicastTable unicast_;
};

// Channels are 1-based. What runs past channel 512 is cut; a first channel below 1 or above 512
// writes nothing.

/// Plain copy: the tags don't count, and a free channel goes out as 0.
void CopyChannels(DMXUniverse& universe, std::int32_t first, std::span<const std::uint8_t> values);

/// Pixels and constants overwrite, free channels leave the universe as it is.
void BlendChannels(DMXUniverse& universe, std::int32_t first, const ElementDMX& element);
