// SPDX-License-Identifier: MIT
// Destinations that do not answer, beside those that do.
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

/// Sends 8 universes to each of these hosts, 40 times a second, and calls `eachFrame` in between.
/// In the middle of a frame a witness is sent by the other adapter: it has the same thread and a
/// socket of its own, so it shows whether the machine let the thread run at all.
class Show
{
public:
    /// Silent hosts come first in each frame.
    Show(std::uint32_t silent, std::uint32_t living)
    {
        for (std::uint32_t i = 0; i < silent; ++i)
            hosts_.push_back(Platform::FormatIPv4(FirstAbsent + i));
        for (std::uint32_t i = 0; i < living; ++i)
            hosts_.push_back(Platform::FormatIPv4(Rig0 + i));
    }

    void Run(int frames, const std::function<void()>& eachFrame)
    {
        for (int i = 0; i < frames; ++i) {
            const auto begin = std::chrono::steady_clock::now();
            const Stamp stamp{next_++, WallClock()};
            Bytes channels(512, 0);
            std::memcpy(channels.data(), &stamp, sizeof stamp);
            for (const std::string& host : hosts_) {
                for (int universe = 0; universe < Universes; ++universe)
                    client_.SendDmx(host, universe, channels);
            }
            std::this_thread::sleep_until(begin + 12ms);
            witness_.SendDmx("10.0.0.10", 0, channels);
            std::this_thread::sleep_until(begin + 25ms);
            eachFrame();
        }
    }

    [[nodiscard]] bool HasFailed() const { return client_.GetLastSendError().time != 0; }

private:
    ArtNetClient client_{"2.0.0.1", "", "test"};
    ArtNetClient witness_{"10.0.0.1", "", "test"};
    std::vector<std::string> hosts_;
    std::int64_t next_ = 0;
};

TEST_F(ArtNetStage, SilentHostsTakeNothingFromTheLiving)
{
    constexpr int living = 4;
    const auto rig = RigSocket();
    Show show(64, living);
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
    show.Run(160, listen); // past the three seconds after which the system gives a host up
    for (int more = 0; more < 80 && onTime.size() < 120; ++more)
        show.Run(10, listen); // the machine is busy with other work
    std::this_thread::sleep_for(50ms);
    listen();
    ASSERT_GE(onTime.size(), 120U);

    // The first frame counts too: what is meant for a host that was just looked for waits for the
    // answer.
    for (const std::int64_t frame : onTime) {
        EXPECT_EQ(std::ssize(heard[frame]), Universes * living) << frame;
        for (const Heard& packet : heard[frame])
            EXPECT_LE(packet.arrived - StampOf(packet).begun, 35 * Millisecond) << frame;
    }
    EXPECT_FALSE(show.HasFailed());
}

TEST_F(ArtNetStage, APacketWaitsForAHostThatTakesAMomentToAnswer)
{
    const auto ignoreQuestions = [](int how) {
        return Command("rig", "sh -c 'echo " + std::to_string(how) +
                                  " > /proc/sys/net/ipv4/conf/art0/arp_ignore'");
    };
    const auto rig = RigSocket();
    ArtNetClient client("2.0.0.1", "", "test");
    ASSERT_TRUE(ignoreQuestions(8));
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
    ASSERT_TRUE(ignoreQuestions(0));
}

TEST_F(ArtNetStage, AHostThatReturnsGetsTheNewestFramesAndNoOldOnes)
{
    const auto rig = RigSocket();
    Show show(16, 1);
    std::vector<Heard> heard;
    const auto listen = [&] {
        std::ranges::move(rig->All(0ms), std::back_inserter(heard));
    };
    for (int round = 0; round < 2; ++round) {
        show.Run(45 + 17 * round, listen); // away for one to two seconds
        const std::string address = "2.0.1." + std::to_string(round + 1);
        ASSERT_TRUE(Command("rig", "ip addr add " + address + "/8 dev art0"));
        const std::int64_t back = WallClock();
        heard.clear();
        show.Run(56, listen); // the system looks for a host once a second
        const auto first = std::ranges::find_if(heard, [&](const Heard& packet) {
            return packet.destination == FirstAbsent + static_cast<std::uint32_t>(round);
        });
        ASSERT_NE(first, heard.end()) << address;
        EXPECT_LE(first->arrived - back, 1500 * Millisecond);
        for (const Heard& packet : heard)
            EXPECT_LE(packet.arrived - StampOf(packet).begun, 500 * Millisecond);
        // It goes again: what is sent is dropped on the other side, and then not sent.
        ASSERT_TRUE(Command("rig", "ip addr del " + address + "/8 dev art0"));
    }
}

} // namespace
