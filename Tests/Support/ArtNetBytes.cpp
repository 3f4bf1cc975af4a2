// SPDX-License-Identifier: MIT
#include "Support/ArtNetBytes.h"

#include <algorithm>

namespace ArtNetBytes {

namespace {

Bytes Head(std::uint8_t opCodeHigh)
{
    return {'A', 'r', 't', '-', 'N', 'e', 't', 0, 0x00, opCodeHigh};
}

} // namespace

Bytes Poll()
{
    Bytes packet = Head(0x20);
    packet.insert(packet.end(), {0, 14, 2, 0});
    return packet;
}

Bytes Dmx(std::uint16_t portAddress, const Bytes& channels)
{
    const auto low = [](std::size_t value) {
        return static_cast<std::uint8_t>(value & 0xFF);
    };
    Bytes packet = Head(0x50);
    packet.insert(packet.end(), {0, 14, 0, 0, low(portAddress), low(portAddress >> 8),
                                 low(channels.size() >> 8), low(channels.size())});
    packet.insert(packet.end(), channels.begin(), channels.end());
    return packet;
}

Bytes Reply(const std::string& name, std::uint8_t outputs)
{
    Bytes packet = Head(0x21);
    packet.resize(239);
    std::ranges::copy(name, packet.begin() + 44);
    for (std::uint8_t i = 0; i < outputs; ++i) {
        packet[174U + i] = 0x80;
        packet[190U + i] = i;
    }
    return packet;
}

} // namespace ArtNetBytes
