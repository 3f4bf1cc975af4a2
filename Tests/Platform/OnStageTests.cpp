// SPDX-License-Identifier: MIT
// The cases that need adapters. They run on a private stage network (Tools/stage-net -2 desk),
// where this program stands on "desk" with art0 = 2.0.0.1/8 and art1 = 10.0.0.1/8, and a rig on the
// other end.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Platform/Adapters.h"
#include "Platform/Datagrams.h"
#include "Platform/Neighbours.h"

namespace {

constexpr std::uint32_t Any = 0;
constexpr std::uint32_t Desk0 = 0x02000001;
constexpr std::uint32_t Desk1 = 0x0A000001;
constexpr std::uint32_t Rig0 = 0x0200000A;
constexpr std::uint32_t Rig1 = 0x0A00000A;

sockaddr_in AddressOf(std::uint32_t address, std::uint16_t port)
{
    sockaddr_in record{};
    record.sin_family = AF_INET;
    record.sin_addr.s_addr = htonl(address);
    record.sin_port = htons(port);
    return record;
}

class Socket
{
public:
    Socket()
        : fd(socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        const int on = 1;
        setsockopt(fd, SOL_SOCKET, SO_BROADCAST, &on, sizeof on);
    }
    ~Socket() { close(fd); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    [[nodiscard]] bool Bind(std::uint32_t address, std::uint16_t port) const
    {
        const sockaddr_in record = AddressOf(address, port);
        return bind(fd, reinterpret_cast<const sockaddr*>(&record), sizeof record) == 0;
    }
    void Send(std::uint32_t address, std::uint16_t port, const std::string& text) const
    {
        const sockaddr_in record = AddressOf(address, port);
        sendto(fd, text.data(), text.size(), 0, reinterpret_cast<const sockaddr*>(&record),
               sizeof record);
    }
    /// Everything that has come, until nothing more comes for a moment.
    [[nodiscard]] std::vector<std::string> Heard() const
    {
        std::vector<std::string> texts;
        pollfd waiting{fd, POLLIN, 0};
        std::array<char, 2048> buffer{};
        while (texts.size() < 1000 && poll(&waiting, 1, 200) > 0) {
            const ssize_t size = recv(fd, buffer.data(), buffer.size(), 0);
            if (size >= 0)
                texts.emplace_back(buffer.data(), static_cast<std::size_t>(size));
        }
        return texts;
    }

    const int fd;
};

class OnStage : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::getenv("STAGE_NET"))
            GTEST_SKIP() << "no stage network here: PlatformTestsOnStage runs this case";
    }

    /// Runs `work` with this thread on the rig; sockets made there stay there.
    template <typename Work>
    static void OnRig(Work work)
    {
        const int desk = open("/proc/self/ns/net", O_RDONLY | O_CLOEXEC);
        const std::string rigPath =
            std::string("/proc/") + std::getenv("STAGE_PID_rig") + "/ns/net";
        const int rig = open(rigPath.c_str(), O_RDONLY | O_CLOEXEC);
        ASSERT_EQ(setns(rig, CLONE_NEWNET), 0);
        work();
        ASSERT_EQ(setns(desk, CLONE_NEWNET), 0);
        close(rig);
        close(desk);
    }

    static void Command(const std::string& host, const std::string& command)
    {
        const std::string line = "\"$STAGE_NET\" " + host + ' ' + command;
        ASSERT_EQ(std::system(line.c_str()), 0) << line;
    }

    static NetworkInterface Find(const std::string& ip)
    {
        const auto all = Platform::GetNetworkInterfaces();
        const auto found = std::ranges::find(all, ip, &NetworkInterface::ip);
        return found == all.end() ? NetworkInterface{} : *found;
    }
};

TEST_F(OnStage, AdaptersAreListedWithoutLoopback)
{
    const NetworkInterface first{"2.0.0.1", Desk0, "2.255.255.255", 0x02FFFFFF, true};
    const NetworkInterface second{"10.0.0.1", Desk1, "10.255.255.255", 0x0AFFFFFF, true};
    const auto all = Platform::GetNetworkInterfaces();
    EXPECT_EQ(all.size(), 2U);
    EXPECT_EQ(Find("2.0.0.1"), first);
    EXPECT_EQ(Find("10.0.0.1"), second);
    EXPECT_EQ(Platform::AdapterNameOf(Desk1), "art1");
    EXPECT_EQ(Platform::AdapterNameOf(Rig0), "");
}

TEST_F(OnStage, ASecondAddressIsARecordOfItsOwnOnTheSameAdapter)
{
    Command("desk", "ip addr add 192.168.7.9/25 dev art0 label art0:1");
    const NetworkInterface expected{"192.168.7.9", 0xC0A80709, "192.168.7.127", 0xC0A8077F, true};
    EXPECT_EQ(Find("192.168.7.9"), expected);
    EXPECT_EQ(Platform::AdapterNameOf(0xC0A80709), "art0");
    Command("desk", "ip addr del 192.168.7.9/25 dev art0");
    EXPECT_EQ(Platform::AdapterNameOf(0xC0A80709), "");
}

TEST_F(OnStage, APulledCableIsNotUp)
{
    const auto comesTo = [](bool up) {
        for (int i = 0; i < 100 && Find("10.0.0.1").up != up; ++i)
            usleep(20000);
        return Find("10.0.0.1").up == up;
    };
    Command("hub", "ip link set desk.1 down");
    EXPECT_TRUE(comesTo(false));
    EXPECT_TRUE(Find("2.0.0.1").up);
    Command("hub", "ip link set desk.1 up");
    EXPECT_TRUE(comesTo(true));
}

TEST_F(OnStage, ASocketOnAnAdapterHearsUnicastAndBroadcastOfThatAdapterAlone)
{
    const Socket first;
    const Socket second;
    ASSERT_FALSE(Platform::BindToAdapter(first.fd, "art0"));
    ASSERT_FALSE(Platform::BindToAdapter(second.fd, "art1"));
    ASSERT_TRUE(first.Bind(Any, 6454));
    ASSERT_TRUE(second.Bind(Any, 6454)); // side by side on one port
    OnRig([] {
        const Socket on0;
        const Socket on1;
        ASSERT_TRUE(on0.Bind(Rig0, 6454));
        ASSERT_TRUE(on1.Bind(Rig1, 6454));
        on0.Send(Desk0, 6454, "unicast 0");
        on0.Send(0x02FFFFFF, 6454, "broadcast 0");
        on1.Send(Desk1, 6454, "unicast 1");
        on1.Send(0x0AFFFFFF, 6454, "broadcast 1");
    });
    EXPECT_EQ(first.Heard(), (std::vector<std::string>{"unicast 0", "broadcast 0"}));
    EXPECT_EQ(second.Heard(), (std::vector<std::string>{"unicast 1", "broadcast 1"}));
    EXPECT_EQ(Platform::BindToAdapter(Socket().fd, "gone9"), std::errc::no_such_device);
}

std::vector<Platform::Datagram> BatchTo(std::uint32_t address,
                                        const std::vector<std::string>& texts)
{
    std::vector<Platform::Datagram> batch;
    for (const std::string& text : texts)
        batch.push_back({address, 6454, std::as_bytes(std::span(text))});
    return batch;
}

TEST_F(OnStage, ABatchOfAnyLengthArrivesWholeAndInOrder)
{
    const Socket receiver;
    ASSERT_TRUE(receiver.Bind(Desk0, 6454));
    const Socket sender;
    EXPECT_EQ(Platform::SendDatagrams(sender.fd, {}).sent, 0U);
    for (const std::size_t count : {1U, 31U, 32U, 33U, 70U}) {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < count; ++i)
            texts.push_back("number " + std::to_string(i));
        const auto outcome = Platform::SendDatagrams(sender.fd, BatchTo(Desk0, texts));
        EXPECT_EQ(outcome.sent, count);
        EXPECT_FALSE(outcome.lastError);
        EXPECT_EQ(receiver.Heard(), texts);
    }
}

TEST_F(OnStage, ARefusedDatagramDoesNotHoldBackTheOthers)
{
    const Socket receiver;
    ASSERT_TRUE(receiver.Bind(Desk0, 6454));
    std::vector<std::string> texts{"first", "second", std::string(70000, 'x'), "third", "fourth"};
    auto batch = BatchTo(Desk0, texts);
    batch[0].address = 0xC0A80001; // no road leads there
    const Socket sender;
    const auto outcome = Platform::SendDatagrams(sender.fd, batch);
    EXPECT_EQ(outcome.sent, 3U);
    EXPECT_EQ(outcome.lastError, std::errc::message_size);
    EXPECT_EQ(receiver.Heard(), (std::vector<std::string>{"second", "third", "fourth"}));
    EXPECT_EQ(Platform::SendDatagrams(-1, batch).lastError, std::errc::bad_file_descriptor);
}

TEST_F(OnStage, AFullBufferGivesTheRestUpAtOnce)
{
    const Socket sender;
    const int size = 8192;
    setsockopt(sender.fd, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
    const std::vector<std::string> texts(200, std::string(530, 'x'));
    const auto begin = std::chrono::steady_clock::now();
    const auto outcome = Platform::SendDatagrams(sender.fd, BatchTo(0x0200004D, texts)); // absent
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    EXPECT_EQ(outcome.lastError, std::errc::resource_unavailable_try_again);
    EXPECT_GT(outcome.sent, 0U);
    EXPECT_LT(outcome.sent, 200U);
}

TEST_F(OnStage, AReaderTakesWhatHasComeAndNoMore)
{
    const Socket receiver;
    ASSERT_TRUE(receiver.Bind(Desk0, 6454));
    Platform::DatagramReader reader;
    std::error_code failure;
    EXPECT_TRUE(reader.Read(receiver.fd, failure).empty());
    EXPECT_FALSE(failure);
    OnRig([] {
        const Socket peer;
        ASSERT_TRUE(peer.Bind(Rig0, 7000));
        for (int i = 0; i < 40; ++i)
            peer.Send(Desk0, 6454, std::to_string(i));
        peer.Send(Desk0, 6454, "");
        peer.Send(Desk0, 6454, std::string(1100, 'x'));
    });
    std::vector<std::string> texts;
    for (auto batch = reader.Read(receiver.fd, failure); !batch.empty();
         batch = reader.Read(receiver.fd, failure))
    {
        for (const auto& datagram : batch) {
            EXPECT_EQ(datagram.address, Rig0);
            EXPECT_EQ(datagram.port, 7000);
            const auto* text = reinterpret_cast<const char*>(datagram.bytes.data());
            texts.emplace_back(text, datagram.bytes.size());
        }
    }
    ASSERT_EQ(texts.size(), 42U);
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(texts[static_cast<std::size_t>(i)], std::to_string(i));
    EXPECT_EQ(texts[40], "");
    EXPECT_EQ(texts[41], std::string(1024, 'x'));
    EXPECT_TRUE(reader.Read(-1, failure).empty());
    EXPECT_EQ(failure, std::errc::bad_file_descriptor);
}

TEST_F(OnStage, TheTableOfNeighboursTellsWhoAnswers)
{
    using Platform::NeighbourState;
    Platform::NeighbourTable table("art0");
    Platform::NeighbourTable elsewhere("art1");
    ASSERT_TRUE(table.IsOpen());
    constexpr std::uint32_t absent = 0x0200004E;
    constexpr std::uint32_t living = 0x0200000C;
    EXPECT_FALSE(table.Ask(absent));
    EXPECT_FALSE(table.Ask(living));
    EXPECT_EQ(table.Ask(0x02FFFFFF), std::errc::permission_denied); // nobody is bothered
    const auto comesTo = [](Platform::NeighbourTable& of, std::uint32_t address,
                            NeighbourState state, bool whole) {
        for (int i = 0; i < 500; ++i, usleep(10000)) {
            for (const auto& neighbour : whole ? of.ReadAll() : of.ReadChanges()) {
                if (neighbour.address == address && neighbour.state == state)
                    return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(comesTo(table, living, NeighbourState::Answers, false));
    EXPECT_TRUE(comesTo(table, absent, NeighbourState::Asked, true));
    EXPECT_TRUE(comesTo(table, absent, NeighbourState::Silent, false)); // after three seconds
    for (const auto& neighbour : elsewhere.ReadAll())
        EXPECT_NE(neighbour.address, living);
}

} // namespace
