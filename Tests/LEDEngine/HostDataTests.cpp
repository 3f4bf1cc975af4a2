// SPDX-License-Identifier: MIT
// What a host passes on: its nodes, its settings and the DMX that it receives.
#include "HostChannel.h"

#include <algorithm>
#include <tuple>

#include "Show.h"
#include "Support/ArtNetBytes.h"
#include "Support/Stage.h"

namespace {

class HostNodes : public HostChannel
{
protected:
    /// The names of the known nodes after the host was asked.
    std::string Refresh()
    {
        output.RefreshNodes();
        host.Pump();
        host.manners.loss = 0;
        Tick(5);
        std::string names;
        for (const auto& node : output.GetNodes())
            names += node.Name();
        return names;
    }
    /// How many times the universes 5 and 6 are sent.
    std::size_t Frame()
    {
        (void)Received();
        output.ClearUniverses();
        output.CopyToUniverse(5, L"Auto", 1, Bytes{9});
        output.CopyToUniverse(6, L"Auto", 1, Bytes{9});
        output.SendAutoUnicastUniverses();
        return Received().size();
    }
};

TEST_F(HostNodes, OnlyACompleteListReplacesTheKnownNodes)
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
    host.manners.loss = 1;
    EXPECT_EQ(Refresh(), "ABC") << "a message was lost";
    host.manners.oldBy = 1;
    EXPECT_EQ(Refresh(), "ABC") << "the answer to an older request";
    for (int i = 0; i < 5000; ++i) // a list that never ends
        output.AddRemoteNode(output.GetNodes()[0], 4097, 1);
    EXPECT_EQ(output.GetNodes().size(), 3U);
    host.manners.oldBy = 0;
    host.manners.reorders = true;
    EXPECT_EQ(Refresh(), "CDA") << "the order is free";
    LoseHost();
    EXPECT_EQ(Refresh(), "CDA") << "the service knows them too";
    host.nodes.clear();
    Connect();
    EXPECT_EQ(Refresh(), "");
}

TEST_F(HostNodes, GetTheUniversesThatTheyAnnounced)
{
    host.nodes = {{"A", "2.0.0.10", {5, 9}}, {"B", "2.0.0.11", {9}}};
    Connect();
    (void)Refresh();
    EXPECT_EQ(Frame(), 1U);
    EXPECT_EQ(Frame(), 1U);
    host.nodes[1].universes = {6, 5}; // a node that changes in a list of the same generation
    (void)Refresh();
    EXPECT_EQ(Frame(), 1U) << "ends at a universe that was not counted";
    EXPECT_TRUE(log.Has("Tried to autounicast to Port-Address with no subscribers, forcing "
                        "subscribers update"));
    EXPECT_EQ(Frame(), 3U);
    host.nodes[1].address = "10.0.0.9"; // outside the network
    ++host.nodesGeneration;
    (void)Refresh();
    EXPECT_EQ(Frame(), 1U);
    EXPECT_EQ(Frame(), 1U);
    EXPECT_EQ(log.Count("Detected devices version changed, clearing autounicast subscribers"), 3);
}

TEST_F(HostChannel, SettingsOfTheHost)
{
    Bytes data(512, 0xFF);
    std::ranges::copy(Bytes{2, '2', '.', '0', '.', '0', '.', '5', 0}, data.begin());
    // Universe 0x1234, then 0x8000, which is an empty place, then 0x7FFF; the last place and
    // beyond.
    std::ranges::copy(Bytes{0x34, 0x12, 0x00, 0x80, 0xFF, 0x7F}, data.begin() + 17);
    std::ranges::copy(Bytes{2, 1, 0}, data.begin() + 509);
    using Settings = std::tuple<bool, std::wstring, std::vector<int>>;
    std::vector<Settings> received;
    QObject::connect(&trigger, &ArtNetTrigger::artNetDMXInputSettingsReceived,
                     [&](bool enabled, const std::wstring& ip, const std::vector<int>& used) {
                         received.emplace_back(enabled, ip, used);
                     });
    ASSERT_TRUE(host.Start());
    Tick();
    host.Send(0x52, data);
    std::fill(data.begin(), data.begin() + 17, std::uint8_t{'7'});
    data[0] = 0;
    std::fill(data.begin() + 17, data.end(), std::uint8_t{0xFF});
    host.Send(0x52, data);
    Bytes cut = {'A', 'r', 't', '-', 'N', 'e', 't', 0, 0, 0x99, 0, 14, 0, 0, 1, 0x52, 1, '9'};
    host.SendRaw(cut); // what is missing reads as zeros
    Poll();
    EXPECT_EQ(received, (std::vector<Settings>{{true, L"2.0.0.5", {0x1234, 0x7FFF, 0x102}},
                                               {false, std::wstring(16, L'7'), {}},
                                               {true, L"9", std::vector<int>(247, 0)}}));
}

// ---- Received DMX -------------------------------------------------------------------------------

class Merging : public HostChannel
{
protected:
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
        host.manners.loss = 0;
        Poll();
        return Merged(portAddress);
    }
};

TEST_F(Merging, OnlyACompleteAnswerOfTheHostCounts)
{
    host.input = {{2, 0x22}, {3, 0x33}};
    host.inputUniverses = 2;
    Connect(Merge(2, 2, 16));
    EXPECT_EQ(Merged(), Bytes(512, 0)) << "the answer is not there yet";
    EXPECT_EQ(Received(), (Lines{"input-wanted first=2 request=1"}));
    Poll();
    EXPECT_EQ(Merged(16), Bytes(512, 0x22));
    EXPECT_EQ(Merged(17), Bytes(512, 0x33));
    EXPECT_EQ(Merged(18), Bytes());
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
    ChooseNetwork();
    (void)Received();
    EXPECT_EQ(Merged(), Bytes());
    EXPECT_TRUE(Received().empty()) << "with merging off there is no request";
}

TEST_F(Merging, AnAnswerHas128PiecesAtMost)
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

TEST_F(Merging, ReceivedOnOurOwnPort)
{
    int announced = 0;
    QObject::connect(&output, &ArtNetOutput::dataInOn, [&announced] { ++announced; });
    output.CheckInput();
    output.Initialize(L"127.0.0.1", L"127.255.255.255", L"127.0.0.1", Merge(2, 2, 16));
    Tick(12);
    Stage::Socket(0, 0).Send(Stage::Loopback, ArtNetBytes::Dmx(3, Bytes(512, 0xAB)));
    EXPECT_TRUE(Stage::ComesTrue([&] {
        output.CheckInput();
        return announced > 0;
    }));
    output.CheckInput();
    EXPECT_EQ(announced, 1) << "once for what was received";
    EXPECT_EQ(Merged(16), Bytes(512, 0)) << "universe 2 was not sent";
    EXPECT_EQ(Merged(17), Bytes(512, 0xAB));
}

} // namespace
