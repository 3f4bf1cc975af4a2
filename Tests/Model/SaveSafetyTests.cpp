// SPDX-License-Identifier: MIT
// A save that a full disk or a killed process ends halfway: the file is then the old one or the new
// one, whole. What a killed process leaves is what others read at that moment.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <set>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class SaveSafety : public ::testing::Test
{
protected:
    SaveSafety()
    {
        for (DeviceManager* document : {&small, &large}) {
            document->Initialize();
            document->GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
                L"Maker", L"Bar", PixelMap(8, 8, PixelMapType::RGB), 1, 192));
            MappedObjectParams record;
            record.fixtureID = 1;
            document->AddMappedObjects({document == &small ? 3U : 400U, record});
        }
    }

    SaveResult Save(DeviceManager& document)
    {
        const QString path = QString::fromStdString(file.string());
        bool waited = false;
        SaveResult saved = document.SaveMapping(path, ArtNetNodeModel(), [&](const auto& written) {
            written.wait();
            waited = true;
        });
        EXPECT_TRUE(waited);
        return saved;
    }
    std::string Saved(DeviceManager& document)
    {
        EXPECT_TRUE(Save(document));
        return Support::ReadBytes(file);
    }
    /// Saves on a disk on which no file can grow beyond `room` bytes.
    SaveResult SaveWithin(std::size_t room, DeviceManager& document)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit full = {room, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        const SaveResult saved = Save(document);
        setrlimit(RLIMIT_FSIZE, &before);
        return saved;
    }

    Support::TemporaryFolder folder;
    std::filesystem::path file = folder.Path() / "show.wfm";
    DeviceManager small{QString()};
    DeviceManager large{QString()};
};

TEST_F(SaveSafety, AFullDiskKeepsTheOldFileAndLeavesNothingBehind)
{
    const std::string ofLarge = Saved(large);
    const std::string ofSmall = Saved(small);
    // Small files wait in a buffer for the end of their save, large ones do not.
    for (const std::size_t room : {0U, 1U, 1000U})
        EXPECT_EQ(SaveWithin(room, small).Reason(),
                  QStringLiteral("The file is larger than the disk takes."))
            << room;
    for (const std::size_t room : {std::size_t{0}, std::size_t{1}, std::size_t{16'383},
                                   std::size_t{16'384}, ofLarge.size() - 1})
        EXPECT_FALSE(SaveWithin(room, large)) << room;
    EXPECT_TRUE(Support::ReadBytes(file) == ofSmall);
    EXPECT_TRUE(SaveWithin(ofLarge.size(), large));
    EXPECT_TRUE(Support::ReadBytes(file) == ofLarge);
    using Entries = std::filesystem::directory_iterator;
    EXPECT_EQ(std::distance(Entries(folder.Path()), Entries()), 1);
}

TEST_F(SaveSafety, AtEveryMomentOfASaveTheFileIsTheOldOrTheNewOne)
{
    const std::string ofSmall = Saved(small);
    const std::string ofLarge = Saved(large);
    const pid_t saver = fork();
    ASSERT_GE(saver, 0);
    if (saver == 0) {
        int saved = 0;
        for (int time = 0; time < 40; ++time)
            saved += (Save(small) ? 1 : 0) + (Save(large) ? 1 : 0);
        _exit(saved == 80 ? 0 : 1);
    }
    std::set<std::string> found;
    int status = 0;
    while (waitpid(saver, &status, WNOHANG) == 0) {
        const std::string bytes = Support::ReadBytes(file);
        found.insert(bytes == ofSmall ? "small" : bytes == ofLarge ? "large" : "torn");
    }
    EXPECT_EQ(status, 0);
    EXPECT_EQ(found, (std::set<std::string>{"large", "small"}));
    EXPECT_TRUE(Support::ReadBytes(file) == ofLarge);
}

} // namespace
