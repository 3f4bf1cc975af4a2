// SPDX-License-Identifier: MIT
// Whatever comes to the control channel, in whatever order: what we say stays well formed, nothing
// grows, and a host that behaves gets our universes all the same. The ports are the machine's own,
// so the fuzzer goes to a network of its own first.
#include "LEDEngine/ArtNetOutput.h"
#include "LEDEngine/ArtNetTrigger.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::array<std::uint8_t, 15> Head = {'A',  'r',  't',  '-',  'N',  'e',  't', 0,
                                               0x00, 0x99, 0x00, 0x0E, 0x50, 0x57, 1};
constexpr std::size_t PacketSize = 528;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

/// A loopback adapter and no other.
bool EnterOwnNetwork()
{
    if (unshare(CLONE_NEWNET) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0)
        return false;
    const int handle = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request{};
    request.ifr_name[0] = 'l';
    request.ifr_name[1] = 'o';
    request.ifr_flags = IFF_UP;
    const bool up = ioctl(handle, SIOCSIFFLAGS, &request) == 0;
    close(handle);
    return up;
}

/// The other end of the channel.
class Host
{
public:
    Host()
        : handle_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
        const sockaddr_in own = Loopback(6456);
        Require(bind(handle_, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0);
    }
    ~Host() { close(handle_); }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void SendRaw(std::span<const std::uint8_t> bytes) const
    {
        const sockaddr_in peer = Loopback(6455);
        (void)sendto(handle_, bytes.data(), bytes.size(), 0,
                     reinterpret_cast<const sockaddr*>(&peer), sizeof peer);
    }

    void Send(std::uint8_t subKey, std::span<const std::uint8_t> data = {}) const
    {
        Bytes packet(Head.begin(), Head.end());
        packet.push_back(subKey);
        packet.insert(packet.end(), data.begin(), data.end());
        SendRaw(packet);
    }

    /// Checks all that came; the number of the last request for nodes, when there was one.
    std::optional<std::uint32_t> Listen() const
    {
        std::optional<std::uint32_t> request;
        std::array<std::uint8_t, 2048> packet{};
        for (;;) {
            const ssize_t size = recv(handle_, packet.data(), packet.size(), 0);
            if (size < 0)
                return request;
            Require(size == PacketSize && std::ranges::equal(Head, std::span(packet).first(15)));
            if (packet[15] == 0x61)
                request = packet[16] + 256U * packet[17];
        }
    }

private:
    static sockaddr_in Loopback(std::uint16_t port)
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(port);
        return address;
    }

    int handle_;
};

std::int64_t now = 0;

/// Output and trigger with a network chosen, as they are on every day of a show.
class Desk
{
public:
    Desk()
    {
        output.trigger = &trigger;
        QObject::connect(&trigger, &ArtNetTrigger::artNetDMXInputSettingsReceived,
                         [](bool, const std::wstring& ip, const std::vector<int>& used) {
                             Require(ip.size() <= 16 && used.size() <= 247);
                             Require(std::ranges::all_of(used, [](int universe) {
                                 return universe >= 0 && universe < 32768;
                             }));
                         });
        output.Initialize(L"2.0.0.1", L"2.255.255.255", L"", {true, 0, 0, 3, 1, 0, {}});
    }

    /// Everything that a second of the program does with the channel.
    void Tick()
    {
        now += 25'000'000;
        trigger.Poll();
        output.RefreshNodes();
        output.ClearUniverses();
        output.MergeInputUniverses();
        output.SendAutoUnicastUniverses();
        output.SendBroadcastUniverses();
        Require(output.GetState() != OutputState::Disabled);
        Require(output.GetNodes().size() <= 4096);
        Require(std::ranges::none_of(output.GetNodes(), [](const ArtNetNodeInfo& node) {
            return node.Name().empty() || node.Ip().empty() || node.universes.size() > 128;
        }));
    }

    ArtNetOutput output;
    ArtNetTrigger trigger{output, [] {
                              return now;
                          }};
};

/// Takes the next part of the input away from it.
std::span<const std::uint8_t> Take(std::span<const std::uint8_t>& input, std::size_t size)
{
    const auto part = input.first(std::min(size, input.size()));
    input = input.subspan(part.size());
    return part;
}

/// A 0xFF is a tick, a 0xFE a long silence. Anything else is a message: its SubKey, or 0 for a
/// datagram without our head, then the length in two bytes and the bytes.
void Play(std::span<const std::uint8_t> input, Desk& desk, const Host& host)
{
    while (!input.empty()) {
        const std::uint8_t what = Take(input, 1)[0];
        if (what == 0xFF) {
            desk.Tick();
            (void)host.Listen();
        } else if (what == 0xFE) {
            now += 5'001'000'000;
        } else {
            const auto length = Take(input, 2);
            if (length.size() < 2)
                return;
            const auto bytes = Take(input, length[0] + 256U * length[1]);
            if (what == 0)
                host.SendRaw(bytes);
            else
                host.Send(what, bytes);
        }
    }
}

/// The exchange as it should be. A busy system may deliver a datagram late, so it is tried again.
bool ProperHostIsServed(Desk& desk, const Host& host)
{
    for (int tries = 0; tries < 200; ++tries) {
        for (const std::uint8_t subKey : Bytes{0x12, 0x92, 0xA2, 0x61})
            host.Send(subKey);
        desk.Tick();
        const auto request = host.Listen();
        if (request && desk.output.GetState() == OutputState::UsingRemoteSocket) {
            Bytes node(92, 0);
            node[0] = 1;
            node[4] = static_cast<std::uint8_t>(*request);
            node[5] = static_cast<std::uint8_t>(*request >> 8);
            node[12] = 'N';
            std::ranges::copy(std::string_view("2.0.0.9"), node.begin() + 76);
            host.Send(0x62, node);
            desk.trigger.Poll();
            const ArtNetNodeList& nodes = desk.output.GetNodes();
            if (nodes.size() == 1 && nodes[0].Ip() == "2.0.0.9")
                return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    if (EnterOwnNetwork())
        return 0;
    std::fputs("skipped: the system gives no network of its own\n", stderr);
    std::exit(0);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Host host;
    Desk desk;
    Play({data, size}, desk, host);
    Require(ProperHostIsServed(desk, host));
    return 0;
}
