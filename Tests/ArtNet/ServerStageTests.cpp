// SPDX-License-Identifier: MIT
// One server on the wire: what it sends, hears and answers.
#include "ArtNet/ArtNetClient.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <gsl/narrow>

#include "ArtNetStage.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;
using Page = std::array<std::uint8_t, 512>;

Page Read(const ArtNetClient& client, std::int32_t universe)
{
    Page page;
    page.fill(0xEE);
    client.ReadDmx(universe, page);
    return page;
}

TEST_F(ArtNetStage, PollsGoToEachTargetAfterTwoAndAHalfSeconds)
{
    const auto rig = RigSocket();
    const std::int64_t begin = WallClock();
    const ArtNetClient first("2.0.0.1", "2.255.255.255", "test");
    const ArtNetClient second("2.0.0.1", "2.255.255.255", "test");
    const ArtNetClient nobody("2.0.0.1", "", "test");
    const ArtNetClient wrong("2.0.0.1", "2.0.0.300", "test");
    for (int target = 0; target < 2; ++target) {
        const auto poll = rig->Next(5s);
        ASSERT_TRUE(poll);
        EXPECT_EQ(poll->bytes, ArtNetBytes::Poll());
        EXPECT_EQ(poll->source, Desk0);
        EXPECT_EQ(poll->port, 6454);
        EXPECT_EQ(poll->destination, Broadcast0);
        EXPECT_GE(poll->arrived - begin, 2'490'000'000) << "never at once";
    }
    EXPECT_TRUE(rig->All(100ms).empty());
    EXPECT_GE(log_.Count("exception: 2.0.0.300 is no address to poll"), 1);
    // The polls came back to us and are no sign of life.
    EXPECT_EQ(first.GetLastReceiveTime(), 0);
}

TEST_F(ArtNetStage, NodesComeAtATick)
{
    const ArtNetClient client("2.0.0.1", "2.255.255.255", "test");
    const auto first = RigSocket(Rig0);
    const auto second = RigSocket(Rig0 + 1);
    ArtNetNodeList nodes;
    second->Send(Desk0, Reply("second", 2));
    first->Send(Broadcast0, Reply("first")); // as older nodes do
    first->Send(Desk0, Reply("My LoomTap"));
    EXPECT_TRUE(ComesTrue([&] { return client.GetLastReceiveTime() != 0; }));
    EXPECT_EQ(client.GetNodes(nodes), 0U);
    EXPECT_TRUE(ComesTrue([&] { return client.GetNodes(nodes) == 1; }));
    ASSERT_EQ(nodes.size(), 2U);
    EXPECT_EQ(nodes[0].Name(), "second");
    EXPECT_EQ(nodes[0].Ip(), "2.0.0.11");
    EXPECT_EQ(nodes[0].universes.size(), 2U);
    EXPECT_EQ(nodes[1].Name(), "first");
}

TEST_F(ArtNetStage, DmxOfItsInterfaceIsHeardByUnicastAndBroadcast)
{
    const ArtNetClient client("2.0.0.1", "", 0x7FFE, 2, "test");
    const ArtNetClient other("10.0.0.1", "", 0x7FFE, 2, "test");
    const auto rig = RigSocket();
    const Page black{};
    EXPECT_EQ(Read(client, 0x7FFE), black);
    rig->Send(Desk0, Dmx(0x7FFE, Bytes(512, 5)));
    rig->Send(Broadcast0, Dmx(0x7FFF, {1, 2, 3}));
    Page expected{1, 2, 3};
    EXPECT_TRUE(ComesTrue([&] { return Read(client, 0x7FFF) == expected; }));
    Page full;
    full.fill(5);
    EXPECT_EQ(Read(client, 0x7FFE), full);
    EXPECT_EQ(Read(client, 0x7FFD), black); // nobody asked for it
    EXPECT_EQ(Read(other, 0x7FFE), black);

    // A short packet blanks what it does not carry, and a length that lies does no harm.
    rig->Send(Desk0, Dmx(0x7FFE, {9}));
    Bytes lying = Dmx(0xFFFF, Bytes(100, 7)); // with the top bit set too
    lying[16] = 2;
    lying[17] = 0;
    rig->Send(Desk0, lying);
    Page hundred{};
    std::fill_n(hundred.begin(), 100, std::uint8_t{7});
    EXPECT_TRUE(ComesTrue([&] { return Read(client, 0x7FFF) == hundred; }));
    EXPECT_EQ(Read(client, 0x7FFE), Page{9});

    // What nobody asked for is no sign of life.
    const std::int64_t before = client.GetLastReceiveTime();
    rig->Send(Desk0, Dmx(1, Bytes(512, 5)));
    rig->Send(Desk0, Bytes{1, 2, 3});
    rig->Send(Desk0, {});
    rig->Send(Desk0, Dmx(0x7FFF, {8}));
    EXPECT_TRUE(ComesTrue([&] { return Read(client, 0x7FFF) == Page{8}; }));
    rig->Send(Desk0, Dmx(1, {}));
    EXPECT_GT(client.GetLastReceiveTime(), before);
}

TEST_F(ArtNetStage, DmxLeavesFromTheInterfaceAndThePort)
{
    ArtNetClient client("2.0.0.1", "", "test");
    ArtNetClient other("10.0.0.1", "", "test");
    const auto rig = RigSocket();
    const Bytes channels(512, 3);
    client.SendDmx("2.0.0.12", 0x1234, channels);
    client.SendDmx("2.255.255.255", 1, Bytes{1});
    other.SendDmx("10.255.255.255", 2, {});
    auto heard = rig->All(300ms);
    std::ranges::sort(heard, {}, &Heard::destination);
    ASSERT_EQ(heard.size(), 3U);
    EXPECT_EQ(heard[0].destination, Rig0 + 2);
    EXPECT_EQ(heard[0].bytes, Dmx(0x1234, channels));
    EXPECT_EQ(heard[1].destination, Broadcast0);
    EXPECT_EQ(heard[1].bytes, Dmx(1, {1, 0}));
    EXPECT_EQ(heard[2].destination, Broadcast1);
    EXPECT_EQ(heard[2].source, Desk1);
    EXPECT_EQ(heard[2].bytes, Dmx(2, {}));
    for (const Heard& packet : heard)
        EXPECT_EQ(packet.port, 6454);
    for (const char* text : {"", "2.0.0", "2.0.0.256", "host", "2.0.0.1 "})
        EXPECT_THROW(client.SendDmx(text, 1, {}), std::invalid_argument) << text;
    EXPECT_THROW(client.SendDmx("2.0.0.10", 65536, {}), gsl::narrowing_error);
    EXPECT_THROW(client.SendDmx("2.0.0.10", -1, {}), gsl::narrowing_error);
    EXPECT_FALSE(client.GetLastSendError().code);
}

TEST_F(ArtNetStage, OurOwnBroadcastIsNoInput)
{
    ArtNetClient everywhere("", "", 1, 1, "test");
    const auto rig = RigSocket();
    // The server learns its own addresses on the I/O thread, just after it has started.
    EXPECT_TRUE(ComesTrue([&] {
        everywhere.SendDmx("2.255.255.255", 1, Bytes{0xAA});
        return !rig->All(20ms).empty();
    }));
    rig->Send(Desk0, Dmx(1, {0x55, 0}));
    EXPECT_TRUE(ComesTrue([&] { return Read(everywhere, 1) == Page{0x55}; }));
    for (int i = 0; i < 10; ++i)
        everywhere.SendDmx("2.255.255.255", 1, Bytes{0xAA});
    EXPECT_GE(rig->All(200ms).size(), 10U);
    EXPECT_EQ(Read(everywhere, 1), Page{0x55});
    // Another program on this machine is not us.
    const Socket neighbour(0, 0);
    neighbour.Send(Broadcast0, Dmx(1, {0x66, 0}));
    EXPECT_TRUE(ComesTrue([&] { return Read(everywhere, 1) == Page{0x66}; }));
}

TEST_F(ArtNetStage, AFailedSendIsKeptAndLoggedOnce)
{
    ArtNetClient client("", "", "test");
    EXPECT_EQ(client.GetLastSendError().time, 0);
    const std::string words = "Network is unreachable";
    for (int i = 0; i < 20; ++i)
        client.SendDmx("192.168.77.1", 1, Bytes{1});
    EXPECT_TRUE(ComesTrue([&] { return client.GetLastSendError().time != 0; }));
    EXPECT_EQ(client.GetLastSendError().code, std::errc::network_unreachable);
    EXPECT_TRUE(ComesTrue([&] { return log_.Has(words); }));
    EXPECT_LE(log_.Count(words), 2);
    // The error stays after a success.
    const std::int64_t time = client.GetLastSendError().time;
    const auto rig = RigSocket();
    client.SendDmx("2.0.0.10", 1, Bytes{1});
    ASSERT_TRUE(rig->Next(2s));
    EXPECT_GE(client.GetLastSendError().time, time);
    EXPECT_TRUE(client.GetLastSendError().code);
}

} // namespace
