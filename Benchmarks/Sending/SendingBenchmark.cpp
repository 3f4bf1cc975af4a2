// SPDX-License-Identifier: MIT
// SendingBenchmark: prints
//   - the CPU time of all threads for each packet of 256 universes at 40 frames a second, as a
//     ratio to a plain sendto loop at the same pace, the median of pairs in this run;
//   - the same for packets that come in, as a ratio to a thread that only reads;
//   - the share of packets to living hosts that leave in their own tick beside 0, 2, 8 and 64
//     silent ones, through the service and through one plain socket;
//   - the same under a flood of forged packets.
// It puts itself on a private network first, so no packet leaves the machine. `SendingBenchmark
// flood SECONDS` only floods the network that it is started on, for program_flood.py, and
// `SendingBenchmark bare UNIVERSES PIXELS` is the bare loop of program_cpu.py: it samples and sends
// until it is ended.
#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <poll.h>
#include <sys/socket.h>

#include "ArtNet/ArtNetClient.h"
#include "ArtNet/ZenArtNetService.h"
#include "Platform/IPv4.h"
#include "Support/ArtNetBytes.h"
#include "Support/Stage.h"
#include "Timing.h"

namespace {

using namespace Stage;
using ArtNetBytes::Dmx;
using ArtNetBytes::Reply;
using namespace std::chrono_literals;

using Sender = std::function<void(const std::string& host, int universe, const Bytes& channels)>;

double ProcessCpuMicroseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// How many datagrams this host has sent so far, as its system counts them.
long SentDatagrams()
{
    std::ifstream counters("/proc/thread-self/net/snmp");
    long sent = 0;
    for (std::string line; std::getline(counters, line);) {
        long in = 0;
        long noPorts = 0;
        long errors = 0;
        std::sscanf(line.c_str(), "Udp: %ld %ld %ld %ld", &in, &noPorts, &errors, &sent);
    }
    return sent;
}

void Paced(int frames, const std::function<void()>& frame)
{
    auto next = std::chrono::steady_clock::now();
    for (int i = 0; i < frames; ++i) {
        frame();
        next += 25ms;
        std::this_thread::sleep_until(next);
    }
}

Sender Through(ArtNetClient& client)
{
    return [&client](const std::string& host, int universe, const Bytes& channels) {
        client.SendDmx(host, universe, channels);
    };
}

Sender Through(const Socket& socket)
{
    return [&socket](const std::string& host, int universe, const Bytes& channels) {
        socket.Send(*Platform::ParseIPv4(host),
                    Dmx(static_cast<std::uint16_t>(universe), channels));
    };
}

// ---- CPU for each packet -----------------------------------------------------------------------

double CpuPerPacket(const std::function<void()>& frame)
{
    constexpr int frames = 40;
    const double begin = ProcessCpuMicroseconds();
    Paced(frames, frame);
    return (ProcessCpuMicroseconds() - begin) / (frames * 256);
}

void CompareCpu(const char* what, std::uint32_t host)
{
    constexpr int pairs = 9;
    const std::string text = Platform::FormatIPv4(host);
    const Bytes channels(512, 1);
    Bytes packet = Dmx(0, channels);
    std::vector<double> plain;
    std::vector<double> ratios;
    long sent = 0;
    for (int pair = 0; pair < pairs; ++pair) {
        {
            const Socket socket(0, 0);
            plain.push_back(CpuPerPacket([&] {
                for (int universe = 0; universe < 256; ++universe) {
                    packet[14] = static_cast<std::uint8_t>(universe);
                    socket.Send(host, packet);
                }
            }));
        }
        const long before = SentDatagrams();
        ArtNetClient client("2.0.0.1", "", "benchmark");
        ratios.push_back(CpuPerPacket([&] {
                             for (int universe = 0; universe < 256; ++universe)
                                 client.SendDmx(text, universe, channels);
                         }) /
                         plain.back());
        sent += SentDatagrams() - before;
    }
    std::printf("%-34s plain %.2f us a packet, service %.2f times that (%.2f to %.2f), "
                "%.2f %% sent\n",
                what, Median(plain), Median(ratios), *std::ranges::min_element(ratios),
                *std::ranges::max_element(ratios),
                static_cast<double>(sent) * 100 / (pairs * 40 * 256));
}

// ---- CPU for each packet that comes in ---------------------------------------------------------

double ThreadCpuMicroseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// The rig sends from this thread, whose own time is left out.
double CpuPerReceived(const Socket& rig)
{
    Bytes packet = Dmx(0, Bytes(512, 1));
    const double begin = ThreadCpuMicroseconds();
    const double each = CpuPerPacket([&] {
        for (int universe = 0; universe < 256; ++universe) {
            packet[14] = static_cast<std::uint8_t>(universe);
            rig.Send(Desk0, packet);
        }
    });
    return each - (ThreadCpuMicroseconds() - begin) / (40 * 256);
}

void ReadPlainly(const Socket& socket, const std::atomic<bool>& stop)
{
    std::array<std::byte, 1024> buffer{};
    while (!stop) {
        pollfd waiting{socket.Handle(), POLLIN, 0};
        poll(&waiting, 1, 50);
        while (recv(socket.Handle(), buffer.data(), buffer.size(), MSG_DONTWAIT) > 0)
            continue;
    }
}

void CompareReceiving()
{
    constexpr int pairs = 9;
    const auto rig = RigSocket();
    std::vector<double> plain;
    std::vector<double> ratios;
    for (int pair = 0; pair < pairs; ++pair) {
        {
            const Socket socket(Desk0);
            std::atomic<bool> stop{false};
            std::thread reader([&] { ReadPlainly(socket, stop); });
            plain.push_back(CpuPerReceived(*rig));
            stop = true;
            reader.join();
        }
        const ArtNetClient client("2.0.0.1", "", 0, 256, "benchmark");
        ratios.push_back(CpuPerReceived(*rig) / plain.back());
    }
    std::printf("%-34s plain %.2f us a packet, service %.2f times that (%.2f to %.2f)\n",
                "256 universes received", Median(plain), Median(ratios),
                *std::ranges::min_element(ratios), *std::ranges::max_element(ratios));
}

// ---- Whether packets leave in time -------------------------------------------------------------

struct Outcome
{
    double share = 0;          ///< of the packets to living hosts, no older than a tick
    std::vector<double> ages;  ///< milliseconds, sorted
    std::vector<double> calls; ///< milliseconds that handing over a frame took, sorted
};

double At(const std::vector<double>& sorted, double part)
{
    return sorted.empty()
               ? 0
               : sorted[static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1))];
}

/// 8 universes to each of four living hosts, behind as many to each silent one.
Outcome Watch(const Sender& send, int silent, int frames)
{
    std::vector<std::string> hosts;
    for (int i = 0; i < silent; ++i)
        hosts.push_back(Platform::FormatIPv4(0x02000101U + static_cast<std::uint32_t>(i)));
    for (std::uint32_t i = 0; i < 4; ++i)
        hosts.push_back(Platform::FormatIPv4(Rig0 + i));
    const auto rig = RigSocket();
    Outcome outcome;
    const auto listen = [&](std::chrono::milliseconds longest) {
        for (const Heard& heard : rig->All(longest)) {
            if (heard.bytes.size() != 530 || heard.source != Desk0 || heard.bytes[9] != 0x50)
                continue;
            std::int64_t sent = 0;
            std::memcpy(&sent, heard.bytes.data() + 18, sizeof sent);
            outcome.ages.push_back(static_cast<double>(heard.arrived - sent) / 1e6);
        }
    };
    Bytes channels(512, 0);
    Paced(frames, [&] {
        const std::int64_t begin = WallClock();
        for (const std::string& host : hosts) {
            for (int universe = 0; universe < 8; ++universe) {
                const std::int64_t now = WallClock();
                std::memcpy(channels.data(), &now, sizeof now);
                send(host, universe, channels);
            }
        }
        outcome.calls.push_back(static_cast<double>(WallClock() - begin) / 1e6);
        listen(0ms);
    });
    listen(200ms);
    const auto late = std::ranges::count_if(outcome.ages, [](double age) { return age > 25; });
    outcome.share =
        static_cast<double>(std::ssize(outcome.ages) - late) / static_cast<double>(frames * 32);
    std::ranges::sort(outcome.ages);
    std::ranges::sort(outcome.calls);
    return outcome;
}

void Print(const char* what, const Outcome& outcome)
{
    std::printf(
        "%-34s %7.3f %% in their tick; age 99 of 100 below %.2f ms, oldest %.2f ms; handing "
        "over a frame 99 of 100 below %.2f ms\n",
        what, outcome.share * 100, At(outcome.ages, 0.99), At(outcome.ages, 1),
        At(outcome.calls, 0.99));
}

void CompareSilentHosts(int silent)
{
    constexpr int frames = 240;
    char what[64];
    {
        const Socket socket(Desk0, 6454);
        std::snprintf(what, sizeof what, "%d silent, one plain socket", silent);
        Print(what, Watch(Through(socket), silent, frames));
    }
    ArtNetClient client("2.0.0.1", "", "benchmark");
    std::snprintf(what, sizeof what, "%d silent, the service", silent);
    Print(what, Watch(Through(client), silent, frames));
}

/// 100,000 forged packets a second to the desk while it lives: polls, replies of ever new nodes,
/// DMX that nobody asked for, and garbage.
class Flood
{
public:
    ~Flood()
    {
        stop_ = true;
        thread_.join();
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin_;
        std::printf("%.0f flood packets a second for %.0f s\n", count_ / seconds.count(),
                    seconds.count());
    }

private:
    void Run()
    {
        const Flooder flooder;
        const std::vector<Bytes> kinds{ArtNetBytes::Poll(), Reply("flood", 4),
                                       Dmx(0x4000, Bytes(512, 1)), Bytes(300, 0x41)};
        while (!stop_) {
            const auto passed = std::chrono::steady_clock::now() - begin_;
            const auto due = static_cast<std::uint32_t>(
                std::chrono::duration_cast<std::chrono::microseconds>(passed).count() / 10);
            for (; count_ < due && !stop_; ++count_)
                flooder.Send(0x02100000 + count_ / 4 % 100000, kinds[count_ % 4]);
            std::this_thread::sleep_for(200us);
        }
    }

    std::atomic<bool> stop_{false};
    std::uint32_t count_ = 0;
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
    std::thread thread_{[this] {
        Run();
    }};
};

void WatchFlood()
{
    ArtNetClient client("2.0.0.1", "2.255.255.255", 1, 4, "benchmark");
    const Flood flood;
    Print("flood, the service", Watch(Through(client), 0, 400));
}

/// The least that a frame takes: pixels by a table of places in a picture, and a sendto for each
/// universe by broadcast, 40 times a second.
void SendBarely(int universes, int pixels)
{
    constexpr std::size_t pictureSize = 32 * 16 * 3;
    const Bytes picture(pictureSize, 77);
    std::vector<std::uint32_t> places;
    for (int i = 0; i < universes * pixels; ++i)
        places.push_back(static_cast<std::uint32_t>(i) * 7 % (pictureSize / 3) * 3);
    Bytes packet = Dmx(0, Bytes(static_cast<std::size_t>(3 * pixels), 0));
    const Socket socket(0, 0);
    for (auto next = std::chrono::steady_clock::now();;) {
        auto place = places.begin();
        for (int universe = 0; universe < universes; ++universe) {
            packet[14] = static_cast<std::uint8_t>(universe);
            auto* channel = &packet[18];
            for (int pixel = 0; pixel < pixels; ++pixel, ++place) {
                for (std::uint32_t colour : {2U, 1U, 0U})
                    *channel++ = picture[*place + colour];
            }
            socket.Send(Broadcast0, packet);
        }
        // What was missed while it was stopped is not made up for.
        next = std::max(next + 25ms, std::chrono::steady_clock::now());
        std::this_thread::sleep_until(next);
    }
}

} // namespace

int main(int argc, char** argv)
{
    Enter(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    if (argc == 3 && std::string(argv[1]) == "flood") { // for another program on the desk
        const Flood flood;
        std::this_thread::sleep_for(std::chrono::seconds(std::stoi(argv[2])));
        return 0;
    }
    if (argc == 4 && std::string(argv[1]) == "bare")
        SendBarely(std::stoi(argv[2]), std::stoi(argv[3]));
    Zen::ArtNetService::SetGlobal(
        std::make_shared<Zen::ArtNetService>("Zentri PixelWeft", "#0001 [0001] Ready", false));
    {
        const auto listener = RigSocket();
        CompareCpu("256 universes to one host", Rig0);
        CompareCpu("256 universes by broadcast", Broadcast0);
    }
    CompareReceiving();
    for (const int silent : {0, 2, 8, 64})
        CompareSilentHosts(silent);
    WatchFlood();
    Zen::ArtNetService::SetGlobal(nullptr);
}
