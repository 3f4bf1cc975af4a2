// SPDX-License-Identifier: MIT
// The control channel as a host sees it: the bytes of each message, and every fault of a host.
#include "HostChannel.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>

std::int64_t HostChannel::now = 1'000'000'000;

Bytes Ascii(const std::string& text)
{
    return {text.begin(), text.end()};
}

Bytes Message(std::uint8_t subKey, const std::vector<Field>& fields)
{
    Bytes bytes = {0x41, 0x72, 0x74, 0x2D, 0x4E, 0x65, 0x74, 0x00,
                   0x00, 0x99, 0x00, 0x0E, 0x50, 0x57, 0x01, subKey};
    bytes.resize(528);
    for (const Field& field : fields)
        std::ranges::copy(field.bytes,
                          bytes.begin() + 16 + static_cast<std::ptrdiff_t>(field.offset));
    return bytes;
}

namespace {

Bytes Ramp(std::size_t count)
{
    Bytes values(count);
    for (std::size_t i = 0; i < count; ++i)
        values[i] = static_cast<std::uint8_t>(i % 251 + 1);
    return values;
}

// ---- What we send -------------------------------------------------------------------------------

TEST_F(HostChannel, TextsRequestsAndTheRegistrationAreWholePackets)
{
    ASSERT_TRUE(host.Start());
    ChooseNetwork();
    trigger.Poll();
    trigger.SendRebind();
    trigger.SendMessage(std::string(600, 'x'), ControlMessage::Reload);
    trigger.RegisterClient("2.0.0.1", "2.255.255.255", "192.168.100.200.9", 0x0123, 64,
                           "PixelWeft");
    trigger.RequestDevices();
    trigger.RequestDevices();
    trigger.RequestDMXInput(0x7FFE);
    host.Pump();
    trigger.Poll(); // takes the host's answer to the poll
    host.Pump();
    auto datagrams = host.TakeDatagrams();
    datagrams.resize(8);
    EXPECT_EQ(datagrams,
              (std::vector<Bytes>{Message(0x11, {{0, Ascii("poll")}}),
                                  Message(0x91, {{0, Ascii("rebindDMXSocket")}}),
                                  Message(0x41, {{0, Bytes(512, 'x')}}),
                                  Message(0xA1, {{0, {0x23, 0x01}},
                                                 {2, {64, 0}},
                                                 {4, Ascii("2.0.0.1")},
                                                 {20, Ascii("2.255.255.255")},
                                                 {36, Ascii("192.168.100.200.")},
                                                 {52, Ascii("PixelWeft")}}),
                                  Message(0x61, {{0, {1, 0, 0, 0}}, {4, Ascii("2.0.0.1")}}),
                                  Message(0x61, {{0, {2, 0, 0, 0}}, {4, Ascii("2.0.0.1")}}),
                                  Message(0x71, {{0, {0xFE, 0x7F}}, {2, {1, 0, 0, 0}}}),
                                  Message(0x51, {{0, Ascii("universes")}})}));
    EXPECT_EQ(host.lastSenderPort, 6455);
}

TEST_F(HostChannel, AUniverseOfMoreThan480ChannelsTakesTwoMessages)
{
    ASSERT_TRUE(host.Start());
    const Bytes values = Ramp(512);
    const std::span<const std::uint8_t> all(values);
    trigger.SendDmx(0x1234, "2.0.0.10", all.first(3));
    trigger.SendDmx(1, "2.0.0.10", all.first(480));
    trigger.SendDmx(2, "2.255.255.255", all.first(481));
    trigger.SendDmx(3, "2.0.0.10", all);
    host.Pump();
    const Bytes begin(values.begin(), values.begin() + 480);
    Bytes one = begin;
    one[0] = values[480];
    Bytes whole = begin;
    std::copy(values.begin() + 480, values.end(), whole.begin());
    const Bytes all255 = Ascii("2.255.255.255");
    EXPECT_EQ(
        host.TakeDatagrams(),
        (std::vector<Bytes>{
            Message(0x81, {{0, {1, 2, 3}}, {480, {0x34, 0x12}}, {484, Ascii("2.0.0.10")}}),
            Message(0x81, {{0, begin}, {480, {1, 0}}, {484, Ascii("2.0.0.10")}}),
            Message(0x82, {{0, begin}, {480, {2, 0}}, {482, {0, 0}}, {484, all255}}),
            Message(0x83, {{0, one}, {480, {2, 0}}, {482, {0, 0}}, {484, all255}}),
            Message(0x82, {{0, begin}, {480, {3, 0}}, {482, {1, 0}}, {484, Ascii("2.0.0.10")}}),
            Message(0x83, {{0, whole}, {480, {3, 0}}, {482, {1, 0}}, {484, Ascii("2.0.0.10")}}),
        }));
}

TEST_F(HostChannel, OurNodesAreOneMessageEach)
{
    host.nodes = {{"Left", "2.0.0.10", {0, 5, 32767}}, {"R", "2.0.0.11", {}}};
    ASSERT_TRUE(Connect());
    output.RefreshNodes();
    host.Pump();
    Tick();
    ASSERT_EQ(output.GetNodes().size(), 2U);
    (void)host.TakeDatagrams();
    host.Send(0x61, {0x78, 0x56, 0x34, 0x12});
    trigger.Poll();
    host.Pump();
    auto datagrams = host.TakeDatagrams();
    std::erase_if(datagrams, [](const Bytes& datagram) { return datagram[15] != 0x62; });
    EXPECT_EQ(datagrams, (std::vector<Bytes>{Message(0x62, {{0, {2, 0, 0, 0}},
                                                            {4, {0x78, 0x56, 0x34, 0x12}},
                                                            {8, {1, 0, 0, 0}},
                                                            {12, Ascii("Left")},
                                                            {76, Ascii("2.0.0.10")},
                                                            {92, {1, 0, 6, 0, 0, 0x80}}}),
                                             Message(0x62, {{0, {2, 0, 0, 0}},
                                                            {4, {0x78, 0x56, 0x34, 0x12}},
                                                            {8, {1, 0, 0, 0}},
                                                            {12, Ascii("R")},
                                                            {76, Ascii("2.0.0.11")}})}));
}

// ---- The exchange -------------------------------------------------------------------------------

TEST_F(HostChannel, FromTheFirstPollToUniversesAtTheHost)
{
    ASSERT_TRUE(Connect());
    EXPECT_EQ(Said(), (Lines{"0x51 universes",
                             "register first=0 count=1 interface=2.0.0.1 broadcast=2.255.255.255 "
                             "receive=2.0.0.1 name=PixelWeft",
                             "node count=0 request=101 generation=0 name= address= universes=",
                             "0x51 universes"}));
    output.CopyToUniverse(3, L"Auto", 1, Bytes{255, 0, 128});
    output.CopyToUniverse(4, L"2.0.0.10", 2, Bytes{7});
    output.CopyToUniverse(4, L"10.0.0.10", 1, Bytes{7});
    EXPECT_TRUE(output.SendUnicastUniverses().anySent);
    EXPECT_TRUE(output.SendBroadcastUniverses().allSent);
    EXPECT_EQ(Said(), (Lines{"universe address=4 pair=0 to=2.0.0.10 channels=0007",
                             "universe address=3 pair=0 to=2.255.255.255 channels=ff0080"}));
}

TEST_F(HostChannel, AHostThatTurnsUpLateIsToldToTakeThePort)
{
    ChooseNetwork();
    Tick(12);
    ASSERT_EQ(output.GetState(), OutputState::UsingLocalSocket);
    ASSERT_TRUE(host.Start());
    Tick(8);
    EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket);
    const Lines said = Said();
    ASSERT_GE(said.size(), 2U);
    EXPECT_EQ(said[0], "0x51 universes");
    EXPECT_EQ(said[1], "0x91 rebindDMXSocket");
}

TEST_F(HostChannel, AnAnswerThatWaitsAtTheTwelfthTickCounts)
{
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    ChooseNetwork();
    Tick(11);
    host.Send(0x12);
    Tick();
    EXPECT_FALSE(log.Has("Server was not detected"));
    EXPECT_EQ(output.GetState(), OutputState::RegisteringToRemoteSocket);
}

TEST_F(HostChannel, AHostIsThereFor5000MillisecondsAndGoneAt5001)
{
    ASSERT_TRUE(Connect());
    host.Pump();
    Tick();
    host.manners.answersPolls = false;
    Tick(2);
    const std::int64_t heard = now;
    Pass(5000);
    Tick();
    EXPECT_TRUE(trigger.IsServerKnown());
    now = heard + 5'000'999'999; // still no 5001 whole milliseconds
    Tick();
    EXPECT_TRUE(trigger.IsServerKnown());
    now = heard + 5'001'000'000;
    Tick();
    EXPECT_FALSE(trigger.IsServerKnown());
    EXPECT_EQ(output.GetState(), OutputState::UsingLocalSocket);
    EXPECT_TRUE(log.Has("Server stopped in Using remote socket state"));

    host.manners.answersPolls = true;
    Tick(10);
    EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket) << "a new socket, the same host";
}

TEST_F(HostChannel, TheHostThatSendsSuspendsUsUntilItStopsOrDies)
{
    ASSERT_TRUE(Connect());
    trigger.disableReelCommandOrLoomTapDMX(1);
    Tick(2);
    EXPECT_TRUE(output.outputSuspended);
    trigger.disableReelCommandOrLoomTapDMX(0);
    host.manners.acknowledges = false;
    Tick(3);
    EXPECT_TRUE(output.outputSuspended) << "until the host confirms";
    host.manners.acknowledges = true;
    Tick(2);
    EXPECT_FALSE(output.outputSuspended);

    trigger.disableReelCommandOrLoomTapDMX(1);
    Tick(2);
    ASSERT_TRUE(output.outputSuspended);
    KillHost();
    EXPECT_FALSE(output.outputSuspended);

    // Its last word was on the way when we gave it up.
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    Tick(); // the socket is made anew
    host.Send(0x32);
    Tick();
    EXPECT_FALSE(output.outputSuspended) << "nobody is left to take it back";
}

TEST_F(HostChannel, ASaveIsToldAsSoonAsAHostIsThereAndUntilItWasRead)
{
    trigger.reloadMappingFile();
    Tick(3);
    EXPECT_TRUE(trigger.IsReloadPending());
    host.manners.acknowledges = false;
    ASSERT_TRUE(host.Start());
    Tick(4);
    const Lines said = host.TakeLines();
    EXPECT_GE(std::ranges::count(said, "0x41 reload"), 2);
    host.manners.acknowledges = true;
    Tick(2);
    EXPECT_FALSE(trigger.IsReloadPending());
    (void)host.TakeLines();
    Tick(2);
    EXPECT_EQ(std::ranges::count(host.TakeLines(), "0x41 reload"), 0);
}

TEST_F(HostChannel, StopAndStartGoOutWithEveryTickOfAKnownHost)
{
    ASSERT_TRUE(Connect());
    host.Pump();
    (void)host.TakeLines();
    host.manners.acknowledges = false;
    host.withPolls = true;
    host.manners.answersPolls = false;
    Tick(); // takes the last answers
    (void)host.TakeLines();
    Tick(2);
    trigger.disableReelCommandOrLoomTapDMX(5);
    Tick();
    EXPECT_EQ(host.TakeLines(),
              (Lines{"poll", "0x21 stop", "poll", "0x21 stop", "poll", "0x31 start"}));
}

TEST_F(HostChannel, APollOfTheHostIsAnswered)
{
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    Tick();
    host.Send(0x11, Ascii("poll"));
    host.SendRaw({'A', 'r', 't', '-', 'N', 'e', 't', 0, 0, 0x99}); // no SubKey
    host.SendRaw({'A', 'r', 't', '-', 'N', 'e', 't'});
    Bytes foreign = Message(0x11, {});
    foreign[9] = 0x50;
    host.SendRaw(foreign);
    foreign = Message(0x11, {});
    foreign[7] = 1;
    host.SendRaw(foreign);
    Bytes careless = Message(0x11, {});
    careless[11] = 99; // version, maker code and key don't count
    careless[12] = 0;
    careless[14] = 200;
    host.SendRaw(Bytes(careless.begin(), careless.begin() + 16));
    careless.resize(1584);
    host.SendRaw(careless);
    Tick();
    EXPECT_EQ(host.TakeLines(), (Lines{"0x12 Pixel Weft", "0x12 Pixel Weft", "0x12 Pixel Weft"}));
}

// ---- Nodes of the host --------------------------------------------------------------------------

class HostNodes : public HostChannel
{
protected:
    void Refresh()
    {
        output.RefreshNodes();
        host.Pump();
        Tick();
    }
    Lines Names()
    {
        Lines names;
        for (const auto& node : output.GetNodes())
            names.emplace_back(node.Name());
        return names;
    }
    void SetUp() override
    {
        host.nodes = {{"A", "2.0.0.10", {1}}, {"B", "2.0.0.11", {2, 3}}, {"C", "2.0.0.12", {}}};
        ASSERT_TRUE(Connect());
    }
};

TEST_F(HostNodes, OnlyAWholeListTakesTheOldOnesPlace)
{
    const Lines all{"A", "B", "C"};
    Refresh();
    EXPECT_EQ(Names(), all);
    EXPECT_EQ(output.GetNodes()[1].Ip(), "2.0.0.11");
    EXPECT_EQ(output.GetNodes()[1].universes.size(), 2U);
    EXPECT_EQ(output.GetNodes()[1].universes[1], 3);
    EXPECT_EQ(output.GetNodesVersion(), 1U);

    host.nodes[1].name.clear();
    Refresh();
    EXPECT_EQ(Names(), all) << "a node without a name counts for nothing";
    host.nodes[1].name = "D";
    output.RefreshNodes();
    host.manners.loss = 1;
    host.Pump();
    host.manners.loss = 0;
    Tick();
    EXPECT_EQ(Names(), all) << "a message was lost";
    host.manners.oldBy = 1;
    Refresh();
    EXPECT_EQ(Names(), all) << "an answer to an older request";
    host.manners.oldBy = 0;
    host.manners.reorders = true;
    Refresh();
    EXPECT_EQ(Names(), (Lines{"C", "D", "A"})) << "the order is free";

    KillHost();
    ASSERT_EQ(output.GetState(), OutputState::UsingLocalSocket);
    EXPECT_EQ(Names(), (Lines{"C", "D", "A"})) << "known beyond the death of the host";
    host.nodes.clear();
    host.nodesGeneration = 2;
    ASSERT_TRUE(Connect());
    Refresh();
    EXPECT_TRUE(output.GetNodes().empty());
}

TEST_F(HostNodes, AShortNodeMessageHasZerosForWhatIsMissing)
{
    Refresh();
    Bytes cut = Message(0x62, {{0, {1, 0, 0, 0}},
                               {4, {1, 0, 0, 0}},
                               {8, {9, 0, 0, 0}},
                               {12, Ascii("Short")},
                               {76, Ascii("2.0.0.99")}});
    cut.resize(16 + 84);
    host.Send(0x61, {});   // nothing of ours is answered by it
    output.RefreshNodes(); // request 2
    (void)host.TakeLines();
    cut[20] = 2;
    host.SendRaw(cut);
    trigger.Poll();
    EXPECT_EQ(Names(), (Lines{"Short"}));
    EXPECT_TRUE(output.GetNodes()[0].universes.empty());
}

TEST_F(HostNodes, AHostThatNeverEndsItsListFillsNoMemory)
{
    output.RefreshNodes();
    ArtNetNodeInfo node;
    node.SetName("N");
    node.SetIp("2.0.0.9");
    for (int i = 0; i < 20000; ++i)
        output.AddRemoteNode(node, 20000, 1);
    EXPECT_TRUE(output.GetNodes().empty());
    Refresh();
    EXPECT_EQ(Names(), (Lines{"A", "B", "C"}));
}

// ---- A hostile or hurried host ------------------------------------------------------------------

TEST_F(HostChannel, SettingsOfTheHostAreTold)
{
    Bytes data(512, 0xFF);
    data[0] = 2;
    std::ranges::copy(Ascii("2.0.0.5"), data.begin() + 1);
    data[8] = 0;
    // Universe 0x1234, then 0x8000, which is an empty place, then 0x7FFF.
    std::ranges::copy(Bytes{0x34, 0x12, 0x00, 0x80, 0xFF, 0x7F}, data.begin() + 17);
    data[511] = 0; // beyond the 247 places
    host.inputSettings = data;
    bool on = false;
    std::wstring address;
    std::vector<int> universes;
    QObject::connect(&trigger, &ArtNetTrigger::artNetDMXInputSettingsReceived,
                     [&](bool enabled, const std::wstring& ip, const std::vector<int>& used) {
                         on = enabled;
                         address = ip;
                         universes = used;
                     });
    ASSERT_TRUE(host.Start());
    Tick(3);
    EXPECT_TRUE(on);
    EXPECT_EQ(address, L"2.0.0.5");
    EXPECT_EQ(universes, (std::vector<int>{0x1234, 0x7FFF}));
    host.inputSettings.assign(512, 0xFF);
    host.inputSettings[0] = 0;
    Tick(3);
    EXPECT_FALSE(on);
    EXPECT_TRUE(universes.empty());
    EXPECT_EQ(address.size(), 16U);
}

TEST_F(HostChannel, AFloodLeavesTheTickShortAndTheHostHeard)
{
    ASSERT_TRUE(Connect());
    // Each message that is handled brings the next one: the flood has no end of its own, however
    // slow or busy the machine is.
    constexpr int neverEnding = 200'000;
    int handled = 0;
    QObject::connect(&trigger, &ArtNetTrigger::artNetDMXInputSettingsReceived, [&] {
        if (++handled < neverEnding)
            host.Send(0x52);
    });
    for (int i = 0; i < 50; ++i)
        host.Send(0x52);
    for (int tick = 0, before = 0; tick < 5; ++tick, before = handled) {
        Tick();
        EXPECT_LT(handled - before, 5000) << "no machine handles so many in three milliseconds";
    }
    EXPECT_GT(handled, 50);
    EXPECT_EQ(output.GetState(), OutputState::UsingRemoteSocket);
}

TEST_F(HostChannel, EmptyDatagramsDoNotHideTheHost)
{
    ASSERT_TRUE(host.Start());
    host.manners.answersPolls = false;
    Tick();
    for (int i = 0; i < 100; ++i)
        host.SendRaw({});
    host.Send(0x12);
    trigger.Poll();
    EXPECT_TRUE(trigger.IsServerKnown());
}

TEST_F(HostChannel, APortThatAnotherHoldsIsTriedOnceATickAndTakenWhenItIsFree)
{
    const std::string words = "Failed to bind socket. Receiving will not be possible";
    int holder = Platform::OpenUdp();
    ASSERT_TRUE(Platform::BindUdp(holder, {0, UDPSocket::LocalPort}));
    trigger.Poll();
    EXPECT_FALSE(trigger.SendRebind());
    EXPECT_EQ(log.Count(words), 1);
    trigger.Poll();
    EXPECT_EQ(log.Count(words), 2);
    Platform::CloseUdp(holder);
    EXPECT_TRUE(Connect());
}

TEST_F(HostChannel, TwoSocketsShareThePortAndOneMadeAnewSendsAndIsDeaf)
{
    ASSERT_TRUE(host.Start());
    UDPSocket socket;
    std::array<std::byte, 600> buffer{};
    std::size_t length = 0;
    Platform::Endpoint sender;
    EXPECT_FALSE(socket.IsOpen() || socket.Send({}) || socket.Receive(buffer, length, sender));
    ASSERT_TRUE(socket.Initialize(0x7F000001) && socket.Bind());
    EXPECT_TRUE(socket.IsOpen());
    {
        UDPSocket second;
        EXPECT_TRUE(second.Initialize(0x7F000001) && second.Bind());
    }
    ASSERT_TRUE(socket.Reinitialize());
    EXPECT_TRUE(socket.Send(std::as_bytes(std::span("hello", 5))));
    host.Pump();
    EXPECT_EQ(host.TakeLines(), (Lines{"nonsense of 5 bytes"}));
    EXPECT_NE(host.lastSenderPort, 6455);
    host.Send(0x11);
    EXPECT_FALSE(socket.Receive(buffer, length, sender));
}

TEST_F(HostChannel, AChannelThatFailedIsHeardAgain)
{
    ASSERT_TRUE(Connect());
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    for (const bool moreSockets : {true, false}) {
        // The system refuses what goes to the loopback address, as a firewall would.
        ASSERT_EQ(std::system("ip rule add pref 9 lookup local && ip rule del pref 0 && "
                              "ip rule add pref 5 to 127.0.0.1 prohibit"),
                  0);
        log.Clear();
        const rlimit bound{moreSockets ? usual.rlim_cur : 0, usual.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &bound), 0);
        EXPECT_FALSE(trigger.SendRebind());
        EXPECT_FALSE(trigger.SendRebind());
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
        // The fourth failure ends it, or that no other socket can be had, and for the whole tick: a
        // frame of 500 messages would hold the window up.
        EXPECT_EQ(std::ranges::count_if(log.Messages(),
                                        [](const std::string& line) {
                                            return line.starts_with(
                                                "Error ocurred while sending UDP packet: ");
                                        }),
                  moreSockets ? 3 : 1);
        ASSERT_EQ(std::system("ip rule del pref 5 && ip rule add pref 0 lookup local && "
                              "ip rule del pref 9"),
                  0);
        for (int i = 0; i < 5; ++i) {
            Tick();
            Pass(2000);
        }
        EXPECT_TRUE(trigger.IsServerKnown()) << "10 seconds later the host is still heard";
        EXPECT_EQ(host.lastSenderPort, 6455);
    }
}

} // namespace
