// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetPackets.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace ArtNetPackets;
using Bytes = std::vector<std::uint8_t>;

std::span<const std::byte> Span(const Bytes& bytes)
{
    return std::as_bytes(std::span(bytes));
}

Bytes ToBytes(std::span<const std::byte> bytes)
{
    Bytes copy(bytes.size());
    std::ranges::transform(bytes, copy.begin(),
                           [](std::byte b) { return std::to_integer<std::uint8_t>(b); });
    return copy;
}

Bytes Dmx(std::uint16_t portAddress, const Bytes& channels)
{
    std::array<std::byte, MaxDmxSize> packet;
    packet.fill(std::byte{0xEE}); // a block that another packet used before
    const std::size_t size = WriteDmx(packet, portAddress, channels);
    return ToBytes(std::span(packet).first(size));
}

/// A reply as a node with all four ports would send it.
Bytes NodeReply(std::size_t size = 239)
{
    Bytes reply(239, 0);
    const Bytes head{'A', 'r', 't', '-', 'N', 'e', 't', 0, 0x00, 0x21, 9, 9, 9, 9, 0x36, 0x19};
    std::ranges::copy(head, reply.begin());
    reply[18] = 0x81; // NetSwitch with a bit too many
    reply[19] = 0xF3; // SubSwitch too
    std::ranges::copy(std::string("Short"), reply.begin() + 26);
    std::ranges::copy(std::string("A long name"), reply.begin() + 44);
    const Bytes types{0x80, 0x40, 0xC5, 0xFF};
    std::ranges::copy(types, reply.begin() + 174);
    const Bytes outputs{0x01, 0x02, 0xF3, 0x01};
    std::ranges::copy(outputs, reply.begin() + 190);
    std::fill(reply.begin() + 207, reply.end(), std::uint8_t{0xAB});
    reply.resize(size, 0xCD);
    return reply;
}

/// A text in a field of this size, with zeros behind it.
Bytes Ascii(const std::string& text, std::size_t field)
{
    Bytes bytes(text.begin(), text.end());
    bytes.resize(field);
    return bytes;
}

TEST(Poll, Bytes)
{
    EXPECT_EQ(ToBytes(Poll()),
              (Bytes{'A', 'r', 't', '-', 'N', 'e', 't', 0, 0x00, 0x20, 0x00, 0x0E, 0x02, 0x00}));
}

TEST(Dmx, AnOddCountIsPaddedAndNothingOfTheBlockShows)
{
    EXPECT_EQ(Dmx(0x1234, {0xAA, 0xBB, 0xCC}),
              (Bytes{'A',  'r', 't', '-',  'N',  'e',  't',  0,    0x00, 0x50, 0x00,
                     0x0E, 0,   0,   0x34, 0x12, 0x00, 0x04, 0xAA, 0xBB, 0xCC, 0x00}));
    EXPECT_EQ(Dmx(0, {}), (Bytes{'A', 'r', 't', '-', 'N', 'e', 't', 0, 0x00, 0x50, 0x00, 0x0E, 0, 0,
                                 0, 0, 0, 0}));
    const Bytes packet = Dmx(0x7FFF, Bytes(512, 0x5A));
    ASSERT_EQ(packet.size(), 530U);
    EXPECT_EQ(Bytes(packet.begin() + 12, packet.begin() + 18), (Bytes{0, 0, 0xFF, 0x7F, 2, 0}));
    EXPECT_EQ(std::ranges::count(packet, 0x5A), 512);
    EXPECT_EQ(Dmx(0xFFFF, Bytes(600, 1)).size(), 530U) << "no universe has more";
    EXPECT_EQ(Dmx(0xFFFF, {})[15], 0x7F);
}

TEST(Dmx, TheSmallestOfLengthFieldPacketAndUniverseCounts)
{
    const auto read = [](std::size_t length, std::size_t carried) {
        Bytes packet = Dmx(5, {});
        packet[16] = static_cast<std::uint8_t>(length >> 8);
        packet[17] = static_cast<std::uint8_t>(length);
        packet.resize(18 + carried, 7);
        const auto dmx = ReadDmx(Span(packet));
        return dmx ? static_cast<int>(dmx->channels.size()) : -1;
    };
    EXPECT_EQ(read(0, 0), 0);
    EXPECT_EQ(read(0, 512), 0);
    EXPECT_EQ(read(512, 100), 100);
    EXPECT_EQ(read(3, 512), 3);
    EXPECT_EQ(read(1, 1), 1);
    EXPECT_EQ(read(514, 514), 512);
    EXPECT_EQ(read(0xFFFF, 1006), 512);
    EXPECT_EQ(read(0x0102, 512), 258); // high byte first
}

TEST(Dmx, OnlyThePortAddressOfTheHeadIsRead)
{
    Bytes packet = Dmx(0x7F12, {1, 2});
    packet[10] = packet[11] = packet[12] = packet[13] = 0xFF;
    packet[15] |= 0x80;
    const auto dmx = ReadDmx(Span(packet));
    ASSERT_TRUE(dmx);
    EXPECT_EQ(dmx->portAddress, 0x7F12);
    EXPECT_EQ(ToBytes(dmx->channels), (Bytes{1, 2}));
}

TEST(Classify, ByIdAndOpCodeAlone)
{
    const auto with = [](std::uint8_t low, std::uint8_t high) {
        return Bytes{'A', 'r', 't', '-', 'N', 'e', 't', 0, low, high};
    };
    EXPECT_EQ(Classify(Span(with(0x00, 0x20))), Kind::Poll);
    EXPECT_EQ(Classify(Span(with(0x00, 0x21))), Kind::PollReply);
    EXPECT_EQ(Classify(Span(with(0x00, 0x50))), Kind::Dmx);
    for (const Bytes& other :
         {with(0x20, 0x00), with(0x00, 0x51), with(0x01, 0x20), with(0x00, 0x99), with(0x00, 0x60)})
        EXPECT_EQ(Classify(Span(other)), Kind::Other);
    for (std::size_t i = 0; i < 8; ++i) {
        Bytes wrong = with(0x00, 0x20);
        wrong[i] ^= 0x20; // 'art-Net' and the like, and an eighth byte that is not zero
        EXPECT_EQ(Classify(Span(wrong)), Kind::Other) << i;
    }
    EXPECT_EQ(Classify(Span({'A', 'r', 't', '-', 'N', 'e', 't', 0, 0x00})), Kind::Other);
    EXPECT_EQ(Classify({}), Kind::Other);
}

TEST(Reply, OursByteForByte)
{
    std::array<std::byte, PollReplySize> packet;
    packet.fill(std::byte{0xEE});
    const Bytes outputs{0x03, 0x0F, 0x00, 0x01, 0x02};
    WritePollReply(packet, {.shortName = "Zentri PixelWeft",
                            .nodeReport = "#0001 [0001] Ready",
                            .net = 0x12,
                            .subNet = 0x03,
                            .outputs = outputs,
                            .address = 0x0200000A});
    Bytes expected(239, 0);
    const auto put = [&expected](std::size_t offset, const std::string& bytes) {
        std::ranges::copy(bytes, expected.begin() + static_cast<std::ptrdiff_t>(offset));
    };
    put(0, std::string("Art-Net\0\x00\x21", 10));
    put(10, std::string("\x02\x00\x00\x0A", 4));
    put(14, "\x19\x36");
    put(18, "\x12\x03");
    put(20, std::string("\x00\xFF", 2)); // no maker's code
    put(24, "\x7F\xF0");                 // a prototype's
    put(26, "Zentri PixelWeft");
    put(44, "Zentri PixelWeft");
    put(108, "#0001 [0001] Ready");
    put(173, "\x04");
    put(174, "\x80");
    put(182, "\x80");
    put(190, std::string("\x03\x0F\x00\x01", 4));
    put(200, "\x02");
    EXPECT_EQ(ToBytes(packet), expected);
}

TEST(Reply, TextsAreCutToTheirFieldsAndEndInZero)
{
    std::array<std::byte, PollReplySize> packet;
    const std::string name(30, 'n');
    const std::string report(80, 'R');
    WritePollReply(packet, {.shortName = name, .nodeReport = report, .outputs = {}});
    const Bytes bytes = ToBytes(packet);
    EXPECT_EQ(Bytes(bytes.begin() + 26, bytes.begin() + 44), Ascii(std::string(17, 'n'), 18));
    EXPECT_EQ(Bytes(bytes.begin() + 44, bytes.begin() + 108), Ascii(std::string(18, 'n'), 64));
    EXPECT_EQ(Bytes(bytes.begin() + 108, bytes.begin() + 172), Ascii(std::string(63, 'R'), 64));
    EXPECT_EQ(bytes[173], 0);
}

TEST(Reply, ANodeIsReadFromItsFirst207Bytes)
{
    const auto node = ReadPollReply(Span(NodeReply()), 0x0200000A);
    ASSERT_TRUE(node);
    EXPECT_EQ(node->Name(), "A long name");
    EXPECT_EQ(node->Ip(), "2.0.0.10"); // not what the packet says
    // Ports that can't output are passed over, whatever the count says; repeats stay.
    EXPECT_EQ(std::vector<int>(node->universes.begin(), node->universes.end()),
              (std::vector<int>{0x131, 0x133, 0x131}));
    for (const std::size_t size : {207U, 212U, 240U, 1024U})
        EXPECT_EQ(ReadPollReply(Span(NodeReply(size)), 0x0200000A), node) << size;
    EXPECT_FALSE(ReadPollReply(Span(NodeReply(206)), 0x0200000A));
    Bytes inputsOnly = NodeReply();
    std::ranges::copy(Bytes{0x40, 0x40, 0x7F, 0x00}, inputsOnly.begin() + 174);
    EXPECT_TRUE(ReadPollReply(Span(inputsOnly), 1)->universes.empty());
}

TEST(Reply, TheNameIsTheLongOneOrElseTheShort)
{
    const auto nameOf = [](const std::string& shortName, const std::string& longName) {
        Bytes reply = NodeReply();
        std::ranges::copy(Ascii(shortName, 18), reply.begin() + 26);
        std::ranges::copy(Ascii(longName, 64), reply.begin() + 44);
        const auto node = ReadPollReply(Span(reply), 1);
        return node ? std::string(node->Name()) : "ignored";
    };
    EXPECT_EQ(nameOf("Short", ""), "Short");
    EXPECT_EQ(nameOf("", ""), "");
    EXPECT_EQ(nameOf(std::string(18, 's'), ""), std::string(18, 's')); // no room for a zero
    EXPECT_EQ(nameOf("", std::string(64, 'l')), std::string(64, 'l'));
    EXPECT_EQ(nameOf("", std::string("Caf\xE9")), "Caf\xE9"); // any encoding passes through
    // Our own family takes no light.
    EXPECT_EQ(nameOf("Zentri PixelWeft", "x"), "ignored");
    EXPECT_EQ(nameOf("LoomTap", "Stage left"), "ignored");
    EXPECT_EQ(nameOf("x", "My ReelCommand 5"), "ignored");
    EXPECT_EQ(nameOf("loomtap", "pixelweft"), "pixelweft");
    EXPECT_EQ(nameOf("ReelComman", "d"), "d");
    EXPECT_EQ(nameOf("x", std::string("y\0PixelWeft", 11)), "y"); // behind the end is no text
}

} // namespace
