// SPDX-License-Identifier: MIT
// Cables and addresses that change while clients stay registered. What the program does when an
// adapter goes down or away is tried from end to end.
#include "ArtNet/ArtNetClient.h"

#include <array>
#include <thread>

#include "ArtNet/ZenArtNetService.h"
#include "ArtNetStage.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;

class Adapter : public ArtNetStage
{
protected:
    /// Whether light goes out on the second adapter, by broadcast and unicast, and comes in.
    bool Works(ArtNetClient& client)
    {
        client.SendDmx("10.255.255.255", 1, Bytes{1, 2});
        client.SendDmx("10.0.0.10", 2, Bytes{3, 4});
        rig_->Send(Broadcast1, Dmx(3, {counter_, 0}));
        bool broadcast = false;
        bool unicast = false;
        for (const Heard& heard : rig_->All(20ms)) {
            broadcast = broadcast || (heard.bytes == Dmx(1, {1, 2}) && heard.port == 6454);
            unicast = unicast || (heard.bytes == Dmx(2, {3, 4}) && heard.port == 6454);
        }
        std::array<std::uint8_t, 512> page{};
        client.ReadDmx(3, page);
        return broadcast && unicast && page[0] == counter_++;
    }

    /// Whether it works within two seconds.
    bool ComesToWork(ArtNetClient& client)
    {
        return ComesTrue([&] { return Works(client); }, 2s);
    }

    std::unique_ptr<Socket> rig_ = RigSocket();
    std::uint8_t counter_ = 1;
};

TEST_F(Adapter, ACableThatComesBackBringsNoOldLight)
{
    ArtNetClient client("10.0.0.1", "", 3, 1, "test");
    ASSERT_TRUE(ComesToWork(client));
    ASSERT_TRUE(Command("hub", "ip link set desk.1 down"));
    for (int i = 0; i < 40; ++i) {
        client.SendDmx("10.0.0.10", 99, Bytes(512, 9));
        std::this_thread::sleep_for(10ms);
    }
    (void)rig_->All(0ms);
    ASSERT_TRUE(Command("hub", "ip link set desk.1 up"));
    const std::int64_t begin = WallClock();
    bool old = false;
    EXPECT_TRUE(ComesTrue([&] {
        client.SendDmx("10.0.0.10", 98, Bytes(512, 8));
        for (const Heard& heard : rig_->All(20ms)) {
            old = old || heard.bytes == Dmx(99, Bytes(512, 9));
            if (heard.bytes == Dmx(98, Bytes(512, 8)))
                return true;
        }
        return false;
    }));
    EXPECT_FALSE(old);
    EXPECT_LE(WallClock() - begin, 2'000'000'000);
    EXPECT_TRUE(ComesToWork(client));
}

TEST_F(Adapter, TwoAddressesOfOneCardShareItsSocket)
{
    ASSERT_TRUE(Command("desk", "ip addr add 192.168.5.1/24 brd + dev art1"));
    ASSERT_TRUE(Command("rig", "ip addr add 192.168.5.10/24 brd + dev art1"));
    const auto hears = [&](const ArtNetClient& client, std::uint32_t address) {
        rig_->Send(address, Dmx(7, {counter_, 0}));
        std::array<std::uint8_t, 512> page{};
        return ComesTrue([&] {
                   client.ReadDmx(7, page);
                   return page[0] == counter_;
               }) &&
               counter_++ > 0;
    };
    auto output = std::make_unique<ArtNetClient>("10.0.0.1", "10.255.255.255", 3, 1, "test");
    auto input = std::make_unique<ArtNetClient>("192.168.5.1", "", 7, 1, "test");
    EXPECT_TRUE(ComesToWork(*output));
    EXPECT_TRUE(hears(*input, 0xC0A80501));
    EXPECT_TRUE(hears(*input, 0xC0A805FF));
    const ArtNetNodeInfo node;
    output->FeedNodes({&node, 1});
    // The network is chosen again, and then the second one alone.
    auto anew = std::make_unique<ArtNetClient>("10.0.0.1", "10.255.255.255", 3, 1, "test");
    output.reset();
    EXPECT_TRUE(ComesToWork(*anew));
    EXPECT_TRUE(hears(*input, 0xC0A805FF));
    anew.reset();
    ArtNetNodeList nodes;
    input->GetNodes(nodes);
    EXPECT_EQ(nodes.size(), 1U) << "the nodes of the card stay known";
    (void)rig_->All(50ms);
    input->SendDmx("192.168.5.10", 1, Bytes{5, 6});
    const auto heard = rig_->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->source, 0xC0A80501U);
    EXPECT_EQ(heard->port, 6454);
    EXPECT_EQ(log_.Count("Creating new 10.0.0.1 server"), 1);
    EXPECT_EQ(Zen::ArtNetService::Global()->GetStatus(), Zen::ArtNetServerStatus::Ready);
    ASSERT_TRUE(Command("desk", "ip addr del 192.168.5.1/24 dev art1"));
    ASSERT_TRUE(Command("rig", "ip addr del 192.168.5.10/24 dev art1"));
}

TEST_F(Adapter, AnAddressThatChangesKeepsTheOldClientAndServesTheNewOne)
{
    auto client = std::make_unique<ArtNetClient>("10.0.0.1", "", 3, 1, "test");
    ASSERT_TRUE(ComesToWork(*client));
    ASSERT_TRUE(Command("desk", "ip addr add 10.0.0.2/8 brd + dev art1"));
    ASSERT_TRUE(Command("desk", "ip addr del 10.0.0.1/8 dev art1"));
    // Taking the first address away takes the others of its network along.
    ASSERT_TRUE(Command("desk", "ip addr replace 10.0.0.2/8 brd + dev art1"));
    EXPECT_TRUE(ComesToWork(*client));
    // New clients come before the old ones go.
    auto anew = std::make_unique<ArtNetClient>("10.0.0.2", "", 3, 1, "test");
    client.reset();
    EXPECT_TRUE(ComesToWork(*anew));
    (void)rig_->All(50ms);
    anew->SendDmx("10.0.0.10", 5, Bytes{1, 2});
    const auto heard = rig_->Next(2s);
    ASSERT_TRUE(heard);
    EXPECT_EQ(heard->source, 0x0A000002U);
    EXPECT_EQ(heard->port, 6454);
    // The old address may still be the one that is chosen when a socket is made anew.
    anew.reset();
    auto old = std::make_unique<ArtNetClient>("10.0.0.1", "", 3, 1, "test");
    EXPECT_TRUE(ComesToWork(*old));
    EXPECT_FALSE(log_.Has("failed to bind socket: Cannot assign requested address"));
    old.reset();
    ASSERT_TRUE(Command("desk", "ip addr add 10.0.0.1/8 brd + dev art1"));
    ASSERT_TRUE(Command("desk", "ip addr del 10.0.0.2/8 dev art1"));
    ASSERT_TRUE(Command("desk", "ip addr replace 10.0.0.1/8 brd + dev art1"));
}

} // namespace
