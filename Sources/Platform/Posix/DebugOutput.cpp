// SPDX-License-Identifier: MIT
#include "Platform/DebugOutput.h"

#include <csignal>
#include <ctime>

#include <sys/uio.h>
#include <unistd.h>

namespace Platform {

namespace {

/// A write to a pipe whose reader has ended raises SIGPIPE, which would end the program. While this
/// object lives the calling thread raises none; a signal that was pending before stays pending.
class WithoutPipeSignal
{
public:
    WithoutPipeSignal() noexcept
    {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
    }
    ~WithoutPipeSignal()
    {
        constexpr timespec atOnce{};
        if (!wasPending_)
            sigtimedwait(&pipe_, nullptr, &atOnce);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    WithoutPipeSignal(const WithoutPipeSignal&) = delete;
    WithoutPipeSignal& operator=(const WithoutPipeSignal&) = delete;

private:
    sigset_t pipe_{};
    sigset_t before_{};
    bool wasPending_ = false;
};

} // namespace

void WriteDebugLine(std::string_view line) noexcept
{
    char lineEnd = '\n';
    const iovec parts[] = {{const_cast<char*>(line.data()), line.size()}, {&lineEnd, 1}};
    const WithoutPipeSignal guard;
    // A channel that is closed or full must not disturb the program.
    [[maybe_unused]] const ssize_t written = writev(STDERR_FILENO, parts, 2);
}

unsigned CurrentThreadId() noexcept
{
    return static_cast<unsigned>(gettid());
}

} // namespace Platform
