// SPDX-License-Identifier: MIT
// Which sockets there are as clients come and go, and what becomes of the port. What the program
// does when an adapter goes down or away is judged from end to end.
#include <optional>

#include "ArtNetStage.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;

bool PortIsFree()
{
    return Socket().IsBound();
}

TEST_F(ArtNetStage, ClientsOfOneInterfaceShareItsSocket)
{
    const auto rig = RigSocket();
    {
        ArtNetClient first("2.0.0.1", "", 1, 1, "test");
        EXPECT_EQ(log_.Messages(), List{"Creating new 2.0.0.1 server"});
        log_.Clear();
        EXPECT_FALSE(PortIsFree());
        FeedNode(first, "2.0.0.50");
        rig->Send(Desk0, Dmx(1, {7, 0}));
        EXPECT_TRUE(ComesIn(first, 1, 7));

        const ArtNetClient second("2.0.0.1", "", 2, 1, "test");
        EXPECT_EQ(log_.Messages(), List{"Recycling 2.0.0.1 server"});
        EXPECT_EQ(IpsOf(second), List{"2.0.0.50"});
        EXPECT_EQ(Read(first, 1), Page{}) << "a rebuild empties what came in";
        rig->Send(Desk0, Dmx(1, {8, 0}));
        rig->Send(Desk0, Dmx(2, {9, 0}));
        EXPECT_TRUE(ComesIn(first, 2, 9));
        EXPECT_TRUE(ComesIn(second, 1, 8));
        for (int tick = 0; tick < 4; ++tick)
            first.FeedNodes({});
        EXPECT_EQ(IpsOf(second), List{}) << "each feed is a tick";
    }
    EXPECT_TRUE(PortIsFree());
}

TEST_F(ArtNetStage, AServerOnAllInterfacesTakesOverAndGivesBack)
{
    const auto rig = RigSocket();
    ArtNetClient on0("2.0.0.1", "2.255.255.255", 1, 1, "test");
    ArtNetClient on1("10.0.0.1", "", 1, 1, "test");
    FeedNode(on1, "10.0.0.50");
    FeedNode(on0, "2.0.0.50");
    log_.Clear();
    auto everywhere = std::make_optional<ArtNetClient>("", "", 5, 1, "test");
    EXPECT_EQ(log_.Messages(),
              (List{"Creating new ALL server", "ALL server taking data from 2.0.0.1 server",
                    "ALL server taking data from 10.0.0.1 server"}));
    EXPECT_EQ(IpsOf(on0), (List{"2.0.0.50", "10.0.0.50"}));
    rig->Send(Desk0, Dmx(1, {1, 0}));
    EXPECT_TRUE(ComesIn(on0, 1, 1));
    rig->Send(Broadcast1, Dmx(1, {2, 0}));
    EXPECT_TRUE(ComesIn(on0, 1, 2));
    (void)rig->All(50ms); // the rig hears its own broadcast too
    on0.SendDmx("10.255.255.255", 3, Bytes{1});
    const auto heard = rig->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->source, Desk1);
    EXPECT_EQ(heard->port, 6454);

    log_.Clear();
    std::make_optional<ArtNetClient>("10.0.0.1", "", "test").reset();
    EXPECT_EQ(log_.Messages(), (List{"Recycling ALL server", "Recycling ALL server"}));
    log_.Clear();
    everywhere.reset();
    EXPECT_EQ(log_.Messages(),
              (List{"Creating new 2.0.0.1 server", "Creating new 10.0.0.1 server"}));
    EXPECT_EQ(IpsOf(on0), List{});
    rig->Send(Broadcast0, Dmx(1, {4, 0}));
    EXPECT_TRUE(ComesIn(on0, 1, 4));
    EXPECT_EQ(Read(on1, 1), Page{});
}

TEST_F(ArtNetStage, AnIdIsNeverUsedAgainAndAnUnknownOneChangesNothing)
{
    auto& service = *Zen::ArtNetService::Global();
    const auto first = service.RegisterClient("2.0.0.1", "", 0, 0, "a");
    const auto second = service.RegisterClient("2.0.0.1", "", 0, 0, "b");
    service.UnregisterClient(second);
    EXPECT_GT(service.RegisterClient("2.0.0.1", "", 0, 0, "c"), second);
    log_.Clear();
    service.UnregisterClient(second);
    EXPECT_EQ(log_.Messages(), List{});
    service.UnregisterClient(first);
    service.UnregisterClient(second + 1);
    EXPECT_TRUE(PortIsFree());
    log_.Clear();
    service.UnregisterClient(first);
    EXPECT_EQ(log_.Messages(), List{"Unregistering with no clients present"});
}

TEST_F(ArtNetStage, TheIdentityReachesEveryServerAndSurvivesARestart)
{
    ArtNetClient client("2.0.0.1", "", "test");
    auto& service = *Zen::ArtNetService::Global();
    service.SetNodeIdentity(1, 2, Bytes{3, 4, 5, 6, 7});
    service.RestartServers();
    const auto poller = RigSocket(0, 0);
    poller->Send(Desk0, ArtNetBytes::Poll());
    const auto reply = poller->Next(2s);
    ASSERT_TRUE(reply);
    ASSERT_EQ(reply->bytes.size(), 239U);
    EXPECT_NE(client.GetLastReceiveTime(), 0) << "a poll is a sign of life";
    EXPECT_EQ(Bytes(reply->bytes.begin() + 10, reply->bytes.begin() + 14), (Bytes{2, 0, 0, 1}));
    EXPECT_EQ(Bytes(reply->bytes.begin() + 18, reply->bytes.begin() + 20), (Bytes{1, 2}));
    EXPECT_EQ(reply->bytes[173], 4);
    EXPECT_EQ(Bytes(reply->bytes.begin() + 190, reply->bytes.begin() + 194), (Bytes{3, 4, 5, 6}));
}

TEST_F(ArtNetStage, StoppingIsSilent)
{
    const auto rig = RigSocket();
    for (int i = 0; i < 20; ++i) {
        ArtNetClient client("2.0.0.1", "2.255.255.255", 1, 1, "test");
        for (int packet = 0; packet < 20; ++packet) {
            client.SendDmx("2.0.0.10", 1, Bytes(512, 1));
            rig->Send(Desk0, ArtNetBytes::Poll());
        }
    }
    Zen::ArtNetService::SetGlobal(nullptr);
    for (const std::string& line : log_.Messages())
        EXPECT_EQ(line, "Creating new 2.0.0.1 server");
}

// Without a client that registers, the port is tried again too: that is judged from end to end.
TEST_F(ArtNetStage, ARegistrationTriesATakenPortAtOnceAndKeepsTheNodes)
{
    for (const char* interface : {"2.0.0.1", ""}) {
        auto holder = std::make_unique<Socket>();
        ArtNetClient client(interface, "", "test");
        EXPECT_EQ(log_.Count("failed to bind socket: Address already in use"), 1);
        FeedNode(client, "2.0.0.50");
        holder.reset();
        const ArtNetClient again(interface, "", "test");
        EXPECT_FALSE(PortIsFree());
        EXPECT_EQ(IpsOf(again), List{"2.0.0.50"});
        log_.Clear();
    }
}

TEST_F(ArtNetStage, BroadcastIsHeardAgainWhenTheProgramThatWasInTheWayIsGone)
{
    const auto rig = RigSocket();
    auto visualiser = std::make_unique<Socket>(Loopback);
    ASSERT_TRUE(visualiser->IsBound());
    const ArtNetClient client("2.0.0.1", "", 1, 1, "test");
    const std::string words = "No socket of our own on adapter art0: Address already in use. "
                              "Listening to unicast at 2.0.0.1 only";
    rig->Send(Broadcast0, Dmx(1, {4, 0}));
    rig->Send(Desk0, Dmx(1, {5, 0}));
    EXPECT_TRUE(ComesIn(client, 1, 5));
    {
        // A third program holds the port at the machine's other address, and is not us.
        const Socket neighbour(Desk1);
        ASSERT_TRUE(neighbour.IsBound());
        neighbour.Send(Desk0, Dmx(1, {7, 0}));
        EXPECT_TRUE(ComesIn(client, 1, 7));
    }
    std::make_optional<ArtNetClient>("2.0.0.1", "", "test").reset();
    EXPECT_EQ(log_.Count(words), 1) << "the same failure again is not logged";
    visualiser.reset();
    const ArtNetClient again("2.0.0.1", "", "test");
    rig->Send(Broadcast0, Dmx(1, {6, 0}));
    EXPECT_TRUE(ComesIn(client, 1, 6));
}

TEST_F(ArtNetStage, AnAddressThatNobodyHasIsAFailureAndNoMore)
{
    const ArtNetClient absent("192.168.99.1", "", 1, 1, "test");
    EXPECT_TRUE(log_.Has("failed to bind socket: Cannot assign requested address"));
    log_.Clear();
    const ArtNetClient junk("not an address", "", "test");
    EXPECT_TRUE(log_.Has("failed to bind socket: Cannot assign requested address"));
    const ArtNetClient loopback("127.0.0.1", "", 1, 1, "test");
    const Socket peer(Loopback, 0);
    peer.Send(Loopback, Dmx(1, {6, 0}));
    EXPECT_TRUE(ComesIn(loopback, 1, 6));
    EXPECT_EQ(Read(absent, 1), Page{});
}

TEST_F(ArtNetStage, TwoAddressesOfOneCardShareItsSocket)
{
    ASSERT_TRUE(Command("desk", "ip addr add 192.168.5.1/24 brd + dev art1"));
    ASSERT_TRUE(Command("rig", "ip addr add 192.168.5.10/24 brd + dev art1"));
    const auto rig = RigSocket();
    auto output = std::make_optional<ArtNetClient>("10.0.0.1", "10.255.255.255", 3, 1, "test");
    auto input = std::make_optional<ArtNetClient>("192.168.5.1", "", 7, 1, "test");
    FeedNode(*output, "10.0.0.50");
    for (const std::uint32_t address : {0xC0A80501U, 0xC0A805FFU, Broadcast1}) {
        rig->Send(address, Dmx(7, {static_cast<std::uint8_t>(address % 100), 0}));
        EXPECT_TRUE(ComesIn(*input, 7, static_cast<std::uint8_t>(address % 100)));
    }
    // The network is chosen again, and then the second address alone.
    output.emplace("10.0.0.1", "10.255.255.255", 3, 1, "test");
    output.reset();
    EXPECT_EQ(IpsOf(*input), List{"10.0.0.50"}) << "the nodes of the card stay known";
    (void)rig->All(50ms);
    input->SendDmx("192.168.5.10", 1, Bytes{5, 6});
    const auto heard = rig->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->source, 0xC0A80501U);
    EXPECT_EQ(heard->port, 6454);
    EXPECT_EQ(log_.Count("Creating new 10.0.0.1 server"), 1);

    ASSERT_TRUE(Command("desk", "ip addr del 192.168.5.1/24 dev art1"));
    ASSERT_TRUE(Command("rig", "ip addr del 192.168.5.10/24 dev art1"));
}

} // namespace
