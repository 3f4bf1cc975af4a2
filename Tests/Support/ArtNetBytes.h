// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Art-Net packets as a peer sends them, written without the program's own writers.
namespace ArtNetBytes {

using Bytes = std::vector<std::uint8_t>;

[[nodiscard]] inline Bytes Packet(std::uint8_t opCodeHigh, const Bytes& rest)
{
    Bytes packet{'A', 'r', 't', '-', 'N', 'e', 't', 0, 0, opCodeHigh};
    packet.insert(packet.end(), rest.begin(), rest.end());
    return packet;
}

[[nodiscard]] inline Bytes Poll()
{
    return Packet(0x20, {0, 14, 2, 0});
}

/// Exactly these channels, an odd number of them too. The Port-Address is written whole.
[[nodiscard]] inline Bytes Dmx(std::uint16_t portAddress, const Bytes& channels)
{
    Bytes packet = Packet(0x50, {0, 14, 0, 0});
    for (const std::size_t value : {std::size_t{portAddress} & 0xFF, std::size_t{portAddress} >> 8,
                                    channels.size() >> 8, channels.size() & 0xFF})
        packet.push_back(static_cast<std::uint8_t>(value));
    packet.insert(packet.end(), channels.begin(), channels.end());
    return packet;
}

/// The Port-Address of an ArtDmx packet; nothing for another packet.
[[nodiscard]] inline std::optional<int> UniverseOf(const Bytes& packet)
{
    if (packet.size() < 18 || packet[8] != 0 || packet[9] != 0x50)
        return std::nullopt;
    return packet[14] + 256 * packet[15];
}

/// The channels of an ArtDmx packet.
[[nodiscard]] inline Bytes ChannelsOf(const Bytes& packet)
{
    return {packet.begin() + 18, packet.end()};
}

/// ArtPollReply of a node with this long name and up to four outputs, on universes 0 to 3.
[[nodiscard]] inline Bytes Reply(const std::string& name, std::uint8_t outputs = 1)
{
    Bytes packet = Packet(0x21, {});
    packet.resize(239);
    std::ranges::copy(name, packet.begin() + 44);
    for (std::uint8_t i = 0; i < outputs; ++i) {
        packet[174U + i] = 0x80;
        packet[190U + i] = i;
    }
    return packet;
}

} // namespace ArtNetBytes
