// SPDX-License-Identifier: MIT
// What a host passes on, its nodes, its settings and the DMX that it receives, and how the nodes
// share the universes.
#include "HostChannel.h"

#include <algorithm>

#include "Support/ArtNetBytes.h"
#include "Support/Stage.h"

namespace {

class HostNodes : public HostChannel
{
protected:
    void SetUp() override
    {
        host.nodes = {{"A", "2.0.0.10", {0, 5}}, {"B", "2.0.0.11", {32767}}, {"C", "2.0.0.12", {}}};
        ASSERT_TRUE(Connect());
    }
    /// The names of the known nodes after the host was asked.
    std::string Refresh()
    {
        output.RefreshNodes();
        host.Pump();
        host.manners.loss = 0;
        Tick();
        std::string names;
        for (const auto& node : output.GetNodes())
            names += node.Name();
        return names;
    }
};

TEST_F(HostNodes, OnlyACompleteListReplacesTheKnownNodes)
{
    EXPECT_EQ(Refresh(), "ABC");
    (void)Received();
    host.Send(0x61, {0x78, 0x56, 0x34, 0x12}); // what arrived is what we pass on
    Tick();
    EXPECT_EQ(Received(), (Lines{"node count=3 request=305419896 generation=1 name=A "
                                 "address=2.0.0.10 universes=0,5",
                                 "node count=3 request=305419896 generation=1 name=B "
                                 "address=2.0.0.11 universes=32767",
                                 "node count=3 request=305419896 generation=1 name=C "
                                 "address=2.0.0.12 universes="}));
    host.nodes[1].name.clear();
    EXPECT_EQ(Refresh(), "ABC") << "a node without a name is ignored";
    host.nodes[1].name = "D";
    host.nodes[0].address.clear();
    EXPECT_EQ(Refresh(), "ABC") << "a node without an address too";
    host.nodes[0].address = "2.0.0.10";
    host.manners.loss = 1;
    EXPECT_EQ(Refresh(), "ABC") << "a message was lost";
    host.manners.oldBy = 1;
    EXPECT_EQ(Refresh(), "ABC") << "the answer to an older request";
    host.manners.oldBy = 0;
    host.manners.reorders = true;
    EXPECT_EQ(Refresh(), "CDA") << "the order is free";
    LoseHost();
    ASSERT_EQ(output.GetState(), OutputState::UsingLocalSocket);
    EXPECT_EQ(Refresh(), "CDA") << "the service knows them too";
    host.nodes.clear();
    host.nodesGeneration = 2;
    ASSERT_TRUE(Connect());
    EXPECT_EQ(Refresh(), "");
}

TEST_F(HostNodes, AShortMessageReadsAsZerosAndAnEndlessListIsCut)
{
    output.RefreshNodes(); // request 1
    Bytes cut = {'A', 'r', 't', '-', 'N',  'e', 't', 0, 0, 0x99, 0,
                 14,  0,   0,   1,   0x62, 1,   0,   0, 0, 1};
    cut.resize(16 + 12);
    cut.insert(cut.end(), {'S', 'h', 'o', 'r', 't'});
    cut.resize(16 + 76);
    cut.insert(cut.end(), {'2', '.', '0', '.', '0', '.', '9'});
    host.SendRaw(cut);
    trigger.Poll();
    ASSERT_EQ(output.GetNodes().size(), 1U);
    EXPECT_EQ(output.GetNodes()[0].Name(), "Short");
    EXPECT_EQ(output.GetNodes()[0].Ip(), "2.0.0.9");
    EXPECT_TRUE(output.GetNodes()[0].universes.empty());

    const ArtNetNodeInfo node = output.GetNodes()[0];
    output.ClearRemoteNodes();
    for (int i = 0; i < 5000; ++i)
        output.AddRemoteNode(node, 4097, 1);
    EXPECT_EQ(output.GetNodes().size(), 1U);
    EXPECT_EQ(Refresh(), "ABC");
}

TEST_F(HostChannel, SettingsOfTheHost)
{
    Bytes data(512, 0xFF);
    data[0] = 2;
    std::ranges::copy(std::string_view("2.0.0.5\0", 8), data.begin() + 1);
    // Universe 0x1234, then 0x8000, which is an empty place, then 0x7FFF.
    std::ranges::copy(Bytes{0x34, 0x12, 0x00, 0x80, 0xFF, 0x7F}, data.begin() + 17);
    data[510] = 1; // the last place: 0x0101
    data[509] = 1;
    data[511] = 0; // beyond the places
    host.inputSettings = data;
    std::vector<std::tuple<bool, std::wstring, std::vector<int>>> received;
    QObject::connect(&trigger, &ArtNetTrigger::artNetDMXInputSettingsReceived,
                     [&](bool enabled, const std::wstring& ip, const std::vector<int>& used) {
                         received.emplace_back(enabled, ip, used);
                     });
    ASSERT_TRUE(host.Start());
    Tick(3);
    host.inputSettings.assign(512, 0xFF);
    host.inputSettings[0] = 0;
    std::fill_n(host.inputSettings.begin() + 1, 16, std::uint8_t{'7'});
    Tick(3);
    ASSERT_FALSE(received.empty());
    EXPECT_EQ(received.front(),
              std::tuple(true, std::wstring(L"2.0.0.5"), std::vector<int>{0x1234, 0x7FFF, 0x101}));
    EXPECT_EQ(received.back(), std::tuple(false, std::wstring(16, L'7'), std::vector<int>{}));
}

// ---- Received DMX -------------------------------------------------------------------------------

class Merging : public HostChannel
{
protected:
    /// From universe 2 to universe 16 on.
    static UniverseMerging Universes(int count)
    {
        return {true, 0, 2, count, 1, 0, MergerDMXSource::PixelWeft};
    }
    /// Merges what has arrived, and gives the channels of a universe.
    Bytes Merged(std::uint16_t portAddress)
    {
        output.ClearUniverses();
        output.MergeInputUniverses();
        const auto& table = output.GetUniverses().Broadcast();
        const auto found = table.find(portAddress);
        if (found == table.end())
            return {};
        return {found->second.channels.begin(), found->second.channels.end()};
    }
    /// The same after the host answered a request.
    Bytes Asked(std::uint16_t portAddress = 16)
    {
        (void)Merged(portAddress);
        host.Pump();
        host.manners.loss = 0;
        trigger.Poll();
        return Merged(portAddress);
    }
};

TEST_F(Merging, OnlyACompleteAnswerOfTheHostCounts)
{
    host.input = {{2, 0x22}, {3, 0x33}};
    host.inputUniverses = 2;
    ASSERT_TRUE(Connect(Universes(2)));
    EXPECT_EQ(Merged(16), Bytes(512, 0)) << "the answer is not there yet";
    EXPECT_EQ(Received(), (Lines{"input-wanted first=2 request=1"}));
    trigger.Poll();
    EXPECT_EQ(Merged(16), Bytes(512, 0x22));
    EXPECT_EQ(Merged(17), Bytes(512, 0x33));
    EXPECT_EQ(output.GetUniverses().Broadcast().size(), 2U);
    host.input[2] = 0x44;
    host.manners.loss = 1;
    EXPECT_EQ(Asked(), Bytes(512, 0x22)) << "lost";
    host.manners.oldBy = 1;
    EXPECT_EQ(Asked(), Bytes(512, 0x22)) << "the answer to an older request";
    host.manners.oldBy = 0;
    host.manners.reorders = true;
    EXPECT_EQ(Asked(), Bytes(512, 0x44)) << "the order of the pieces is free";
    host.inputUniverses = 1; // fewer than were asked for
    EXPECT_EQ(Asked(17), Bytes(512, 0));
    EXPECT_EQ(Asked(16), Bytes(512, 0x44));
    ChooseNetwork();
    (void)Received();
    EXPECT_EQ(Merged(16), Bytes());
    EXPECT_TRUE(Received().empty()) << "with merging off there is no request";
}

TEST_F(Merging, AnAnswerHas128PiecesAtMost)
{
    ASSERT_TRUE(Connect(Universes(64)));
    host.inputUniverses = 0; // this test sends the answers
    std::uint8_t request = 0;
    for (const auto pieces : Bytes{128, 129, 130}) {
        (void)Merged(16);
        (void)Received();
        ++request;
        for (std::uint8_t index = 0; index < pieces; ++index) {
            Bytes piece(8 + 256, pieces);
            const Bytes head = {pieces, 0, index, 0, request, 0, 0, 0};
            std::ranges::copy(head, piece.begin());
            piece.back() = index;
            host.Send(0x72, piece);
            trigger.Poll();
        }
        for (const auto universe : Bytes{0, 63}) {
            Bytes expected(512, 128);
            expected[255] = static_cast<std::uint8_t>(2 * universe);
            expected[511] = static_cast<std::uint8_t>(2 * universe + 1);
            output.ClearUniverses();
            EXPECT_EQ(Merged(static_cast<std::uint16_t>(16 + universe)), expected) << int{pieces};
            ++request;
        }
    }
}

TEST_F(Merging, OnOurOwnPort)
{
    int announced = 0;
    QObject::connect(&output, &ArtNetOutput::dataInOn, [&announced] { ++announced; });
    output.CheckInput();
    output.Initialize(L"127.0.0.1", L"127.255.255.255", L"127.0.0.1", Universes(2));
    Tick(12);
    ASSERT_EQ(output.GetState(), OutputState::UsingLocalSocket);
    Stage::Socket(0, 0).Send(Stage::Loopback, ArtNetBytes::Dmx(3, {0xAB, 0xCD}));
    EXPECT_TRUE(Stage::ComesTrue([&] {
        output.CheckInput();
        return announced > 0;
    }));
    output.CheckInput();
    EXPECT_EQ(announced, 1) << "once for what was received";
    EXPECT_EQ(Merged(16), Bytes(512, 0)) << "universe 2 was not sent";
    Bytes received(512, 0);
    received[0] = 0xAB;
    received[1] = 0xCD;
    EXPECT_EQ(Merged(17), received);
}

// ---- Universes by node --------------------------------------------------------------------------

class AutoUnicast : public HostNodes
{
protected:
    /// The destinations of one frame with universe 5 and one that no node wants.
    Lines Frame()
    {
        output.ClearUniverses();
        output.CopyToUniverse(5, L"Auto", 1, Bytes{9});
        output.CopyToUniverse(6, L"Auto", 1, Bytes{9});
        (void)Received();
        output.SendAutoUnicastUniverses();
        Lines destinations;
        for (const std::string& line : Received())
            destinations.push_back(line.substr(0, line.find(" channels=")));
        return destinations;
    }
};

TEST_F(AutoUnicast, UniversesGoToTheNodesThatAnnouncedThem)
{
    const std::string toA = "universe address=5 pair=0 to=2.0.0.10";
    host.nodes = {{"A", "2.0.0.10", {5, 9}}, {"B", "2.0.0.11", {9}}};
    (void)Refresh();
    EXPECT_EQ(Frame(), (Lines{toA}));
    EXPECT_EQ(Frame(), (Lines{toA}));
    host.nodes[1].universes = {6}; // a node that changes in a list of the same generation
    (void)Refresh();
    EXPECT_EQ(Frame(), (Lines{toA})) << "ends at the universe that was not counted";
    EXPECT_TRUE(log.Has("Tried to autounicast to Port-Address with no subscribers, forcing "
                        "subscribers update"));
    const Lines both = {toA, "universe address=6 pair=0 to=2.0.0.11"};
    EXPECT_EQ(Frame(), both);
    host.nodes[1].address = "10.0.0.9"; // outside the network
    ++host.nodesGeneration;
    (void)Refresh();
    EXPECT_EQ(Frame(), (Lines{toA}));
    EXPECT_EQ(Frame(), (Lines{toA}));
}

TEST_F(AutoUnicast, With41SubscribersAUniverseIsBroadcastAfterTheCount)
{
    const auto broadcast = "universe address=5 pair=0 to=2.255.255.255";
    host.nodes.clear();
    for (int count = 1; count <= 42; ++count) {
        host.nodes.push_back({"N", "2.0.1." + std::to_string(count), {5}});
        if (count < 40)
            continue;
        ++host.nodesGeneration;
        log.Clear();
        (void)Refresh();
        const Lines counting = Frame();
        EXPECT_EQ(counting.size(), host.nodes.size());
        EXPECT_EQ(std::ranges::count(counting, broadcast), 0);
        EXPECT_EQ(std::ranges::count(Frame(), broadcast), count > 40 ? count : 0);
        EXPECT_EQ(log.Has("Port-Address 5 will use broadcast, number of subscribers is " +
                          std::to_string(count)),
                  count > 40);
        EXPECT_EQ(log.Count("Detected devices version changed, clearing autounicast subscribers"),
                  1);
    }
    ChooseNetwork(); // counts again
    Tick(5);
    EXPECT_EQ(std::ranges::count(Frame(), broadcast), 0);
}

} // namespace
