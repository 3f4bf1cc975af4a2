// SPDX-License-Identifier: MIT
#include "Log/Log.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <spdlog/async_logger.h>
#include <spdlog/details/os.h>
#include <spdlog/details/thread_pool.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/basic_file_sink.h>

#include "Platform/DebugOutput.h"
#include "Platform/Text.h"

namespace Zen {

namespace {

constexpr std::size_t QueueSize = 4096;
constexpr std::size_t LongestDebugLine = 16384;
constexpr std::size_t DebugBufferSize = 16383;
constexpr int OldestGeneration = 9;
constexpr auto FlushPatience = std::chrono::seconds(10);

/// The debugger's text channel. It takes 16384 bytes of a line at most, and drops a line that fills
/// its buffer of 16383 UTF-16 units.
class msvc_wide_sink final : public spdlog::sinks::base_sink<std::mutex>
{
protected:
    void sink_it_(const spdlog::details::log_msg& message) override
    {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        const std::string_view taken(line.data(), std::min(line.size(), LongestDebugLine));
        const std::u16string wide = Platform::Utf8ToUtf16(taken);
        if (wide.empty() || wide.size() >= DebugBufferSize)
            return;
        std::string text = Platform::Utf16ToUtf8(wide);
        if (text.ends_with(spdlog::details::os::default_eol))
            text.resize(text.size() - std::string_view(spdlog::details::os::default_eol).size());
        Platform::WriteDebugLine(text);
    }
    void flush_() override {}
};

/// The last of the sinks: counts the lines that the others have written and flushed, since the
/// logger flushes all its sinks in turn after each line.
class CountingSink final : public spdlog::sinks::sink
{
public:
    void log(const spdlog::details::log_msg&) override {}
    void flush() override
    {
        const std::lock_guard lock(mutex_);
        ++lines_;
        changed_.notify_all();
    }
    void set_pattern(const std::string&) override {}
    void set_formatter(std::unique_ptr<spdlog::formatter>) override {}

    void WaitFor(std::uint64_t lines)
    {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, FlushPatience, [&] { return lines_ >= lines; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::uint64_t lines_ = 0;
};

/// Renames the log of the last run and the older ones by one number each. Failures are ignored: a
/// lost log is better than a program that does not start.
void MoveHistory(const std::filesystem::path& path)
{
    std::error_code ignored;
    const auto history = path.parent_path() / "loghistory";
    std::filesystem::create_directories(history, ignored);
    const auto generation = [&](int n) {
        return history / (path.filename().string() + '.' + std::to_string(n));
    };
    for (int n = OldestGeneration - 1; n >= 0; --n)
        std::filesystem::rename(generation(n), generation(n + 1), ignored);
    if (std::filesystem::is_regular_file(path, ignored))
        std::filesystem::rename(path, generation(1), ignored);
}

std::string_view BaseName(const char* file)
{
    const std::string_view name(file);
    return name.substr(name.find_last_of("/\\") + 1);
}

std::mutex& GlobalMutex()
{
    static std::mutex mutex;
    return mutex;
}

std::shared_ptr<Log>& GlobalLog()
{
    static std::shared_ptr<Log> log;
    return log;
}

void Write(LogLevel level, const char* file, int line, std::string_view message) noexcept
{
    const auto log = Log::Global();
    if (!log)
        return;
    switch (level) {
    case LogLevel::Debug:
        log->Debug(BaseName(file), line, message);
        break;
    case LogLevel::Info:
        log->Info(BaseName(file), line, message);
        break;
    case LogLevel::Error:
        log->Error(BaseName(file), line, message);
        break;
    }
}

} // namespace

struct Log::Worker
{
    std::atomic<std::uint32_t> workerThreadId{0};
    std::atomic<std::uint64_t> given{0}; ///< lines that a caller has begun to queue
    std::shared_ptr<CountingSink> written = std::make_shared<CountingSink>();
    std::shared_ptr<spdlog::details::thread_pool> pool;
    std::shared_ptr<spdlog::async_logger> logger;

    Worker(const char* name, const char* pattern, std::vector<spdlog::sink_ptr> sinks)
    {
        pool = std::make_shared<spdlog::details::thread_pool>(
            QueueSize, std::size_t{1}, [this] { workerThreadId = Platform::CurrentThreadId(); });
        sinks.push_back(written);
        logger = std::make_shared<spdlog::async_logger>(name, sinks.begin(), sinks.end(), pool,
                                                        spdlog::async_overflow_policy::block);
        logger->set_pattern(pattern);
        logger->set_level(spdlog::level::trace);
        // The worker flushes every line at once instead of every second: lines are few, and the
        // last ones before a crash matter most. Flush() relies on it.
        logger->flush_on(spdlog::level::trace);
    }

    /// The first line of a log names its worker thread, if that starts soon enough.
    void AnnounceThread(Log& log) const
    {
        constexpr int patience = 10000;
        for (int i = 0; i < patience && workerThreadId == 0; ++i)
            std::this_thread::yield();
        if (workerThreadId != 0)
            log.Info(BaseName(__FILE__), __LINE__,
                     "Async log thread started with thread id: " + std::to_string(workerThreadId));
    }

    void Write(spdlog::level::level_enum level, std::string_view source, int line,
               std::string_view message) noexcept
    {
        try {
            ++given;
            logger->log(level, "[{0}:{1}] {2}", source, line, message);
        } catch (...) {
            // There is no memory for a line, so the failure cannot be logged either.
        }
    }
};

Log::Log()
    : worker_(std::make_unique<Worker>(
          "no file", "[%Y-%m-%d %H:%M:%S %z][T:%t]%v",
          std::vector<spdlog::sink_ptr>{std::make_shared<msvc_wide_sink>()}))
{
    worker_->AnnounceThread(*this);
}

Log::Log(const std::filesystem::path& path)
{
    MoveHistory(path);
    worker_ = std::make_unique<Worker>(
        "", "[%Y-%m-%d %H:%M:%S T:%t]%v",
        std::vector<spdlog::sink_ptr>{
            std::make_shared<msvc_wide_sink>(),
            std::make_shared<spdlog::sinks::basic_file_sink_mt>(path.string(), false)});
    worker_->AnnounceThread(*this);
}

Log::~Log() = default;

void Log::Debug(std::string_view source, int line, std::string_view message) noexcept
{
    worker_->Write(spdlog::level::debug, source, line, message);
}

void Log::Info(std::string_view source, int line, std::string_view message) noexcept
{
    worker_->Write(spdlog::level::info, source, line, message);
}

void Log::Error(std::string_view source, int line, std::string_view message) noexcept
{
    worker_->Write(spdlog::level::err, source, line, message);
}

void Log::Flush() noexcept
{
    try {
        // The queue keeps the order, and a line is counted before it is queued. So once as many
        // lines are written as are counted now, all lines queued before now are written.
        worker_->written->WaitFor(worker_->given);
    } catch (...) {
        // As in Write: the failure cannot be logged.
    }
}

std::shared_ptr<Log> Log::Global() noexcept
{
    const std::lock_guard lock(GlobalMutex());
    return GlobalLog();
}

void Log::SetGlobal(std::shared_ptr<Log> log) noexcept
{
    {
        const std::lock_guard lock(GlobalMutex());
        GlobalLog().swap(log);
    }
    // The old log, now in `log`, is destroyed outside the lock: it may have lines to write.
}

void LogFormatted(LogLevel level, const char* file, int line, const char* format, ...) noexcept
{
    constexpr std::size_t stackSize = 128;
    constexpr std::string_view unformatted = "Error formatting the log line";
    char buffer[stackSize];
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int needed = std::vsnprintf(buffer, stackSize, format, arguments);
    va_end(arguments);
    if (needed < 0) {
        Write(level, file, line, unformatted);
    } else if (static_cast<std::size_t>(needed) < stackSize) {
        Write(level, file, line, {buffer, static_cast<std::size_t>(needed)});
    } else {
        try {
            std::string heap(static_cast<std::size_t>(needed) + 1, '\0');
            const int printed = std::vsnprintf(heap.data(), heap.size(), format, again);
            Write(level, file, line,
                  printed < 0 ? unformatted
                              : std::string_view(heap).substr(0, static_cast<std::size_t>(needed)));
        } catch (...) {
            Write(level, file, line, unformatted);
        }
    }
    va_end(again);
}

} // namespace Zen
