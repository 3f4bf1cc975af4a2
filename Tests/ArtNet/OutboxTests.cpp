// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOutbox.h"

#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Clock.h"

namespace {

std::vector<ArtNetOutbox::Packet> Flushed(ArtNetOutbox& outbox)
{
    std::vector<ArtNetOutbox::Packet> all;
    outbox.Flush([&all](auto packets) { all.insert(all.end(), packets.begin(), packets.end()); });
    return all;
}

int UniverseOf(const ArtNetOutbox::Packet& packet)
{
    const auto dmx = ArtNetPackets::ReadDmx(std::span(packet.bytes).first(packet.size));
    return dmx ? dmx->portAddress : -1;
}

TEST(Outbox, CallsForTheFirstPacketOfAFlushOnly)
{
    ArtNetOutbox outbox;
    const std::array<std::uint8_t, 3> channels{1, 2, 3};
    EXPECT_TRUE(outbox.Add(0x02000001, 7, channels));
    EXPECT_FALSE(outbox.Add(0x02000002, 8, channels));
    const auto packets = Flushed(outbox);
    ASSERT_EQ(packets.size(), 2U);
    EXPECT_EQ(packets[0].address, 0x02000001U);
    EXPECT_EQ(packets[1].address, 0x02000002U);
    EXPECT_EQ(packets[1].size, 22U);
    EXPECT_EQ(packets[1].bytes[20], std::byte{3});
    EXPECT_LE(packets[0].written, packets[1].written);
    EXPECT_LT(Platform::MonotonicNanoseconds() - packets[1].written, 5'000'000'000);
    EXPECT_TRUE(Flushed(outbox).empty());

    // What is added during a flush goes with it.
    EXPECT_TRUE(outbox.Add(0x02000001, 9, {})); // a shorter packet in a used block
    std::vector<int> universes;
    outbox.Flush([&](auto batch) {
        universes.push_back(UniverseOf(batch[0]));
        if (universes.size() == 1) {
            EXPECT_FALSE(outbox.Add(1, 2, {}));
        }
    });
    EXPECT_EQ(universes, (std::vector<int>{9, 2}));
    EXPECT_TRUE(outbox.Add(1, 3, {}));
}

TEST(Outbox, BeyondItsBoundTheNewestPacketsStay)
{
    ArtNetOutbox outbox;
    for (std::size_t i = 0; i <= ArtNetOutbox::MaxWaiting; ++i)
        (void)outbox.Add(1, static_cast<std::uint16_t>(i), {});
    const auto packets = Flushed(outbox);
    ASSERT_EQ(packets.size(), 1U);
    EXPECT_EQ(UniverseOf(packets[0]), int{ArtNetOutbox::MaxWaiting});
}

TEST(Outbox, NoPacketIsLostOrStrandedBetweenTwoThreads)
{
    constexpr int count = 20000;
    ArtNetOutbox outbox;
    std::atomic<int> called{0};
    std::atomic<int> taken{0};
    std::atomic<bool> done{false};
    std::thread flusher([&] {
        for (int served = 0; !done || served != called;) {
            if (served == called) {
                std::this_thread::yield();
                continue;
            }
            ++served;
            for (const auto& packet : Flushed(outbox))
                EXPECT_EQ(UniverseOf(packet), taken++);
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
    EXPECT_EQ(taken, count);
}

} // namespace
