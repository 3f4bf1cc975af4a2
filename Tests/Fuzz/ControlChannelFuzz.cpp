// SPDX-License-Identifier: MIT
// Whatever comes to the control channel, in whatever order: what we say stays well formed, nothing
// grows, and a host that behaves gets our universes all the same. The ports are the machine's own,
// so the fuzzer goes to a network of its own first.
#include "Fuzz/Fuzz.h"
#include "HostStandIn/Host.h"
#include "LEDEngine/ArtNetOutput.h"
#include "LEDEngine/ArtNetTrigger.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <span>
#include <thread>

#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace {

using HostStandIn::Bytes;
using HostStandIn::Host;

constexpr std::array<std::uint8_t, 15> Head = {'A',  'r',  't',  '-',  'N',  'e',  't', 0,
                                               0x00, 0x99, 0x00, 0x0E, 0x50, 0x57, 1};
constexpr std::size_t PacketSize = 528;

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

/// Takes what came to the host and checks it.
void Listen(Host& host)
{
    host.Pump();
    for (const Bytes& packet : host.TakeDatagrams())
        Require(packet.size() == PacketSize &&
                std::ranges::equal(Head, std::span(packet).first(Head.size())));
}

std::int64_t now = 0;

/// Output and trigger with a network chosen, as they are in every show.
class Desk
{
public:
    Desk()
    {
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

    ArtNetTrigger trigger{output, [] {
                              return now;
                          }};
    ArtNetOutput output{trigger};
};

/// Removes the next part of the input and gives it.
std::span<const std::uint8_t> Take(std::span<const std::uint8_t>& input, std::size_t size)
{
    const auto part = input.first(std::min(size, input.size()));
    input = input.subspan(part.size());
    return part;
}

/// A 0xFF is a tick, a 0xFE a long silence. Anything else is a message: its SubKey, or 0 for a
/// datagram without our head, then the length in two bytes and the bytes.
void Play(std::span<const std::uint8_t> input, Desk& desk, Host& host)
{
    while (!input.empty()) {
        const std::uint8_t what = Take(input, 1)[0];
        if (what == 0xFF) {
            desk.Tick();
            Listen(host);
        } else if (what == 0xFE) {
            now += 5'001'000'000;
        } else {
            const auto length = Take(input, 2);
            if (length.size() < 2)
                return;
            const auto bytes = Take(input, length[0] + 256U * length[1]);
            const Bytes message(bytes.begin(), bytes.end());
            if (what == 0)
                host.SendRaw(message);
            else
                host.Send(what, message);
        }
    }
}

/// Whether a host that behaves is served. A busy system may deliver a datagram late, so it is given
/// some ticks.
bool ProperHostIsServed(Desk& desk, Host& host)
{
    host.manners.silent = false;
    host.nodes = {{"N", "2.0.0.9", {}}};
    for (int tries = 0; tries < 200; ++tries) {
        for (const auto subKey : {std::uint8_t{0x12}, std::uint8_t{0x92}})
            host.Send(subKey);
        desk.Tick();
        Listen(host);
        desk.trigger.Poll();
        const ArtNetNodeList& nodes = desk.output.GetNodes();
        if (desk.output.GetState() == OutputState::UsingRemoteSocket && nodes.size() == 1 &&
            nodes[0].Ip() == "2.0.0.9")
            return true;
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

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Host host;
    host.manners.silent = true;
    Require(host.Start());
    Desk desk;
    Play({data, size}, desk, host);
    Require(ProperHostIsServed(desk, host));
    return 0;
}
