// SPDX-License-Identifier: MIT
#include "Log/Log.h"

#include <algorithm>
#include <clocale>
#include <exception>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <regex.h>

#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Support::ReadBytes;
using Support::TemporaryFolder;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;
using Zen::Log;

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// Whether all of a line is as an extended regular expression of POSIX has it.
bool Matches(const std::string& line, const std::string& pattern)
{
    regex_t whole{};
    if (regcomp(&whole, ("^" + pattern + "$").c_str(), REG_EXTENDED | REG_NOSUB) != 0)
        return false;
    const bool matches = regexec(&whole, line.c_str(), 0, nullptr, 0) == 0;
    regfree(&whole);
    return matches;
}

TEST(Log, BothFormsWriteTimeThreadSourceAndMessage)
{
    const TemporaryFolder folder;
    Log::SetGlobal(nullptr);
    ZEN_LOG_ERROR("without a log %s", "nothing happens");
    CaptureStderr();
    Log::SetGlobal(std::make_shared<Log>());
    ZEN_LOG_INFO("to the debugger alone %%s");
    Log::SetGlobal(std::make_shared<Log>(folder.Path() / "Log.txt"));
    const auto heard = Lines(GetCapturedStderr());
    for (const char* file : {"C:\\folder\\A.cpp", "/folder/B.cpp", "C.cpp", "D.cpp/"})
        Zen::LogFormatted(Zen::LogLevel::Debug, file, 5, "a {0} and a %%s stay: h\xC3\xA9");
    Log::SetGlobal(nullptr);
    auto lines = Lines(ReadBytes(folder.Path() / "Log.txt"));
    // The worker thread reports its start at about the same time.
    const auto ours = std::ranges::find_if(
        heard, [](const std::string& line) { return line.ends_with("alone %s"); });
    lines.push_back(ours == heard.end() ? "" : *ours);
    std::vector<std::string> patterns{
        R"( T:[0-9]+]\[Log.cpp:[0-9]+] Async log thread started with thread id: [1-9][0-9]*)"};
    for (const char* name : {"A.cpp", "B.cpp", "C.cpp", ""})
        patterns.push_back(R"( T:[0-9]+]\[)"s + name + R"(:5] a \{0\} and a %s stay: h..)");
    patterns.emplace_back(
        R"( [+-][0-9]{2}:[0-9]{2}]\[T:[0-9]+]\[LogTests.cpp:[0-9]+] to the debugger alone %s)");
    ASSERT_EQ(lines.size(), patterns.size());
    const std::string time = R"(\[[0-9]{4}(-[0-9]{2}){2} [0-9]{2}(:[0-9]{2}){2})";
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_TRUE(Matches(lines[i], time + patterns[i])) << lines[i];
}

TEST(Log, ALineTooLongForTheDebuggerIsWholeInTheFile)
{
    const TemporaryFolder folder;
    const std::string longest(16000, 'f');
    const std::string tooLong(16384, 'x');
    CaptureStderr();
    {
        Log log(folder.Path() / "Log.txt");
        log.Info("a", 1, longest);
        log.Info("a", 1, tooLong);
    }
    const std::string debugger = GetCapturedStderr();
    const std::string file = ReadBytes(folder.Path() / "Log.txt");
    EXPECT_NE(file.find(tooLong), std::string::npos);
    EXPECT_EQ(debugger.find('x'), std::string::npos);
    EXPECT_NE(debugger.find(longest), std::string::npos);
}

TEST(LogFront, LinesOfEveryLengthComeOutWholeAndABadOneSaysSo)
{
    const Support::LogCapture capture;
    std::vector<std::string> expected{"no arguments, 100%"};
    ZEN_LOG_INFO("no arguments, 100%%");
    for (const std::size_t length : {0U, 126U, 127U, 128U, 129U, 5000U}) {
        expected.emplace_back(length, 'a');
        ZEN_LOG_INFO("%s", expected.back().c_str());
    }
    const std::string before = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_CTYPE, "C");
    ZEN_LOG_INFO("short %ls", L"\u0416");
    ZEN_LOG_ERROR("%200s %ls", "long", L"\u0416");
    std::setlocale(LC_CTYPE, "C.UTF-8");
    ZEN_LOG_DEBUG("%ls", L"\u0416 \U0001F4A1");
    std::setlocale(LC_CTYPE, before.c_str());
    expected.insert(expected.end(), 2, "Error formatting the log line");
    expected.emplace_back("\xD0\x96 \xF0\x9F\x92\xA1");
    EXPECT_EQ(capture.Messages(), expected);
}

// More lines than the queue holds, from several threads, while the log changes under them: none is
// lost, doubled or mixed with another, and after a flush the caller's own are in the file.
TEST(Log, NoLineIsLostWhileTheLogIsReplaced)
{
    constexpr int threadCount = 4;
    constexpr int lineCount = 5000;
    const TemporaryFolder folder;
    CaptureStderr();
    std::vector<std::thread> threads;
    for (int i = 0; i < 20; ++i) {
        const auto path = folder.Path() / std::to_string(i) / "Log.txt";
        Log::SetGlobal(std::make_shared<Log>(path));
        ZEN_LOG_INFO("flushed");
        Log::Global()->Flush();
        EXPECT_NE(ReadBytes(path).find("flushed"), std::string::npos) << i;
        if (i < threadCount) {
            threads.emplace_back([i] {
                for (int line = 0; line < lineCount; ++line)
                    ZEN_LOG_INFO("line %d-%d end", i, line);
            });
        }
    }
    for (std::thread& thread : threads)
        thread.join();
    Log::SetGlobal(nullptr);
    GetCapturedStderr();
    std::vector<std::string> seen;
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
        for (const std::string& line : Lines(ReadBytes(entry.path() / "Log.txt"))) {
            if (line.ends_with(" end"))
                seen.push_back(line.substr(line.rfind("] line ") + 2));
        }
    }
    EXPECT_EQ(seen.size(), std::size_t{threadCount} * lineCount);
    EXPECT_EQ(std::set(seen.begin(), seen.end()).size(), seen.size());
}

TEST(LogHistory, NineOlderLogsAreKeptTheYoungestFirst)
{
    const TemporaryFolder folder;
    const fs::path history = folder.Path() / "loghistory";
    const auto start = [&](const std::string& line) {
        Log(folder.Path() / "PW.txt").Info("History", 1, line);
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::directory_iterator(history)) {
            const std::string text = ReadBytes(entry.path());
            files[entry.path().extension()] = text.substr(text.rfind("] ") + 2);
        }
        return files;
    };
    EXPECT_TRUE(start("start 0").empty());
    folder.Write("loghistory/PW.txt.4", "] in a gap");
    folder.Write("loghistory/PW.txt.12", "] beyond");
    std::map<std::string, std::string> expected{
        {".1", "start 0\n"}, {".5", "in a gap"}, {".12", "beyond"}};
    EXPECT_EQ(start("start 1"), expected);
    expected.erase(".5");
    for (int n = 1; n <= 9; ++n) {
        (void)start("start " + std::to_string(n + 1));
        expected['.' + std::to_string(10 - n)] = "start " + std::to_string(n + 1) + '\n';
    }
    EXPECT_EQ(start("start 11"), expected);
}

TEST(LogHistory, WithoutAHistoryFolderTheOldLogGoesOnAndAFolderIsNoLog)
{
    const TemporaryFolder folder;
    folder.Write("loghistory", "a file in the way");
    const fs::path path = folder.Write("PW.txt", "old line\n");
    Log(path).Info("History", 1, "new line");
    EXPECT_TRUE(ReadBytes(path).starts_with("old line\n"));
    EXPECT_TRUE(ReadBytes(path).ends_with("] new line\n"));
    EXPECT_THROW(Log{folder.Path()}, std::exception);
    EXPECT_THROW(Log(path / "PW.txt"), std::exception);
}

} // namespace
