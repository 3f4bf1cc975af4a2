// SPDX-License-Identifier: MIT
#include "Platform/EndSignals.h"

#include <cerrno>
#include <csignal>
#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A signal handler can reach nothing but globals, and the process has one set of signals.
int pipeEnd = -1;

extern "C" void TakeSignal(int)
{
    const int error = errno;
    const char one = 1;
    [[maybe_unused]] const auto written = write(pipeEnd, &one, 1);
    errno = error;
}

} // namespace

namespace Platform {

int CatchEndSignals()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return -1;
    pipeEnd = ends[1];
    struct sigaction action
    {};
    action.sa_handler = TakeSignal;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaction(signal, &action, nullptr);
    return ends[0];
}

} // namespace Platform
