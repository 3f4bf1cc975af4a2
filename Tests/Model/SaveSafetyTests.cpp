// SPDX-License-Identifier: MIT
// A save that a full disk or a killed process ends halfway: document and library are then the old
// ones or the new ones, whole.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <string>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using Files = std::map<std::string, std::string>;

Files FilesIn(const fs::path& folder)
{
    Files files;
    for (const auto& entry : fs::directory_iterator(folder))
        files[entry.path().filename().string()] = Support::ReadBytes(entry.path());
    return files;
}

/// A document and a library of `count` entries each, saved to show.wfm and user.wfl of a folder.
class Show
{
public:
    Show(const fs::path& folder, int count)
        : folder_(QString::fromStdString(folder.string()))
        , manager_(folder_ + QStringLiteral("/user.wfl"))
    {
        manager_.Initialize();
        for (int i = 0; i < count; ++i)
            manager_.GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
                L"Maker", L"Bar " + std::to_wstring(i), PixelMap(8, 8, PixelMapType::RGB), 0, 192));
        MappedObjectParams record;
        record.fixtureID = 1;
        manager_.AddMappedObjects({static_cast<std::size_t>(count), record});
    }

    bool SaveDocument()
    {
        return manager_.SaveMapping(folder_ + QStringLiteral("/show.wfm"), nodes_) == 0;
    }
    bool SaveLibrary() { return manager_.SaveLibrary(); }
    bool Save()
    {
        const bool document = SaveDocument();
        return SaveLibrary() && document;
    }

private:
    QString folder_;
    DeviceManager manager_;
    ArtNetNodeModel nodes_;
};

/// While it lives, no file of this process grows beyond `bytes`, as on a disk that is full there.
class FullDisk
{
public:
    explicit FullDisk(std::size_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
};

/// A process that saves two shows in turn until it is killed, and reports each save.
class Saver
{
public:
    explicit Saver(std::array<Show, 2>& shows)
    {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0)
            return;
        reports_ = ends[0];
        process_ = fork();
        for (std::size_t next = 1; process_ == 0; next = 1 - next) {
            const char report = shows[next].Save() ? 's' : 'f';
            if (write(ends[1], &report, 1) != 1)
                std::_Exit(0);
        }
        close(ends[1]);
    }
    ~Saver()
    {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        close(reports_);
    }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;

    /// Waits for a save; false when it failed or the process has gone.
    [[nodiscard]] bool HasSaved() const
    {
        char report = 0;
        return read(reports_, &report, 1) == 1 && report == 's';
    }

private:
    pid_t process_ = -1;
    int reports_ = -1;
};

TEST(SaveSafety, AFullDiskKeepsTheOldFilesAndLeavesNothingBehind)
{
    const Support::TemporaryFolder folder;
    Show large(folder.Path(), 60);
    ASSERT_TRUE(large.Save());
    const Files wanted = FilesIn(folder.Path());
    Show small(folder.Path(), 3);
    ASSERT_TRUE(small.Save());
    const Files old = FilesIn(folder.Path());

    const std::size_t document = wanted.at("show.wfm").size();
    const std::size_t library = wanted.at("user.wfl").size();
    ASSERT_GT(library, 20'000U);
    for (const std::size_t room : {std::size_t{0}, std::size_t{1}, std::size_t{16'383},
                                   std::size_t{16'384}, library - 1, document - 1})
    {
        bool documentSaved = false;
        bool librarySaved = false;
        {
            const FullDisk disk(room);
            documentSaved = large.SaveDocument();
            librarySaved = room < library && large.SaveLibrary();
        }
        EXPECT_FALSE(documentSaved || librarySaved) << room;
        EXPECT_EQ(FilesIn(folder.Path()), old) << room;
    }
    {
        const FullDisk disk(document); // which is the larger one
        EXPECT_TRUE(large.Save());
    }
    EXPECT_EQ(FilesIn(folder.Path()), wanted);
}

TEST(SaveSafety, AKilledSaveLeavesTheOldOrTheNewFiles)
{
    const Support::TemporaryFolder folder;
    std::array<Show, 2> shows = {Show(folder.Path(), 200), Show(folder.Path(), 400)};
    std::array<Files, 2> states;
    for (std::size_t i : {0U, 1U}) {
        ASSERT_TRUE(shows[i].Save());
        states[i] = FilesIn(folder.Path());
        ASSERT_EQ(states[i].size(), 2U);
    }

    std::mt19937 random(std::random_device{}());
    std::set<std::string> found;
    for (int kills = 0; kills < 40; ++kills) {
        {
            const Saver saver(shows);
            // By its own pace: a busy machine saves slowly and is killed late.
            ASSERT_TRUE(saver.HasSaved());
            const auto begin = std::chrono::steady_clock::now();
            ASSERT_TRUE(saver.HasSaved() && saver.HasSaved());
            const auto both = std::chrono::steady_clock::now() - begin;
            std::this_thread::sleep_for(both * std::uniform_real_distribution(0.0, 1.0)(random));
        }
        for (const auto& [name, bytes] : FilesIn(folder.Path())) {
            if (!states[0].contains(name)) {
                EXPECT_TRUE(name.starts_with(".show.wfm.saving") ||
                            name.starts_with(".user.wfl.saving"))
                    << name;
                continue;
            }
            const bool isFirst = bytes == states[0].at(name);
            ASSERT_TRUE(isFirst || bytes == states[1].at(name)) << name << ' ' << bytes.size();
            found.insert(name + (isFirst ? '0' : '1'));
        }
    }
    // Each state of each file is seen, but for once in a million runs.
    EXPECT_EQ(found.size(), 4U);
    ASSERT_TRUE(shows[0].Save());
    const Files now = FilesIn(folder.Path());
    for (const auto& [name, bytes] : states[0])
        EXPECT_TRUE(now.at(name) == bytes) << name;
}

} // namespace
