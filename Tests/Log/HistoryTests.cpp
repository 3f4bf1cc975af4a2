// SPDX-License-Identifier: MIT
#include <chrono>
#include <exception>
#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "Log/Log.h"
#include "Support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using Support::ReadBytes;
using Support::TemporaryFolder;

constexpr const char* Name = "PixelWeftLog.txt";

void Start(const fs::path& path, const std::string& message)
{
    Zen::Log log(path);
    log.Info("History", 1, message);
}

bool Says(const fs::path& path, const std::string& message)
{
    return ReadBytes(path).find("] " + message + '\n') != std::string::npos;
}

std::set<std::string> NamesIn(const fs::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

TEST(LogHistory, TheFirstStartMakesTheFolders)
{
    const TemporaryFolder folder;
    const fs::path path = folder.Path() / "new" / "deep" / Name;
    Start(path, "start 1");
    EXPECT_TRUE(Says(path, "start 1"));
    EXPECT_TRUE(fs::is_empty(path.parent_path() / "loghistory"));
}

TEST(LogHistory, NineOlderLogsAreKeptTheYoungestFirst)
{
    const TemporaryFolder folder;
    const fs::path path = folder.Path() / Name;
    const fs::path history = folder.Path() / "loghistory";
    for (int start = 1; start <= 10; ++start)
        Start(path, "start " + std::to_string(start));
    EXPECT_TRUE(Says(path, "start 10"));
    std::set<std::string> expected;
    for (int n = 1; n <= 9; ++n) {
        const std::string name = std::string(Name) + '.' + std::to_string(n);
        expected.insert(name);
        EXPECT_TRUE(Says(history / name, "start " + std::to_string(10 - n))) << n;
    }
    EXPECT_EQ(NamesIn(history), expected);

    Start(path, "start 11");
    EXPECT_EQ(NamesIn(history), expected);
    EXPECT_TRUE(Says(history / (std::string(Name) + ".9"), "start 2"));
    EXPECT_FALSE(Says(path, "start 10"));
}

TEST(LogHistory, GapsMoveOnAndStrangersStay)
{
    const TemporaryFolder folder;
    fs::create_directory(folder.Path() / "loghistory");
    const fs::path path = folder.Path() / Name;
    const std::string base = std::string("loghistory/") + Name;
    folder.Write(base + ".0", "zero");
    folder.Write(base + ".4", "four");
    folder.Write(base + ".12", "stranger");
    Start(path, "new");
    EXPECT_EQ(NamesIn(folder.Path() / "loghistory"),
              (std::set<std::string>{std::string(Name) + ".1", std::string(Name) + ".5",
                                     std::string(Name) + ".12"}));
    EXPECT_EQ(ReadBytes(folder.Path() / (base + ".1")), "zero");
    EXPECT_EQ(ReadBytes(folder.Path() / (base + ".5")), "four");
}

TEST(LogHistory, WithoutAHistoryFolderTheOldLogGoesOn)
{
    const TemporaryFolder folder;
    folder.Write("loghistory", "a file in the way");
    const fs::path path = folder.Write(Name, "old line\n");
    Start(path, "new line");
    EXPECT_TRUE(ReadBytes(path).starts_with("old line\n"));
    EXPECT_TRUE(Says(path, "new line"));
}

TEST(LogHistory, AFileThatCannotBeOpenedIsRaisedAfterFiveTries)
{
    const TemporaryFolder folder;
    folder.Write("file", "");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THROW(Zen::Log(folder.Path() / "file" / Name), std::exception);
    EXPECT_THROW(Zen::Log(folder.Path()), std::exception); // a folder is no log
    const auto taken = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(taken, std::chrono::milliseconds(2 * 5 * 10));
    EXPECT_LT(taken, std::chrono::seconds(5));
}

} // namespace
