// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetPackets.h"

#include <algorithm>
#include <cstring>

#include "Platform/IPv4.h"

namespace ArtNetPackets {

namespace {

constexpr std::array<char, 8> Id{'A', 'r', 't', '-', 'N', 'e', 't', '\0'};
constexpr std::uint16_t OpPoll = 0x2000;
constexpr std::uint16_t OpPollReply = 0x2100;
constexpr std::uint16_t OpDmx = 0x5000;
constexpr std::uint16_t OpSync = 0x5200;
constexpr std::uint8_t ProtocolVersion = 14;

constexpr std::size_t SmallestReply = 207;
constexpr std::uint8_t StyleMedia = 2;
constexpr std::size_t Ports = 4;
constexpr std::uint8_t PortCanOutput = 0x80;
constexpr std::uint8_t DataIsTransmitted = 0x80;

/// The published codes for makers that have none assigned: OemUnknown, and the ESTA code reserved
/// for prototypes.
constexpr std::uint16_t Oem = 0x00FF;
constexpr std::uint16_t EstaMan = 0x7FF0;

std::uint8_t At(std::span<const std::byte> bytes, std::size_t offset)
{
    return std::to_integer<std::uint8_t>(bytes[offset]);
}

void Put(std::span<std::byte> bytes, std::size_t offset, unsigned value)
{
    bytes[offset] = static_cast<std::byte>(value);
}

void PutHighFirst(std::span<std::byte> bytes, std::size_t offset, unsigned value)
{
    Put(bytes, offset, value >> 8 & 0xFF);
    Put(bytes, offset + 1, value & 0xFF);
}

void PutLowFirst(std::span<std::byte> bytes, std::size_t offset, unsigned value)
{
    Put(bytes, offset, value & 0xFF);
    Put(bytes, offset + 1, value >> 8 & 0xFF);
}

void PutAddress(std::span<std::byte> bytes, std::size_t offset, std::uint32_t address)
{
    PutHighFirst(bytes, offset, address >> 16);
    PutHighFirst(bytes, offset + 2, address & 0xFFFF);
}

void PutHead(std::span<std::byte> bytes, std::uint16_t opCode)
{
    std::memcpy(bytes.data(), Id.data(), Id.size());
    PutLowFirst(bytes, 8, opCode);
}

/// Text into a field that always ends in a zero byte.
void PutText(std::span<std::byte> bytes, std::size_t offset, std::size_t size,
             std::string_view text)
{
    std::memcpy(bytes.data() + offset, text.data(), std::min(text.size(), size - 1));
}

std::string_view TextAt(std::span<const std::byte> bytes, std::size_t offset, std::size_t size)
{
    const auto* text = reinterpret_cast<const char*>(bytes.data() + offset);
    return {text, strnlen(text, size)};
}

bool IsOwnFamily(std::string_view name)
{
    constexpr std::array<std::string_view, 3> family{"PixelWeft", "ReelCommand", "LoomTap"};
    return std::ranges::any_of(family, [name](std::string_view word) {
        return name.find(word) != std::string_view::npos;
    });
}

/// A packet that is always the same, with nothing behind its head but byte 12.
constexpr std::array<std::byte, 14> FixedPacket(std::uint16_t opCode, std::uint8_t byte12)
{
    std::array<std::byte, 14> packet{};
    for (std::size_t i = 0; i < Id.size(); ++i)
        packet[i] = static_cast<std::byte>(Id[i]);
    packet[9] = static_cast<std::byte>(opCode >> 8);
    packet[11] = static_cast<std::byte>(ProtocolVersion);
    packet[12] = static_cast<std::byte>(byte12);
    return packet;
}

constexpr std::uint8_t TalkToMe = 0x02; // replies when something changes
constexpr auto PollPacket = FixedPacket(OpPoll, TalkToMe);
constexpr auto SyncPacket = FixedPacket(OpSync, 0);

} // namespace

Kind Classify(std::span<const std::byte> datagram)
{
    constexpr std::size_t headSize = 10;
    if (datagram.size() < headSize || std::memcmp(datagram.data(), Id.data(), Id.size()) != 0)
        return Kind::Other;
    switch (At(datagram, 8) | At(datagram, 9) << 8) {
    case OpPoll:
        return Kind::Poll;
    case OpPollReply:
        return Kind::PollReply;
    case OpDmx:
        return Kind::Dmx;
    default:
        return Kind::Other;
    }
}

std::span<const std::byte, 14> Poll()
{
    return PollPacket;
}

std::span<const std::byte, SyncSize> Sync()
{
    return SyncPacket;
}

std::size_t WriteDmx(std::span<std::byte, MaxDmxSize> packet, std::uint16_t portAddress,
                     std::span<const std::uint8_t> channels)
{
    const std::size_t count = std::min(channels.size(), MaxDmxSize - DmxHeaderSize);
    const std::size_t length = (count + 1) / 2 * 2;
    std::ranges::fill(packet.first(DmxHeaderSize), std::byte{0});
    PutHead(packet, OpDmx);
    PutHighFirst(packet, 10, ProtocolVersion);
    Put(packet, 14, portAddress & 0xFFU);
    Put(packet, 15, portAddress >> 8 & 0x7FU);
    PutHighFirst(packet, 16, static_cast<unsigned>(length));
    if (count > 0)
        std::memcpy(packet.data() + DmxHeaderSize, channels.data(), count);
    if (length > count)
        packet[DmxHeaderSize + count] = std::byte{0};
    return DmxHeaderSize + length;
}

std::optional<Dmx> ReadDmx(std::span<const std::byte> datagram)
{
    if (datagram.size() < DmxHeaderSize)
        return std::nullopt;
    const auto portAddress =
        static_cast<std::uint16_t>((At(datagram, 15) & 0x7F) << 8 | At(datagram, 14));
    const std::size_t length = static_cast<std::size_t>(At(datagram, 16)) << 8 | At(datagram, 17);
    const std::size_t count =
        std::min({length, datagram.size() - DmxHeaderSize, MaxDmxSize - DmxHeaderSize});
    return Dmx{portAddress, datagram.subspan(DmxHeaderSize, count)};
}

void WritePollReply(std::span<std::byte, PollReplySize> packet, const Identity& identity)
{
    std::ranges::fill(packet, std::byte{0});
    PutHead(packet, OpPollReply);
    PutAddress(packet, 10, identity.address);
    PutHighFirst(packet, 14, Port);
    Put(packet, 18, identity.net);
    Put(packet, 19, identity.subNet);
    PutHighFirst(packet, 20, Oem);
    PutLowFirst(packet, 24, EstaMan); // unlike the Oem code
    PutText(packet, 26, 18, identity.shortName);
    PutText(packet, 44, 64, identity.shortName.substr(0, 18));
    PutText(packet, 108, 64, identity.nodeReport);
    const std::size_t ports = std::min(identity.outputs.size(), Ports);
    Put(packet, 173, static_cast<unsigned>(ports));
    for (std::size_t i = 0; i < ports; ++i)
        Put(packet, 190 + i, identity.outputs[i] & 0x0FU);
    const bool isPage = identity.bindIndex > 0;
    const std::size_t shown = isPage ? ports : 1;
    const unsigned active = isPage ? identity.dataComesIn : 1;
    for (std::size_t i = 0; i < shown; ++i) {
        Put(packet, 174 + i, PortCanOutput);
        Put(packet, 182 + i, (active >> i & 1U) != 0 ? DataIsTransmitted : 0U);
    }
    Put(packet, 200, StyleMedia);
    if (!isPage)
        return;
    PutAddress(packet, 207, identity.address);
    Put(packet, 211, identity.bindIndex);
}

std::optional<ArtNetReply> ReadPollReply(std::span<const std::byte> datagram, std::uint32_t source)
{
    if (datagram.size() < SmallestReply)
        return std::nullopt;
    const std::string_view shortName = TextAt(datagram, 26, 18);
    const std::string_view longName = TextAt(datagram, 44, 64);
    if (IsOwnFamily(shortName) || IsOwnFamily(longName))
        return std::nullopt;
    ArtNetReply reply;
    ArtNetNodeInfo& node = reply.node;
    node.SetName(longName.empty() ? shortName : longName);
    node.SetIp(Platform::FormatIPv4(source));
    const int base = (At(datagram, 18) & 0x7F) << 8 | (At(datagram, 19) & 0x0F) << 4;
    reply.switches = static_cast<std::uint32_t>(base >> 4);
    for (std::size_t port = 0; port < Ports; ++port) {
        const int universe = At(datagram, 190 + port) & 0x0F;
        reply.switches = reply.switches << 4 | static_cast<std::uint32_t>(universe);
        if ((At(datagram, 174 + port) & PortCanOutput) != 0)
            node.universes.push_back(static_cast<std::uint16_t>(base | universe));
    }
    constexpr std::size_t bindIndexAt = 211; // older replies end before it
    if (datagram.size() > bindIndexAt)
        reply.bindIndex = At(datagram, bindIndexAt);
    return reply;
}

} // namespace ArtNetPackets
