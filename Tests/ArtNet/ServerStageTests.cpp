// SPDX-License-Identifier: MIT
// One server on the network: what it sends, hears and keeps. The bytes that leave, their port and
// their rate are judged from end to end.
#include <algorithm>
#include <stdexcept>

#include <gsl/narrow>

#include "ArtNetStage.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;

/// The interface of all clients, empty for all interfaces.
class Polls : public ArtNetStage, public testing::WithParamInterface<const char*>
{};
INSTANTIATE_TEST_SUITE_P(Interfaces, Polls, testing::Values("2.0.0.1", ""));

TEST_P(Polls, AreSentAfterTwoAndAHalfSecondsAndNodesShowThen)
{
    const auto rig = RigSocket();
    const auto second = RigSocket(Rig0 + 1, 0);
    const std::int64_t begin = WallClock();
    const ArtNetClient client(GetParam(), "2.255.255.255", "test");
    const ArtNetClient same(GetParam(), "2.255.255.255", "test");
    const ArtNetClient silent(GetParam(), "", "test");
    const ArtNetClient wrong(GetParam(), "2.0.0.300", "test");
    EXPECT_TRUE(log_.Has("exception: 2.0.0.300 is no address to poll"));
    second->Send(Desk0, Reply("second", 2));
    EXPECT_TRUE(ComesTrue([&] { return client.GetLastReceiveTime() != 0; }));
    rig->Send(Broadcast0, Reply("first")); // as older nodes do
    rig->Send(Desk0, Reply("My LoomTap"));
    (void)rig->All(50ms); // its own broadcast among them
    EXPECT_EQ(IpsOf(client), List{});

    const std::int64_t received = client.GetLastReceiveTime();
    for (int target = 0; target < 2; ++target) {
        const auto poll = rig->Next(5s);
        ASSERT_TRUE(poll);
        EXPECT_EQ(poll->bytes, ArtNetBytes::Poll());
        EXPECT_EQ(poll->destination, Broadcast0);
        EXPECT_GE(poll->arrived - begin, 2'490'000'000) << "never at once";
    }
    EXPECT_TRUE(rig->All(100ms).empty());
    EXPECT_EQ(client.GetLastReceiveTime(), received) << "our own polls come back to us";
    EXPECT_EQ(IpsOf(client), (List{"2.0.0.11", "2.0.0.10"}));
}

TEST_F(ArtNetStage, RegisteredUniversesOfTheInterfaceAreHeardByUnicastAndBroadcast)
{
    const ArtNetClient client("2.0.0.1", "", 0x7FFE, 3, "test"); // the third is beyond the last
    const ArtNetClient other("10.0.0.1", "", 0x7FFE, 2, "test");
    const auto rig = RigSocket();
    rig->Send(Desk0, Dmx(0x7FFE, Bytes(512, 5)));
    rig->Send(Broadcast0, Dmx(0xFFFF, {1, 0})); // the top bit of the Port-Address does not count
    EXPECT_TRUE(ComesIn(client, 0x7FFF, 1));
    EXPECT_EQ(std::ranges::count(Read(client, 0x7FFE), 5), 512);
    EXPECT_EQ(Read(other, 0x7FFE), Page{}) << "of the other interface";
    rig->Send(Desk0, Dmx(0x7FFE, {9}));
    EXPECT_TRUE(ComesIn(client, 0x7FFE, 9)) << "a short packet blanks the other channels";

    const std::int64_t before = client.GetLastReceiveTime();
    for (const Bytes& ignored : {Dmx(1, {5, 5}), Dmx(0x7FFF, {}), Bytes{1, 2, 3}, Bytes{}})
        rig->Send(Desk0, ignored);
    EXPECT_TRUE(ComesIn(client, 0x7FFF, 0)) << "no channel at all is zeros too";
    EXPECT_EQ(Read(client, 1), Page{}) << "not registered";
    const std::int64_t after = client.GetLastReceiveTime();
    EXPECT_GT(after, before);
    rig->Send(Desk0, Dmx(1, {5, 5}));
    rig->Send(Broadcast1, Dmx(0x7FFE, {6}));
    EXPECT_TRUE(ComesIn(other, 0x7FFE, 6));
    EXPECT_EQ(client.GetLastReceiveTime(), after) << "a universe that is not registered";
}

TEST_F(ArtNetStage, ASendThatCannotBeIsThrownOrKeptAndLoggedOnce)
{
    ArtNetClient client("", "", "test");
    for (const char* text : {"", "2.0.0", "2.0.0.256", "host", "2.0.0.1 "})
        EXPECT_THROW(client.SendDmx(text, 1, {}), std::invalid_argument) << text;
    for (const std::int32_t portAddress : {65536, -1})
        EXPECT_THROW(client.SendDmx("2.0.0.10", portAddress, {}), gsl::narrowing_error);
    EXPECT_EQ(client.GetLastSendError().time, 0);
    for (int i = 0; i < 20; ++i)
        client.SendDmx("192.168.77.1", 1, Bytes{1});
    EXPECT_TRUE(ComesTrue([&] { return client.GetLastSendError().time != 0; }));
    EXPECT_EQ(client.GetLastSendError().code, std::errc::network_unreachable);
    EXPECT_TRUE(log_.Has("Network is unreachable"));
    EXPECT_LE(log_.Count("Network is unreachable"), 2);
    const auto rig = RigSocket();
    client.SendDmx("2.0.0.10", 1, Bytes{1});
    ASSERT_TRUE(rig->Next(2s));
    EXPECT_TRUE(client.GetLastSendError().code) << "it stays after a success";
}

} // namespace
