// SPDX-License-Identifier: MIT
// The fixture library: what merging, saving, removing and reloading leave of it, also with files
// that are no libraries.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace {

using Products = std::vector<std::wstring>;
using Identifiers = QList<qint64>;

std::string Fixture(const std::string& maker, const std::string& product, int cells = 1)
{
    std::string text = R"(<LEDFixture manufacturer=")" + maker + R"(" product=")" + product +
                       R"("><PixelMapping width=")" + std::to_string(cells) +
                       R"(" height="1" type="RGB">)";
    for (int cell = 0; cell < cells; ++cell)
        text += std::to_string(1 + 3 * cell) + ' ';
    return text + "</PixelMapping></LEDFixture>";
}

std::string Library(const std::string& fixtures, const std::string& version = "1")
{
    return R"(<LEDFixtureLibrary version=")" + version + R"(">)" + fixtures +
           "</LEDFixtureLibrary>";
}

class LibraryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        DeviceModel::defaultConflictCallback = [this](const QString& maker, const QString& name) {
            asked.push_back(maker.toStdWString() + L'/' + name.toStdWString());
            return answer;
        };
    }
    void TearDown() override { DeviceModel::defaultConflictCallback = before; }

    void Merge(const std::string& text, bool force = true,
               const FixtureConflictCallback& callback = {})
    {
        EXPECT_EQ(library.Merge(folder.Write("in.wfl", text).wstring(), force, callback), 0);
    }

    /// The products in the order of their identifiers.
    Products Names() const
    {
        Products names;
        for (const DeviceLedItem* fixture : library.GetFixtures())
            names.push_back(fixture->product);
        return names;
    }

    /// A manufacturer row and the texts of the fixture rows below it.
    QStringList Rows() const
    {
        QStringList rows;
        for (int row = 0; row < library.rowCount(); ++row) {
            const QModelIndex maker = library.index(row, 0);
            rows << maker.data().toString();
            for (int child = 0; child < library.rowCount(maker); ++child) {
                const auto text = [&](int column) {
                    return library.index(child, column, maker).data().toString();
                };
                rows << QStringLiteral("- %1 %2 #%3").arg(text(1), text(2), text(7));
            }
        }
        return rows;
    }

    Support::TemporaryFolder folder;
    Support::LogCapture log;
    FixtureConflictCallback before = DeviceModel::defaultConflictCallback;
    int answer = KeepFixture;
    std::vector<std::wstring> asked;
    DeviceModel library;
};

// ---- Merging -----------------------------------------------------------------------------------

TEST_F(LibraryTest, OnlyANewerVersionIsNewsUnlessForced)
{
    Merge(Library(Fixture("Maker", "A"), "3"), false);
    EXPECT_EQ(library.GetVersion(), 3);
    Merge(Library(Fixture("Maker", "B"), "3"), false);
    Merge(Library(Fixture("Maker", "B"), "2"), false);
    Merge("<LEDFixtureLibrary>" + Fixture("Maker", "B") + "</LEDFixtureLibrary>", false);
    EXPECT_EQ(Names(), Products{L"A"});
    EXPECT_EQ(library.GetVersion(), 3);

    Merge(Library(Fixture("Maker", "B"), "010"), false);
    EXPECT_EQ(library.GetVersion(), 8);
    Merge(Library(Fixture("Maker", "C"), "0x10"), false);
    EXPECT_EQ(library.GetVersion(), 16);
    EXPECT_EQ(Names(), (Products{L"A", L"B", L"C"}));
    ASSERT_EQ(library.Save((folder.Path() / "saved.wfl").wstring()), 0);
    EXPECT_TRUE(XmlText::Decode(Support::ReadBytes(folder.Path() / "saved.wfl"))
                    .starts_with("<LEDFixtureLibrary version=\"16\">\n    <LEDFixture "));

    Merge(Library(Fixture("Maker", "D"), "2"));
    EXPECT_EQ(library.GetVersion(), 2);
    Merge("<LEDFixtureLibrary>" + Fixture("Maker", "E") + "</LEDFixtureLibrary>");
    EXPECT_EQ(library.GetVersion(), 0);
    for (const char* version : {"99999999999999999999", "-", "1.5e", ""}) {
        Merge(Library(Fixture("Maker", version), version));
        EXPECT_EQ(library.GetVersion(), 0) << version;
    }
}

TEST_F(LibraryTest, IdentifiersHaveGapsForWhatWasNotTaken)
{
    const std::string broken = R"(<LEDFixture manufacturer="Maker" product="Broken" />)";
    const std::string file =
        Library(Fixture("Maker", "A") + broken + Fixture("Maker", "A") + Fixture("Maker", "B"));
    Merge(file);
    EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{1, 4}));
    EXPECT_EQ(log.Count("PixelMap node not found"), 1);
    Merge(file);
    EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{1, 4}));
    EXPECT_EQ(library.GetNextUniqueID(), 9);
    EXPECT_TRUE(asked.empty());

    auto own = std::make_unique<DeviceLedItem>(L"Maker", L"C", PixelMap(1, 1, PixelMapType::L), 0,
                                               LEDFixture::AutomaticChannelCount);
    EXPECT_EQ(library.AddFixture(std::move(own)), 0);
    EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{1, 4, 10}));
    EXPECT_EQ(library.GetLEDFixture(10)->uniqueID, 10);
    library.Clear();
    EXPECT_EQ(library.rowCount(), 0);
    EXPECT_TRUE(static_cast<QList<DeviceLedItem*>&>(library).isEmpty());
    Merge(file);
    EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{1, 4}));
}

TEST_F(LibraryTest, ManufacturersShareARowWhateverTheirCase)
{
    Merge(Library(Fixture("Elation", "B") + Fixture("Zed", "C") + Fixture("ELATION", "A", 2)));
    EXPECT_EQ(Rows().join(QLatin1Char('|')),
              QStringLiteral("Elation|- B 1x1 #1|- A 2x1 #3|Zed|- C 1x1 #2"));
    EXPECT_EQ(library.GetManufacturers().join(QLatin1Char('|')),
              QStringLiteral("ELATION|Elation|Zed"));
    for (const int column : {0, 1, 2})
        EXPECT_FALSE(library.headerData(column, Qt::Horizontal).toString().isEmpty());
}

// ---- Conflicts ---------------------------------------------------------------------------------

TEST_F(LibraryTest, TheProductIsTheKeyAndEachAnswerCounts)
{
    Merge(Library(Fixture("Maker", "A") + Fixture("Maker", "B")));
    Merge(Library(Fixture("Other", "A")));
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(library.GetFixtures().size(), 2);

    const std::string news = Library(Fixture("Other", "A", 2) + Fixture("Other", "C"));
    answer = KeepFixture;
    Merge(news);
    EXPECT_EQ(asked, Products{L"Other/A"});
    auto refused = std::make_unique<DeviceLedItem>(L"Maker", L"A", PixelMap(9, 1, PixelMapType::L),
                                                   0, LEDFixture::AutomaticChannelCount);
    EXPECT_EQ(library.AddFixture(std::move(refused)), KeepFixture);
    EXPECT_TRUE(refused) << "it stays with the caller"; // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(Names(), (Products{L"A", L"B", L"C"}));
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"A")->pixelMap.GetWidth(), 1);

    for (const int stop : {2, 3, -1}) {
        Merge(Library(Fixture("Other", "B", 3) + Fixture("Other", "D")), true,
              [stop](const QString&, const QString&) { return stop; });
        EXPECT_EQ(Names(), (Products{L"A", L"B", L"C"})) << stop;
    }
    EXPECT_EQ(asked.size(), 2U); // The caller's own callback was asked.
}

TEST_F(LibraryTest, AnOverwrittenFixtureStandsTwiceUntilTheNextReading)
{
    Merge(Library(Fixture("Maker", "A") + Fixture("Maker", "B")));
    answer = OverwriteFixture;
    Merge(Library(Fixture("Maker", "A", 2)));
    EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{1, 2, 3}));
    DeviceLedItem* now = library.GetLEDFixture(3);
    EXPECT_EQ(library.GetLEDFixture(1), now);
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"A"), now);
    EXPECT_EQ(now->pixelMap.GetWidth(), 2);
    EXPECT_EQ(Rows().join(QLatin1Char('|')),
              QStringLiteral("Maker|- A 1x1 #1|- B 1x1 #2|- A 2x1 #3"));

    // The elements' identifiers lead on through any number of overwrites.
    Merge(Library(Fixture("Maker", "A", 3)));
    EXPECT_EQ(library.GetLEDFixture(1), library.GetLEDFixture(4));
    EXPECT_EQ(library.GetLEDFixture(3)->pixelMap.GetWidth(), 3);

    const auto saved = folder.Path() / "saved.wfl";
    ASSERT_EQ(library.Save(saved.wstring()), 0);
    DeviceModel again;
    again.Merge(saved.wstring(), true);
    EXPECT_EQ(again.GetFixtures().keys(), (Identifiers{1, 2}));
    EXPECT_EQ(again.GetLEDFixture(1)->pixelMap.GetWidth(), 3);
    EXPECT_EQ(asked.size(), 2U);

    library.removeFixtureByUniqueID(1);
    EXPECT_EQ(Names(), Products{L"B"});
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"A"), nullptr);
    EXPECT_EQ(Rows().filter(QStringLiteral("A")), QStringList{QStringLiteral("- A 3x1 #4")})
        << "the row of what it was is the caller's, those that it overwrote are gone";
}

// ---- Removing and finding ----------------------------------------------------------------------

TEST_F(LibraryTest, WhatIsGoneOrUnknownLeavesNoTrace)
{
    Merge(Library(Fixture("Maker", "A") + Fixture("Other", "B")));
    log.Clear();
    for (const qint64 unknown : {qint64{0}, qint64{-1}, qint64{7}, qint64{INT64_MAX}})
        EXPECT_EQ(library.GetLEDFixture(unknown), nullptr);
    EXPECT_EQ(log.Count("GetLEDFixture could not find #7"), 1);
    EXPECT_EQ(log.Messages().size(), 4U);
    EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{1, 2}));
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"a"), nullptr);

    library.removeFixtureByUniqueID(7);
    library.removeFixture(L"Maker", L"B");
    EXPECT_EQ(library.GetFixtures().size(), 2);
    library.removeFixtureByUniqueID(1);
    EXPECT_EQ(Names(), Products{L"B"});
    EXPECT_EQ(static_cast<QList<DeviceLedItem*>&>(library).size(), 1);
    EXPECT_EQ(library.rowCount(), 2);
    Merge(Library(Fixture("Maker", "A")));
    EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{2, 3}));

    // The editor renames in place: the new name is found and the old one is not.
    library.GetLEDFixture(2)->product = L"New";
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"B"), nullptr);
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"New"), library.GetLEDFixture(2));
}

// ---- Files that are no libraries ---------------------------------------------------------------

TEST_F(LibraryTest, BrokenFilesLeaveTheLibraryAsItWas)
{
    Merge(Library(Fixture("Maker", "A")));
    const std::string whole = XmlText::Encode(Library(Fixture("Maker", "B")));
    std::vector<std::string> files = {"",
                                      "<",
                                      "garbage",
                                      "<a/>tail",
                                      std::string(1000, '\0'),
                                      "\xFF\xFE",
                                      "\xFE\xFF<\0",
                                      std::string(4000, '<')};
    for (std::size_t length = 0; length < whole.size() - 2; length += 7)
        files.push_back(whole.substr(0, length));
    files.push_back({whole.rbegin(), whole.rend()});
    for (const std::string& file : files) {
        log.Clear();
        Merge(file);
        EXPECT_EQ(log.Count("Could not read library XML file"), 1) << file.size();
        EXPECT_FALSE(library.WasReadWhole());
    }
    Merge("<Mapping />");
    EXPECT_EQ(log.Count("No LEDFixtureLibrary node found"), 1);
    library.Merge((folder.Path() / "absent").wstring(), true);
    library.Merge(folder.Path().wstring(), true);
    EXPECT_EQ(Names(), Products{L"A"});
    EXPECT_EQ(library.GetVersion(), 1);
    EXPECT_EQ(library.GetNextUniqueID(), 2);

    std::string swapped = whole;
    for (std::size_t at = 0; at + 1 < swapped.size(); at += 2)
        std::swap(swapped[at], swapped[at + 1]);
    Merge(swapped);
    EXPECT_EQ(Names(), (Products{L"A", L"B"}));
}

// ---- Through the device manager ----------------------------------------------------------------

class UserLibraryTest : public LibraryTest
{
protected:
    void SetUp() override
    {
        LibraryTest::SetUp();
        manager.Initialize();
        QObject::connect(&manager, &DeviceManager::librarySaveFailed, &manager,
                         [this](const QString& path) { failed << path; });
        QObject::connect(&manager, &DeviceManager::libraryKeptAside, &manager,
                         [this](const QString& path) { kept << path; });
    }

    QString Path(const char* name = "user.wfl") const
    {
        return QString::fromStdString((folder.Path() / name).string());
    }
    int Place(const wchar_t* product)
    {
        MappedObjectParams params;
        params.fixtureID = manager.GetLEDFixtureByProduct(product)->uniqueID;
        return manager.AddMappedObject(params).row();
    }
    qint64 FixtureOf(int row) { return manager.GetMappedItemByRow(row)->GetFixture().uniqueID; }

    DeviceManager manager{Path()};
    QStringList failed;
    QStringList kept;
};

TEST_F(UserLibraryTest, PlacedElementsFollowTheLibraryThroughAReload)
{
    folder.Write("user.wfl", Library(Fixture("M", "A") + Fixture("M", "B") + Fixture("M", "C")));
    ASSERT_TRUE(manager.LoadLibrary(Path()));
    const int a = Place(L"A");
    const int c = Place(L"C");
    EXPECT_EQ(FixtureOf(c), 3);
    folder.Write("user.wfl", Library(Fixture("M", "C") + Fixture("M", "D")));
    ASSERT_TRUE(manager.LoadLibrary(Path()));
    EXPECT_EQ(FixtureOf(a), 0);
    EXPECT_EQ(FixtureOf(c), 1);
    EXPECT_TRUE(manager.GetMappedDeviceModel()->IsFixtureUsed(1));
    EXPECT_FALSE(manager.GetMappedDeviceModel()->IsFixtureUsed(2));
    folder.Write("more.wfl", Library(Fixture("M", "A"), "0"));
    EXPECT_TRUE(manager.MergeLibrary(Path("more.wfl"), true, {}));
    EXPECT_EQ(FixtureOf(a), 3);
    EXPECT_TRUE(failed.isEmpty());

    DeviceModel saved;
    saved.Merge(Path().toStdWString(), true);
    EXPECT_EQ(saved.GetFixtures().size(), 3);
}

TEST_F(UserLibraryTest, AnUnreadableLibraryIsKeptAside)
{
    folder.Write("more.wfl", Library(Fixture("M", "A")));
    for (const char* aside : {"user.wfl.unreadable", "user.wfl.unreadable-2"}) {
        const std::string broken = std::string("<LEDFixtureLibrary> the user's ") + aside;
        folder.Write("user.wfl", broken);
        EXPECT_FALSE(manager.LoadLibrary(Path()));
        EXPECT_TRUE(manager.GetDeviceModel()->GetFixtures().isEmpty());
        EXPECT_EQ(Support::ReadBytes(folder.Path() / "user.wfl"), broken);
        EXPECT_TRUE(manager.MergeLibrary(Path("more.wfl"), true, {}));
        EXPECT_EQ(Support::ReadBytes(folder.Path() / aside), broken);
        EXPECT_TRUE(manager.LoadLibrary(Path()));
        EXPECT_EQ(manager.GetDeviceModel()->GetFixtures().size(), 1);
    }
    EXPECT_TRUE(failed.isEmpty());

    // One that has become readable by the time of the save is taken up instead, and wins.
    folder.Write("user.wfl", "<LEDFixtureLibrary>");
    EXPECT_FALSE(manager.LoadLibrary(Path()));
    folder.Write("user.wfl", Library(Fixture("M", "Own") + Fixture("M", "A", 5)));
    EXPECT_TRUE(manager.MergeLibrary(Path("more.wfl"), true, {}));
    EXPECT_TRUE(manager.LoadLibrary(Path()));
    EXPECT_EQ(manager.GetDeviceModel()->GetFixtures().size(), 2);
    EXPECT_EQ(manager.GetLEDFixtureByProduct(L"A")->pixelMap.GetWidth(), 5);
    EXPECT_TRUE(asked.empty());

    // One of which a part is not understood is kept as it was before it is first written over.
    const std::string partly = Library(Fixture("M", "A") + R"(<LEDFixture product="X"/>)");
    folder.Write("user.wfl", partly);
    EXPECT_TRUE(manager.LoadLibrary(Path()));
    manager.GetDeviceModel()->removeFixtureByUniqueID(1);
    EXPECT_TRUE(manager.SaveLibrary());
    EXPECT_TRUE(manager.SaveLibrary());
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "user.wfl.unreadable-3"), partly);
    EXPECT_EQ(kept, (QStringList{Path("user.wfl.unreadable"), Path("user.wfl.unreadable-2"),
                                 Path("user.wfl.unreadable-3")}));
}

TEST_F(UserLibraryTest, AFileThatAnotherProcessIsWritingIsWaitedFor)
{
    const std::string whole = Library(Fixture("M", "A"));
    bool loaded = false;
    for (int attempt = 0; attempt < 20 && !loaded; ++attempt) { // A busy machine may be too late.
        folder.Write("user.wfl", whole.substr(0, whole.size() / 2));
        std::thread writer([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(60));
            folder.Write("user.wfl", whole);
        });
        loaded = manager.LoadLibrary(Path());
        writer.join();
    }
    EXPECT_TRUE(loaded);
    EXPECT_EQ(manager.GetDeviceModel()->GetFixtures().size(), 1);
}

TEST_F(UserLibraryTest, AFailedSaveIsTold)
{
    // A folder in the library's place stops any user, root too.
    std::filesystem::create_directories(folder.Path() / "user.wfl" / "x");
    folder.Write("more.wfl", Library(Fixture("M", "A")));
    EXPECT_FALSE(manager.MergeLibrary(Path("more.wfl"), true, {}));
    EXPECT_EQ(failed, QStringList{Path()});
    EXPECT_EQ(manager.GetDeviceModel()->GetFixtures().size(), 1);
    std::filesystem::remove_all(folder.Path() / "user.wfl");
    EXPECT_TRUE(manager.SaveLibrary());
    EXPECT_EQ(failed.size(), 1);
}

TEST_F(UserLibraryTest, OnlyAFixtureRowCanBeRemoved)
{
    folder.Write("user.wfl", Library(Fixture("M", "A") + Fixture("M", "B")));
    ASSERT_TRUE(manager.LoadLibrary(Path()));
    const auto& proxy = *manager.GetDeviceListProxy();
    const QModelIndex maker = proxy.index(0, 0);
    EXPECT_FALSE(manager.RemoveFixture({}));
    EXPECT_FALSE(manager.RemoveFixture(maker));
    EXPECT_TRUE(manager.RemoveFixture(proxy.index(0, DeviceModel::ProductColumn, maker)));
    EXPECT_EQ(proxy.rowCount(maker), 1);
    EXPECT_EQ(manager.GetDeviceModel()->GetFixtures().keys(), Identifiers{2});
    EXPECT_TRUE(manager.RemoveFixture(proxy.index(0, 0, maker)));
    EXPECT_EQ(proxy.rowCount(), 1);
    EXPECT_EQ(proxy.rowCount(maker), 0);
}

TEST_F(UserLibraryTest, TheRowsOfAnOverwrittenFixtureGoOneByOneOrAllWithIt)
{
    const auto& proxy = *manager.GetDeviceListProxy();
    const auto load = [&] {
        manager.GetDeviceModel()->Clear();
        manager.GetDeviceListProxy()->sort(DeviceModel::IdentifierColumn);
        answer = OverwriteFixture;
        for (int cells = 1; cells <= 3; ++cells) {
            const auto file = folder.Write("in.wfl", Library(Fixture("M", "A", cells)));
            manager.GetDeviceModel()->Merge(file.wstring(), true);
        }
        Place(L"A");
    };
    load(); // The rows, in this order: two that were overwritten, and the one that is.
    const QPersistentModelIndex maker = proxy.index(0, 0);
    ASSERT_EQ(proxy.rowCount(maker), 3);
    for (int left = 2; left > 0; --left) {
        EXPECT_TRUE(manager.RemoveFixture(proxy.index(0, DeviceModel::ProductColumn, maker)));
        EXPECT_EQ(proxy.rowCount(maker), left);
        EXPECT_EQ(manager.GetDeviceModel()->GetLEDFixture(1)->pixelMap.GetWidth(), 3);
        EXPECT_EQ(manager.GetDeviceModel()->GetFixtures().size(), 3);
    }
    EXPECT_TRUE(manager.RemoveFixture(proxy.index(0, 0, maker)));
    EXPECT_TRUE(manager.GetDeviceModel()->GetFixtures().isEmpty());
    EXPECT_EQ(proxy.rowCount(maker), 0);

    load();
    EXPECT_TRUE(manager.RemoveFixture(proxy.index(2, 0, proxy.index(0, 0))));
    EXPECT_TRUE(manager.GetDeviceModel()->GetFixtures().isEmpty());
    EXPECT_EQ(proxy.rowCount(proxy.index(0, 0)), 0);
    EXPECT_TRUE(manager.SaveLibrary());
}

TEST_F(UserLibraryTest, OfTwoWithTheSameNamesTheOneThatIsMeantGoes)
{
    folder.Write("user.wfl", Library(Fixture("M", "A") + Fixture("M", "B", 2)));
    ASSERT_TRUE(manager.LoadLibrary(Path()));
    manager.GetDeviceModel()->GetLEDFixture(2)->product = L"A"; // as the editor does
    const QModelIndex maker = manager.GetDeviceListProxy()->index(0, 0);
    EXPECT_TRUE(manager.RemoveFixture(manager.GetDeviceListProxy()->index(1, 0, maker)));
    EXPECT_EQ(manager.GetDeviceModel()->GetFixtures().keys(), Identifiers{1});
    EXPECT_TRUE(manager.SaveLibrary());
    EXPECT_EQ(manager.GetLEDFixtureByProduct(L"A")->pixelMap.GetWidth(), 1);
}

} // namespace
