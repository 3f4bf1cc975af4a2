// SPDX-License-Identifier: MIT
#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Platform/DebugOutput.h"
#include "Platform/Folders.h"
#include "Platform/Locale.h"
#include "Platform/SingleInstance.h"
#include "Support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

/// Runs `work` in a child; the wait status of how that ended.
int StatusOfChild(const std::function<int()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

TEST(SingleInstance, TheNameIsFreeAgainHoweverItsHolderEnds)
{
    const std::string name = "pixelweft-test-" + std::to_string(getpid());
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe(ready.data()), 0);
    const pid_t holder = fork();
    if (holder == 0) {
        const char granted = Platform::ClaimSingleInstance(name) ? 'y' : 'n';
        if (write(ready[1], &granted, 1) == 1)
            pause();
        _exit(0);
    }
    char granted = '?';
    ASSERT_EQ(read(ready[0], &granted, 1), 1);
    EXPECT_EQ(granted, 'y');
    EXPECT_FALSE(Platform::ClaimSingleInstance(name));
    EXPECT_TRUE(Platform::ClaimSingleInstance(name + "-other"));

    kill(holder, SIGKILL);
    int status = 0;
    waitpid(holder, &status, 0);
    EXPECT_TRUE(Platform::ClaimSingleInstance(name));
    EXPECT_FALSE(Platform::ClaimSingleInstance(name));
    close(ready[0]);
    close(ready[1]);
}

TEST(Folders, TheUsersDataFolder)
{
    const Support::TemporaryFolder home;
    const auto folder = [](const char* data, const std::string& homeFolder) {
        data ? setenv("XDG_DATA_HOME", data, 1) : unsetenv("XDG_DATA_HOME");
        setenv("HOME", homeFolder.c_str(), 1);
        return Platform::UserDataFolder();
    };
    const std::string before = std::getenv("HOME") ? std::getenv("HOME") : "";
    const std::string standard = (home.Path() / ".local" / "share").string();
    const std::string given = (home.Path() / "given" / "deep").string();

    EXPECT_EQ(folder((given + '/').c_str(), home.Path()), given);
    EXPECT_TRUE(fs::is_directory(given));
    EXPECT_EQ(folder("relative", home.Path()), standard);
    EXPECT_FALSE(fs::exists("relative"));
    EXPECT_EQ(folder("", home.Path()), standard);
    EXPECT_EQ(folder(nullptr, home.Path()), standard);
    EXPECT_TRUE(fs::is_directory(standard));
    EXPECT_EQ(folder(nullptr, ""), "");
    setenv("HOME", before.c_str(), 1);
}

TEST(DebugOutput, OneLineAsItStands)
{
    const Support::TemporaryFolder folder;
    const auto path = folder.Path() / "errors.txt";
    const int status = StatusOfChild([&] {
        const int file = open(path.c_str(), O_CREAT | O_WRONLY, 0600);
        dup2(file, STDERR_FILENO);
        Platform::WriteDebugLine("h\xC3\xA9 %s");
        Platform::WriteDebugLine("");
        return 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Support::ReadBytes(path), "h\xC3\xA9 %s\n\n");
}

// Started from a terminal that is closed meanwhile, or piped into something that has ended, the
// program must go on: the show is more than its debug lines.
TEST(DebugOutput, AReaderThatIsGoneDoesNotEndTheProgram)
{
    const int status = StatusOfChild([] {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0)
            return 1;
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        close(ends[1]);
        Platform::WriteDebugLine("nobody hears this");
        close(STDERR_FILENO);
        Platform::WriteDebugLine("nor this");
        return 42;
    });
    ASSERT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 42);
}

TEST(DebugOutput, ASignalThatWaitedBeforeStillWaits)
{
    const int status = StatusOfChild([] {
        sigset_t pipeSignal;
        sigemptyset(&pipeSignal);
        sigaddset(&pipeSignal, SIGPIPE);
        sigprocmask(SIG_BLOCK, &pipeSignal, nullptr);
        kill(getpid(), SIGPIPE);
        close(STDERR_FILENO);
        Platform::WriteDebugLine("x");
        sigset_t pending;
        sigpending(&pending);
        return sigismember(&pending, SIGPIPE) == 1 ? 42 : 1;
    });
    EXPECT_EQ(WEXITSTATUS(status), 42);
}

TEST(Locale, WideTextPrintsWholeEvenForAUserOfThePlainLocale)
{
    const int status = StatusOfChild([] {
        setenv("LC_ALL", "C", 1);
        std::setlocale(LC_ALL, "");
        char text[32];
        if (std::snprintf(text, sizeof text, "%ls", L"\u00E9\U0001F4A1") >= 0)
            return 1; // the fault that the call is there to cure has gone: this test says nothing
        Platform::UseUtf8TextAndPlainNumbers();
        std::snprintf(text, sizeof text, "%ls %.1f", L"\u00E9\U0001F4A1", 1.5);
        return text == std::string("\xC3\xA9\xF0\x9F\x92\xA1 1.5") ? 42 : 2;
    });
    EXPECT_EQ(WEXITSTATUS(status), 42);
}

} // namespace
