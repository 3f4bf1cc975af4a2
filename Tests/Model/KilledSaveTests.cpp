// SPDX-License-Identifier: MIT
// A program that is killed while it saves a document and a library, again and again. It is this
// program once more, which saves two states of each in turn and reports every save through a pipe.
#include "Model/DeviceModel.h"
#include "SavedDocument.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <thread>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

const char* const ourselves = "/proc/self/exe";
const char* const saverMode = "--save-in";

/// Two states of a document and of a library, to be saved in turn.
class TwoStates
{
public:
    TwoStates()
    {
        for (int i = 0; i < 400; ++i) {
            const auto fixture = [i] {
                return std::make_unique<DeviceLedItem>(L"Maker", L"Bar " + std::to_wstring(i),
                                                       PixelMap(8, 8, PixelMapType::RGB), 0, 192);
            };
            libraries_[1].AddFixture(fixture());
            if (i % 2 == 0)
                libraries_[0].AddFixture(fixture());
        }
    }

    bool Save(int state, const fs::path& folder)
    {
        return documents_[state].Save(folder / "show.wfm") == 0 &&
               libraries_[state].Save((folder / "user.wfl").wstring()) == 0;
    }

private:
    SavedDocument documents_[2] = {SavedDocument(200), SavedDocument(400)};
    DeviceModel libraries_[2];
};

/// Never ends by itself but with whoever reads the pipe.
[[noreturn]] void SaveForEver(const fs::path& folder, int pipe)
{
    TwoStates states;
    for (int state = 1;; state = 1 - state) {
        const char report = states.Save(state, folder) ? 's' : 'f';
        if (write(pipe, &report, 1) != 1)
            std::_Exit(0);
    }
}

/// The saving program, from its start to its death.
class Saver
{
public:
    explicit Saver(const fs::path& folder)
    {
        int ends[2];
        if (pipe(ends) != 0)
            return;
        pipe_ = ends[0];
        const std::string path = folder.string();
        const std::string end = std::to_string(ends[1]);
        process_ = fork();
        if (process_ == 0) {
            close(ends[0]);
            execl(ourselves, "saver", saverMode, path.c_str(), end.c_str(), nullptr);
            std::_Exit(1);
        }
        close(ends[1]);
    }
    ~Saver() { Kill(); }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;

    /// Waits for a save; false when it failed or the program has gone.
    [[nodiscard]] bool HasSaved() const
    {
        char report = 0;
        return read(pipe_, &report, 1) == 1 && report == 's';
    }

    void Kill()
    {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
            close(pipe_);
        }
        process_ = -1;
    }

private:
    pid_t process_ = -1;
    int pipe_ = -1;
};

using Files = std::map<std::string, std::string>;

Files FilesIn(const fs::path& folder)
{
    Files files;
    for (const auto& entry : fs::directory_iterator(folder))
        files[entry.path().filename().string()] = Support::ReadBytes(entry.path());
    return files;
}

/// Enough for every test run; a longer one when the environment says so.
int Kills()
{
    const char* wanted = std::getenv("PIXELWEFT_KILLS");
    return wanted ? std::atoi(wanted) : 40;
}

} // namespace

TEST(KilledSave, LeavesTheOldOrTheNewFilesWholeAndNoLitter)
{
    const Support::TemporaryFolder folder;
    TwoStates states;
    ASSERT_TRUE(states.Save(0, folder.Path()));
    const Files first = FilesIn(folder.Path());
    ASSERT_TRUE(states.Save(1, folder.Path()));
    const Files second = FilesIn(folder.Path());
    ASSERT_EQ(first.size(), 2U);
    ASSERT_EQ(second.size(), 2U);
    for (const auto& [name, bytes] : first) {
        ASSERT_GT(bytes.size(), 100'000U);
        ASSERT_GT(second.at(name).size(), bytes.size() + 100'000U);
    }

    std::mt19937 random(std::random_device{}());
    std::map<std::string, int> found;
    for (int i = 0; i < Kills(); ++i) {
        Saver saver(folder.Path());
        // By its own reports, a busy machine saves slowly and is killed late.
        ASSERT_TRUE(saver.HasSaved());
        const auto begin = Clock::now();
        ASSERT_TRUE(saver.HasSaved());
        ASSERT_TRUE(saver.HasSaved());
        const auto bothStates = Clock::now() - begin;
        std::this_thread::sleep_for(bothStates * std::uniform_real_distribution(0.0, 1.0)(random));
        saver.Kill();
        for (const auto& [name, bytes] : FilesIn(folder.Path())) {
            if (!first.contains(name)) {
                EXPECT_TRUE(name.starts_with(".show.wfm.saving") ||
                            name.starts_with(".user.wfl.saving"))
                    << name;
                ++found["left over"];
                continue;
            }
            const bool isFirst = bytes == first.at(name);
            ASSERT_TRUE(isFirst || bytes == second.at(name)) << name << ' ' << bytes.size();
            ++found[name + (isFirst ? " as it was first" : " as it was second")];
        }
    }
    for (const auto& [what, times] : found)
        std::printf("%d times: %s\n", times, what.c_str());
    // Each state of each file is seen, but for once in a million runs.
    EXPECT_TRUE(Kills() < 40 || found.size() >= 4);

    const auto hoursAgo = fs::file_time_type::clock::now() - std::chrono::hours(2);
    for (const auto& entry : fs::directory_iterator(folder.Path()))
        fs::last_write_time(entry, hoursAgo);
    ASSERT_TRUE(states.Save(0, folder.Path()));
    EXPECT_EQ(FilesIn(folder.Path()), first);
    EXPECT_EQ(SavedDocument::CountIn(folder.Path() / "show.wfm"), 200);
}

int main(int argc, char** argv)
{
    if (argc == 4 && std::string(argv[1]) == saverMode)
        SaveForEver(argv[2], std::atoi(argv[3]));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
