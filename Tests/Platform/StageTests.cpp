// SPDX-License-Identifier: MIT
// Adapters and sockets, on a private network. Neighbours are judged with the silent hosts that
// Art-Net is sent to.
#include <algorithm>
#include <chrono>
#include <vector>

#include <net/if.h>
#include <sys/socket.h>

#include <gtest/gtest.h>

#include "Platform/Adapters.h"
#include "Platform/Datagrams.h"
#include "Support/Stage.h"

namespace {

using namespace Stage;
using List = std::vector<NetworkInterface>;

TEST(Adapters, EachAddressIsARecordAndLoopbackIsNone)
{
    const NetworkInterface first{"2.0.0.1", Desk0,  "2.255.255.255",       Broadcast0,
                                 true,      "art0", if_nametoindex("art0")};
    NetworkInterface second{"10.0.0.1", Desk1,  "10.255.255.255",      Broadcast1,
                            true,       "art1", if_nametoindex("art1")};
    const NetworkInterface label{"192.168.7.9", 0xC0A80709, "192.168.7.127",   0xC0A8077F,
                                 true,          "art0",     first.adapterIndex};
    ASSERT_TRUE(Command("desk", "ip addr add 192.168.7.9/25 dev art0 label art0:1"));
    EXPECT_EQ(Platform::GetNetworkInterfaces(), (List{first, label, second}));
    ASSERT_TRUE(Command("desk", "ip addr del 192.168.7.9/25 dev art0"));

    // A pulled cable.
    second.up = false;
    ASSERT_TRUE(Command("hub", "ip link set desk.1 down"));
    EXPECT_TRUE(ComesTrue([&] { return Platform::GetNetworkInterfaces() == List{first, second}; }));
    second.up = true;
    ASSERT_TRUE(Command("hub", "ip link set desk.1 up"));
    EXPECT_TRUE(ComesTrue([&] { return Platform::GetNetworkInterfaces() == List{first, second}; }));
}

/// Datagrams to these addresses, each with one more byte than the one before.
struct Batch
{
    explicit Batch(const std::vector<std::uint32_t>& addresses, std::size_t firstSize = 0)
        : bytes(firstSize + addresses.size(), std::byte{'x'})
    {
        for (const std::uint32_t address : addresses)
            datagrams.push_back({address, 6454, std::span(bytes).first(firstSize++)});
    }
    std::vector<std::byte> bytes;
    std::vector<Platform::Datagram> datagrams;
};

TEST(Datagrams, ABatchOfAnyLengthArrivesInOrderAndIsReadAsFarAsItHasCome)
{
    const Socket receiver(Desk0);
    const Socket sender(Desk1, 7000);
    Platform::DatagramReader reader;
    std::error_code failure;
    for (const std::size_t count : {0U, 1U, 31U, 32U, 33U, 70U}) {
        const Batch batch(std::vector(count, Desk0), 1000 - count);
        const auto outcome = Platform::SendDatagrams(sender.Handle(), batch.datagrams);
        EXPECT_EQ(outcome.sent, count);
        EXPECT_FALSE(outcome.lastError);
        std::size_t read = 0;
        for (auto part = reader.Read(receiver.Handle(), failure); !part.empty();
             part = reader.Read(receiver.Handle(), failure))
        {
            for (const auto& datagram : part) {
                EXPECT_EQ(datagram.address, Desk1);
                EXPECT_EQ(datagram.port, 7000);
                EXPECT_TRUE(std::ranges::equal(datagram.bytes, batch.datagrams[read++].bytes));
            }
        }
        EXPECT_EQ(read, count);
        EXPECT_FALSE(failure);
    }
    EXPECT_TRUE(reader.Read(-1, failure).empty());
    EXPECT_EQ(failure, std::errc::bad_file_descriptor);
}

TEST(Datagrams, ARefusedOneDoesNotHoldBackTheOthersAndAFullBufferGivesThemBack)
{
    constexpr std::uint32_t unreachable = 0xC0A80001;
    constexpr std::uint32_t absent = 0x0200004D;
    const Socket sender(0, 0);
    // The last one is larger than a datagram can be.
    const Batch refused({unreachable, Desk0, unreachable, Desk0, Desk0}, 65504);
    const auto outcome = Platform::SendDatagrams(sender.Handle(), refused.datagrams);
    EXPECT_EQ(outcome.sent, 2U);
    EXPECT_EQ(outcome.untried, 0U);
    EXPECT_EQ(outcome.lastError, std::errc::message_size);
    const int size = 8192;
    setsockopt(sender.Handle(), SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
    const Batch many(std::vector(200, absent));
    const auto full = Platform::SendDatagrams(sender.Handle(), many.datagrams);
    EXPECT_EQ(full.lastError, std::errc::resource_unavailable_try_again);
    EXPECT_GT(full.sent, 0U);
    EXPECT_GT(full.untried, 0U);
    EXPECT_EQ(full.sent + full.untried, 200U);
}

TEST(Datagrams, AnIgnoredSenderIsTheOneWithThisAddressAndPort)
{
    const Socket receiver(Broadcast0);
    ASSERT_FALSE(Platform::IgnoreSender(receiver.Handle(), Desk0, 6454));
    const Socket ignored(Desk0);
    const Socket otherPort(Desk0, 6453);
    const Socket otherAddress(Desk1);
    for (const Socket* sender : {&ignored, &otherPort, &otherAddress, &ignored})
        sender->Send(Broadcast0, {1});
    const auto heard = receiver.All(std::chrono::milliseconds(50));
    ASSERT_EQ(heard.size(), 2U);
    EXPECT_EQ(heard[0].port, 6453);
    EXPECT_EQ(heard[1].source, Desk1);
}

} // namespace
