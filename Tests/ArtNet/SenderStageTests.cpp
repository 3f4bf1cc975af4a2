// SPDX-License-Identifier: MIT
// The last step of a packet: what leaves when the socket's buffer has little room, and how old.
#include "ArtNet/ArtNetSender.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Clock.h"
#include "Support/Stage.h"

namespace {

using Universes = std::vector<int>;
constexpr std::int64_t Tick = 25'000'000;

class Sender : public testing::Test
{
protected:
    void Send(const Universes& universes, std::int64_t lifetime = Tick)
    {
        std::vector<ArtNetOutbox::Packet> packets(universes.size());
        for (std::size_t i = 0; i < packets.size(); ++i) {
            const auto universe = static_cast<std::uint16_t>(universes[i]);
            packets[i].size = ArtNetPackets::WriteDmx(packets[i].bytes, universe, {});
            packets[i].address = Stage::Loopback;
            packets[i].expires = Platform::MonotonicNanoseconds() + lifetime;
        }
        sender_.Send(packets);
    }

    std::size_t room_ = 0;
    Universes left_; ///< what has left, in order
    ArtNetSender sender_{[this](std::span<const Platform::Datagram> batch) {
        Platform::SendOutcome outcome;
        outcome.sent = std::min(batch.size(), room_);
        outcome.untried = batch.size() - outcome.sent;
        room_ -= outcome.sent;
        for (const Platform::Datagram& datagram : batch.first(outcome.sent))
            left_.push_back(ArtNetPackets::ReadDmx(datagram.bytes)->portAddress);
        return outcome;
    }};
};

// So long that a busy machine lets none of them get too old.
constexpr std::int64_t Fresh = 60'000'000'000;

TEST_F(Sender, AFullBufferKeepsTheRestInOrderUntilThereIsRoomAgain)
{
    room_ = 2;
    Send({1, 2, 3, 4}, Fresh);
    EXPECT_EQ(left_, (Universes{1, 2}));
    room_ = 1;
    Send({5}, Fresh); // it may not overtake an older one
    sender_.SendWaiting();
    EXPECT_EQ(left_, (Universes{1, 2, 3}));
    EXPECT_TRUE(sender_.HasWaiting());
    room_ = 100;
    sender_.SendWaiting();
    EXPECT_FALSE(sender_.HasWaiting());
    Send({6}, Fresh);
    EXPECT_EQ(left_, (Universes{1, 2, 3, 4, 5, 6}));
}

TEST_F(Sender, NothingIsSentThatHasExpiredAndLittleWaits)
{
    room_ = 100;
    Send({1}, -1);
    Send({2}, Fresh);
    EXPECT_EQ(left_, Universes{2});
    room_ = 0;
    Send({3});
    std::this_thread::sleep_for(std::chrono::nanoseconds(Tick));
    room_ = 100;
    sender_.SendWaiting();
    EXPECT_FALSE(sender_.HasWaiting());
    EXPECT_EQ(left_, Universes{2});
    EXPECT_EQ(sender_.Expired(), 2U);

    room_ = 0;
    Send(Universes(5000, 4), Fresh);
    room_ = 5000;
    sender_.SendWaiting();
    EXPECT_EQ(left_.size(), 1U + 4096U);
}

} // namespace
