// SPDX-License-Identifier: MIT
// The control channel as a host sees it: messages, the way from our own port to the host and back,
// and the faults of hosts and sockets.
#include "HostChannel.h"

#include <sys/resource.h>

#include <algorithm>

#include <boost/algorithm/string/join.hpp>

#include "Support/Stage.h"

namespace {

/// A whole "poll" with another byte somewhere, or of another length.
Bytes PollPacket(std::size_t offset = 0, std::uint8_t value = 0x41, std::size_t length = 528)
{
    Bytes bytes = {0x41, 0x72, 0x74, 0x2D, 0x4E, 0x65, 0x74, 0x00, 0x00, 0x99,
                   0x00, 0x0E, 0x50, 0x57, 0x01, 0x11, 'p',  'o',  'l',  'l'};
    bytes[offset] = value;
    bytes.resize(length);
    return bytes;
}

std::string Hex(int count, const std::string& pair)
{
    return boost::join(Lines(static_cast<std::size_t>(count), pair), "");
}

TEST_F(HostChannel, Messages)
{
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    ChooseNetwork();
    Tick();
    EXPECT_EQ(host.TakeDatagrams(), (std::vector<Bytes>{PollPacket()}));
    EXPECT_EQ(host.lastSenderPort, 6455);
    trigger.SendMessage(std::string(600, 'x'), ControlMessage::Reload);
    trigger.SendData(Bytes(513, 'y'), ControlMessage::Reload);
    trigger.RegisterClient("2.0.0.1", "2.255.255.255", "192.168.100.200.9", 0x0123, 64, "We");
    trigger.RequestDevices();
    trigger.RequestDevices();
    EXPECT_EQ(Received(), (Lines{"0x41 " + std::string(512, 'x'), "0x41 " + std::string(512, 'y'),
                                 "register first=291 count=64 interface=2.0.0.1 broadcast="
                                 "2.255.255.255 receive=192.168.100.200. name=We",
                                 "nodes-wanted request=1 interface=2.0.0.1",
                                 "nodes-wanted request=2 interface=2.0.0.1"}));
    Bytes values(512, 0x11);
    std::fill(values.begin() + 480, values.end(), std::uint8_t{0x22});
    const std::span<const std::uint8_t> all(values);
    trigger.SendDmx(0x1234, "2.0.0.10", all.first(3));
    trigger.SendDmx(1, "2.0.0.10", all.first(480));
    trigger.SendDmx(2, "2.0.0.10", all.first(481));
    trigger.SendDmx(3, "2.255.255.255", all);
    const std::string begin = Hex(480, "11");
    const std::string end = Hex(32, "22") + Hex(448, "11");
    EXPECT_EQ(Received(),
              (Lines{"universe address=4660 pair=0 to=2.0.0.10 channels=111111",
                     "universe address=1 pair=0 to=2.0.0.10 channels=" + begin,
                     "universe-begin address=2 pair=0 to=2.0.0.10 channels=" + begin,
                     "universe-end address=2 pair=0 to=2.0.0.10 channels=22" + Hex(479, "11"),
                     "universe-begin address=3 pair=1 to=2.255.255.255 channels=" + begin,
                     "universe-end address=3 pair=1 to=2.255.255.255 channels=" + end}));
}

TEST_F(HostChannel, TheWayToTheHostAndBack)
{
    const auto portIsFree = [] {
        return Stage::Socket(0, 6454).IsBound();
    };
    const auto sends = [this] {
        output.ClearUniverses();
        output.CopyToUniverse(3, L"Auto", 1, Bytes{255, 0, 128});
        const auto result = output.SendBroadcastUniverses();
        EXPECT_EQ(result.allSent, result.anySent);
        return result.anySent;
    };
    ChooseNetwork();
    Tick(11);
    EXPECT_FALSE(sends());
    Tick();
    EXPECT_TRUE(sends());
    EXPECT_FALSE(portIsFree());
    ASSERT_TRUE(host.Start());
    host.manners.rebinds = false;
    Tick(13);
    host.manners.answersPolls = host.manners.acknowledges = false;
    Poll();
    EXPECT_FALSE(sends());
    EXPECT_TRUE(Stage::ComesTrue(portIsFree));
    // From here on the host sends what the test sends: it isn't pumped.
    host.Send(0x92);
    Poll(14);
    host.Send(0xA2);
    Poll(10); // the wait of the registration goes on
    host.Send(0xA2);
    host.Send(0x61);
    Poll();
    (void)Received();
    EXPECT_TRUE(sends());
    EXPECT_EQ(Received(), (Lines{"universe address=3 pair=0 to=2.255.255.255 channels=ff0080"}));
    output.Initialize(L"10.0.0.1", L"10.255.255.255", L"", {});
    EXPECT_EQ(Received(), (Lines{"register first=0 count=1 interface=10.0.0.1 "
                                 "broadcast=10.255.255.255 receive= name=PixelWeft"}));
    LoseHost();
    output.Initialize(L"", L"", L"", {});

    Lines lines = log.Messages();
    std::erase_if(lines, [](const std::string& line) { // of the service
        return line.starts_with("Creating") || line.starts_with("Recycling") ||
               line.starts_with("ALL server");
    });
    EXPECT_EQ(boost::join(Lines(lines.begin(), lines.begin() + 12), "; "),
              "Initialize in Disabled state; Exiting Disabled state; "
              "Entering Determine socket type state; Server was not detected; "
              "Exiting Determine socket type state; Entering Using local socket state; "
              "Registering local ArtNet client; Server detected in Using local socket state; "
              "Exiting Using local socket state; Destroying local ArtNet client; "
              "Entering Rebind remote socket state; Sending rebind DMX socket");
    lines.erase(lines.begin(), lines.begin() + 12);
    std::erase_if(lines, [](const std::string& line) {
        return line.starts_with("Exiting") || line.starts_with("Entering");
    });
    EXPECT_EQ(boost::join(lines, "; "),
              "Rebind socked did not succed, retrying; Sending rebind DMX socket; "
              "Dmx socket rebound; Registering remote ArtNet client; "
              "Registering remote client did not succed, retrying; "
              "Registering remote ArtNet client; Remote client registered; "
              "Registering remote client did not succed, retrying; "
              "Registering remote ArtNet client; Remote client registered; "
              "Sent device list to server; Initialize in Using remote socket state; "
              "Registering remote ArtNet client; Remote client registered; "
              "Sent device list to server; Server stopped in Using remote socket state; "
              "Registering local ArtNet client; Initialize in Using local socket state; "
              "Destroying local ArtNet client");
}

TEST_F(HostChannel, AHostIsThereFor5000MillisecondsAndGoneAt5001)
{
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    ChooseNetwork();
    Tick(11);
    ChooseNetwork();
    host.Send(0x12); // an answer that waits at the twelfth tick counts
    Tick(6);
    const std::int64_t last = now;
    for (const std::int64_t later : {5'000'000'000, 5'000'999'999, 5'001'000'000}) {
        EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << later;
        now = last + later;
        Tick();
    }
    EXPECT_EQ(output.GetState(), OutputState::UsingLocalSocket);
    host.manners.answersPolls = true;
    Tick(10);
    EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << "a new socket, the same host";
}

TEST_F(HostChannel, StopStartAndReloadAreRepeatedUntilTheHostIsGone)
{
    trigger.reloadMappingFile();
    Tick(2);
    ASSERT_TRUE(host.Start());
    host.withPolls = true;
    host.manners.acknowledges = false;
    const auto tick = [this] {
        (void)host.TakeLines();
        Tick();
        return boost::join(host.TakeLines(), ", ");
    };
    Tick(2);
    host.manners.answersPolls = false;
    Tick();
    EXPECT_EQ(tick(), "poll, 0x21 stop, 0x41 reload");
    trigger.disableReelCommandOrLoomTapDMX(5);
    EXPECT_EQ(tick(), "poll, 0x31 start, 0x41 reload");
    host.Send(0x42);
    EXPECT_EQ(tick(), "poll, 0x31 start");
    EXPECT_FALSE(output.outputSuspended) << "until the host confirms";
    host.Send(0x32);
    trigger.hostSendsDMX = 0;
    EXPECT_EQ(tick(), "poll, 0x21 stop");
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
    Tick(); // opens the new socket
    host.Send(0x32);
    EXPECT_EQ(tick(), "poll");
    EXPECT_FALSE(output.outputSuspended) << "a late message of a host that is gone";
}

// ---- Faults of hosts and sockets ----------------------------------------------------------------

TEST_F(HostChannel, OnlyIdAndOpCodeMakeAMessage)
{
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    Tick();
    host.SendRaw({});
    for (const Bytes& ignored :
         {PollPacket(7, 1), PollPacket(8, 1), PollPacket(9, 0x50), PollPacket(0, 0x41, 9),
          PollPacket(0, 0x41, 15), PollPacket(15, 0x13)})
        host.SendRaw(ignored);
    for (const Bytes& answered : {PollPacket(11, 99), PollPacket(12, 0), PollPacket(14, 200),
                                  PollPacket(0, 0x41, 16), PollPacket(0, 0x41, 1584)})
        host.SendRaw(answered);
    Poll();
    host.Pump();
    EXPECT_EQ(host.TakeLines(), Lines(5, "0x12 Pixel Weft"));
}

TEST_F(HostChannel, AFloodLeavesTheTickShort)
{
    Connect();
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

TEST_F(HostChannel, APortInUseIsTriedOnceATickAndCanBeShared)
{
    UDPSocket socket;
    EXPECT_FALSE(socket.Send({})) << "not open";
    {
        const Stage::Socket holder(0, UDPSocket::LocalPort);
        for (const int tick : {1, 2}) {
            trigger.Poll();
            EXPECT_FALSE(trigger.SendRebind());
            EXPECT_EQ(log.Count("Failed to bind socket. Receiving will not be possible"), tick);
        }
    }
    Connect();
    EXPECT_TRUE(socket.Initialize(Stage::Loopback) && socket.Bind());
}

TEST_F(HostChannel, AChannelThatFailedReceivesAgain)
{
    Connect();
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    for (const bool moreSockets : {true, false}) {
        ASSERT_TRUE(Stage::Command("desk", "ip route replace prohibit 127.0.0.1 table local"));
        log.Clear();
        const rlimit limit{moreSockets ? usual.rlim_cur : 0, usual.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_FALSE(trigger.SendRebind());
        EXPECT_FALSE(trigger.SendRebind());
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
        // The fourth failure ends it, or that there is no other socket, and for the whole tick: a
        // frame of 500 messages would hold up the window.
        const Lines lines = log.Messages();
        EXPECT_EQ(std::ranges::count_if(lines,
                                        [](const std::string& line) {
                                            return line.starts_with(
                                                "Error ocurred while sending UDP packet: ");
                                        }),
                  moreSockets ? 3 : 1);
        ASSERT_TRUE(Stage::Command("desk", "ip route replace local 127.0.0.1 dev lo table local"));
        for (int i = 0; i < 5; ++i) {
            Tick();
            now += 2'000'000'000;
        }
        EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << "10 seconds later";
        EXPECT_EQ(host.lastSenderPort, UDPSocket::LocalPort);
    }
}

} // namespace
