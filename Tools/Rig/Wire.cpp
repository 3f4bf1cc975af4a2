// SPDX-License-Identifier: MIT
#include "Wire.h"

#include <algorithm>
#include <string_view>

namespace Rig {
namespace {

constexpr std::array<std::uint8_t, 8> artNetId = {'A', 'r', 't', '-', 'N', 'e', 't', 0};
constexpr std::uint16_t opPoll = 0x2000;
constexpr std::uint16_t opPollReply = 0x2100;
constexpr std::uint16_t opDmx = 0x5000;
constexpr std::size_t dmxHead = 18;
constexpr std::size_t replySize = 239;
constexpr std::size_t shortestReply = 207; // older nodes stop behind the MAC address

std::uint8_t Low(unsigned value)
{
    return static_cast<std::uint8_t>(value & 0xFFU);
}

Bytes Head(std::uint16_t opCode, std::size_t size)
{
    Bytes packet(size, 0);
    std::copy(artNetId.begin(), artNetId.end(), packet.begin());
    packet[8] = Low(opCode);
    packet[9] = Low(opCode >> 8U);
    return packet;
}

void PutText(Bytes& packet, std::size_t offset, std::size_t field, std::string_view text)
{
    text = text.substr(0, field - 1);
    std::copy(text.begin(), text.end(), packet.begin() + static_cast<std::ptrdiff_t>(offset));
}

std::string GetText(std::span<const std::uint8_t> datagram, std::size_t offset, std::size_t field)
{
    const auto bytes = datagram.subspan(offset, field);
    std::string text(bytes.begin(), std::find(bytes.begin(), bytes.end(), std::uint8_t{0}));
    // The text is shown on a terminal, which must not get a node's control characters.
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20U || c == 0x7F; }, '?');
    return text;
}

} // namespace

Kind Classify(std::span<const std::uint8_t> datagram)
{
    if (datagram.size() < 10 || !std::equal(artNetId.begin(), artNetId.end(), datagram.begin()))
        return Kind::Other;
    switch (datagram[8] | (datagram[9] << 8)) {
    case opPoll:
        return Kind::Poll;
    case opPollReply:
        return Kind::PollReply;
    case opDmx:
        return Kind::Dmx;
    default:
        return Kind::Other;
    }
}

std::optional<Dmx> ReadDmx(std::span<const std::uint8_t> datagram)
{
    if (datagram.size() < dmxHead)
        return std::nullopt;
    const auto stated = static_cast<std::size_t>((datagram[16] << 8) | datagram[17]);
    const auto count = std::min({stated, datagram.size() - dmxHead, universeSize});
    const auto data = datagram.subspan(dmxHead, count);
    const auto universe = static_cast<std::uint16_t>(((datagram[15] & 0x7F) << 8) | datagram[14]);
    return Dmx{universe, Bytes(data.begin(), data.end())};
}

std::optional<Reply> ReadReply(std::span<const std::uint8_t> datagram)
{
    if (datagram.size() < shortestReply)
        return std::nullopt;
    Reply reply;
    std::copy_n(datagram.begin() + 10, 4, reply.address.begin());
    reply.shortName = GetText(datagram, 26, 18);
    reply.longName = GetText(datagram, 44, 64);
    reply.bindIndex = datagram.size() > 211 ? datagram[211] : std::uint8_t{0};
    const int upper = ((datagram[18] & 0x7F) << 8) | ((datagram[19] & 0x0F) << 4);
    for (std::size_t port = 0; port < 4; ++port) {
        if ((datagram[174 + port] & 0x80) != 0)
            reply.universes.push_back(
                static_cast<std::uint16_t>(upper | (datagram[190 + port] & 0x0F)));
    }
    return reply;
}

Bytes WritePoll()
{
    Bytes packet = Head(opPoll, 14);
    packet[11] = 14; // protocol version
    packet[12] = 2;  // tell me when something changes
    return packet;
}

Bytes WriteDmx(std::uint16_t universe, std::span<const std::uint8_t> channels,
               std::uint8_t sequence)
{
    channels = channels.first(std::min(channels.size(), universeSize));
    const std::size_t length = (channels.size() + 1) / 2 * 2;
    Bytes packet = Head(opDmx, dmxHead + length);
    packet[11] = 14;
    packet[12] = sequence;
    packet[14] = Low(universe);
    packet[15] = Low((universe >> 8U) & 0x7FU);
    packet[16] = Low(static_cast<unsigned>(length) >> 8U);
    packet[17] = Low(static_cast<unsigned>(length));
    std::copy(channels.begin(), channels.end(), packet.begin() + dmxHead);
    return packet;
}

Bytes WriteReply(const Reply& reply)
{
    Bytes packet = Head(opPollReply, replySize);
    std::copy(reply.address.begin(), reply.address.end(), packet.begin() + 10);
    packet[14] = Low(artNetPort); // the published format has this one low byte first
    packet[15] = Low(artNetPort >> 8U);
    packet[21] = 0xFF; // OEM code 0x00FF: unknown maker
    packet[24] = 0xF0; // ESTA code 0x7FF0: for prototypes
    packet[25] = 0x7F;
    PutText(packet, 26, 18, reply.shortName);
    PutText(packet, 44, 64, reply.longName);
    PutText(packet, 108, 64, "#0001 [0000] Rig is ready");
    const std::size_t ports = std::min<std::size_t>(reply.universes.size(), 4);
    packet[173] = Low(static_cast<unsigned>(ports));
    if (ports > 0) {
        packet[18] = Low((reply.universes[0] >> 8U) & 0x7FU);
        packet[19] = Low((reply.universes[0] >> 4U) & 0x0FU);
    }
    for (std::size_t port = 0; port < ports; ++port) {
        packet[174 + port] = 0x80;
        packet[182 + port] = 0x80;
        packet[190 + port] = Low(reply.universes[port] & 0x0FU);
    }
    packet[211] = reply.bindIndex;
    packet[212] = 0x08; // Status2: 15-bit Port-Addresses
    return packet;
}

std::vector<Reply> RepliesOf(const std::array<std::uint8_t, 4>& address, const std::string& name,
                             const std::vector<std::uint16_t>& universes)
{
    std::vector<Reply> replies;
    for (const std::uint16_t universe : universes) {
        const bool joins = !replies.empty() && replies.back().universes.size() < 4 &&
                           (replies.back().universes[0] >> 4U) == (universe >> 4U);
        if (!joins)
            replies.push_back({address, Low(static_cast<unsigned>(replies.size()) + 1), name, name,
                               std::vector<std::uint16_t>{}});
        replies.back().universes.push_back(universe);
    }
    if (replies.empty())
        replies.push_back({address, 1, name, name, {}});
    return replies;
}

} // namespace Rig
