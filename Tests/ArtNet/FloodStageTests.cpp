// SPDX-License-Identifier: MIT
// More packets than any network should carry: the output is sent all the same.
#include <algorithm>
#include <thread>

#include "ArtNetStage.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;

/// Polls, replies, universes and nonsense from ever new addresses, 100,000 packets a second.
void Flood(const std::stop_token& stop)
{
    const Flooder flooder;
    const std::vector<Bytes> packets{ArtNetBytes::Poll(), Reply("flood", 4),
                                     Dmx(0x4000, Bytes(512, 1)), Bytes(300, 0x41)};
    auto next = std::chrono::steady_clock::now();
    for (std::uint32_t i = 0; !stop.stop_requested(); next += 1ms) {
        for (int burst = 0; burst < 25; ++burst, ++i) {
            for (const Bytes& packet : packets)
                flooder.Send(0x02100000 + i % 100000, packet);
        }
        std::this_thread::sleep_until(next);
    }
}

TEST_F(ArtNetStage, AFloodStarvesNeitherTheOutputNorTheLog)
{
    ArtNetClient client("2.0.0.1", "2.255.255.255", 1, 4, "test");
    const auto rig = RigSocket(Rig0);
    constexpr int ticks = 120;
    std::int64_t arrived = 0;
    const auto count = [&] {
        arrived += std::ranges::count(rig->All(0ms), Dmx(7, Bytes(512, 2)), &Heard::bytes);
    };
    const auto begin = std::chrono::steady_clock::now();
    {
        const std::jthread flood(Flood);
        for (int tick = 0; tick < ticks; ++tick) {
            for (int packet = 0; packet < 32; ++packet)
                client.SendDmx("2.0.0.10", 7, Bytes(512, 2));
            count();
            std::this_thread::sleep_until(begin + 25ms * (tick + 1));
        }
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    std::this_thread::sleep_for(100ms);
    count();
    EXPECT_GE(arrived, ticks * 32 * 9 / 10);
    EXPECT_LE(static_cast<double>(log_.Messages().size()), 10 * seconds.count());
}

} // namespace
