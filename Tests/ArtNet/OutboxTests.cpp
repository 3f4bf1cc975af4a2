// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOutbox.h"

#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Clock.h"

namespace {

using Packet = ArtNetOutbox::Packet;

/// The universes that a flush gives out.
std::vector<int> Flushed(ArtNetOutbox& outbox)
{
    std::vector<int> universes;
    outbox.Flush([&universes](std::span<const Packet> packets) {
        for (const Packet& packet : packets) {
            const auto dmx = ArtNetPackets::ReadDmx(std::span(packet.bytes).first(packet.size));
            universes.push_back(dmx ? dmx->portAddress : -1);
        }
    });
    return universes;
}

TEST(Outbox, CallsForTheFirstPacketOfAFlushOnly)
{
    ArtNetOutbox outbox;
    const std::array<std::uint8_t, 3> channels{1, 2, 3};
    EXPECT_TRUE(outbox.Add(0x02000001, 7, channels));
    EXPECT_FALSE(outbox.Add(0x02000002, 8, channels));
    std::vector<Packet> packets;
    const auto keep = [&packets](std::span<const Packet> batch) {
        packets.assign(batch.begin(), batch.end());
    };
    outbox.Flush(keep);
    ASSERT_EQ(packets.size(), 2U);
    EXPECT_EQ(packets[0].address, 0x02000001U);
    EXPECT_EQ(packets[1].address, 0x02000002U);
    EXPECT_EQ(packets[1].size, 22U);
    EXPECT_EQ(packets[1].bytes[20], std::byte{3});
    EXPECT_LE(packets[0].written, packets[1].written);
    EXPECT_LT(Platform::MonotonicNanoseconds() - packets[1].written, 5'000'000'000);
    EXPECT_TRUE(outbox.Add(0x02000001, 9, {})); // a shorter packet in a used block
    EXPECT_EQ(Flushed(outbox), std::vector<int>{9});
    EXPECT_EQ(Flushed(outbox), std::vector<int>{});
}

TEST(Outbox, WhatIsAddedDuringAFlushGoesWithIt)
{
    ArtNetOutbox outbox;
    ASSERT_TRUE(outbox.Add(1, 1, {}));
    int calls = 0;
    outbox.Flush([&](std::span<const Packet>) {
        if (++calls == 1) {
            EXPECT_FALSE(outbox.Add(1, 2, {}));
        }
    });
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(outbox.Add(1, 3, {}));
}

TEST(Outbox, BeyondItsBoundTheNewestPacketsStay)
{
    ArtNetOutbox outbox;
    for (std::size_t i = 0; i < ArtNetOutbox::MaxWaiting; ++i)
        (void)outbox.Add(1, 1, {});
    (void)outbox.Add(1, 2, {});
    EXPECT_EQ(Flushed(outbox), std::vector<int>{2});
}

TEST(Outbox, NoPacketIsLostOrStrandedBetweenTwoThreads)
{
    constexpr int count = 20000;
    ArtNetOutbox outbox;
    std::atomic<int> called{0};
    std::atomic<int> taken{0};
    std::atomic<bool> done{false};
    std::vector<int> universes;
    std::thread flusher([&] {
        int served = 0;
        while (!done || served != called) {
            if (served == called) {
                std::this_thread::yield();
                continue;
            }
            ++served;
            for (const int universe : Flushed(outbox))
                universes.push_back(universe);
            taken = static_cast<int>(universes.size());
        }
    });
    for (int i = 0; i < count; ++i) {
        while (i - taken > 4000) // well below the bound, beyond which packets make room
            std::this_thread::yield();
        if (outbox.Add(1, static_cast<std::uint16_t>(i), {}))
            ++called;
    }
    done = true;
    flusher.join();
    ASSERT_EQ(universes.size(), std::size_t{count});
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(universes[static_cast<std::size_t>(i)], i);
}

} // namespace
