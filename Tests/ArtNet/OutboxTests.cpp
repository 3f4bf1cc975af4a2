// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOutbox.h"
#include "ArtNet/ArtNetSpread.h"

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

TEST(Spread, OneDestinationGetsSixteenAtOnceAndTheWholeFrameLeavesInFiveMilliseconds)
{
    // Packets by destination, in the order of a frame, and how the groups look.
    struct Frame
    {
        std::vector<std::pair<std::uint32_t, int>> runs; ///< address, how many
        bool sync;
        std::vector<std::vector<std::pair<std::uint32_t, int>>> groups;
    };
    using Group = std::vector<std::pair<std::uint32_t, int>>;
    for (const auto& [runs, sync, groups] : {
             Frame{{{1, 16}}, false, {{{1, 16}}}},
             Frame{{{1, 10}, {2, 16}, {1, 6}}, true, {{{1, 10}, {2, 16}, {1, 6}, {9, 1}}}},
             Frame{{{1, 17}}, false, {{{1, 16}}, {{1, 1}}}},
             Frame{{{1, 20}, {2, 3}, {1, 13}},
                   true,
                   {{{1, 16}, {2, 3}}, {{1, 16}}, {{1, 1}, {9, 1}}}},
         })
    {
        ArtNetOutbox outbox;
        outbox.BeginFrame(1'000'000'000);
        std::uint16_t universe = 0;
        for (const auto& [address, count] : runs) {
            for (int i = 0; i < count; ++i)
                EXPECT_FALSE(outbox.Add(address, universe++, {}));
        }
        if (sync) {
            EXPECT_FALSE(outbox.AddSync(9));
        }
        EXPECT_TRUE(outbox.EndFrame());

        ArtNetSpread spread;
        std::vector<Group> sent;
        std::vector<int> universes;
        const auto send = [&](ArtNetSpread::Packets packets) {
            for (const ArtNetOutbox::Packet& packet : packets) {
                Group& group = sent.back();
                if (group.empty() || group.back().first != packet.address)
                    group.emplace_back(packet.address, 0);
                ++group.back().second;
            }
        };
        constexpr std::int64_t begin = 1'000;
        sent.emplace_back();
        spread.Add(Flushed(outbox), begin, send);
        while (spread.HasMore()) {
            const auto number = static_cast<std::int64_t>(sent.size());
            EXPECT_EQ(spread.NextDue(), begin + ArtNetSpread::Longest /
                                                    static_cast<std::int64_t>(groups.size()) *
                                                    number);
            sent.emplace_back();
            spread.SendGroup(send);
        }
        EXPECT_EQ(sent, groups);
    }
}

TEST(Spread, WhatIsLeftOfAFrameLeavesBeforeTheNext)
{
    ArtNetOutbox outbox;
    ArtNetSpread spread;
    std::vector<int> universes;
    const auto send = [&](ArtNetSpread::Packets packets) {
        for (const ArtNetOutbox::Packet& packet : packets)
            universes.push_back(UniverseOf(packet));
    };
    std::vector<int> wanted;
    for (int i = 0; i < 41; ++i) {
        if (i == 0 || i == 40)
            outbox.BeginFrame(1'000'000'000);
        static_cast<void>(outbox.Add(1, static_cast<std::uint16_t>(i), {}));
        wanted.push_back(i);
        if (i >= 39 && outbox.EndFrame())
            spread.Add(Flushed(outbox), 0, send);
    }
    EXPECT_EQ(universes, wanted);
    EXPECT_FALSE(spread.HasMore());
}

} // namespace
