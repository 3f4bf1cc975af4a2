// SPDX-License-Identifier: MIT
// Destinations that do not answer, beside those that do.
#include "ArtNet/ArtNetClient.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <thread>

#include "ArtNetStage.h"
#include "Platform/IPv4.h"

namespace {

using namespace Stage;
using namespace std::chrono_literals;

constexpr std::int64_t Millisecond = 1'000'000;
constexpr int Universes = 8;
constexpr std::uint32_t FirstAbsent = 0x02000101;

/// 512 channels that tell the frame they belong to and when it began.
Bytes Channels(int frame, std::int64_t begun)
{
    Bytes channels(512, 0);
    std::memcpy(channels.data(), &frame, sizeof frame);
    std::memcpy(channels.data() + 8, &begun, sizeof begun);
    return channels;
}

int FrameOf(const Heard& heard)
{
    int frame = -1;
    if (heard.bytes.size() == 530)
        std::memcpy(&frame, heard.bytes.data() + 18, sizeof frame);
    return frame;
}

std::int64_t AgeOf(const Heard& heard)
{
    std::int64_t begun = 0;
    std::memcpy(&begun, heard.bytes.data() + 26, sizeof begun);
    return heard.arrived - begun;
}

/// Sends 8 universes to each of these hosts, 40 times a second, and calls `eachFrame` in between.
/// In the middle of a frame a witness goes out by the other adapter: it has the same thread and a
/// socket of its own, so it tells whether the machine let the thread run at all.
class Show
{
public:
    explicit Show(const std::vector<std::uint32_t>& hosts)
    {
        for (const std::uint32_t host : hosts)
            hosts_.push_back(Platform::FormatIPv4(host));
    }

    void Run(int frames, const std::function<void()>& eachFrame)
    {
        for (int i = 0; i < frames; ++i, ++frame_) {
            const auto begin = std::chrono::steady_clock::now();
            const Bytes channels = Channels(frame_, WallClock());
            for (const std::string& host : hosts_) {
                for (int universe = 0; universe < Universes; ++universe)
                    client.SendDmx(host, universe, channels);
            }
            std::this_thread::sleep_until(begin + 12ms);
            witness_.SendDmx("10.0.0.10", 0, channels);
            std::this_thread::sleep_until(begin + 25ms);
            eachFrame();
        }
    }

    ArtNetClient client{"2.0.0.1", "", "test"};

private:
    ArtNetClient witness_{"10.0.0.1", "", "test"};
    std::vector<std::string> hosts_;
    int frame_ = 0;
};

std::vector<std::uint32_t> Hosts(std::uint32_t first, std::uint32_t count)
{
    std::vector<std::uint32_t> hosts;
    for (std::uint32_t i = 0; i < count; ++i)
        hosts.push_back(first + i);
    return hosts;
}

void Append(std::vector<Heard>& all, std::vector<Heard> more)
{
    std::ranges::move(more, std::back_inserter(all));
}

TEST_F(ArtNetStage, SilentHostsTakeNothingFromTheLiving)
{
    constexpr int living = 4;
    const auto rig = RigSocket();
    auto hosts = Hosts(FirstAbsent, 64); // the silent ones come first in each frame
    std::ranges::copy(Hosts(Rig0, living), std::back_inserter(hosts));
    Show show(hosts);
    std::map<int, std::vector<Heard>> heard; // by frame
    std::map<int, std::int64_t> witnessed;
    std::size_t onTime = 0;
    const auto listen = [&] {
        for (Heard& packet : rig->All(0ms)) {
            const int frame = FrameOf(packet);
            if (frame < 0)
                continue;
            if (packet.destination == Rig1)
                onTime += (witnessed[frame] = AgeOf(packet)) < 25 * Millisecond ? 1U : 0U;
            else
                heard[frame].push_back(std::move(packet));
        }
    };
    show.Run(160, listen); // past the three seconds after which the system gives a host up
    for (int more = 0; more < 80 && onTime < 120; ++more)
        show.Run(10, listen); // the machine is busy with other work
    std::this_thread::sleep_for(50ms);
    listen();
    RecordProperty("frames_on_time", std::to_string(onTime));
    ASSERT_GE(onTime, 120U);

    // The first frame counts too: what is meant for a host that was just asked waits for the
    // answer.
    for (const auto& [frame, age] : witnessed) {
        if (age >= 25 * Millisecond)
            continue;
        EXPECT_EQ(std::ssize(heard[frame]), Universes * living) << frame;
        for (const Heard& packet : heard[frame]) {
            EXPECT_LE(AgeOf(packet), 35 * Millisecond) << frame;
            EXPECT_EQ(packet.port, 6454);
            EXPECT_EQ(packet.source, Desk0);
        }
    }
    EXPECT_FALSE(show.client.GetLastSendError().code);
}

TEST_F(ArtNetStage, AHostThatReturnsGetsFreshLightAndNoOldOne)
{
    const auto rig = RigSocket();
    auto hosts = Hosts(FirstAbsent, 16);
    hosts.push_back(Rig0);
    Show show(hosts);
    std::vector<Heard> heard;
    const auto eachFrame = [&] {
        Append(heard, rig->All(0ms));
    };
    for (int round = 0; round < 3; ++round) {
        show.Run(40 + 17 * round, eachFrame); // away for one to two seconds, from any moment on
        const std::string address = "2.0.1." + std::to_string(round + 1);
        ASSERT_TRUE(Command("rig", "ip addr add " + address + "/8 dev art0"));
        const std::int64_t back = WallClock();
        heard.clear();
        // The system looks for a host once a second.
        show.Run(56, eachFrame);
        const auto first = std::ranges::find_if(heard, [&](const Heard& packet) {
            return packet.destination == FirstAbsent + static_cast<std::uint32_t>(round);
        });
        ASSERT_NE(first, heard.end()) << address;
        RecordProperty("light_after_us_" + std::to_string(round),
                       std::to_string((first->arrived - back) / 1000));
        EXPECT_LE(first->arrived - back, 1500 * Millisecond);
        for (const Heard& packet : heard) {
            if (FrameOf(packet) >= 0) {
                EXPECT_LE(AgeOf(packet), 500 * Millisecond);
            }
        }
        // It goes again: what is sent is dropped on the other side, and then not sent.
        ASSERT_TRUE(Command("rig", "ip addr del " + address + "/8 dev art0"));
    }
}

} // namespace
