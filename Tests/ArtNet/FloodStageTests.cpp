// SPDX-License-Identifier: MIT
// More packets than anybody should send: the light goes on, and nothing grows.
#include "ArtNet/ArtNetClient.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <thread>

#include <unistd.h>

#include "ArtNet/ArtNetNodeTable.h"
#include "ArtNetStage.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;

#if defined(__SANITIZE_ADDRESS__)
constexpr long AllowedGrowth = 300'000; // AddressSanitizer keeps what was freed, up to 256 MB
#else
constexpr long AllowedGrowth = 8192; // lists that change hands
#endif

long ResidentKilobytes()
{
    std::ifstream status("/proc/self/statm");
    long size = 0;
    long resident = 0;
    status >> size >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

TEST_F(ArtNetStage, AFloodNeitherStarvesTheSendsNorGrowsAnything)
{
    ArtNetClient client("2.0.0.1", "2.255.255.255", 1, 4, "test");
    const auto rig = RigSocket(Rig0);
    const Flooder flooder;
    const Bytes reply = Reply("flood", 4);
    const Bytes dmx = Dmx(0x4000, Bytes(512, 1));
    const Bytes garbage(300, 0x41);
    // A first round fills the tables and buffers that stay.
    for (std::uint32_t i = 0; i < 2 * ArtNetNodeTable::MaxNodes; ++i)
        flooder.Send(0x02100000 + i, reply);
    std::this_thread::sleep_for(200ms);
    log_.Clear();
    const long before = ResidentKilobytes();

    std::atomic<bool> stop{false};
    std::atomic<long> flooded{0};
    std::thread flood([&] {
        auto next = std::chrono::steady_clock::now();
        for (std::uint32_t i = 0; !stop; next += 1ms) {
            for (int burst = 0; burst < 25; ++burst, ++i) { // four packets each
                flooder.Send(0x02100000 + i % 100000, ArtNetBytes::Poll());
                flooder.Send(0x02100000 + i % 100000, reply);
                flooder.Send(0x02100000 + i % 100000, dmx);
                flooder.Send(0x02100000 + i % 100000, garbage);
                flooded += 4;
            }
            std::this_thread::sleep_until(next);
        }
    });

    constexpr int ticks = 120;
    int arrived = 0;
    std::int64_t longestCall = 0;
    const auto count = [&] {
        for (const Heard& heard : rig->All(0ms))
            arrived += heard.bytes.size() == 530 && heard.bytes[9] == 0x50 ? 1 : 0;
    };
    const auto begin = std::chrono::steady_clock::now();
    for (int tick = 0; tick < ticks; ++tick) {
        const std::int64_t start = WallClock();
        for (int universe = 0; universe < 32; ++universe)
            client.SendDmx("2.0.0.10", universe, Bytes(512, 2));
        longestCall = std::max(longestCall, WallClock() - start);
        count();
        std::this_thread::sleep_until(begin + 25ms * (tick + 1));
    }
    const auto seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    stop = true;
    flood.join();
    std::this_thread::sleep_for(100ms);
    count();

    RecordProperty("flood_per_second", std::to_string(static_cast<double>(flooded) / seconds));
    RecordProperty("share", std::to_string(arrived / (ticks * 32.0)));
    RecordProperty("longest_call_us", std::to_string(longestCall / 1000));
    EXPECT_GE(arrived, ticks * 32 * 9 / 10);
    EXPECT_LE(static_cast<double>(log_.Messages().size()), 10 * seconds);
    ArtNetNodeList nodes;
    client.GetNodes(nodes);
    EXPECT_LE(nodes.size(), ArtNetNodeTable::MaxNodes);
    EXPECT_LE(ResidentKilobytes() - before, AllowedGrowth);

    // Afterwards everything is as it was: a poller gets its answer.
    EXPECT_TRUE(ComesTrue([&] {
        rig->Send(Desk0, ArtNetBytes::Poll());
        for (const Heard& heard : rig->All(50ms)) {
            if (heard.bytes.size() == 239)
                return true;
        }
        return false;
    }));
}

} // namespace
