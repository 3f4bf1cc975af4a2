// SPDX-License-Identifier: MIT
#include "Log/Log.h"

#include <algorithm>
#include <atomic>
#include <clocale>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <regex.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"

namespace {

using Support::LogCapture;
using Support::ReadBytes;
using Support::TemporaryFolder;
using Zen::Log;

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

bool Matches(const std::string& text, const std::string& pattern)
{
    regex_t compiled;
    EXPECT_EQ(regcomp(&compiled, ('^' + pattern + '$').c_str(), REG_EXTENDED | REG_NOSUB), 0);
    const bool matches = regexec(&compiled, text.c_str(), 0, nullptr, 0) == 0;
    regfree(&compiled);
    return matches;
}

/// While it lives, standard error goes to a file.
class ErrorsTo
{
public:
    explicit ErrorsTo(const std::filesystem::path& path)
        : before_(dup(STDERR_FILENO))
    {
        const int file = open(path.c_str(), O_CREAT | O_WRONLY | O_APPEND, 0600);
        dup2(file, STDERR_FILENO);
        close(file);
    }
    ~ErrorsTo()
    {
        dup2(before_, STDERR_FILENO);
        close(before_);
    }
    ErrorsTo(const ErrorsTo&) = delete;
    ErrorsTo& operator=(const ErrorsTo&) = delete;

private:
    int before_;
};

TEST(Log, WithoutALogNothingHappens)
{
    Log::SetGlobal(nullptr);
    ZEN_LOG_ERROR("nobody %s", "listens");
    EXPECT_EQ(Log::Global(), nullptr);
}

TEST(Log, TheFileFormWritesTimeThreadSourceAndMessage)
{
    const TemporaryFolder folder;
    const auto path = folder.Path() / "Log.txt";
    Log log(path);
    log.Debug("Quiet.cpp", 1, "debug passes");
    log.Info("Source.cpp", 42, "a {0} and a %s stay as they are: h\xC3\xA9");
    log.Error("Bad.cpp", 7, "");
    log.Flush();
    const auto lines = Lines(ReadBytes(path));
    ASSERT_EQ(lines.size(), 4U);
    const std::string head = R"(\[[0-9]{4}(-[0-9]{2}){2} [0-9]{2}(:[0-9]{2}){2} T:[0-9]+\])";
    const std::string begun = "Async log thread started with thread id: [1-9][0-9]*";
    EXPECT_TRUE(Matches(lines[0], head + R"(\[Log\.cpp:[0-9]+\] )" + begun)) << lines[0];
    EXPECT_TRUE(Matches(lines[1], head + R"(\[Quiet\.cpp:1\] debug passes)")) << lines[1];
    EXPECT_TRUE(lines[2].ends_with("][Source.cpp:42] a {0} and a %s stay as they are: h\xC3\xA9"));
    EXPECT_TRUE(lines[3].ends_with("][Bad.cpp:7] "));
}

TEST(Log, TheDebuggerFormWritesToTheDebuggerAlone)
{
    const TemporaryFolder folder;
    {
        const ErrorsTo errors(folder.Path() / "errors.txt");
        Log log;
        log.Info("Source.cpp", 42, "heard");
    }
    const auto lines = Lines(ReadBytes(folder.Path() / "errors.txt"));
    ASSERT_EQ(lines.size(), 2U);
    const std::string time = "[0-9]{4}(-[0-9]{2}){2} [0-9]{2}(:[0-9]{2}){2} [+-][0-9]{2}:[0-9]{2}";
    EXPECT_TRUE(Matches(lines[1], R"(\[)" + time + R"(\]\[T:[0-9]+\]\[Source\.cpp:42\] heard)"))
        << lines[1];
}

TEST(Log, ALineTooLongForTheDebuggerIsWholeInTheFile)
{
    const TemporaryFolder folder;
    const auto path = folder.Path() / "Log.txt";
    const std::string longest(16000, 'f');
    const std::string tooLong(16384, 'x');
    std::string manyBytes; // too many of them, but what is taken is few enough characters
    for (int i = 0; i < 9000; ++i)
        manyBytes += "\xC3\xA9";
    {
        const ErrorsTo errors(folder.Path() / "errors.txt");
        Log log(path);
        for (const std::string& text : {longest, tooLong, manyBytes})
            log.Info("a", 1, text);
    }
    const std::string file = ReadBytes(path);
    const std::string debugger = ReadBytes(folder.Path() / "errors.txt");
    EXPECT_NE(file.find(tooLong), std::string::npos);
    EXPECT_EQ(debugger.find('x'), std::string::npos);
    EXPECT_NE(debugger.find(longest), std::string::npos);
    EXPECT_NE(file.find(manyBytes), std::string::npos);
    EXPECT_NE(debugger.find(manyBytes.substr(0, 16000)), std::string::npos);
    EXPECT_EQ(Lines(debugger).size(), 3U);
}

TEST(LogFront, LinesAroundTheStackBufferComeOutWhole)
{
    const LogCapture capture;
    for (const std::size_t length : {0U, 126U, 127U, 128U, 129U, 5000U}) {
        std::string text(length, 'a');
        if (length > 0)
            text.back() = 'z';
        ZEN_LOG_INFO("%s", text.c_str());
        EXPECT_EQ(capture.Count(text), 1) << length;
    }
    ZEN_LOG_INFO("no arguments, 100%%");
    EXPECT_TRUE(capture.Has("no arguments, 100%"));
}

TEST(LogFront, ALineThatCannotBeFormattedSaysSo)
{
    const LogCapture capture;
    const std::string before = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_CTYPE, "C");
    ZEN_LOG_INFO("short %ls", L"\u0416");
    ZEN_LOG_ERROR("%200s %ls", "long", L"\u0416");
    std::setlocale(LC_CTYPE, "C.UTF-8");
    ZEN_LOG_INFO("%ls", L"\u0416 \U0001F4A1");
    std::setlocale(LC_CTYPE, before.c_str());
    const std::string failed = "Error formatting the log line";
    EXPECT_EQ(capture.Messages(),
              (std::vector<std::string>{failed, failed, "\xD0\x96 \xF0\x9F\x92\xA1"}));
}

TEST(LogFront, TheSourceIsNamedWithoutItsFolders)
{
    const TemporaryFolder folder;
    const auto path = folder.Path() / "Log.txt";
    Log::SetGlobal(std::make_shared<Log>(path));
    for (const char* file : {"C:\\house\\room\\A.cpp", "/house/room/B.cpp", "C.cpp", "D.cpp/"})
        Zen::LogFormatted(Zen::LogLevel::Info, file, 5, "from");
    ZEN_LOG_INFO("here");
    Log::SetGlobal(nullptr);
    const std::string text = ReadBytes(path);
    for (const char* expected :
         {"][A.cpp:5] from", "][B.cpp:5] from", "][C.cpp:5] from", "][:5] from", "][LogTests.cpp:"})
        EXPECT_NE(text.find(expected), std::string::npos) << expected;
}

// After Flush the caller's own last line is in the file, whatever other threads write meanwhile.
TEST(Log, FlushReturnsWhenTheCallersLinesAreInTheFile)
{
    constexpr int roundCount = 300;
    const TemporaryFolder folder;
    const auto path = folder.Path() / "Log.txt";
    const ErrorsTo errors("/dev/null");
    Log log(path);
    std::thread other([&] {
        for (int i = 0; i < 20000; ++i)
            log.Info("noise", 1, "noise");
    });
    std::ifstream file(path);
    std::string line;
    int found = 0;
    for (int round = 0; round < roundCount; ++round) {
        for (int i = 0; i < 20; ++i)
            log.Info("own", 1, "filler");
        const std::string mark = "mark " + std::to_string(round);
        log.Info("own", 1, mark);
        log.Flush();
        bool here = false;
        while (!here && std::getline(file, line))
            here = line.ends_with(mark);
        found += here ? 1 : 0;
        file.clear();
    }
    other.join();
    EXPECT_EQ(found, roundCount);
}

// More lines than the queue holds, from several threads, while the log changes under them: none is
// lost, doubled or mixed with another.
TEST(Log, NoLineIsLostWhileTheLogIsReplaced)
{
    constexpr int threadCount = 4;
    constexpr int lineCount = 5000;
    constexpr int logCount = 20;
    const TemporaryFolder folder;
    const ErrorsTo errors("/dev/null");
    const auto pathOf = [&](int i) {
        return folder.Path() / std::to_string(i) / "Log.txt";
    };
    Log::SetGlobal(std::make_shared<Log>(pathOf(0)));
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < lineCount; ++i)
                ZEN_LOG_INFO("line %d-%d end", t, i);
        });
    }
    for (int i = 1; i < logCount; ++i)
        Log::SetGlobal(std::make_shared<Log>(pathOf(i)));
    for (std::thread& thread : threads)
        thread.join();
    Log::SetGlobal(nullptr);

    std::map<std::string, int> seen;
    for (int i = 0; i < logCount; ++i) {
        for (const std::string& line : Lines(ReadBytes(pathOf(i)))) {
            const auto begin = line.find("] line ");
            if (begin != std::string::npos && line.ends_with(" end"))
                ++seen[line.substr(begin + 2)];
        }
    }
    EXPECT_EQ(seen.size(), std::size_t{threadCount} * lineCount);
    EXPECT_TRUE(std::ranges::all_of(seen, [](const auto& entry) { return entry.second == 1; }));
}

} // namespace
