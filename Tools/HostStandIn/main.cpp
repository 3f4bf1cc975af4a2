// SPDX-License-Identifier: MIT
#include "Host.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

const char* const usage =
    "host-stand-in - a host program on the control channel (127.0.0.1, ports 6456 and 6455)\n"
    "\n"
    "It prints a line for each message but a poll, with the milliseconds since its start.\n"
    "\n"
    "  --seconds S        end after this time (default 10)\n"
    "  --slow MS          each message is sent so much later\n"
    "  --lose PART        this part of its messages (0 to 1) is never sent\n"
    "  --reorder          answers in several pieces are sent last one first\n"
    "  --old N            answers carry a request number that is older by N\n"
    "  --ask N            ask for the node list N times\n"
    "  --silent           answer nothing\n"
    "  --no-rebind        don't take the Art-Net port\n"
    "  --node NAME ADDRESS UNIVERSE   know this node (repeat for more)\n";

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// False when the words make no sense.
bool Parse(int count, char** words, HostStandIn::Host& host, double& seconds)
{
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        const auto value = [&] {
            return i + 1 < count ? std::atof(words[++i]) : -1.0;
        };
        if (word == "--seconds")
            seconds = value();
        else if (word == "--slow")
            host.manners.delay = std::chrono::milliseconds(static_cast<int>(value()));
        else if (word == "--lose")
            host.manners.loss = value();
        else if (word == "--reorder")
            host.manners.reorders = true;
        else if (word == "--old")
            host.manners.oldBy = static_cast<std::uint32_t>(value());
        else if (word == "--ask")
            host.manners.nodeRequests = static_cast<int>(value());
        else if (word == "--silent")
            host.manners.silent = true;
        else if (word == "--no-rebind")
            host.manners.rebinds = false;
        else if (word == "--node" && i + 3 < count) {
            host.nodes.push_back({words[i + 1],
                                  words[i + 2],
                                  {static_cast<std::uint16_t>(std::atoi(words[i + 3]))}});
            i += 3;
        } else
            return false;
    }
    return seconds > 0 && seconds <= 86400;
}

} // namespace

int main(int count, char** words)
{
    HostStandIn::Host host;
    double seconds = 10;
    if (!Parse(count, words, host, seconds)) {
        std::fputs(usage, stderr);
        return 64;
    }
    if (!host.Start())
        return 1;
    const auto start = Clock::now();
    while (SecondsSince(start) < seconds) {
        host.Wait(std::chrono::milliseconds(5));
        host.Pump();
        for (const std::string& line : host.TakeLines())
            std::printf("%6.0f %s\n", SecondsSince(start) * 1000, line.c_str());
        (void)host.TakeDatagrams();
        std::fflush(stdout);
    }
    return 0;
}
