// SPDX-License-Identifier: MIT
// Which universes leave, to whom, and what received DMX is merged into them, on both roads.
#include "HostChannel.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>

#include "ArtNet/ZenArtNetService.h"

namespace {

UniverseMerging MergeTwo()
{
    return {true, 0, 2, 2, 1, 0, MergerDMXSource::PixelWeft}; // universes 2 and 3 to 16 and 17
}

Bytes ChannelsOf(const ArtNetOutput& output, std::uint16_t portAddress)
{
    const auto& table = output.GetUniverses().Broadcast();
    const auto found = table.find(portAddress);
    return found == table.end()
               ? Bytes{}
               : Bytes(found->second.channels.begin(), found->second.channels.end());
}

std::size_t CountTo(const Lines& lines, const std::string& address)
{
    return static_cast<std::size_t>(std::ranges::count_if(lines, [&](const std::string& line) {
        return line.find(" to=" + address + " ") != std::string::npos;
    }));
}

class AutoUnicast : public HostChannel
{
protected:
    /// The host knows so many nodes that want universe 5, and tells.
    void Know(int count)
    {
        host.nodes.clear();
        for (int i = 0; i < count; ++i)
            host.nodes.push_back({"Lamp", "2.0.1." + std::to_string(i + 1), {5}});
        ++host.nodesGeneration;
        Refresh();
    }
    void Refresh()
    {
        output.RefreshNodes();
        host.Pump();
        Tick();
        (void)Said();
    }
    Lines Frame()
    {
        output.CopyToUniverse(5, L"Auto", 1, Bytes{9});
        output.CopyToUniverse(6, L"Auto", 1, Bytes{9}); // nobody's
        result = output.SendAutoUnicastUniverses();
        return Said();
    }
    ArtNetOutput::SendResult result;
};

TEST_F(AutoUnicast, FromFortyOneSubscribersOnAUniverseIsBroadcastAfterTheCount)
{
    ASSERT_TRUE(Connect());
    for (const std::size_t nodes : {40U, 41U, 42U}) {
        log.Clear();
        Know(static_cast<int>(nodes));
        Lines said = Frame();
        EXPECT_EQ(said.size(), nodes);
        EXPECT_EQ(CountTo(said, "2.255.255.255"), 0U) << "the counting frame goes by unicast";
        EXPECT_EQ(CountTo(said, "2.0.1.40"), 1U);
        for (std::size_t count = 40; count <= 42; ++count)
            EXPECT_EQ(log.Count("Port-Address 5 will use broadcast, number of subscribers is " +
                                std::to_string(count)),
                      count > 40 && count <= nodes ? 1 : 0);
        said = Frame();
        EXPECT_EQ(said.size(), nodes);
        EXPECT_EQ(CountTo(said, "2.255.255.255"), nodes > 40 ? nodes : 0U);
        EXPECT_TRUE(result.allSent && result.anySent);
        EXPECT_EQ(log.Count("Detected devices version changed, clearing autounicast subscribers"),
                  1);
    }
    ChooseNetwork(); // counts again, from the registration on
    Tick(5);
    (void)Said();
    EXPECT_EQ(CountTo(Frame(), "2.255.255.255"), 0U);
}

TEST_F(AutoUnicast, AUniverseNobodyCountedStopsTheFrameAndForeignNodesGetNone)
{
    ASSERT_TRUE(Connect());
    Know(2);
    (void)Frame();
    host.nodes[0].universes = {5, 6}; // a node that changes, in a list of the same generation
    Refresh();
    EXPECT_EQ(Frame().size(), 1U);
    EXPECT_EQ(log.Count("Tried to autounicast to Port-Address with no subscribers, forcing "
                        "subscribers update"),
              1);
    EXPECT_EQ(Frame().size(), 3U);
    host.nodes[0].address = "10.0.0.9"; // outside the network
    ++host.nodesGeneration;
    Refresh();
    EXPECT_EQ(Frame().size(), 1U);
    EXPECT_EQ(Frame().size(), 1U);
}

TEST_F(HostChannel, MergesWhatTheHostReceived)
{
    host.input = {{2, 0x22}, {3, 0x33}};
    host.inputUniverses = 2;
    ASSERT_TRUE(Connect(MergeTwo()));
    (void)Said();
    output.MergeInputUniverses();
    EXPECT_EQ(ChannelsOf(output, 16), Bytes(512, 0)) << "the answer is still on its way";
    EXPECT_EQ(Said(), (Lines{"input-wanted first=2 request=1"}));
    Tick();
    output.ClearUniverses();
    output.MergeInputUniverses();
    EXPECT_EQ(ChannelsOf(output, 16), Bytes(512, 0x22));
    EXPECT_EQ(ChannelsOf(output, 17), Bytes(512, 0x33));
    EXPECT_EQ(output.GetUniverses().Broadcast().size(), 2U);

    output.Initialize(L"2.0.0.1", L"2.255.255.255", L"", {});
    (void)Said();
    output.MergeInputUniverses();
    EXPECT_TRUE(Said().empty()) << "with the merger off nothing is asked for";
    EXPECT_TRUE(output.GetUniverses().Broadcast().empty());
}

TEST_F(HostChannel, AnAnswerWithALostPieceIsNoAnswer)
{
    host.input = {{2, 0x22}, {3, 0x33}};
    host.inputUniverses = 2;
    ASSERT_TRUE(Connect(MergeTwo()));
    const auto read = [this](double loss) {
        output.ClearUniverses();
        output.MergeInputUniverses();
        host.manners.loss = loss;
        host.Pump();
        host.manners.loss = 0;
        Tick();
        output.ClearUniverses();
        output.MergeInputUniverses();
        Tick(2); // and takes the answer to that
        return ChannelsOf(output, 16);
    };
    EXPECT_EQ(read(0), Bytes(512, 0x22));
    host.input[2] = 0x44;
    host.manners.oldBy = 1;
    EXPECT_EQ(read(0), Bytes(512, 0x22)) << "answers to an older request";
    host.manners.oldBy = 0;
    host.manners.reorders = true;
    (void)read(0);
    EXPECT_EQ(read(0), Bytes(512, 0x44)) << "the order of the pieces is free";
    host.inputUniverses = 65; // more than there is room for
    host.input[2] = 0x55;
    (void)read(0);
    EXPECT_EQ(read(0), Bytes(512, 0x44));
    host.inputUniverses = 1; // less than was asked for: what is missing is dark
    (void)read(0);
    EXPECT_EQ(read(0), Bytes(512, 0x55));
    EXPECT_EQ(ChannelsOf(output, 17), Bytes(512, 0));
    EXPECT_EQ(output.GetUniverses().Broadcast().size(), 2U);
}

TEST_F(HostChannel, MergesFromTheWireOnOurOwnPort)
{
    Zen::ArtNetService::SetGlobal(
        std::make_shared<Zen::ArtNetService>("Test", "#0001 [0001] Ready", false));
    int lamps = 0;
    QObject::connect(&output, &ArtNetOutput::dataInOn, [&lamps] { ++lamps; });
    output.Initialize(L"127.0.0.1", L"127.255.255.255", L"127.0.0.1", MergeTwo());
    Tick(12);
    ASSERT_EQ(output.GetState(), OutputState::UsingLocalSocket);
    const Bytes dmx = {'A', 'r', 't', '-', 'N', 'e', 't', 0, 0,    0x50,
                       0,   14,  0,   0,   3,   0,   0,   2, 0xAB, 0xCD};
    const int console = Platform::OpenUdp();
    ASSERT_FALSE(Platform::SendUdp(console, {0x7F000001, 6454}, std::as_bytes(std::span(dmx))));
    Platform::CloseUdp(console);
    for (int i = 0; i < 500 && lamps == 0; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        output.CheckInput();
    }
    EXPECT_EQ(lamps, 1);
    output.CheckInput();
    EXPECT_EQ(lamps, 1) << "once for what has come";
    output.MergeInputUniverses();
    EXPECT_EQ(ChannelsOf(output, 16), Bytes(512, 0)) << "nobody sent universe 2";
    Bytes received(512, 0);
    received[0] = 0xAB;
    received[1] = 0xCD;
    EXPECT_EQ(ChannelsOf(output, 17), received);
    ChooseNoNetwork();
    output.ClearUniverses();
    Zen::ArtNetService::SetGlobal(nullptr);
}

} // namespace
