// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOutbox.h"

#include <vector>

#include <gtest/gtest.h>

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

} // namespace
