// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

namespace Zen {

/// The log: every line goes to the debugger's text channel and, in the file form, to a file with a
/// history of nine older ones. Writing happens on a worker thread; a full queue (4096 lines) makes
/// the caller wait. The calls may be made on any thread and never throw.
class Log
{
public:
    /// To the debugger's text channel only.
    Log();

    /// To the debugger's text channel and a new file at `path`. An old file there moves into
    /// "loghistory" beside it as <name>.1, the number of each older one grows by one, the tenth is
    /// lost. The folder of `path` is created when it is missing. Throws spdlog::spdlog_ex when the
    /// file can't be opened.
    explicit Log(const std::filesystem::path& path);

    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    void Debug(std::string_view source, int line, std::string_view message) noexcept;
    void Info(std::string_view source, int line, std::string_view message) noexcept;
    void Error(std::string_view source, int line, std::string_view message) noexcept;

    /// Returns once every line logged so far has been written, or after ten seconds at the latest.
    void Flush() noexcept;

    /// The log of the process; null before main has made it and after main has dropped it.
    /// A line holds its own reference, so the log can be replaced while other threads write.
    [[nodiscard]] static std::shared_ptr<Log> Global() noexcept;
    static void SetGlobal(std::shared_ptr<Log> log) noexcept;

private:
    // Definition in the .cpp: spdlog stays out of the headers.
    struct Worker;
    std::unique_ptr<Worker> worker_;
};

/// The level of a log line, as the fronts below pass it on.
enum class LogLevel : std::uint8_t
{
    Debug,
    Info,
    Error
};

/// printf semantics into a 128-byte buffer on the stack, or a heap buffer for a longer line. A line
/// that can't be formatted says "Error formatting the log line" instead. Does nothing without a
/// log.
void LogFormatted(LogLevel level, const char* file, int line, const char* format, ...) noexcept
    __attribute__((format(printf, 4, 5)));

} // namespace Zen

#define ZEN_LOG_DEBUG(...)                                                                         \
    ::Zen::LogFormatted(::Zen::LogLevel::Debug, __FILE__, __LINE__, __VA_ARGS__)
#define ZEN_LOG_INFO(...)                                                                          \
    ::Zen::LogFormatted(::Zen::LogLevel::Info, __FILE__, __LINE__, __VA_ARGS__)
#define ZEN_LOG_ERROR(...)                                                                         \
    ::Zen::LogFormatted(::Zen::LogLevel::Error, __FILE__, __LINE__, __VA_ARGS__)
