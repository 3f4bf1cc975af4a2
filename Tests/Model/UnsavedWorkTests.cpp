// SPDX-License-Identifier: MIT
// The copy of unsaved work is written by a thread beside the one that goes on changing the
// document.
#include "Model/UnsavedWork.h"

#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

class UnsavedWorkTest : public ::testing::Test
{
protected:
    UnsavedWorkTest()
    {
        manager.Initialize();
        manager.GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
            L"Maker", L"Bar", PixelMap(8, 8, PixelMapType::RGB), 1, 192));
        MappedObjectParams record;
        record.fixtureID = 1;
        manager.AddMappedObjects({500U, record});
        work->Watch(path);
    }

    void Change(int width)
    {
        manager.ResizeCanvas(width, 100, false);
        manager.SetDocumentDirty(true); // as the history of steps has it
    }

    Support::TemporaryFolder folder;
    QString path = QString::fromStdString(folder.Path() / "show.wfm");
    QString copy = UnsavedWork::FileFor(path);
    ArtNetNodeModel nodes;
    DeviceManager manager{QString()};
    std::unique_ptr<UnsavedWork> work = std::make_unique<UnsavedWork>(manager, nodes);
};

TEST_F(UnsavedWorkTest, EachCopyIsOneStateOfADocumentThatGoesOnChanging)
{
    int width = 100;
    const auto copyComes = [&] {
        Change(++width);
        return QFile::exists(copy);
    };
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(QTest::qWaitFor(copyComes, 5 * UnsavedWork::WriteMilliseconds));
        DeviceManager kept{QString()};
        kept.Initialize();
        EXPECT_TRUE(kept.LoadMapping(copy, nodes));
        EXPECT_TRUE(QFile::remove(copy));
    }
    // A step taken back may change nothing but a manual node.
    for (const bool node : {false, true}) { // first what still waits
        if (node)
            nodes.AddManualNode({.ip = "2.0.0.8", .name = "Mine", .manual = true, .universes = {}});
        EXPECT_TRUE(QTest::qWaitFor([this] { return QFile::exists(copy); },
                                    5 * UnsavedWork::WriteMilliseconds));
        EXPECT_TRUE(QFile::remove(copy));
    }
    Change(++width);
    // The last change waits: an end writes it, and a save that comes before leaves no copy.
    work.reset();
    EXPECT_TRUE(UnsavedWork::IsLeftOver(path));
    work = std::make_unique<UnsavedWork>(manager, nodes);
    work->Watch(path);
    manager.SetDocumentDirty(false);
    work.reset();
    EXPECT_FALSE(QFile::exists(copy));
}

TEST_F(UnsavedWorkTest, AFolderThatTakesNoFileIsReportedUntilItDoes)
{
    ASSERT_TRUE(QFile(path).open(QFile::WriteOnly));
    const QString inFile = path + QStringLiteral("/show.wfm");
    work->Watch(inFile);
    const Support::LogCapture log;
    QStringList troubles;
    QObject::connect(work.get(), &UnsavedWork::troubleChanged, work.get(),
                     [&](const QString& trouble) { troubles << trouble; });
    const auto told = [&](int times) {
        return QTest::qWaitFor([&] { return troubles.size() == times; },
                               5 * UnsavedWork::WriteMilliseconds);
    };
    Change(101);
    EXPECT_TRUE(told(1));
    EXPECT_TRUE(
        log.Has("Unsaved work can't be kept in " + UnsavedWork::FileFor(inFile).toStdString()));
    // It is tried again without a further change.
    ASSERT_TRUE(QFile::remove(path) && QDir().mkdir(path));
    EXPECT_TRUE(told(2));
    EXPECT_EQ(troubles,
              QStringList({QStringLiteral("There is a file where its folder should be."), {}}));
    EXPECT_TRUE(QFile::exists(UnsavedWork::FileFor(inFile)));
}

} // namespace
