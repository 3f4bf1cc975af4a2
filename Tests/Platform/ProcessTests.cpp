// SPDX-License-Identifier: MIT
// What a process has from the system. A second start, and the signals that end a process, are
// judged from end to end.
#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Platform/DebugOutput.h"
#include "Platform/Folders.h"
#include "Platform/Locale.h"
#include "Support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

/// What `work` gives in a child process; -1 when a signal ended that.
int InChild(const std::function<int()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Folders, TheUsersDataFolder)
{
    const Support::TemporaryFolder home;
    const auto folder = [](const char* data, const std::string& homeFolder) {
        data ? setenv("XDG_DATA_HOME", data, 1) : unsetenv("XDG_DATA_HOME");
        setenv("HOME", homeFolder.c_str(), 1);
        return Platform::UserDataFolder();
    };
    const std::string standard = (home.Path() / ".local" / "share").string();
    const std::string given = (home.Path() / "given" / "deep").string();
    EXPECT_EQ(folder((given + '/').c_str(), home.Path()), given);
    for (const char* unusable : {"relative", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(folder(unusable, home.Path()), standard);
    EXPECT_TRUE(fs::is_directory(given) && fs::is_directory(standard));
    EXPECT_FALSE(fs::exists("relative"));
    EXPECT_EQ(folder(nullptr, ""), "");
}

// Started from a terminal that is closed meanwhile, or piped into a program that has ended, ours
// must go on: the show is more than its debug lines.
TEST(DebugOutput, AReaderThatIsGoneEndsNothing)
{
    const auto work = [] {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0)
            return 1;
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        close(ends[1]);
        Platform::WriteDebugLine("unread");
        return 42;
    };
    EXPECT_EQ(InChild(work), 42);
}

TEST(Locale, WideTextPrintsWholeEvenForAUserOfThePlainLocale)
{
    const auto work = [] {
        setenv("LC_ALL", "C", 1);
        std::setlocale(LC_ALL, "");
        std::array<char, 32> text{};
        if (std::snprintf(text.data(), text.size(), "%ls", L"\u00E9\U0001F4A1") >= 0)
            return 1; // the fault that the call cures is gone: this test would show nothing
        Platform::UseUtf8TextAndPlainNumbers();
        std::snprintf(text.data(), text.size(), "%ls %.1f", L"\u00E9\U0001F4A1", 1.5);
        return text.data() == std::string("\xC3\xA9\xF0\x9F\x92\xA1 1.5") ? 42 : 2;
    };
    EXPECT_EQ(InChild(work), 42);
}

} // namespace
