// SPDX-License-Identifier: MIT
// Which sockets there are as clients come and go, and what becomes of the port.
#include "ArtNet/ZenArtNetService.h"

#include <array>
#include <optional>

#include "ArtNet/ArtNetClient.h"
#include "ArtNetStage.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;
using Zen::ArtNetServerStatus;
using List = std::vector<std::string>;

bool PortIsFree()
{
    return Socket().IsBound();
}

ArtNetServerStatus Status()
{
    return Zen::ArtNetService::Global()->GetStatus();
}

List IpsOf(const ArtNetClient& client)
{
    ArtNetNodeList nodes;
    client.GetNodes(nodes);
    List ips;
    for (const ArtNetNodeInfo& node : nodes)
        ips.emplace_back(node.Ip());
    return ips;
}

ArtNetNodeInfo Node(const std::string& ip)
{
    ArtNetNodeInfo node;
    node.SetIp(ip);
    return node;
}

std::uint8_t FirstChannel(const ArtNetClient& client, std::int32_t universe)
{
    std::array<std::uint8_t, 512> page{};
    client.ReadDmx(universe, page);
    return page[0];
}

TEST_F(ArtNetStage, ClientsOfOneInterfaceShareItsSocket)
{
    const auto rig = RigSocket();
    {
        ArtNetClient first("2.0.0.1", "", 1, 1, "test");
        EXPECT_EQ(log_.Messages(), List{"Creating new 2.0.0.1 server"});
        log_.Clear();
        EXPECT_FALSE(PortIsFree());
        const ArtNetNodeInfo node = Node("2.0.0.50");
        first.FeedNodes({&node, 1});
        rig->Send(Desk0, Dmx(1, {7, 0}));
        EXPECT_TRUE(ComesTrue([&] { return FirstChannel(first, 1) == 7; }));

        const ArtNetClient second("2.0.0.1", "", 2, 1, "test");
        EXPECT_EQ(log_.Messages(), List{"Recycling 2.0.0.1 server"});
        EXPECT_EQ(IpsOf(second), List{"2.0.0.50"});
        EXPECT_EQ(FirstChannel(first, 1), 0); // a rebuild empties what came in
        rig->Send(Desk0, Dmx(1, {8, 0}));
        rig->Send(Desk0, Dmx(2, {9, 0}));
        EXPECT_TRUE(ComesTrue([&] { return FirstChannel(first, 2) == 9; }));
        EXPECT_EQ(FirstChannel(second, 1), 8);
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
    const ArtNetNodeInfo node0 = Node("2.0.0.50");
    const ArtNetNodeInfo node1 = Node("10.0.0.50");
    on1.FeedNodes({&node1, 1});
    on0.FeedNodes({&node0, 1});
    log_.Clear();
    auto everywhere = std::make_optional<ArtNetClient>("", "", 5, 1, "test");
    EXPECT_EQ(log_.Messages(),
              (List{"Creating new ALL server", "ALL server taking data from 2.0.0.1 server",
                    "ALL server taking data from 10.0.0.1 server"}));
    EXPECT_EQ(Status(), ArtNetServerStatus::Ready);
    const List both{"2.0.0.50", "10.0.0.50"};
    EXPECT_EQ(IpsOf(*everywhere), both);
    EXPECT_EQ(IpsOf(on0), both);
    for (const std::uint32_t address : {Desk0, Broadcast1}) {
        rig->Send(address, Dmx(1, {static_cast<std::uint8_t>(address), 0}));
        EXPECT_TRUE(
            ComesTrue([&] { return FirstChannel(on0, 1) == static_cast<std::uint8_t>(address); }));
    }
    (void)rig->All(50ms); // the rig hears its own broadcast too
    on0.SendDmx("10.255.255.255", 3, Bytes{1});
    const auto heard = rig->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->source, Desk1);
    EXPECT_EQ(heard->port, 6454);

    log_.Clear();
    {
        const ArtNetClient fourth("10.0.0.1", "", "test");
        EXPECT_EQ(log_.Messages(), List{"Recycling ALL server"});
        log_.Clear();
    }
    log_.Clear();
    everywhere.reset();
    EXPECT_EQ(log_.Messages(),
              (List{"Creating new 2.0.0.1 server", "Creating new 10.0.0.1 server"}));
    EXPECT_EQ(Status(), ArtNetServerStatus::Ready);
    EXPECT_EQ(IpsOf(on0), List{});
    rig->Send(Broadcast0, Dmx(1, {4, 0}));
    EXPECT_TRUE(ComesTrue([&] { return FirstChannel(on0, 1) == 4; }));
    EXPECT_EQ(FirstChannel(on1, 1), 0);
}

TEST_F(ArtNetStage, TheHandleIsTheRegistration)
{
    auto& service = *Zen::ArtNetService::Global();
    const auto first = service.RegisterClient("2.0.0.1", "", 0, 0, "a");
    const auto second = service.RegisterClient("2.0.0.1", "", 0, 0, "b");
    service.UnregisterClient(second);
    const auto third = service.RegisterClient("2.0.0.1", "", 0, 0, "c");
    EXPECT_LT(first, second);
    EXPECT_LT(second, third);
    log_.Clear();
    service.UnregisterClient(second);
    EXPECT_EQ(log_.Messages(), List{});
    service.UnregisterClient(first);
    service.UnregisterClient(third);
    EXPECT_TRUE(PortIsFree());
    log_.Clear();
    service.UnregisterClient(third);
    EXPECT_EQ(log_.Messages(), List{"Unregistering with no clients present"});
}

TEST_F(ArtNetStage, TheIdentityReachesEveryServerAndSurvivesARestart)
{
    ArtNetClient client("2.0.0.1", "", "test");
    auto& service = *Zen::ArtNetService::Global();
    service.SetNodeIdentity(1, 2, Bytes{3, 4, 5, 6, 7});
    service.RestartServers();
    EXPECT_EQ(Status(), ArtNetServerStatus::Ready);
    const auto poller = RigSocket(0, 0);
    poller->Send(Desk0, ArtNetBytes::Poll());
    const auto reply = poller->Next(2s);
    ASSERT_TRUE(reply);
    ASSERT_EQ(reply->bytes.size(), 239U);
    EXPECT_NE(client.GetLastReceiveTime(), 0) << "a poll is a sign of life";
    EXPECT_EQ(reply->bytes[18], 1);
    EXPECT_EQ(reply->bytes[19], 2);
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

TEST_F(ArtNetStage, APortThatAnotherHoldsIsTakenWhenItIsFree)
{
    const auto rig = RigSocket();
    auto holder = std::make_unique<Socket>();
    ASSERT_TRUE(holder->IsBound());
    ArtNetClient client("2.0.0.1", "2.255.255.255", 1, 1, "test");
    EXPECT_EQ(Status(), ArtNetServerStatus::BindFailed);
    const std::string words = "failed to bind socket: Address already in use";
    EXPECT_EQ(log_.Count(words), 1);
    // Light goes out all the same, as well as the system can.
    client.SendDmx("2.0.0.10", 1, Bytes{1});
    const auto heard = rig->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_NE(heard->port, 6454);
    std::this_thread::sleep_for(1200ms); // two more tries, and no more lines
    EXPECT_EQ(log_.Count(words), 1);

    const ArtNetNodeInfo node = Node("2.0.0.50");
    client.FeedNodes({&node, 1});
    holder.reset();
    EXPECT_TRUE(ComesTrue([] { return Status() == ArtNetServerStatus::Ready; }, 2s));
    EXPECT_TRUE(log_.Has("Port 6454 is open again on 2.0.0.1"));
    EXPECT_EQ(IpsOf(client), List{"2.0.0.50"});
    client.SendDmx("2.0.0.10", 1, Bytes{1});
    const auto again = rig->Next(2s);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->port, 6454);
    rig->Send(Broadcast0, Dmx(1, {4, 0}));
    EXPECT_TRUE(ComesTrue([&] { return FirstChannel(client, 1) == 4; }));
}

TEST_F(ArtNetStage, ChoosingTheNetworkAnewTriesThePortAtOnce)
{
    auto holder = std::make_unique<Socket>();
    for (const char* interface : {"2.0.0.1", ""}) {
        holder = nullptr;
        holder = std::make_unique<Socket>();
        const ArtNetClient client(interface, "", "test");
        EXPECT_EQ(Status(), ArtNetServerStatus::BindFailed);
        holder.reset();
        const ArtNetClient anew(interface, "", "test");
        EXPECT_EQ(Status(), ArtNetServerStatus::Ready);
    }
}

TEST_F(ArtNetStage, BroadcastIsHeardAgainWhenTheProgramThatWasInTheWayIsGone)
{
    const auto rig = RigSocket();
    auto visualiser = std::make_unique<Socket>(0x7F000001);
    ASSERT_TRUE(visualiser->IsBound());
    const ArtNetClient client("2.0.0.1", "", 1, 1, "test");
    const std::string words = "No socket of our own on adapter art0: Address already in use. "
                              "Listening to unicast at 2.0.0.1 only";
    EXPECT_EQ(log_.Count(words), 1);
    rig->Send(Broadcast0, Dmx(1, {4, 0}));
    rig->Send(Desk0, Dmx(1, {5, 0}));
    EXPECT_TRUE(ComesTrue([&] { return FirstChannel(client, 1) == 5; }));
    {
        // A third program holds the port at the machine's other address, and is not us.
        const Socket neighbour(Desk1);
        ASSERT_TRUE(neighbour.IsBound());
        neighbour.Send(Desk0, Dmx(1, {7, 0}));
        EXPECT_TRUE(ComesTrue([&] { return FirstChannel(client, 1) == 7; }));
    }
    {
        const ArtNetClient anew("2.0.0.1", "", "test");
        EXPECT_EQ(log_.Count(words), 1) << "no news";
    }
    visualiser.reset();
    const ArtNetClient anew("2.0.0.1", "", "test");
    rig->Send(Broadcast0, Dmx(1, {6, 0}));
    EXPECT_TRUE(ComesTrue([&] { return FirstChannel(client, 1) == 6; }));
}

TEST_F(ArtNetStage, AnAddressThatNobodyHasIsAFailureAndNoMore)
{
    const ArtNetClient absent("192.168.99.1", "", 1, 1, "test");
    EXPECT_TRUE(log_.Has("failed to bind socket: Cannot assign requested address"));
    const ArtNetClient junk("not an address", "", "test");
    EXPECT_EQ(Status(), ArtNetServerStatus::BindFailed);
    const ArtNetClient loopback("127.0.0.1", "", 1, 1, "test");
    const Socket peer(0x7F000001, 0);
    peer.Send(0x7F000001, Dmx(1, {6, 0}));
    EXPECT_TRUE(ComesTrue([&] { return FirstChannel(loopback, 1) == 6; }));
    EXPECT_EQ(FirstChannel(absent, 1), 0);
}

} // namespace
