// SPDX-License-Identifier: MIT
// The control channel as a host sees it: messages, the way from our own port to the host and back,
// and the faults of hosts and sockets.
#include "HostChannel.h"

#include <sys/resource.h>

#include <algorithm>

#include "Support/Stage.h"

namespace {

const Bytes Head = {0x41, 0x72, 0x74, 0x2D, 0x4E, 0x65, 0x74, 0x00,
                    0x00, 0x99, 0x00, 0x0E, 0x50, 0x57, 0x01};

/// A whole packet.
Bytes Packet(std::uint8_t subKey, const std::string& text)
{
    Bytes bytes = Head;
    bytes.push_back(subKey);
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.resize(528);
    return bytes;
}

std::string Hex(std::size_t count, const std::string& pair)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += pair;
    return text;
}

TEST_F(HostChannel, Messages)
{
    ASSERT_TRUE(host.Start());
    host.manners = {.answersPolls = false, .rebinds = false, .registers = false};
    ChooseNetwork();
    Tick();
    EXPECT_EQ(host.TakeDatagrams(), (std::vector<Bytes>{Packet(0x11, "poll")}));
    EXPECT_EQ(host.lastSenderPort, 6455);
    trigger.SendRebind();
    trigger.SendMessage(std::string(600, 'x'), ControlMessage::Reload);
    trigger.SendData(Bytes(513, 'y'), ControlMessage::Universes);
    trigger.RegisterClient("2.0.0.1", "2.255.255.255", "192.168.100.200.9", 0x0123, 64, "We");
    trigger.RequestDevices();
    trigger.RequestDevices();
    trigger.RequestDMXInput(0x7FFE);
    const std::string registration = "register first=291 count=64 interface=2.0.0.1 "
                                     "broadcast=2.255.255.255 receive=192.168.100.200. name=We";
    EXPECT_EQ(Received(), (Lines{"0x91 rebindDMXSocket", "0x41 " + std::string(512, 'x'),
                                 "0x51 " + std::string(512, 'y'), registration,
                                 "nodes-wanted request=1 interface=2.0.0.1",
                                 "nodes-wanted request=2 interface=2.0.0.1",
                                 "input-wanted first=32766 request=1"}));

    Bytes values(512, 0x11);
    std::fill(values.begin() + 480, values.end(), std::uint8_t{0x22});
    const std::span<const std::uint8_t> all(values);
    trigger.SendDmx(0x1234, "2.0.0.10", all.first(3));
    trigger.SendDmx(1, "2.0.0.10", all.first(480));
    trigger.SendDmx(2, "2.255.255.255", all.first(481));
    trigger.SendDmx(3, "2.0.0.10", all);
    const std::string begin = Hex(480, "11");
    EXPECT_EQ(Received(),
              (Lines{"universe address=4660 pair=0 to=2.0.0.10 channels=111111",
                     "universe address=1 pair=0 to=2.0.0.10 channels=" + begin,
                     "universe-begin address=2 pair=0 to=2.255.255.255 channels=" + begin,
                     "universe-end address=2 pair=0 to=2.255.255.255 channels=22" + Hex(479, "11"),
                     "universe-begin address=3 pair=1 to=2.0.0.10 channels=" + begin,
                     "universe-end address=3 pair=1 to=2.0.0.10 channels=" + Hex(32, "22") +
                         Hex(448, "11")}));
}

// ---- From our own port to the host and back -----------------------------------------------------

TEST_F(HostChannel, TheWholeWayToTheHostAndBack)
{
    const auto portIsFree = [] {
        return Stage::Socket(0, 6454).IsBound();
    };
    const auto sends = [this] {
        output.ClearUniverses();
        output.CopyToUniverse(3, L"Auto", 1, Bytes{255, 0, 128});
        output.CopyToUniverse(4, L"2.0.0.10", 2, Bytes{7});
        output.CopyToUniverse(4, L"10.0.0.10", 1, Bytes{7}); // outside the network
        const auto unicast = output.SendUnicastUniverses();
        const auto broadcast = output.SendBroadcastUniverses();
        EXPECT_EQ(unicast.allSent, broadcast.anySent);
        return unicast.allSent && unicast.anySent && broadcast.allSent;
    };
    ChooseNetwork();
    Tick(11);
    EXPECT_FALSE(sends());
    Tick();
    EXPECT_TRUE(sends());
    EXPECT_FALSE(portIsFree());
    ASSERT_TRUE(host.Start());
    host.manners.rebinds = false;
    host.manners.registers = false;
    Tick(3);
    EXPECT_FALSE(sends());
    EXPECT_TRUE(Stage::ComesTrue(portIsFree)) << "before the host binds it";
    Tick(12);
    host.manners.rebinds = true;
    host.Send(0x92);
    Tick(14);
    host.Send(0xA2);
    Tick(13);
    host.manners.registers = true;
    host.Send(0xA2);
    Tick(2);
    (void)Received();
    host.Send(0x61, {9});
    Tick();
    EXPECT_EQ(Received(), (Lines{"node count=0 request=9 generation=0 name= address= universes="}));
    EXPECT_TRUE(sends());
    EXPECT_EQ(Received(), (Lines{"universe address=4 pair=0 to=2.0.0.10 channels=0007",
                                 "universe address=3 pair=0 to=2.255.255.255 channels=ff0080"}));
    output.Initialize(L"10.0.0.1", L"10.255.255.255", L"", {});
    EXPECT_EQ(Received(), (Lines{"register first=0 count=1 interface=10.0.0.1 "
                                 "broadcast=10.255.255.255 receive= name=PixelWeft"}));
    ChooseNetwork();
    LoseHost();
    EXPECT_FALSE(portIsFree());
    ChooseNoNetwork();
    EXPECT_TRUE(Stage::ComesTrue(portIsFree));

    Lines lines = log.Messages();
    std::erase_if(lines, [](const std::string& line) { // of the service
        return line.starts_with("Creating new") || line.starts_with("Recycling");
    });
    const Lines begin(lines.begin(), lines.begin() + 12);
    EXPECT_EQ(begin, (Lines{"Initialize in Disabled state", "Exiting Disabled state",
                            "Entering Determine socket type state", "Server was not detected",
                            "Exiting Determine socket type state",
                            "Entering Using local socket state", "Registering local ArtNet client",
                            "Server detected in Using local socket state",
                            "Exiting Using local socket state", "Destroying local ArtNet client",
                            "Entering Rebind remote socket state", "Sending rebind DMX socket"}));
    lines.erase(lines.begin(), lines.begin() + 12);
    std::erase_if(lines, [](const std::string& line) {
        return line.starts_with("Exiting") || line.starts_with("Entering");
    });
    const std::string retry = "Registering remote client did not succed, retrying";
    const std::string registering = "Registering remote ArtNet client";
    const std::string registered = "Remote client registered";
    EXPECT_EQ(lines, (Lines{"Rebind socked did not succed, retrying",
                            "Sending rebind DMX socket",
                            "Dmx socket rebound",
                            registering,
                            retry,
                            registering,
                            registered,
                            retry,
                            registering,
                            registered,
                            "Sent device list to server",
                            "Initialize in Using remote socket state",
                            registering,
                            "Initialize in Registering to remote socket state",
                            registering,
                            registered,
                            "Sent device list to server",
                            "Server stopped in Using remote socket state",
                            "Registering local ArtNet client",
                            "Initialize in Using local socket state",
                            "Destroying local ArtNet client"}));
}

TEST_F(HostChannel, AnAnswerThatWaitsAtTheTwelfthTickCounts)
{
    ASSERT_TRUE(host.Start());
    host.manners = {.answersPolls = false, .registers = false};
    ChooseNetwork();
    Tick(11);
    ChooseNetwork(); // doesn't begin the wait again
    host.Send(0x12);
    Tick();
    EXPECT_EQ(output.GetState(), OutputState::RegisteringToRemoteSocket);
    Tick(7);
    host.Send(0xA2);
    Tick(3);
    EXPECT_EQ(output.GetState(), OutputState::SynchronizingRemoteDeviceList);
    Tick();
    EXPECT_EQ(output.GetState(), OutputState::RegisteringToRemoteSocket) << "one wait for both";
}

TEST_F(HostChannel, AHostIsThereFor5000MillisecondsAndGoneAt5001)
{
    ASSERT_TRUE(Connect());
    host.manners.answersPolls = false;
    Tick(2);
    const std::int64_t last = now;
    for (const std::int64_t later : {5'000'000'000, 5'000'999'999}) {
        now = last + later;
        Tick();
        EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << later;
    }
    now = last + 5'001'000'000;
    Tick();
    EXPECT_EQ(output.GetState(), OutputState::UsingLocalSocket);
    host.manners.answersPolls = true;
    Tick(10);
    EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << "a new socket, the same host";
}

TEST_F(HostChannel, StopStartAndReloadAreRepeatedUntilTheHostIsGone)
{
    trigger.reloadMappingFile();
    ChooseNetwork();
    Tick(2);
    ASSERT_TRUE(host.Start());
    host.withPolls = true;
    host.manners.acknowledges = false;
    Tick(3);
    (void)host.TakeLines();
    host.manners.answersPolls = false;
    Tick();
    (void)host.TakeLines();
    Tick();
    trigger.disableReelCommandOrLoomTapDMX(5);
    Tick();
    EXPECT_EQ(host.TakeLines(),
              (Lines{"poll", "0x21 stop", "0x41 reload", "poll", "0x31 start", "0x41 reload"}));
    EXPECT_FALSE(output.outputSuspended) << "until the host confirms";
    host.manners.acknowledges = true;
    Tick(2);
    (void)host.TakeLines();
    EXPECT_TRUE(output.outputSuspended);
    host.manners.acknowledges = false;
    trigger.hostSendsDMX = 0;
    Tick();
    EXPECT_EQ(host.TakeLines(), (Lines{"poll", "0x21 stop"})) << "the document was read";
    EXPECT_TRUE(output.outputSuspended);
    host.Send(0x22);
    Tick();
    EXPECT_FALSE(output.outputSuspended);
    host.Send(0x32);
    Tick();
    ASSERT_TRUE(output.outputSuspended);
    LoseHost();
    EXPECT_FALSE(output.outputSuspended);

    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    Tick(); // opens the new socket
    host.Send(0x32);
    Tick();
    EXPECT_FALSE(output.outputSuspended) << "a late message of a host that is gone";
}

// ---- Faults of a host ---------------------------------------------------------------------------

TEST_F(HostChannel, OnlyIdAndOpCodeMakeAMessage)
{
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    Tick();
    const auto with = [](std::size_t offset, std::uint8_t value, std::size_t length = 528) {
        Bytes bytes = Packet(0x11, "poll");
        bytes[offset] = value;
        bytes.resize(length);
        return bytes;
    };
    for (int i = 0; i < 100; ++i)
        host.SendRaw({});
    for (const Bytes& ignored : {with(7, 1), with(8, 1), with(9, 0x50), with(0, 0x41, 9),
                                 with(0, 0x41, 15), with(15, 0x13)})
        host.SendRaw(ignored);
    for (const Bytes& answered :
         {with(11, 99), with(12, 0), with(14, 200), with(0, 0x41, 16), with(0, 0x41, 1584)})
        host.SendRaw(answered);
    Tick();
    EXPECT_EQ(host.TakeLines(), Lines(5, "0x12 Pixel Weft"));
}

TEST_F(HostChannel, AFloodLeavesTheTickShort)
{
    ASSERT_TRUE(Connect());
    // Each message that is handled brings the next one: the flood never ends, however slow or busy
    // the machine is.
    int handled = 0;
    QObject::connect(&trigger, &ArtNetTrigger::artNetDMXInputSettingsReceived, [&] {
        if (++handled < 200'000)
            host.Send(0x52);
    });
    for (int i = 0; i < 50; ++i)
        host.Send(0x52);
    for (int tick = 0, before = 0; tick < 5; ++tick, before = handled) {
        Tick();
        EXPECT_LT(handled - before, 5000) << "more than a machine handles in three milliseconds";
    }
    EXPECT_GT(handled, 50);
    EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket);
}

// ---- Faults of the socket -----------------------------------------------------------------------

TEST_F(HostChannel, APortInUseIsTriedOnceATick)
{
    const std::string failure = "Failed to bind socket. Receiving will not be possible";
    {
        const Stage::Socket holder(0, UDPSocket::LocalPort);
        for (const int tick : {1, 2}) {
            trigger.Poll();
            EXPECT_FALSE(trigger.SendRebind());
            EXPECT_EQ(log.Count(failure), tick);
        }
    }
    EXPECT_TRUE(Connect());
}

TEST_F(HostChannel, AReplacedSocketSendsAndReceivesNothing)
{
    ASSERT_TRUE(host.Start());
    UDPSocket socket;
    UDPSocket second;
    std::array<std::byte, 600> buffer{};
    std::size_t length = 0;
    Platform::Endpoint sender;
    EXPECT_FALSE(socket.Send({}) || socket.Receive(buffer, length, sender));
    ASSERT_TRUE(socket.Initialize(Stage::Loopback) && socket.Bind());
    EXPECT_TRUE(second.Initialize(Stage::Loopback) && second.Bind()) << "the port is shared";
    ASSERT_TRUE(socket.Reinitialize());
    EXPECT_TRUE(socket.Send(std::as_bytes(std::span("hello", 5))));
    EXPECT_EQ(Received(), (Lines{"nonsense of 5 bytes"}));
    EXPECT_NE(host.lastSenderPort, UDPSocket::LocalPort);
    host.Send(0x11);
    EXPECT_FALSE(socket.Receive(buffer, length, sender));
    EXPECT_TRUE(second.Receive(buffer, length, sender));
}

TEST_F(HostChannel, AChannelThatFailedReceivesAgain)
{
    ASSERT_TRUE(Connect());
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    for (const bool moreSockets : {true, false}) {
        // The system refuses what is sent to the loopback address, as a firewall would.
        ASSERT_TRUE(Stage::Command("desk", "ip rule add pref 9 lookup local") &&
                    Stage::Command("desk", "ip rule del pref 0") &&
                    Stage::Command("desk", "ip rule add pref 5 to 127.0.0.1 prohibit"));
        log.Clear();
        const rlimit limit{moreSockets ? usual.rlim_cur : 0, usual.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_FALSE(trigger.SendRebind());
        EXPECT_FALSE(trigger.SendRebind());
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
        // The fourth failure ends it, or that there is no other socket, and for the whole tick: a
        // frame of 500 messages would hold up the window.
        EXPECT_EQ(std::ranges::count_if(log.Messages(),
                                        [](const std::string& line) {
                                            return line.starts_with(
                                                "Error ocurred while sending UDP packet: ");
                                        }),
                  moreSockets ? 3 : 1);
        ASSERT_TRUE(Stage::Command("desk", "ip rule del pref 5") &&
                    Stage::Command("desk", "ip rule add pref 0 lookup local") &&
                    Stage::Command("desk", "ip rule del pref 9"));
        for (int i = 0; i < 5; ++i) {
            Tick();
            now += 2'000'000'000;
        }
        EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << "10 seconds later";
        EXPECT_EQ(host.lastSenderPort, UDPSocket::LocalPort);
    }
}

} // namespace
