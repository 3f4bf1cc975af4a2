// SPDX-License-Identifier: MIT
// A save that a full disk or a killed process ends halfway: document and library are then the old
// ones or the new ones, whole.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using Files = std::map<std::string, std::string>;

/// A document and a library of `count` entries each, saved to show.wfm and user.wfl of a folder.
class Show
{
public:
    Show(const Support::TemporaryFolder& folder, int count)
        : folder_(QString::fromStdString(folder.Path().string()))
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

    /// How many of the two files could be saved.
    int Save()
    {
        const int result = manager_.SaveMapping(folder_ + QStringLiteral("/show.wfm"), nodes_);
        return (result == 0 ? 1 : 0) + (manager_.SaveLibrary() ? 1 : 0);
    }
    /// The same on a disk on which no file can grow beyond `room` bytes.
    int SaveWithin(std::size_t room)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit full = {room, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        const int saved = Save();
        setrlimit(RLIMIT_FSIZE, &before);
        return saved;
    }

private:
    QString folder_;
    DeviceManager manager_;
    ArtNetNodeModel nodes_;
};

class SaveSafety : public ::testing::Test
{
protected:
    Files Now() const
    {
        Files files;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
            files[entry.path().filename().string()] = Support::ReadBytes(entry.path());
        return files;
    }
    Files Saved(Show& show) const
    {
        EXPECT_EQ(show.Save(), 2);
        return Now();
    }

    Support::TemporaryFolder folder;
};

TEST_F(SaveSafety, AFullDiskKeepsTheOldFilesAndLeavesNothingBehind)
{
    Show large(folder, 60);
    Show small(folder, 3);
    const Files wanted = Saved(large);
    // Small files wait in a buffer for the end of their save, large ones do not.
    const Files before = Saved(small);
    for (const std::size_t room : {0U, 1U, 1000U}) {
        EXPECT_EQ(small.SaveWithin(room), 0);
        EXPECT_EQ(Now(), before) << room;
    }
    const std::size_t library = wanted.at("user.wfl").size();
    const std::size_t document = wanted.at("show.wfm").size(); // the larger one
    ASSERT_GT(library, 20'000U);
    for (const std::size_t room : {std::size_t{0}, std::size_t{1}, std::size_t{16'383},
                                   std::size_t{16'384}, library - 1, document - 1})
    {
        Files old = Saved(small);
        const int saved = large.SaveWithin(room);
        EXPECT_EQ(saved, room < library ? 0 : 1) << room;
        if (saved == 1)
            old["user.wfl"] = wanted.at("user.wfl");
        EXPECT_EQ(Now(), old) << room;
    }
    EXPECT_EQ(large.SaveWithin(document), 2);
    EXPECT_EQ(Now(), wanted);
}

TEST_F(SaveSafety, AKilledSaveLeavesTheOldOrTheNewFiles)
{
    Show first(folder, 200);
    Show second(folder, 400);
    const auto begin = Clock::now();
    const Files one = Saved(first);
    const Files other = Saved(second);
    const auto both = Clock::now() - begin;
    std::mt19937 random(std::random_device{}());
    std::set<std::string> found;
    for (int kills = 0; kills < 40; ++kills) {
        const pid_t saver = fork();
        ASSERT_GE(saver, 0);
        if (saver == 0)
            alarm(60); // should this process end before it
        while (saver == 0) {
            first.Save();
            second.Save();
        }
        std::this_thread::sleep_for(both * std::uniform_real_distribution(0.0, 3.0)(random));
        kill(saver, SIGKILL);
        waitpid(saver, nullptr, 0);
        for (const auto& [name, bytes] : Now()) {
            if (!one.contains(name)) {
                EXPECT_NE(name.find(".saving"), std::string::npos) << name;
                continue;
            }
            const bool isOne = bytes == one.at(name);
            ASSERT_TRUE(isOne || bytes == other.at(name)) << name << ' ' << bytes.size();
            found.insert(name + (isOne ? '1' : '2'));
        }
    }
    EXPECT_EQ(found.size(), 4U) << "each state of each file is seen, but for once in many runs";
    const Files now = Saved(first);
    for (const auto& [name, bytes] : one)
        EXPECT_TRUE(now.at(name) == bytes) << name;
}

} // namespace
