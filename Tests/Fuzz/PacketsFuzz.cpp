// SPDX-License-Identifier: MIT
// Whatever arrives on the Art-Net port: every datagram is one kind or none, and what is read of it
// lies inside it.
#include "ArtNet/ArtNetPackets.h"
#include "Fuzz/Fuzz.h"

#include <algorithm>
#include <array>

namespace {

void CheckDmx(std::span<const std::byte> datagram)
{
    const auto dmx = ArtNetPackets::ReadDmx(datagram);
    if (!dmx)
        return;
    Require(dmx->portAddress < 0x8000 && dmx->channels.size() <= 512);
    Require(dmx->channels.size() + ArtNetPackets::DmxHeaderSize <= datagram.size());
    // What was read can be sent on, and reads the same again up to the padding of an odd length.
    std::array<std::uint8_t, 512> channels{};
    for (std::size_t i = 0; i < dmx->channels.size(); ++i)
        channels[i] = std::to_integer<std::uint8_t>(dmx->channels[i]);
    std::array<std::byte, ArtNetPackets::MaxDmxSize> packet{};
    const std::size_t size = ArtNetPackets::WriteDmx(
        packet, dmx->portAddress, std::span(channels).first(dmx->channels.size()));
    const auto again = ArtNetPackets::ReadDmx(std::span<const std::byte>(packet).first(size));
    Require(again && again->portAddress == dmx->portAddress);
    Require(again->channels.size() == (dmx->channels.size() + 1) / 2 * 2);
    Require(std::ranges::equal(again->channels.first(dmx->channels.size()), dmx->channels));
}

void CheckReply(std::span<const std::byte> datagram)
{
    const auto reply = ArtNetPackets::ReadPollReply(datagram, 0x0200000A);
    if (!reply)
        return;
    const ArtNetNodeInfo& node = reply->node;
    Require(datagram.size() >= 207 && node.Ip() == "2.0.0.10");
    Require(datagram.size() >= 212 || reply->bindIndex == 0);
    Require(node.Name().size() <= 64 && node.universes.size() <= 4);
    for (const std::uint16_t portAddress : node.universes)
        Require(portAddress < 0x8000);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto datagram = std::as_bytes(std::span(data, size));
    const auto kind = ArtNetPackets::Classify(datagram);
    Require(kind != ArtNetPackets::Kind::Poll || size >= 10);
    if (kind == ArtNetPackets::Kind::Dmx)
        CheckDmx(datagram);
    if (kind == ArtNetPackets::Kind::PollReply)
        CheckReply(datagram);
    return 0;
}
