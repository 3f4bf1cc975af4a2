// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetPackets.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Support/ArtNetBytes.h"

namespace {

using namespace ArtNetPackets;
using ArtNetBytes::Bytes;

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

Bytes Written(std::uint16_t portAddress, const Bytes& channels)
{
    std::array<std::byte, MaxDmxSize> packet;
    packet.fill(std::byte{0xEE}); // a block that another packet used before
    const std::size_t size = WriteDmx(packet, portAddress, channels);
    return ToBytes(std::span(packet).first(size));
}

void Put(Bytes& packet, std::size_t offset, std::string_view bytes)
{
    std::ranges::copy(bytes, packet.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// A reply as a node with all four ports would send it, cut or lengthened.
Bytes NodeReply(std::size_t size = 239)
{
    Bytes reply = ArtNetBytes::Reply("A long name", 0);
    Put(reply, 10, "\x09\x09\x09\x09\x36\x19");
    Put(reply, 18, "\x81\xF3"); // NetSwitch and SubSwitch, with bits too many
    Put(reply, 26, "Short");
    Put(reply, 174, "\x80\x40\xC5\xFF");
    Put(reply, 190, "\x01\x02\xF3\x01");
    std::fill(reply.begin() + 207, reply.end(), std::uint8_t{0xAB});
    reply.resize(size, 0xCD);
    return reply;
}

TEST(Dmx, AnOddCountIsPaddedAndNothingOfTheBlockShows)
{
    EXPECT_EQ(Written(0x1234, {0xAA, 0xBB, 0xCC}),
              (Bytes{'A',  'r', 't', '-',  'N',  'e',  't',  0,    0x00, 0x50, 0x00,
                     0x0E, 0,   0,   0x34, 0x12, 0x00, 0x04, 0xAA, 0xBB, 0xCC, 0x00}));
    EXPECT_EQ(Written(0, {}), ArtNetBytes::Dmx(0, {}));
    EXPECT_EQ(Written(0, {9}), ArtNetBytes::Dmx(0, {9, 0}));
    EXPECT_EQ(Written(0xFFFF, Bytes(600, 1)), ArtNetBytes::Dmx(0x7FFF, Bytes(512, 1)));
}

TEST(Dmx, TheSmallestOfLengthFieldPacketAndUniverseCounts)
{
    using Case = std::array<std::size_t, 3>;
    for (const auto& [length, carried, counts] :
         {Case{0, 512, 0}, Case{512, 100, 100}, Case{3, 512, 3}, Case{514, 514, 512},
          Case{0xFFFF, 1006, 512}, Case{0x0102, 512, 258}})
    {
        Bytes packet = ArtNetBytes::Dmx(0xFF12, {}); // the top bit does not count
        packet[10] = packet[11] = packet[12] = packet[13] = 0xFF;
        packet[16] = static_cast<std::uint8_t>(length >> 8);
        packet[17] = static_cast<std::uint8_t>(length);
        packet.resize(18 + carried, 7);
        const auto dmx = ReadDmx(Span(packet));
        ASSERT_TRUE(dmx);
        EXPECT_EQ(dmx->portAddress, 0x7F12);
        EXPECT_EQ(ToBytes(dmx->channels), Bytes(counts, 7)) << length << ' ' << carried;
        EXPECT_FALSE(ReadDmx(Span(packet).first(17)));
    }
}

TEST(Classify, ByIdAndOpCodeAlone)
{
    const auto of = [](int opCode) {
        return Classify(
            Span({'A', 'r', 't', '-', 'N', 'e', 't', 0, static_cast<std::uint8_t>(opCode & 0xFF),
                  static_cast<std::uint8_t>(opCode >> 8)}));
    };
    EXPECT_EQ(of(0x2000), Kind::Poll);
    EXPECT_EQ(of(0x2100), Kind::PollReply);
    EXPECT_EQ(of(0x5000), Kind::Dmx);
    for (const int opCode : {0x0020, 0x5100, 0x2001})
        EXPECT_EQ(of(opCode), Kind::Other);
    const Bytes poll = ArtNetBytes::Poll();
    for (std::size_t i = 0; i < 8; ++i) {
        Bytes wrong = poll;
        wrong[i] ^= 0x20; // 'art-Net' and the like, and an eighth byte that is not zero
        EXPECT_EQ(Classify(Span(wrong)), Kind::Other) << i;
    }
    EXPECT_EQ(Classify(Span(poll).first(9)), Kind::Other);
}

TEST(Reply, OursByteForByteWithTextsThatAreCut)
{
    const auto written = [](const Identity& identity) {
        std::array<std::byte, PollReplySize> packet;
        packet.fill(std::byte{0xEE});
        WritePollReply(packet, identity);
        return ToBytes(packet);
    };
    const std::string report(80, 'R');
    const Bytes outputs{0x03, 0x1F, 0x00, 0x01, 0x02};
    Identity identity{.shortName = "A short name of 26 letters",
                      .nodeReport = report,
                      .net = 0x12,
                      .subNet = 0x03,
                      .outputs = outputs,
                      .address = 0x0200000A};
    Bytes expected(239, 0);
    Put(expected, 0, std::string_view("Art-Net\0\x00\x21\x02\x00\x00\x0A\x19\x36", 16));
    Put(expected, 18, std::string_view("\x12\x03\x00\xFF", 4)); // and no maker's code
    Put(expected, 24, "\xF0\x7F");                              // a prototype's
    Put(expected, 26, "A short name of 2");
    Put(expected, 44, "A short name of 26");
    Put(expected, 108, std::string(63, 'R'));
    Put(expected, 173, "\x04\x80");
    Put(expected, 182, "\x80");
    Put(expected, 190, std::string_view("\x03\x0F\x00\x01", 4));
    Put(expected, 200, "\x02");
    EXPECT_EQ(written(identity), expected);

    // A page shows each of its outputs, and where data comes in: the fourth bit is of none.
    identity.outputs = std::span(outputs).first(3);
    identity.bindIndex = 17;
    identity.dataComesIn = 0x0D;
    Put(expected, 173, "\x03\x80\x80\x80");
    Put(expected, 182, std::string_view("\x80\0\x80", 3));
    Put(expected, 190, std::string_view("\x03\x0F\x00\x00", 4));
    Put(expected, 207, std::string_view("\x02\0\0\x0A\x11", 5));
    EXPECT_EQ(written(identity), expected);
}

TEST(Reply, ANodeIsReadFromItsFirst207Bytes)
{
    // Where the packet ends before the BindIndex there is none.
    for (const auto& [size, bindIndex] :
         {std::pair(207U, 0), {211U, 0}, {212U, 0xAB}, {239U, 0xAB}, {1024U, 0xAB}})
    {
        const auto reply = ReadPollReply(Span(NodeReply(size)), 0x0200000A);
        ASSERT_TRUE(reply) << size;
        EXPECT_EQ(reply->node.Name(), "A long name");
        EXPECT_EQ(reply->node.Ip(), "2.0.0.10"); // not what the packet says
        // Ports that can't output are passed over, whatever the count says; repeats stay.
        EXPECT_EQ(std::vector<int>(reply->node.universes.begin(), reply->node.universes.end()),
                  (std::vector<int>{0x131, 0x133, 0x131}));
        EXPECT_EQ(reply->bindIndex, bindIndex);
        EXPECT_EQ(reply->switches, 0x131231U);
    }
    EXPECT_FALSE(ReadPollReply(Span(NodeReply(206)), 0x0200000A));
}

TEST(Reply, TheNameIsTheLongOneOrElseTheShort)
{
    using Case = std::array<std::string, 3>; // "ignored": our own family takes no output
    for (const auto& [shortName, longName, read] :
         {Case{"Short", "", "Short"}, Case{"", "", ""},
          Case{std::string(18, 's'), "", std::string(18, 's')}, // no room for a zero
          Case{"", std::string(64, 'l'), std::string(64, 'l')},
          Case{"", "Caf\xE9", "Caf\xE9"}, // any encoding passes through
          Case{"Zentri PixelWeft", "x", "ignored"}, Case{"LoomTap", "Stage left", "ignored"},
          Case{"x", "My ReelCommand 5", "ignored"}, Case{"loomtap", "pixelweft", "pixelweft"},
          Case{"ReelComman", "d", "d"}, Case{"x", std::string("y\0PixelWeft", 11), "y"}})
    {
        Bytes reply = NodeReply();
        std::fill(reply.begin() + 26, reply.begin() + 108, std::uint8_t{0});
        Put(reply, 26, shortName);
        Put(reply, 44, longName);
        const auto node = ReadPollReply(Span(reply), 1);
        EXPECT_EQ(node ? node->node.Name() : "ignored", read);
    }
}

} // namespace
