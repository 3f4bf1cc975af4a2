// SPDX-License-Identifier: MIT
// The control channel as a host sees it: messages, the way from our own port to the host and back,
// the faults of hosts and sockets, and what a host passes on: its nodes, its settings and the DMX
// that it receives.
#include <algorithm>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <boost/algorithm/string/join.hpp>
#include <gtest/gtest.h>

#include "ArtNet/ZenArtNetService.h"
#include "HostStandIn/Host.h"
#include "LEDEngine/ArtNetOutput.h"
#include "LEDEngine/ArtNetTrigger.h"
#include "LEDEngine/UniverseRoute.h"
#include "Platform/IPv4.h"
#include "Show.h"
#include "Support/ArtNetBytes.h"
#include "Support/LogCapture.h"
#include "Support/Stage.h"

namespace {

using Lines = std::vector<std::string>;

/// Output and trigger as the engine has them, with a host stand-in beside them and a clock that the
/// test sets.
class HostChannel : public testing::Test
{
protected:
    HostChannel()
    {
        Zen::ArtNetService::SetGlobal(
            std::make_shared<Zen::ArtNetService>("Test", "#0001 [0001] Ready", false));
    }
    ~HostChannel() override
    {
        output.Initialize(L"", L"", L"", {}); // destroys the clients before the service
        Zen::ArtNetService::SetGlobal(nullptr);
    }

    void ChooseNetwork(const UniverseMerging& merging = {})
    {
        output.Initialize(L"2.0.0.1", L"2.255.255.255", L"2.0.0.1", merging);
    }

    /// Ticks of the program alone. On a busy machine a tick may end before all that waits is read.
    void Poll(int times = 5)
    {
        for (int i = 0; i < times; ++i)
            trigger.Poll();
    }

    /// Ticks of the program, each with one of the host behind it.
    void Tick(int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            trigger.Poll();
            host.Pump();
        }
    }

    /// Up to the state in which universes go to the host.
    void Connect(const UniverseMerging& merging = {})
    {
        ASSERT_TRUE(host.Start());
        ChooseNetwork(merging);
        for (int i = 0; i < 20 && output.GetState() != OutputState::UsingRemoteSocket; ++i)
            Tick();
        ASSERT_EQ(output.GetState(), OutputState::UsingRemoteSocket);
        (void)Received();
    }

    /// What the host received since the last call, without the messages of every tick.
    Lines Received()
    {
        host.Pump();
        Lines lines = host.TakeLines();
        std::erase(lines, "0x21 stop");
        std::erase(lines, "0x51 universes");
        return lines;
    }

    /// The names of the known nodes after the host was asked.
    std::string Refresh()
    {
        output.RefreshNodes();
        host.Pump();
        Poll();
        std::string names;
        for (const auto& node : output.GetNodes())
            names += node.Name();
        return names;
    }
    /// Merges what was received, and gives the channels of a universe.
    Bytes Merged(std::uint16_t portAddress = 16)
    {
        output.ClearUniverses();
        output.MergeInputUniverses();
        const auto& channels = output.GetUniverse(portAddress, L"Auto").channels;
        return {channels.begin(), channels.end()};
    }
    /// The same after the host answered a request.
    Bytes Asked(std::uint16_t portAddress = 16)
    {
        (void)Merged();
        host.Pump();
        Poll();
        return Merged(portAddress);
    }

    inline static std::int64_t now = 1'000'000'000;

    Support::LogCapture log;
    ArtNetTrigger trigger{output, [] {
                              return now;
                          }};
    ArtNetOutput output{trigger};
    HostStandIn::Host host;
};

/// A whole "poll" with another byte somewhere, or of another length.
Bytes PollPacket(std::size_t offset = 0, std::uint8_t value = 0x41, std::size_t length = 528)
{
    Bytes bytes = {0x41, 0x72, 0x74, 0x2D, 0x4E, 0x65, 0x74, 0x00, 0x00, 0x99,
                   0x00, 0x0E, 0x50, 0x57, 0x01, 0x11, 'p',  'o',  'l',  'l'};
    bytes[offset] = value;
    bytes.resize(length);
    return bytes;
}

TEST_F(HostChannel, Messages)
{
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    ChooseNetwork();
    Tick();
    EXPECT_EQ(host.TakeDatagrams(), (std::vector<Bytes>{PollPacket()}));
    EXPECT_EQ(host.lastSenderPort, 6455);
    // The id and the OpCode alone make a message, and a SubKey that is there.
    host.SendRaw({});
    for (const Bytes& ignored :
         {PollPacket(7, 1), PollPacket(8, 1), PollPacket(9, 0x50), PollPacket(0, 0x41, 9),
          PollPacket(0, 0x41, 15), PollPacket(15, 0x13)})
        host.SendRaw(ignored);
    for (const Bytes& answered : {PollPacket(11, 99), PollPacket(12, 0), PollPacket(14, 200),
                                  PollPacket(0, 0x41, 16), PollPacket(0, 0x41, 1584)})
        host.SendRaw(answered);
    Poll();
    EXPECT_EQ(Received(), Lines(5, "0x12 Pixel Weft"));

    Bytes values(512, 0x11);
    std::fill(values.begin() + 480, values.end(), std::uint8_t{0x22});
    const std::span<const std::uint8_t> all(values);
    trigger.SendDmx(0x1234, "2.0.0.10", all.first(480));
    trigger.SendDmx(2, "2.0.0.10", all.first(481));
    trigger.SendDmx(3, "2.255.255.255", all);
    const std::string begin = std::string(960, '1');
    EXPECT_EQ(
        Received(),
        (Lines{"universe address=4660 pair=0 to=2.0.0.10 channels=" + begin,
               "universe-begin address=2 pair=0 to=2.0.0.10 channels=" + begin,
               "universe-end address=2 pair=0 to=2.0.0.10 channels=22" + std::string(958, '1'),
               "universe-begin address=3 pair=1 to=2.255.255.255 channels=" + begin,
               "universe-end address=3 pair=1 to=2.255.255.255 channels=" + std::string(64, '2') +
                   std::string(896, '1')}));
}

TEST_F(HostChannel, TheWayToTheHostAndBack)
{
    const auto portIsFree = [] {
        return Stage::Socket(0, 6454).IsBound();
    };
    const auto sends = [this] {
        output.ClearUniverses();
        output.CopyToUniverse(3, L"Auto", 1, Bytes{255, 0, 128});
        return output.SendBroadcastUniverses().anySent;
    };
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = host.manners.rebinds = false;
    ChooseNetwork();
    Tick(12);
    EXPECT_TRUE(sends());
    EXPECT_FALSE(portIsFree());
    log.Clear();
    host.manners.answersPolls = true;
    Tick(3);
    EXPECT_FALSE(sends());
    EXPECT_TRUE(Stage::ComesTrue(portIsFree));
    EXPECT_EQ(log.Messages()[2], "Destroying local ArtNet client") << "and then it asks";
    host.manners.rebinds = true;
    Tick(16);
    EXPECT_TRUE(sends());
    EXPECT_EQ(Received().back(), "universe address=3 pair=0 to=2.255.255.255 channels=ff0080");
    output.Initialize(L"10.0.0.1", L"10.255.255.255", L"", {});
    EXPECT_EQ(Received(), (Lines{"register first=0 count=1 interface=10.0.0.1 "
                                 "broadcast=10.255.255.255 receive= name=PixelWeft"}));

    // The host is there for 5000 milliseconds and gone at 5001.
    host.manners.answersPolls = false;
    Tick(6);
    const std::int64_t last = now;
    for (const std::int64_t later : {5'000'000'000, 5'000'999'999, 5'001'000'000}) {
        EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << later;
        now = last + later;
        Tick();
    }
    EXPECT_FALSE(portIsFree());
    host.manners.answersPolls = true;
    Tick(10);
    EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << "a new socket, the same host";
}

TEST_F(HostChannel, StopStartAndReloadAreRepeatedUntilTheHostIsGone)
{
    /// Takes this message of the host, and gives what the host receives in the same tick.
    const auto tick = [this](std::uint8_t subKey) {
        (void)host.TakeLines();
        host.Send(subKey);
        Tick();
        return boost::join(host.TakeLines(), ", ");
    };
    host.withPolls = true;
    host.manners.answersPolls = host.manners.acknowledges = false;
    trigger.reloadMappingFile();
    ASSERT_TRUE(host.Start());
    Tick();
    EXPECT_EQ(tick(0x12), "0x51 universes, poll, 0x21 stop, 0x41 reload");
    trigger.disableReelCommandOrLoomTapDMX(5);
    EXPECT_EQ(tick(0x42), "poll, 0x31 start");
    EXPECT_FALSE(output.outputSuspended) << "until the host confirms";
    trigger.hostSendsDMX = 0;
    EXPECT_EQ(tick(0x32), "poll, 0x21 stop");
    EXPECT_TRUE(output.outputSuspended);
    (void)tick(0x22);
    EXPECT_FALSE(output.outputSuspended);
    (void)tick(0x32);
    host.Die();
    Poll(); // what the host sent before still counts
    now += 5'001'000'000;
    Poll(1);
    EXPECT_FALSE(output.outputSuspended);
    ASSERT_TRUE(host.Start());
    Tick(); // opens the new socket
    EXPECT_EQ(tick(0x32), "poll");
    EXPECT_FALSE(output.outputSuspended) << "a late message of a host that is gone";
}

// ---- Faults of hosts and sockets ----------------------------------------------------------------

TEST_F(HostChannel, AFloodLeavesTheTickShort)
{
    Connect();
    // Each message that is handled brings the next one, however slow or busy the machine is.
    int handled = 0;
    QObject::connect(&trigger, &ArtNetTrigger::artNetDMXInputSettingsReceived, [&] {
        if (++handled < 200'000)
            host.Send(0x52);
    });
    host.Send(0x52);
    for (int tick = 0, before = 0; tick < 5; ++tick, before = handled) {
        Tick();
        EXPECT_LT(handled - before, 5000) << "more than a machine handles in three milliseconds";
    }
    EXPECT_GT(handled, 50);
}

TEST_F(HostChannel, APortInUseIsTriedOnceATickAndAChannelThatFailedReceivesAgain)
{
    {
        const Stage::Socket holder(0, UDPSocket::LocalPort);
        for (const int tick : {1, 2}) {
            trigger.Poll();
            EXPECT_FALSE(trigger.SendRebind());
            EXPECT_EQ(log.Count("Failed to bind socket. Receiving will not be possible"), tick);
        }
    }
    Connect();
    ASSERT_TRUE(Stage::Command("desk", "ip route replace prohibit 127.0.0.1 table local"));
    log.Clear();
    EXPECT_FALSE(trigger.SendRebind());
    EXPECT_FALSE(trigger.SendRebind());
    // The fourth failure ends it, and for the whole tick: a frame of 500 messages would hold up the
    // window.
    EXPECT_EQ(log.Messages(), Lines(3, "Error ocurred while sending UDP packet: 13."));
    ASSERT_TRUE(Stage::Command("desk", "ip route replace local 127.0.0.1 dev lo table local"));
    for (int i = 0; i < 5; ++i) {
        Tick();
        now += 2'000'000'000;
    }
    EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << "10 seconds later";
    EXPECT_EQ(host.lastSenderPort, UDPSocket::LocalPort);
    UDPSocket second;
    EXPECT_TRUE(second.Initialize(Stage::Loopback) && second.Bind()) << "the port can be shared";
}

// ---- What a host passes on ---------------------------------------------------------------------

TEST_F(HostChannel, OnlyACompleteListReplacesTheKnownNodes)
{
    host.nodes = {{"A", "2.0.0.10", {0, 5}}, {"B", "2.0.0.11", {32767}}, {"C", "2.0.0.12", {}}};
    Connect();
    EXPECT_EQ(Refresh(), "ABC");
    (void)Received();
    host.Send(0x61, {0x78, 0x56, 0x34, 0x12}); // what was received is what we pass on
    Tick();
    const std::string node = "node count=3 request=305419896 generation=1 ";
    EXPECT_EQ(Received(), (Lines{node + "name=A address=2.0.0.10 universes=0,5",
                                 node + "name=B address=2.0.0.11 universes=32767",
                                 node + "name=C address=2.0.0.12 universes="}));
    host.nodes[1].name.clear();
    EXPECT_EQ(Refresh(), "ABC") << "a node without a name is ignored";
    host.nodes[1].name = "D";
    host.nodes[0].address.clear();
    EXPECT_EQ(Refresh(), "ABC") << "and one without an address";
    host.nodes[0].address = "2.0.0.10";
    host.manners.oldBy = 1;
    EXPECT_EQ(Refresh(), "ABC") << "the answer to an older request";
    for (int i = 0; i < 5000; ++i) // a list that never ends
        output.AddRemoteNode(output.GetNodes()[0], 4097, 1);
    EXPECT_EQ(output.GetNodes().size(), 3U);
    host.manners.oldBy = 0;
    host.manners.reorders = true;
    EXPECT_EQ(Refresh(), "CDA") << "the order is free";
    host.Die();
    Poll(); // what the host sent before still counts
    now += 5'001'000'000;
    Poll(1);
    EXPECT_EQ(Refresh(), "CDA") << "the service knows them too";
    host.nodes.clear();
    Connect();
    EXPECT_EQ(Refresh(), "");
}

TEST_F(HostChannel, TwoConsolesOnOneUniverseAreReportedWhileTheyLast)
{
    using Conflicts = std::vector<ArtNetSourceConflict>;
    std::vector<Conflicts> reports;
    QObject::connect(&output, &ArtNetOutput::sourceConflictsChanged,
                     [&](const Conflicts& conflicts) { reports.push_back(conflicts); });
    ChooseNetwork(Merge(4, 2, 32));
    Poll(12);
    const auto first = Stage::RigSocket(Stage::Rig0, 0);
    const auto second = Stage::RigSocket(Stage::Rig0 + 1, 0);
    const auto reported = [&](std::size_t count) {
        return Stage::ComesTrue([&] {
            output.CheckInput();
            return reports.size() == count;
        });
    };
    for (const auto& console : {first.get(), second.get(), first.get()})
        console->Send(Stage::Desk0, ArtNetBytes::Dmx(5, {1, 0}));
    EXPECT_TRUE(reported(1));
    EXPECT_EQ(reports.back(), (Conflicts{{5, Stage::Rig0, Stage::Rig0 + 1}}));
    EXPECT_TRUE(reported(2));
    EXPECT_EQ(reports.back(), Conflicts{});
}

TEST_F(HostChannel, NodesGetTheUniversesThatTheyAnnounced)
{
    // The second is outside the network. The first has universe 5 on two ports, and gets it once.
    host.nodes = {{"A", "2.0.0.10", {5, 9, 5}}, {"B", "10.0.0.9", {5}}};
    Connect();
    (void)Refresh();
    (void)Received();
    for (const auto universe : std::vector<std::uint16_t>{5, 6})
        output.CopyToUniverse(universe, L"Auto", 1, Bytes{9});
    for (int frame = 0; frame < 2; ++frame)
        output.SendAutoUnicastUniverses();
    EXPECT_EQ(RouteOf(output, true, 5, AutoNode).nodes, std::vector<std::string>{"2.0.0.10"});
    EXPECT_EQ(Received(), Lines(2, "universe address=5 pair=0 to=2.0.0.10 channels=09"));

    // More than forty of them get one broadcast, and nobody a universe without a channel.
    (void)output.GetUniverse(7, L"Auto");
    (void)output.GetUniverse(7, L"2.0.0.10");
    for (const std::uint32_t count : {40U, 41U}) {
        ArtNetNodeInfo node;
        node.SetName("Lamp");
        node.universes.assign({5, 7, 5});
        output.ClearRemoteNodes();
        for (std::uint32_t i = 0; i < count; ++i) {
            node.SetIp(Platform::FormatIPv4(0x02000100 + i));
            output.AddRemoteNode(node, count, count);
        }
        for (int frame = 0; frame < 2; ++frame) {
            output.SendAutoUnicastUniverses();
            const Lines lines = Received();
            EXPECT_EQ(lines.size(), count == 40 ? 40U : 1U);
            EXPECT_EQ(RouteOf(output, true, 5, AutoNode).nodes.size(), count == 40 ? 40U : 0U);
            EXPECT_EQ(lines.back(), "universe address=5 pair=0 to=" +
                                        std::string(count == 40 ? "2.0.1.39" : "2.255.255.255") +
                                        " channels=09");
        }
    }
    EXPECT_TRUE(log.Has("Port-Address 5 will use broadcast, number of subscribers is 41"));
    EXPECT_FALSE(log.Has("Adding autounicast subscriber for Port-Address 5 at IP: 2.0.0.10"))
        << "lines for each node come with -artnetdebug";
    EXPECT_FALSE(output.SendUnicastUniverses().anySent);
    output.SendBroadcastUniverses();
    EXPECT_EQ(Received().size(), 2U) << "5 and 6";

    using enum UniverseRoute::Way;
    const auto way = [this](bool autoUnicast, std::uint16_t universe, const wchar_t* node) {
        return RouteOf(output, autoUnicast, universe, node).way;
    };
    EXPECT_EQ(way(true, 5, AutoNode), Broadcast) << "41 subscribers";
    EXPECT_EQ(way(true, 6, AutoNode), NoSubscriber);
    EXPECT_EQ(way(false, 6, AutoNode), Broadcast);
    EXPECT_EQ(way(true, 5, L"2.0.0.10"), Node);
    EXPECT_EQ(way(true, 5, L"10.0.0.9"), OutsideNetwork);
    output.outputSuspended = true;
    EXPECT_EQ(way(true, 5, AutoNode), HostSends);
}

TEST_F(HostChannel, Settings)
{
    using Settings = std::tuple<bool, std::wstring, std::vector<int>>;
    std::vector<Settings> received;
    QObject::connect(&trigger, &ArtNetTrigger::artNetDMXInputSettingsReceived,
                     [&](bool enabled, const std::wstring& ip, const std::vector<int>& used) {
                         received.emplace_back(enabled, ip, used);
                     });
    ASSERT_TRUE(host.Start());
    Tick();
    // The address fills its field. Then universe 0x1234, 0x8000, which is an empty place, and
    // 0x7FFF; the last place and beyond.
    Bytes data(17, '7');
    data[0] = 2;
    data.insert(data.end(), {0x34, 0x12, 0x00, 0x80, 0xFF, 0x7F});
    data.resize(509, 0xFF);
    data.insert(data.end(), {2, 1, 0});
    host.Send(0x52, data);
    host.SendRaw({'A', 'r', 't', '-', 'N', 'e', 't', 0, 0, 0x99, 0, 14, 0, 0, 1, 0x52, 0, '9'});
    Poll();
    EXPECT_EQ(received,
              (std::vector<Settings>{{true, std::wstring(16, L'7'), {0x1234, 0x7FFF, 0x102}},
                                     {false, L"9", std::vector<int>(247, 0)}}))
        << "what is missing reads as zeros";
}

// What comes in on our own port is judged from end to end.
TEST_F(HostChannel, OnlyACompleteAnswerIsMerged)
{
    host.input = {{2, 0x22}, {3, 0x33}};
    host.inputUniverses = 2;
    Connect(Merge(2, 2, 16));
    EXPECT_EQ(Merged(), Bytes(512, 0)) << "the answer is not there yet";
    EXPECT_EQ(Received(), (Lines{"input-wanted first=2 request=1"}));
    Poll();
    EXPECT_EQ(Merged(16), Bytes(512, 0x22));
    EXPECT_EQ(Merged(17), Bytes(512, 0x33));
    host.input[2] = 0x44;
    host.manners.oldBy = 1;
    EXPECT_EQ(Asked(), Bytes(512, 0x22)) << "the answer to an older request";
    host.manners.oldBy = 0;
    host.manners.reorders = true;
    EXPECT_EQ(Asked(), Bytes(512, 0x44)) << "the order of the pieces is free";
    host.inputUniverses = 1; // fewer than were asked for
    EXPECT_EQ(Asked(17), Bytes(512, 0));
}

TEST_F(HostChannel, AnAnswerHas128PiecesAtMost)
{
    Connect(Merge(2, 64, 16));
    host.inputUniverses = 0; // this test sends the answers
    Bytes expected(512, 128);
    expected[255] = 126;
    expected[511] = 127;
    std::uint8_t request = 0;
    for (const auto pieces : Bytes{128, 129}) {
        (void)Merged();
        ++request;
        for (std::uint8_t index = 0; index < pieces; ++index) {
            Bytes piece(8 + 256, pieces);
            std::ranges::copy(Bytes{pieces, 0, index, 0, request, 0, 0, 0}, piece.begin());
            piece.back() = index;
            host.Send(0x72, piece);
            Poll(1);
        }
        Poll();
        EXPECT_EQ(Merged(16 + 63), expected) << int{pieces};
        ++request;
    }
}

} // namespace
