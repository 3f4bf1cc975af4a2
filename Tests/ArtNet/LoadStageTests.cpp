// SPDX-License-Identifier: MIT
// More packets than any network should carry, and destinations that do not answer beside those that
// do: the output is sent all the same.
#include <algorithm>
#include <cstring>
#include <map>
#include <thread>

#include "ArtNetStage.h"
#include "Platform/IPv4.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;

/// Polls, replies with ever new pages, universes and nonsense from ever new addresses, 100,000
/// packets a second.
void Flood(const std::stop_token& stop)
{
    const Flooder flooder;
    std::vector<Bytes> packets{ArtNetBytes::Poll(), Reply("flood", 4), Dmx(1, Bytes(512, 1)),
                               Bytes(300, 0x41)};
    auto next = std::chrono::steady_clock::now();
    for (std::uint32_t i = 0; !stop.stop_requested(); next += 1ms) {
        for (int burst = 0; burst < 25; ++burst, ++i) {
            packets[1][19] = static_cast<std::uint8_t>(i >> 4); // SubSwitch
            packets[1][211] = static_cast<std::uint8_t>(i % 2 * i >> 4);
            for (const Bytes& packet : packets)
                flooder.Send(0x02100000 + i % (i % 3 == 0 ? 16 : 100000), packet);
        }
        std::this_thread::sleep_until(next);
    }
}

TEST_F(ArtNetStage, AFloodStarvesNeitherTheOutputNorTheLog)
{
    ArtNetClient client("2.0.0.1", "2.255.255.255", 1, 64, "test", true); // the most pages
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

// ---- Destinations that do not answer -----------------------------------------------------------

constexpr std::int64_t Millisecond = 1'000'000;
constexpr int UniversesSent = 8;
constexpr std::uint32_t FirstAbsent = 0x02000101;

/// What the channels say about themselves: the frame they belong to, and when it began.
struct Stamp
{
    std::int64_t frame = -1;
    std::int64_t begun = 0;
};

Stamp StampOf(const Heard& heard)
{
    Stamp stamp;
    if (heard.bytes.size() == 530)
        std::memcpy(&stamp, heard.bytes.data() + 18, sizeof stamp);
    return stamp;
}

// Each host gets 8 universes 40 times a second. In the middle of a frame a witness is sent by the
// other adapter: it has the same thread and a socket of its own, so it shows whether the machine
// let the thread run at all.
TEST_F(ArtNetStage, SilentHostsTakeNothingFromTheLivingAndGetTheNewestFramesWhenTheyReturn)
{
    constexpr int living = 4;
    const auto rig = RigSocket();
    ArtNetClient client("2.0.0.1", "", "test");
    ArtNetClient witness("10.0.0.1", "", "test");
    std::vector<std::string> hosts; // the silent ones come first in each frame
    for (std::uint32_t i = 0; i < 64; ++i)
        hosts.push_back(Platform::FormatIPv4(FirstAbsent + i));
    for (std::uint32_t i = 0; i < living; ++i)
        hosts.push_back(Platform::FormatIPv4(Rig0 + i));

    std::map<std::int64_t, std::vector<Heard>> heard; // by frame
    std::vector<std::int64_t> onTime;                 // frames of which the witness came in time
    const auto listen = [&] {
        for (Heard& packet : rig->All(0ms)) {
            const Stamp stamp = StampOf(packet);
            if (packet.destination != Rig1)
                heard[stamp.frame].push_back(std::move(packet));
            else if (packet.arrived - stamp.begun < 25 * Millisecond)
                onTime.push_back(stamp.frame);
        }
    };
    std::int64_t next = 0;
    const auto run = [&](int frames) {
        for (const std::int64_t end = next + frames; next < end; ++next) {
            const auto begin = std::chrono::steady_clock::now();
            const Stamp stamp{next, WallClock()};
            Bytes channels(512, 0);
            std::memcpy(channels.data(), &stamp, sizeof stamp);
            for (const std::string& host : hosts) {
                for (int universe = 0; universe < UniversesSent; ++universe)
                    client.SendDmx(host, universe, channels);
            }
            std::this_thread::sleep_until(begin + 12ms);
            witness.SendDmx("10.0.0.10", 0, channels);
            std::this_thread::sleep_until(begin + 25ms);
            listen();
        }
    };
    run(160); // past the three seconds after which the system gives a host up
    for (int more = 0; more < 80 && onTime.size() < 120; ++more)
        run(10); // the machine is busy with other work
    std::this_thread::sleep_for(50ms);
    listen();
    ASSERT_GE(onTime.size(), 120U);

    // The first frame counts too: what is meant for a host that was just looked for waits for the
    // answer.
    for (const std::int64_t frame : onTime) {
        EXPECT_EQ(std::ssize(heard[frame]), UniversesSent * living) << frame;
        for (const Heard& packet : heard[frame])
            EXPECT_LE(packet.arrived - StampOf(packet).begun, 35 * Millisecond) << frame;
    }
    EXPECT_EQ(client.GetLastSendError().time, 0) << "a silent host is no fault";

    for (const std::uint32_t silent : {0U, 1U}) {
        const std::string address = Platform::FormatIPv4(FirstAbsent + silent) + "/8 dev art0";
        ASSERT_TRUE(Command("rig", "ip addr add " + address));
        const std::int64_t back = WallClock();
        std::int64_t first = 0;
        heard.clear();
        run(56); // the system looks for a host once a second
        for (const auto& [frame, packets] : heard) {
            for (const Heard& packet : packets) {
                EXPECT_LE(packet.arrived - StampOf(packet).begun, 500 * Millisecond) << frame;
                if (first == 0 && packet.destination == FirstAbsent + silent)
                    first = packet.arrived;
            }
        }
        EXPECT_GT(first, back) << address;
        EXPECT_LE(first - back, 1500 * Millisecond);
        // It goes again: what is sent is dropped on the other side, and then not sent.
        ASSERT_TRUE(Command("rig", "ip addr del " + address));
    }
}

// What waits for a host in the system is charged to the output.
TEST_F(ArtNetStage, APollerThatIsNotThereGetsOnePageAndOneThatIsGetsAll)
{
    constexpr std::uint32_t poller = FirstAbsent + 100;
    const ArtNetClient client("2.0.0.1", "", 1, 64, "test", true);
    const auto rig = RigSocket();
    (void)rig->All(300ms); // the offer, by broadcast
    Flooder().Send(poller, ArtNetBytes::Poll());
    std::this_thread::sleep_for(100ms);
    const std::string address = Platform::FormatIPv4(poller) + "/8 dev art0";
    ASSERT_TRUE(Command("rig", "ip addr add " + address));
    EXPECT_EQ(rig->All(1500ms).size(), 1U); // the system asks for it once a second
    Flooder().Send(poller, ArtNetBytes::Poll());
    EXPECT_EQ(rig->All(300ms).size(), 17U);
    std::size_t pages = 0;
    for (int tries = 0; tries < 10 && pages != 17; ++tries) { // a busy machine takes too long
        ASSERT_TRUE(Command("desk", "ip neigh flush dev art0"));
        rig->Send(Desk0, ArtNetBytes::Poll());
        pages = rig->All(300ms).size();
    }
    EXPECT_EQ(pages, 17U) << "its first poll already";
    EXPECT_EQ(client.GetTraffic().sent, 0U) << "an answer is no output";
    ASSERT_TRUE(Command("rig", "ip addr del " + address));
}

TEST_F(ArtNetStage, APacketWaitsForAHostThatTakesAMomentToAnswer)
{
    const std::string ignore = " > /proc/sys/net/ipv4/conf/art0/arp_ignore'";
    const auto rig = RigSocket();
    ArtNetClient client("2.0.0.1", "", "test");
    ASSERT_TRUE(Command("rig", "sh -c 'echo 8" + ignore));
    bool arrived = false;
    for (int tries = 0; tries < 10 && !arrived; ++tries) { // a busy machine takes too long
        ASSERT_TRUE(Command("desk", "ip neigh flush dev art0"));
        ASSERT_TRUE(Command("rig", "ip neigh flush dev art0"));
        // A single packet: no later one makes the I/O thread look again.
        client.SendDmx("2.0.0.10", 1, Bytes{1});
        std::this_thread::sleep_for(5ms);
        rig->Send(Desk0, Bytes{1}); // by which the desk learns where the rig is
        arrived = !rig->All(200ms).empty();
    }
    EXPECT_TRUE(arrived);
    ASSERT_TRUE(Command("rig", "sh -c 'echo 0" + ignore));
}

} // namespace
