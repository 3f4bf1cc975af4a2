// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOutbox.h"
#include "ArtNet/ArtNetSpread.h"

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Clock.h"

namespace {

// That no packet is lost between two threads is judged where silent hosts and living ones are sent
// to.
std::vector<ArtNetOutbox::Packet> Flushed(ArtNetOutbox& outbox)
{
    std::vector<ArtNetOutbox::Packet> all;
    outbox.Flush([&all](auto packets) { all.insert(all.end(), packets.begin(), packets.end()); });
    return all;
}

int UniverseOf(const ArtNetOutbox::Packet& packet)
{
    return ArtNetPackets::ReadDmx(std::span(packet.bytes).first(packet.size))->portAddress;
}

TEST(Outbox, CallsForTheFirstPacketOfAFlushOnlyAndKeepsTheNewest)
{
    ArtNetOutbox outbox;
    EXPECT_TRUE(outbox.Add(0x02000001, 7, std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_FALSE(outbox.Add(0x02000002, 8, {}));
    auto packets = Flushed(outbox);
    ASSERT_EQ(packets.size(), 2U);
    EXPECT_EQ(packets[0].address, 0x02000001U);
    EXPECT_EQ(packets[0].size, 22U);
    EXPECT_EQ(packets[1].size, 18U);
    EXPECT_TRUE(Flushed(outbox).empty());

    // What is added during a flush is sent with it.
    EXPECT_TRUE(outbox.Add(0x02000001, 9, {}));
    std::vector<int> universes;
    outbox.Flush([&](auto batch) {
        universes.push_back(UniverseOf(batch[0]));
        EXPECT_FALSE(universes.size() == 1 && outbox.Add(1, 2, {}));
    });
    EXPECT_EQ(universes, (std::vector<int>{9, 2}));

    for (std::size_t i = 0; i <= ArtNetOutbox::MaxWaiting; ++i)
        EXPECT_EQ(outbox.Add(1, static_cast<std::uint16_t>(i), {}), i == 0);
    packets = Flushed(outbox);
    ASSERT_EQ(packets.size(), 1U);
    EXPECT_EQ(UniverseOf(packets[0]), int{ArtNetOutbox::MaxWaiting});
}

TEST(Outbox, HandsAFrameOverAsOneWithItsSyncLast)
{
    ArtNetOutbox outbox;
    outbox.BeginFrame(1'000'000'000);
    const std::int64_t begin = Platform::MonotonicNanoseconds();
    EXPECT_FALSE(outbox.Add(1, 7, {}));
    EXPECT_TRUE(Flushed(outbox).empty()) << "half a frame";
    EXPECT_FALSE(outbox.Add(2, 8, {}));
    EXPECT_FALSE(outbox.AddSync(3));
    EXPECT_TRUE(outbox.EndFrame());
    const auto packets = Flushed(outbox);
    ASSERT_EQ(packets.size(), 3U);
    EXPECT_GE(packets[0].expires, begin + 1'000'000'000);
    EXPECT_TRUE(packets[2].IsSync());
    EXPECT_FALSE(packets[1].IsSync());
    outbox.BeginFrame(1);
    EXPECT_FALSE(outbox.EndFrame()) << "an empty one";
    EXPECT_TRUE(outbox.Add(1, 7, {}));
    EXPECT_GE(Flushed(outbox)[0].expires, begin + 25'000'000);
}

/// A frame of packets for these destinations, a letter each, with '.' for its sync.
std::vector<ArtNetOutbox::Packet> Frame(const std::string& destinations)
{
    ArtNetOutbox outbox;
    outbox.BeginFrame(1'000'000'000);
    for (const char to : destinations) {
        const auto address = static_cast<std::uint32_t>(to);
        EXPECT_FALSE(to == '.' ? outbox.AddSync(address) : outbox.Add(address, 0, {}));
    }
    EXPECT_TRUE(outbox.EndFrame());
    return Flushed(outbox);
}

class Spread : public testing::Test
{
protected:
    void Add(const std::string& destinations)
    {
        sent.emplace_back();
        spread.Add(Frame(destinations), 1'000, send);
    }

    ArtNetSpread spread;
    std::vector<std::string> sent; ///< the destinations of each group
    std::function<void(ArtNetSpread::Packets)> send = [this](ArtNetSpread::Packets packets) {
        for (const ArtNetOutbox::Packet& packet : packets)
            sent.back() += static_cast<char>(packet.address);
    };
};

TEST_F(Spread, OneDestinationGetsItsPacketsInGroupsAndTheWholeFrameLeavesInFiveMilliseconds)
{
    const auto eight = [](std::size_t each, std::size_t last) {
        std::vector<std::string> groups(8, std::string(each, 'a'));
        groups.back().resize(last);
        return groups;
    };
    const std::string a16(16, 'a');
    const std::string small = "aaaaaaaaaabbbbbbbbbbbbbbbbaaaaaa.";
    using Case = std::pair<std::string, std::vector<std::string>>;
    for (const auto& [frame, groups] :
         {Case{a16, {a16}}, Case{small, {small}}, Case{a16 + 'a', {a16, "a"}},
          Case{a16 + "aaaabbbaaaaaaaaaaaaa.", {a16 + "bbb", a16, "a."}},
          Case{std::string(128, 'a'), eight(16, 16)}, Case{std::string(129, 'a'), eight(17, 10)},
          Case{std::string(254, 'a'), eight(32, 30)}})
    {
        sent.clear();
        Add(frame);
        const auto count = static_cast<std::int64_t>(groups.size());
        for (std::int64_t number = 1; spread.HasMore(); ++number) {
            EXPECT_EQ(spread.NextDue(), 1'000 + ArtNetSpread::Longest / count * number);
            sent.emplace_back();
            spread.SendGroup(send);
        }
        EXPECT_EQ(sent, groups);
    }
}

TEST_F(Spread, WhatIsLeftOfAFrameLeavesBeforeTheNext)
{
    const std::string most(40, 'a');
    Add(most);
    Add("b");
    EXPECT_EQ(sent, (std::vector<std::string>{most.substr(0, 16), most.substr(16) + 'b'}));
    EXPECT_FALSE(spread.HasMore());
}

} // namespace
