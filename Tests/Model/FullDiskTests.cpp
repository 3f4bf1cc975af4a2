// SPDX-License-Identifier: MIT
// A disk that is full when a document is saved: a small one in memory, in a mount namespace that
// only this program sees.
#include "SavedDocument.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

using Support::LogCapture;
using Support::ReadBytes;
using Support::TemporaryFolder;

namespace {

/// False, with the reason in errno, where the system lets us have no mounts of our own.
bool EnterMountNamespace()
{
    const auto user = std::to_string(geteuid());
    const auto group = std::to_string(getegid());
    const bool ordinary = geteuid() != 0;
    if (unshare(CLONE_NEWNS | (ordinary ? CLONE_NEWUSER : 0)) != 0)
        return false;
    if (ordinary) {
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
        std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// A disk of this size, in the way that mount options give it, in a folder of its own.
class SmallDisk
{
public:
    explicit SmallDisk(const char* options)
        : mounted_(mount("tmpfs", folder_.Path().c_str(), "tmpfs", 0, options) == 0)
    {}
    ~SmallDisk()
    {
        if (mounted_)
            umount2(folder_.Path().c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] bool IsMounted() const { return mounted_; }
    [[nodiscard]] std::filesystem::path Path() const { return folder_.Path(); }
    [[nodiscard]] bool Change(const char* options) const
    {
        return mount("tmpfs", folder_.Path().c_str(), "tmpfs", MS_REMOUNT, options) == 0;
    }
    [[nodiscard]] std::vector<std::string> Files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Path()))
            names.push_back(entry.path().filename().string());
        return names;
    }

private:
    TemporaryFolder folder_;
    bool mounted_;
};

using Names = std::vector<std::string>;

} // namespace

TEST(FullDisk, KeepsTheOldDocumentAndLeavesNothingBehind)
{
    const LogCapture log;
    const SmallDisk disk("size=256k");
    ASSERT_TRUE(disk.IsMounted()) << std::strerror(errno);
    const auto path = disk.Path() / "show.wfm";
    SavedDocument small(3);
    SavedDocument large(1000);
    ASSERT_EQ(small.Save(path), 0);
    const std::string old = ReadBytes(path);

    EXPECT_EQ(large.Save(path), 1);
    EXPECT_TRUE(ReadBytes(path) == old);
    EXPECT_EQ(SavedDocument::CountIn(path), small.Count());
    EXPECT_EQ(disk.Files(), Names{"show.wfm"});
    EXPECT_EQ(large.Count(), 1000); // still there to be saved elsewhere
    const auto said = log.Messages();
    EXPECT_EQ(std::ranges::count_if(said,
                                    [&](const std::string& line) {
                                        return line.starts_with("Could not save " + path.string());
                                    }),
              1);

    DeviceModel library;
    const auto libraryPath = disk.Path() / "user.wfl";
    const auto fixture = [](const wchar_t* product, int side) {
        return std::make_unique<DeviceLedItem>(L"Maker", product,
                                               PixelMap(side, side, PixelMapType::RGB), 0, 3);
    };
    library.AddFixture(fixture(L"A", 1));
    ASSERT_EQ(library.Save(libraryPath.wstring()), 0);
    const std::string oldLibrary = ReadBytes(libraryPath);
    library.AddFixture(fixture(L"B", 500));
    EXPECT_EQ(library.Save(libraryPath.wstring()), 1);
    EXPECT_TRUE(ReadBytes(libraryPath) == oldLibrary);
    std::filesystem::remove(libraryPath);

    // The operator makes room and saves again.
    ASSERT_TRUE(disk.Change("size=16m"));
    EXPECT_EQ(large.Save(path), 0);
    EXPECT_EQ(SavedDocument::CountIn(path), large.Count());
    EXPECT_EQ(disk.Files(), Names{"show.wfm"});
}

TEST(FullDisk, WithoutRoomForOneByteOrOneFileMore)
{
    const SmallDisk disk("size=64k");
    ASSERT_TRUE(disk.IsMounted()) << std::strerror(errno);
    const auto path = disk.Path() / "show.wfm";
    const auto filler = disk.Path() / "pictures";
    SavedDocument first(3);
    SavedDocument second(4);
    ASSERT_EQ(first.Save(path), 0);
    const std::string old = ReadBytes(path);
    std::ofstream(filler, std::ios::binary) << std::string(65536, 'x');
    ASSERT_EQ(std::filesystem::space(disk.Path()).available, 0U);

    EXPECT_EQ(second.Save(path), 1);
    EXPECT_TRUE(ReadBytes(path) == old);
    EXPECT_EQ(disk.Files().size(), 2U);

    std::filesystem::remove(filler);
    ASSERT_TRUE(disk.Change("nr_inodes=2")); // the folder and the document
    EXPECT_EQ(second.Save(path), 1);
    EXPECT_TRUE(ReadBytes(path) == old);
    EXPECT_EQ(disk.Files(), Names{"show.wfm"});
    // A document that was never saved leaves nothing either.
    EXPECT_EQ(second.Save(disk.Path() / "new.wfm"), 1);
    EXPECT_EQ(disk.Files(), Names{"show.wfm"});
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!EnterMountNamespace()) {
        std::fprintf(stderr, "SKIP: no mount namespace of our own: %s\n", std::strerror(errno));
        constexpr int skipped = 77;
        return skipped;
    }
    return RUN_ALL_TESTS();
}
