// SPDX-License-Identifier: MIT
// What a server on the network sends, hears and keeps, which servers there are as clients come and
// go, and what becomes of the port. The bytes that leave, their rate, and what the program does
// when an adapter goes down or away or the port is taken, are judged from end to end.
#include <algorithm>
#include <optional>
#include <stdexcept>
#include <thread>
#include <tuple>

#include "ArtNetStage.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;

// Polls on the chosen interface are judged from end to end.
TEST_F(ArtNetStage, PollsOnAllInterfacesGoOutAfterTwoAndAHalfSecondsAndNodesShowThen)
{
    const auto rig = RigSocket();
    const std::int64_t begin = WallClock();
    const ArtNetClient client("", "2.255.255.255", "test");
    const ArtNetClient same("", "2.255.255.255", "test");
    const ArtNetClient silent("", "", "test");
    const ArtNetClient wrong("", "2.0.0.300", "test");
    RigSocket(Rig0 + 1, 0)->Send(Desk0, Reply("second"));
    EXPECT_TRUE(ComesTrue([&] { return client.GetLastReceiveTime() != 0; }));
    rig->Send(Broadcast0, Reply("first")); // as older nodes do
    (void)rig->All(50ms);                  // its own broadcast
    EXPECT_EQ(IpsOf(client), List{});

    const std::int64_t received = client.GetLastReceiveTime();
    for (int target = 0; target < 2; ++target) {
        const auto poll = rig->Next(5s);
        ASSERT_TRUE(poll);
        EXPECT_EQ(poll->destination, Broadcast0);
        EXPECT_GE(poll->arrived - begin, 2'490'000'000) << "never at once";
    }
    EXPECT_TRUE(rig->All(100ms).empty());
    EXPECT_EQ(client.GetLastReceiveTime(), received) << "our own polls come back to us";
    EXPECT_EQ(IpsOf(client), (List{"2.0.0.11", "2.0.0.10"}));
}

TEST_F(ArtNetStage, ANodeHasTheUniversesOfAllItsReplies)
{
    ArtNetClient client("2.0.0.1", "", "test");
    const auto rig = RigSocket();
    Bytes page = Reply("node", 4);
    for (std::uint8_t bindIndex = 1; bindIndex < 3; ++bindIndex) {
        page[19] = page[211] = bindIndex;
        rig->Send(Desk0, page);
    }
    ArtNetNodeList nodes;
    EXPECT_TRUE(ComesTrue([&] {
        client.FeedNodes({}); // counts as a poll
        client.GetNodes(nodes);
        return nodes.size() == 1 && nodes[0].universes.size() == 8;
    }));
    EXPECT_EQ(std::vector<int>(nodes[0].universes.begin(), nodes[0].universes.end()),
              (std::vector<int>{16, 17, 18, 19, 32, 33, 34, 35}));
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
    RigSocket(Rig1, 0)->Send(0xFFFFFFFF, Dmx(0x7FFE, {3}));
    EXPECT_TRUE(ComesIn(other, 0x7FFE, 3));
    EXPECT_NE(Read(client, 0x7FFE), Page{3}) << "of the other interface";
    rig->Send(Desk0, Dmx(0x7FFE, {9}));
    EXPECT_TRUE(ComesIn(client, 0x7FFE, 9)) << "a short packet blanks the other channels";

    EXPECT_EQ(client.GetTraffic().taken, 3U);
    EXPECT_EQ(client.GetTraffic().universesIn, 2);
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
    EXPECT_EQ(client.GetTraffic().taken, 4U);
    rig->Send(Desk0, ArtNetBytes::Poll());
    EXPECT_TRUE(ComesTrue([&] { return client.GetLastReceiveTime() > after; }));
    EXPECT_EQ(client.GetTraffic().taken, 4U) << "a poll is no DMX";
}

void ChangeAddress(const std::string& from, const std::string& to)
{
    ASSERT_TRUE(Command("desk", "ip addr del " + from + "/8 dev art0"));
    ASSERT_TRUE(Command("desk", "ip addr add " + to + "/8 brd + dev art0"));
}

TEST_F(ArtNetStage, AReplyNamesTheAddressThatThePollerReachesUsAt)
{
    const auto rig = RigSocket();
    const auto named = [&](std::uint32_t desk) {
        rig->Send(desk, ArtNetBytes::Poll());
        const auto reply = rig->Next(2s);
        return reply ? Bytes(reply->bytes.begin() + 10, reply->bytes.begin() + 14) : Bytes{};
    };
    ASSERT_TRUE(Command("desk", "ip addr add 192.168.5.1/24 brd + dev art0"));
    ASSERT_TRUE(Command("rig", "ip addr add 192.168.5.10/24 brd + dev art0"));
    auto client = std::make_optional<ArtNetClient>("2.0.0.1", "", "test");
    EXPECT_EQ(named(Desk0), (Bytes{2, 0, 0, 1}));
    client.emplace("192.168.5.1", "", "test");
    EXPECT_EQ(named(0xC0A80501), (Bytes{192, 168, 5, 1})) << "the card's other address";
    client.emplace("", "", "test");
    EXPECT_EQ(named(0xC0A80501), (Bytes{192, 168, 5, 1}));
    EXPECT_EQ(named(Desk1), (Bytes{10, 0, 0, 1}));
    ChangeAddress("2.0.0.1", "2.0.0.5");
    EXPECT_EQ(named(0x02000005), (Bytes{2, 0, 0, 5}));
    ChangeAddress("2.0.0.5", "2.0.0.1");
    ASSERT_TRUE(Command("desk", "ip addr del 192.168.5.1/24 dev art0"));
    ASSERT_TRUE(Command("rig", "ip addr del 192.168.5.10/24 dev art0"));
}

TEST_F(ArtNetStage, ASendThatCannotBeIsThrownOrKeptAndLoggedOnce)
{
    ArtNetClient client("", "", "test");
    EXPECT_THROW(client.SendDmx("host", 1, {}), std::invalid_argument);
    EXPECT_EQ(client.GetLastSendError().time, 0);
    for (int i = 0; i < 20; ++i)
        client.SendDmx("192.168.77.1", 1, Bytes{1});
    EXPECT_TRUE(ComesTrue([&] { return client.GetLastSendError().time != 0; }));
    EXPECT_EQ(client.GetLastSendError().code, std::errc::network_unreachable);
    EXPECT_GT(client.GetTraffic().failed, 0U);
    EXPECT_EQ(client.GetTraffic().sent, 0U);
    EXPECT_TRUE(log_.Has("Network is unreachable"));
    EXPECT_LE(log_.Count("Network is unreachable"), 2);
    const auto rig = RigSocket();
    client.SendDmx("2.0.0.10", 1, Bytes{1});
    ASSERT_TRUE(rig->Next(2s));
    EXPECT_TRUE(client.GetLastSendError().code) << "it stays after a success";
    EXPECT_TRUE(ComesTrue([&] { return client.GetTraffic().sent == 1; }));
}

TEST_F(ArtNetStage, AFrameOfManyUniversesToOneNodeArrivesInGroupsAndItsSyncLast)
{
    constexpr std::size_t universes = 64;
    const auto rig = RigSocket(Rig0);
    const auto others = RigSocket(Rig0 + 1);
    const auto all = RigSocket(Broadcast0);
    ArtNetClient client("2.0.0.1", "", "test");
    // The first packet makes the node known to the system, and may be too late on a busy machine.
    // The system begins to note arrivals a moment after a socket asks for it: until then a packet
    // has the time at which it was read.
    for (const auto& [node, socket] : {std::pair("2.0.0.10", &*rig), {"2.0.0.11", &*others}})
        ASSERT_TRUE(Stage::ComesTrue([&client, to = node, at = socket] {
            client.SendDmx(to, 1, Bytes{1});
            std::this_thread::sleep_for(20ms);
            const auto heard = at->Next(100ms);
            return heard && Stage::WallClock() - heard->arrived > 10'000'000;
        }));
    (void)rig->All(20ms);
    (void)others->All(20ms);

    client.BeginFrame(1'000'000'000);
    for (std::size_t i = 0; i < universes; ++i) {
        client.SendDmx("2.0.0.10", static_cast<std::int32_t>(i), Bytes{1});
        if (i < 10)
            client.SendDmx("2.0.0.11", static_cast<std::int32_t>(i), Bytes{1});
    }
    client.EndFrame("2.255.255.255");
    const auto sync = all->Next(2s);
    ASSERT_TRUE(sync);
    EXPECT_EQ(sync->bytes, (Bytes{'A', 'r', 't', '-', 'N', 'e', 't', 0, 0, 0x52, 0, 14, 0, 0}));
    const auto heard = rig->All(50ms);
    ASSERT_EQ(heard.size(), universes);
    for (std::size_t i = 0; i < universes; ++i)
        EXPECT_EQ(heard[i].bytes[14], i);
    EXPECT_GE(sync->arrived, heard.back().arrived);
    // Three pauses of 1.25 ms; the machine may have taken some of the first group's time.
    EXPECT_GE(heard.back().arrived - heard.front().arrived, 2'750'000);
    const auto few = others->All(50ms);
    ASSERT_EQ(few.size(), 10U);
    EXPECT_LT(few.back().arrived, heard.back().arrived);
}

// ---- Servers ------------------------------------------------------------------------------------

bool PortIsFree()
{
    return Socket().IsBound();
}

TEST_F(ArtNetStage, EachAddressOfACardIsHeardAndSentFromForItself)
{
    ASSERT_TRUE(Command("desk", "ip addr add 192.168.5.1/24 brd + dev art1"));
    ASSERT_TRUE(Command("rig", "ip addr add 192.168.5.10/24 brd + dev art1"));
    const auto rig = RigSocket(Rig1);
    auto first = std::make_optional<ArtNetClient>("10.0.0.1", "10.255.255.255", 3, 1, "test");
    EXPECT_FALSE(PortIsFree());
    FeedNode(*first, "10.0.0.50");
    auto second = std::make_optional<ArtNetClient>("192.168.5.1", "", 3, 1, "test");
    std::uint8_t value = 0;
    for (const auto& [to, atFirst, atSecond] : {std::tuple(Desk1, true, false),
                                                {Broadcast1, true, false},
                                                {0xC0A80501U, false, true},
                                                {0xC0A805FFU, false, true},
                                                {0xFFFFFFFFU, true, true}})
    {
        rig->Send(to, Dmx(3, {++value, 0}));
        EXPECT_TRUE(ComesIn(atFirst ? *first : *second, 3, value)) << to;
        EXPECT_EQ(atFirst && atSecond, ComesIn(atFirst ? *second : *first, 3, value, 20ms)) << to;
    }
    const auto peer = RigSocket(0xC0A8050A);
    second->SendDmx("192.168.5.10", 1, Bytes{5, 6});
    const auto heard = peer->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->source, 0xC0A80501U);
    EXPECT_EQ(heard->port, 6454);

    // The network is chosen again.
    std::optional<ArtNetClient> again(std::in_place, "10.0.0.1", "10.255.255.255", 3, 1, "test");
    EXPECT_EQ(Read(*again, 3), Page{}) << "a rebuild empties what came in";
    first.reset();
    EXPECT_EQ(log_.Count("Creating new 10.0.0.1 server"), 1);
    EXPECT_EQ(IpsOf(*again), List{"10.0.0.50"}) << "the nodes stay known";
    for (int tick = 0; tick < 4; ++tick)
        again->FeedNodes({});
    EXPECT_EQ(IpsOf(*again), List{}) << "each feed is a tick";
    again.reset();
    second.reset();
    EXPECT_TRUE(PortIsFree());
    ASSERT_TRUE(Command("desk", "ip addr del 192.168.5.1/24 dev art1"));
    ASSERT_TRUE(Command("rig", "ip addr del 192.168.5.10/24 dev art1"));
}

TEST_F(ArtNetStage, AServerOnAllInterfacesTakesOverAndGivesBack)
{
    const auto rig = RigSocket();
    ArtNetClient on0("2.0.0.1", "2.255.255.255", 1, 1, "test");
    ArtNetClient on1("10.0.0.1", "", 1, 1, "test");
    FeedNode(on1, "10.0.0.50");
    FeedNode(on0, "2.0.0.50");
    auto everywhere = std::make_optional<ArtNetClient>("", "", 5, 2, "test");
    EXPECT_EQ(IpsOf(on0), (List{"2.0.0.50", "10.0.0.50"}));
    rig->Send(Desk0, Dmx(5, {3, 0}));
    EXPECT_TRUE(ComesIn(on0, 5, 3));
    rig->Send(Broadcast1, Dmx(1, {4, 0}));
    EXPECT_TRUE(ComesIn(on0, 1, 4));
    (void)rig->All(50ms); // the rig hears its own broadcast too
    on0.SendDmx("127.0.0.1", 6, Bytes{1});
    on0.SendDmx("10.255.255.255", 1, Bytes{1});
    const auto heard = rig->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->source, Desk1);
    EXPECT_EQ(heard->port, 6454);
    rig->Send(Desk0, Dmx(5, {9, 0}));
    EXPECT_TRUE(ComesIn(on0, 5, 9));
    EXPECT_EQ(Read(on0, 1), Page{4}) << "what we send is no input";
    EXPECT_EQ(Read(on0, 6), Page{});

    everywhere.reset();
    EXPECT_EQ(IpsOf(on0), List{});
    rig->Send(Broadcast0, Dmx(1, {4, 0}));
    EXPECT_TRUE(ComesIn(on0, 1, 4));
    EXPECT_EQ(Read(on1, 1), Page{});
}

TEST_F(ArtNetStage, TheSecondOfTwoConsolesIsReportedAndWeAreNone)
{
    using Conflicts = std::vector<ArtNetSourceConflict>;
    const auto rig = RigSocket();
    const auto first = RigSocket(Rig0, 0);
    const auto second = RigSocket(Rig0 + 1, 0);
    {
        // What we send comes back, from an address that we have had for a moment only.
        ArtNetClient everywhere("", "", 1, 2, "test", true);
        ChangeAddress("2.0.0.1", "2.0.0.5");
        everywhere.SendDmx("2.255.255.255", 1, Bytes{7, 7});
        everywhere.SendDmx("2.255.255.255", 9, Bytes{7, 7}); // which nobody keeps
        ASSERT_TRUE(rig->Next(2s));
        second->Send(0x02000005, Dmx(9, {3, 0}));
        second->Send(0x02000005, Dmx(1, {3, 0}));
        EXPECT_TRUE(ComesIn(everywhere, 1, 3)) << "we are no console";
        EXPECT_EQ(everywhere.GetOtherSenders(), (std::vector<ArtNetOtherSender>{{9, Rig0 + 1}}));
        ChangeAddress("2.0.0.5", "2.0.0.1");
    }
    const ArtNetClient client("2.0.0.1", "", 1, 2, "test", true);
    const ArtNetClient other("2.0.0.1", "", 5, 1, "test");
    first->Send(Desk0, Dmx(2, {1, 0}));
    EXPECT_TRUE(ComesIn(client, 2, 1));
    second->Send(Broadcast0, Dmx(2, {2, 0}));
    const Conflicts conflicts{{2, Rig0, Rig0 + 1}};
    EXPECT_TRUE(ComesTrue([&] { return client.GetSourceConflicts() == conflicts; }));
    EXPECT_EQ(Read(client, 2), Page{1});
    EXPECT_EQ(other.GetSourceConflicts(), Conflicts{});
    EXPECT_TRUE(ComesTrue([this] {
        return log_.Has(
            "2.0.0.10 and 2.0.0.11 both send Port-Address 2: the first one counts until "
            "it is silent for 2.5 s");
    }));

    // Another program on this machine is not us.
    const Socket neighbour(0, 0);
    neighbour.Send(Broadcast0, Dmx(5, {6, 0}));
    EXPECT_TRUE(ComesIn(other, 5, 6));
}

/// The replies that come in this time: Net and Sub-Net, BindIndex, and for each port its universe,
/// with '!' where data comes in.
std::vector<std::string> Offers(const Socket& rig, std::chrono::milliseconds time,
                                std::uint32_t destination)
{
    std::vector<std::string> offers;
    for (const Heard& heard : rig.All(time)) {
        const Bytes& reply = heard.bytes;
        if (reply.size() != 239 || reply[9] != 0x21 || heard.destination != destination)
            continue;
        EXPECT_EQ(heard.source, Desk0);
        std::string text =
            std::to_string(reply[18] * 16 + reply[19]) + '#' + std::to_string(reply[211]);
        for (std::size_t i = 0; i < reply[173]; ++i) {
            EXPECT_EQ(reply[174 + i], 0x80);
            text += ' ' + std::to_string(reply[190 + i]) + (reply[182 + i] == 0x80 ? "!" : "");
        }
        offers.push_back(text);
    }
    return offers;
}

TEST_F(ArtNetStage, ReceivedUniversesAreOfferedToWhoeverAsksAndToAllWhenTheyChange)
{
    const auto rig = RigSocket();
    const ArtNetClient output("2.0.0.1", "2.255.255.255", "test");
    const ArtNetClient kept("2.0.0.1", "", 0, 1, "test");
    rig->Send(Desk0, ArtNetBytes::Poll());
    const auto plain = rig->Next(2s);
    ASSERT_TRUE(plain);
    auto input = std::make_optional<ArtNetClient>("2.0.0.1", "", 14, 4, "test", true);
    EXPECT_EQ(Offers(*rig, 1200ms, Broadcast0), (List{"0#1 14 15", "1#2 0 1"}));
    rig->Send(Desk0, Dmx(17, {1}));
    rig->Send(Broadcast0, ArtNetBytes::Poll());
    EXPECT_EQ(Offers(*rig, 200ms, Rig0), (List{"0#1 14 15", "1#2 0 1!"}));
    // Changes in a row are told at most once a second, and the last of them is.
    for (const int count : {1, 2, 3, 2, 1})
        input.emplace("2.0.0.1", "", 14, count, "test", true);
    const List told = Offers(*rig, 2200ms, Broadcast0);
    EXPECT_LE(told.size(), 2U);
    EXPECT_EQ(told.empty() ? "" : told.back(), "0#1 14");
    input.reset();
    const auto heard = rig->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->bytes, plain->bytes) << "no longer offered";
    EXPECT_EQ(heard->destination, Broadcast0);
    EXPECT_EQ(Offers(*rig, 1200ms, Broadcast0), List{});
}

TEST_F(ArtNetStage, WhatAnotherProgramKeepsFromUsIsHeardWithinASecondOfItsEnd)
{
    const auto rig = RigSocket();
    struct Case
    {
        std::uint32_t taken; ///< the other program's address
        bool unicast, broadcast;
        const char* said;
    };
    for (const Case& other :
         {Case{Loopback, true, true, ""},
          {Broadcast0, true, false,
           "Not listening to broadcasts to 2.255.255.255 on adapter art0: Address already in use"},
          {0, false, false, "failed to bind socket: Address already in use"}})
    {
        auto program = std::make_optional<Socket>(other.taken);
        ArtNetClient client("2.0.0.1", "", 1, 1, "test");
        log_.Clear();
        EXPECT_TRUE(program->All(700ms).empty()); // it is tried again meanwhile
        EXPECT_EQ(log_.Count(other.said), 0) << "the same failure again is not logged";
        rig->Send(Desk0, Dmx(1, {4, 0}));
        EXPECT_EQ(ComesIn(client, 1, 4, 50ms), other.unicast) << other.taken;
        rig->Send(Broadcast0, Dmx(1, {5, 0}));
        EXPECT_EQ(ComesIn(client, 1, 5, 50ms), other.broadcast) << other.taken;
        (void)program->All(0ms);
        client.SendDmx("2.0.0.10", 1, Bytes{1});
        client.SendDmx("127.0.0.1", 1, Bytes{1});
        EXPECT_EQ(program->Next(100ms).has_value(), other.taken != Broadcast0)
            << "an address of this machine is no matter of the network";
        program.reset();
        for (const std::uint32_t to : {Broadcast0, Desk0}) {
            const auto value = static_cast<std::uint8_t>(to % 100);
            EXPECT_TRUE(ComesTrue(
                [&] {
                    rig->Send(to, Dmx(1, {value, 0}));
                    return Read(client, 1) == Page{value};
                },
                1s))
                << other.taken;
        }
        const Socket sharing(0, 6454, true);
        EXPECT_TRUE(sharing.IsBound()) << "a program that shares the port can start after us";
        rig->Send(Desk0, Dmx(1, {6, 0}));
        EXPECT_TRUE(ComesIn(client, 1, 6)) << "and takes nothing from us";
    }
}

TEST_F(ArtNetStage, WithoutItsAddressNothingLeavesByAnotherAdapter)
{
    ASSERT_TRUE(Command("desk", "ip route add default via 10.0.0.10"));
    const auto rig = RigSocket();
    const auto questions = RigSocket(0, 9); // where hosts are asked whether they are there
    for (const bool portIsTaken : {false, true}) {
        std::optional<Socket> other;
        if (portIsTaken)
            other.emplace();
        ArtNetClient client("2.0.0.1", "2.255.255.255", "test");
        const auto isHeard = [&] {
            client.SendDmx("2.0.0.10", 1, Bytes{1});
            const auto heard = rig->Next(20ms);
            return heard && heard->source == Desk0 && (heard->port == 6454) == !portIsTaken;
        };
        EXPECT_TRUE(ComesTrue(isHeard));
        ASSERT_TRUE(Command("desk", "ip addr del 2.0.0.1/8 dev art0"));
        (void)rig->All(50ms);
        (void)questions->All(0ms);
        for (int tick = 0; tick < 30; ++tick) {
            for (const char* to : {"2.0.0.10", "2.0.0.11", "2.255.255.255"})
                client.SendDmx(to, 1, Bytes{1});
            EXPECT_TRUE(rig->All(25ms).empty());
        }
        EXPECT_TRUE(questions->All(0ms).empty());
        EXPECT_EQ(client.GetLastSendError().code, std::errc::address_not_available);
        ASSERT_TRUE(Command("desk", "ip addr add 2.0.0.1/8 brd + dev art0"));
        EXPECT_TRUE(ComesTrue(isHeard));
        // Another adapter of the same name and address, before we have seen that there was none.
        for (const auto& [host, command] :
             {std::pair("hub", "ip link del desk.0"),
              {"hub", "ip link add desk.0 type veth peer name art0 netns $STAGE_PID_desk"},
              {"hub", "ip link set desk.0 master sw0 up"},
              {"desk", "ip addr add 2.0.0.1/8 brd + dev art0"},
              {"desk", "ip link set art0 up"}})
            ASSERT_TRUE(Command(host, command));
        EXPECT_TRUE(ComesTrue(isHeard));
    }
    ASSERT_TRUE(Command("desk", "ip route del default"));
}

TEST_F(ArtNetStage, AnAddressThatNobodyHasIsAFailureAndNoMore)
{
    const auto questions = RigSocket(0, 9);
    for (const char* address : {"192.168.99.1", "not an address"}) {
        const ArtNetClient absent(address, "", 1, 1, "test");
        EXPECT_EQ(log_.Count("failed to bind socket: Cannot assign requested address"), 1);
        EXPECT_EQ(Read(absent, 1), Page{});
        log_.Clear();
    }
    ArtNetClient absent("192.168.99.1", "", "test");
    absent.SendDmx("2.0.0.13", 1, Bytes{1});
    EXPECT_TRUE(ComesTrue([&] { return absent.GetLastSendError().time != 0; }));
    EXPECT_TRUE(questions->All(50ms).empty()) << "nobody is asked for by another way";
    const ArtNetClient loopback("127.0.0.1", "", 1, 1, "test");
    const Socket peer(Loopback, 0);
    peer.Send(Loopback, Dmx(1, {6, 0}));
    EXPECT_TRUE(ComesIn(loopback, 1, 6));
}

} // namespace
