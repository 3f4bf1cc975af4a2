// SPDX-License-Identifier: MIT
// The fixture library: what merging, overwriting, saving, removing and reloading leave of it, also
// with files that are no libraries.
#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using Identifiers = QList<qint64>;

std::string Fixture(const std::string& maker, const std::string& product, int cells = 1)
{
    return R"(<LEDFixture manufacturer=")" + maker + R"(" product=")" + product +
           R"("><PixelMapping width=")" + std::to_string(cells) +
           R"(" height="1" type="L">1 2 3 4 5</PixelMapping></LEDFixture>)";
}

std::string Library(const std::string& fixtures, const std::string& version = "1")
{
    return R"(<LEDFixtureLibrary version=")" + version + R"(">)" + fixtures +
           "</LEDFixtureLibrary>";
}

/// A library that is the user's file user.wfl, and a question about each conflict that is answered.
class LibraryTest : public ::testing::Test
{
protected:
    LibraryTest()
    {
        DeviceModel::defaultConflictCallback = [this](const QString& maker, const QString& name) {
            asked << maker + QLatin1Char('/') + name;
            return answer;
        };
        QObject::connect(&manager, &DeviceManager::librarySaveFailed, &manager,
                         [this](const QString& path) { failed << path; });
        QObject::connect(&manager, &DeviceManager::libraryKeptAside, &manager,
                         [this](const QString& path) { kept << path; });
    }
    ~LibraryTest() override { DeviceModel::defaultConflictCallback = before; }

    QString Path(const char* name = "user.wfl") const
    {
        return QString::fromStdString((folder.Path() / name).string());
    }
    void Merge(const std::string& text, bool force = true,
               const FixtureConflictCallback& callback = {})
    {
        EXPECT_EQ(library.Merge(folder.Write("in.wfl", text).wstring(), force, callback), 0);
    }
    bool Load(const std::string& text)
    {
        folder.Write("user.wfl", text);
        return manager.LoadLibrary(Path());
    }
    int Place(const wchar_t* product)
    {
        MappedObjectParams params;
        params.fixtureID = manager.GetLEDFixtureByProduct(product)->uniqueID;
        return manager.AddMappedObject(params).row();
    }
    qint64 FixtureOf(int row) { return manager.GetMappedItemByRow(row)->GetFixture().uniqueID; }

    /// The products in the order of their numbers.
    QString Names() const
    {
        QStringList names;
        for (const DeviceLedItem* fixture : library.GetFixtures())
            names << QString::fromStdWString(fixture->product);
        return names.join(QLatin1Char(' '));
    }
    /// Each manufacturer row, with the texts of the fixture rows below it.
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
    QStringList asked;
    QStringList failed;
    QStringList kept;
    DeviceManager manager{Path()};
    bool ready = manager.Initialize();
    DeviceModel& library = *manager.GetDeviceModel();
};

// ---- Merging -----------------------------------------------------------------------------------

TEST_F(LibraryTest, OnlyANewerVersionIsTakenUnlessForced)
{
    struct Case
    {
        const char* version;
        bool force;
        int becomes;
        bool taken;
    };
    const std::vector<Case> cases = {
        {"3", false, 3, true}, {"3", false, 3, false},         {"2", false, 3, false},
        {"", false, 3, false}, {"010", false, 8, true},        {"0x10", false, 16, true},
        {"2", true, 2, true},  {"99999999999", true, 0, true}, {"-", true, 0, true}};
    for (const Case& one : cases) {
        const auto known = library.GetFixtures().size();
        Merge(Library(Fixture("Maker", std::to_string(known)), one.version), one.force);
        EXPECT_EQ(library.GetVersion(), one.becomes) << one.version;
        EXPECT_EQ(library.GetFixtures().size(), known + (one.taken ? 1 : 0)) << one.version;
    }
    Merge("<LEDFixtureLibrary version='16'/>");
    Merge("<LEDFixtureLibrary/>", false);
    ASSERT_TRUE(manager.SaveLibrary());
    EXPECT_TRUE(XmlText::Decode(Support::ReadBytes(folder.Path() / "user.wfl"))
                    .starts_with("<LEDFixtureLibrary version=\"16\">\n    <LEDFixture "));
}

TEST_F(LibraryTest, FilesCostANumberForEachFixtureAndBrokenOnesNothing)
{
    const std::string file =
        Library(Fixture("Elation", "A") + R"(<LEDFixture manufacturer="M" product="Broken" />)" +
                Fixture("Other", "A") + Fixture("ELATION", "B"));
    for (int time = 1; time <= 2; ++time) {
        Merge(file);
        EXPECT_FALSE(library.WasReadWhole());
        EXPECT_EQ(log.Count("PixelMap node not found"), time);
        EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{1, 4}));
    }
    EXPECT_EQ(library.GetManufacturers().join(QLatin1Char('|')), QStringLiteral("ELATION|Elation"));
    EXPECT_EQ(library.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Product Name"));
    Merge("<Mapping />");
    EXPECT_EQ(log.Count("No LEDFixtureLibrary node found"), 1);
    Merge(file.substr(0, file.size() - 2));
    library.Merge((folder.Path() / "absent").wstring(), true);
    EXPECT_EQ(log.Count("Could not read library XML file"), 2);
    EXPECT_FALSE(library.WasReadWhole());
    EXPECT_EQ(library.GetNextUniqueID(), 9);
    EXPECT_EQ(library.GetVersion(), 1);
    EXPECT_EQ(library.GetLEDFixture(7), nullptr);
    EXPECT_TRUE(log.Has("GetLEDFixture could not find #7"));

    const auto stop = [](const QString&, const QString&) {
        return 3;
    };
    Merge(Library(Fixture("Other", "B", 3) + Fixture("Other", "D")), true, stop);
    EXPECT_EQ(Names(), QStringLiteral("A B"));
    EXPECT_TRUE(asked.isEmpty()) << "the caller's own callback was";
    library.Clear();
    EXPECT_EQ(library.rowCount(), 0);
    Merge(file);
    EXPECT_EQ(library.GetFixtures().keys(), (Identifiers{1, 4}));
    EXPECT_EQ(Rows().join(QLatin1Char('|')), QStringLiteral("Elation|- A 1x1 #1|- B 1x1 #4"));
}

// ---- Overwriting and removing ------------------------------------------------------------------

/// A row of the tree, which stays as it was when another fixture overwrites its own.
struct Row
{
    qint64 id = 0;
    wchar_t product = 0;
    int cells = 0;
};

/// Additions and removals at random, beside the rows of the tree and what each number leads to.
class LibraryWalk : public LibraryTest
{
protected:
    void Add()
    {
        const Row row = {lastId + 1, static_cast<wchar_t>(L'A' + random() % 5),
                         1 + static_cast<int>(random() % 3)};
        answer = static_cast<int>(random() % 5) - 1; // mostly to overwrite or to keep
        const auto old = std::ranges::find_if(rows, [&](const Row& other) {
            return other.product == row.product && leads[other.id] == other.id;
        });
        const bool conflict = old != rows.end() && old->cells != row.cells;
        const bool taken = old == rows.end() || (conflict && answer == OverwriteFixture);
        asked.clear();
        auto item = std::make_unique<DeviceLedItem>(L"M", std::wstring(1, row.product),
                                                    PixelMap(row.cells, 1, PixelMapType::L), 0, -1);
        const int result = library.AddFixture(std::move(item));
        EXPECT_EQ(result, taken                                ? OverwriteFixture
                          : !conflict || answer == KeepFixture ? KeepFixture
                                                               : StopMerge);
        EXPECT_EQ(item == nullptr, taken); // NOLINT(bugprone-use-after-move): refused, it is ours
        EXPECT_EQ(asked.size(), conflict ? 1 : 0);
        if (!taken)
            return;
        lastId = row.id;
        for (auto& [id, fixture] : leads)
            fixture = old != rows.end() && fixture == old->id ? row.id : fixture;
        leads[row.id] = row.id;
        rows.push_back(row);
    }
    void Remove()
    {
        const std::size_t number = random() % rows.size();
        const qint64 id = rows[number].id;
        const auto column = static_cast<int>(random() % 5);
        const QModelIndex row =
            library.index(static_cast<int>(number), column, library.index(0, 0));
        EXPECT_TRUE(manager.RemoveFixture(manager.GetDeviceListProxy()->mapFromSource(row)));
        if (leads[id] != id) { // It was overwritten: the row goes, the definition stays.
            rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(number));
            return;
        }
        std::erase_if(rows, [&](const Row& other) { return leads[other.id] == id; });
        std::erase_if(leads, [&](const auto& entry) { return entry.second == id; });
    }
    void Check()
    {
        QStringList texts = {QStringLiteral("M")};
        std::map<wchar_t, const DeviceLedItem*> products;
        for (const Row& row : rows) {
            texts << QStringLiteral("- %1 %2x1 #%3")
                         .arg(QChar(row.product))
                         .arg(row.cells)
                         .arg(row.id);
            if (leads[row.id] == row.id)
                products[row.product] = library.GetLEDFixture(row.id);
        }
        EXPECT_EQ(Rows(), texts);
        Identifiers numbers;
        for (const auto& [id, fixture] : leads) {
            numbers << id;
            EXPECT_EQ(library.GetLEDFixture(id)->uniqueID, fixture);
        }
        EXPECT_EQ(library.GetFixtures().keys(), numbers);
        EXPECT_EQ(static_cast<QList<DeviceLedItem*>&>(library).size(), int(products.size()));
        for (const wchar_t product : {L'A', L'B', L'C', L'D', L'E'})
            EXPECT_EQ(library.GetLEDFixtureByProduct({product}), products[product]);
    }

    std::mt19937 random{2026};
    std::vector<Row> rows;
    std::map<qint64, qint64> leads;
    qint64 lastId = 0;
};

TEST_F(LibraryWalk, EveryNumberLeadsToTheFixtureThatItMeans)
{
    for (int step = 0; step < 400 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        if (rows.empty() || random() % 4)
            Add();
        else
            Remove();
        Check();
    }
    EXPECT_FALSE(manager.RemoveFixture(manager.GetDeviceListProxy()->index(0, 0)));
    ASSERT_TRUE(manager.SaveLibrary());
    QStringList order = Names().split(QLatin1Char(' '));
    order.removeDuplicates();
    ASSERT_TRUE(manager.LoadLibrary(Path()));
    EXPECT_EQ(Names(), order.join(QLatin1Char(' '))) << "an overwritten one is written twice";
}

TEST_F(LibraryTest, AFixtureThatWasRenamedInPlaceIsFoundAndRemovedAsItself)
{
    ASSERT_TRUE(Load(Library(Fixture("M", "A") + Fixture("M", "B", 2))));
    library.GetLEDFixture(2)->product = L"A"; // as the editor does
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"B"), nullptr);
    const QModelIndex maker = manager.GetDeviceListProxy()->index(0, 0);
    EXPECT_TRUE(manager.RemoveFixture(manager.GetDeviceListProxy()->index(1, 0, maker)));
    EXPECT_EQ(library.GetFixtures().keys(), Identifiers{1});
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"A"), library.GetLEDFixture(1));
    library.removeFixture(L"Maker", L"A");
    EXPECT_EQ(Names(), QStringLiteral("A"));
    library.removeFixture(L"M", L"A");
    EXPECT_EQ(Names(), QString());
}

// ---- The user's file ---------------------------------------------------------------------------

TEST_F(LibraryTest, PlacedElementsFollowTheLibraryThroughAReload)
{
    ASSERT_TRUE(Load(Library(Fixture("M", "A") + Fixture("M", "B") + Fixture("M", "C"))));
    const int a = Place(L"A");
    const int c = Place(L"C");
    EXPECT_EQ(FixtureOf(c), 3);
    ASSERT_TRUE(Load(Library(Fixture("M", "C") + Fixture("M", "D"))));
    EXPECT_EQ(FixtureOf(a), 0);
    EXPECT_EQ(FixtureOf(c), 1);
    EXPECT_TRUE(manager.GetMappedDeviceModel()->IsFixtureUsed(1));
    EXPECT_FALSE(manager.GetMappedDeviceModel()->IsFixtureUsed(2));
    folder.Write("more.wfl", Library(Fixture("M", "A"), "0"));
    EXPECT_TRUE(manager.MergeLibrary(Path("more.wfl"), true, {}));
    EXPECT_EQ(FixtureOf(a), 3);
    ASSERT_TRUE(manager.LoadLibrary(Path()));
    EXPECT_EQ(Names(), QStringLiteral("C D A")) << "it was saved";
}

TEST_F(LibraryTest, WhatCouldNotBeReadIsKeptAside)
{
    folder.Write("more.wfl", Library(Fixture("M", "A")));
    for (const char* aside : {"user.wfl.unreadable", "user.wfl.unreadable-2"}) {
        const std::string broken = std::string("<LEDFixtureLibrary> the user's ") + aside;
        EXPECT_FALSE(Load(broken));
        EXPECT_EQ(Names(), QString());
        EXPECT_EQ(Support::ReadBytes(folder.Path() / "user.wfl"), broken);
        EXPECT_TRUE(manager.MergeLibrary(Path("more.wfl"), true, {}));
        EXPECT_EQ(Support::ReadBytes(folder.Path() / aside), broken);
        EXPECT_TRUE(manager.LoadLibrary(Path()));
        EXPECT_EQ(Names(), QStringLiteral("A"));
    }
    // A file that can be read by the time of the save is taken up instead, and wins.
    EXPECT_FALSE(Load("<LEDFixtureLibrary>"));
    folder.Write("user.wfl", Library(Fixture("M", "Own") + Fixture("M", "A", 5)));
    EXPECT_TRUE(manager.MergeLibrary(Path("more.wfl"), true, {}));
    EXPECT_TRUE(manager.LoadLibrary(Path()));
    EXPECT_EQ(Names(), QStringLiteral("A Own"));
    EXPECT_EQ(manager.GetLEDFixtureByProduct(L"A")->pixelMap.GetWidth(), 5);
    EXPECT_TRUE(asked.isEmpty());

    // A file of which a part was not understood is kept before the first save over it.
    const std::string partly = Library(Fixture("M", "A") + R"(<LEDFixture product="X"/>)");
    EXPECT_TRUE(Load(partly));
    EXPECT_TRUE(manager.SaveLibrary() && manager.SaveLibrary());
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "user.wfl.unreadable-3"), partly);
    EXPECT_EQ(kept, (QStringList{Path("user.wfl.unreadable"), Path("user.wfl.unreadable-2"),
                                 Path("user.wfl.unreadable-3")}));
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(LibraryTest, AFileThatAnotherProcessIsWritingIsWaitedFor)
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
    EXPECT_EQ(Names(), QStringLiteral("A"));
}

TEST_F(LibraryTest, AFailedSaveIsReported)
{
    // A folder in the library's place stops any user, root too.
    std::filesystem::create_directories(folder.Path() / "user.wfl" / "x");
    folder.Write("more.wfl", Library(Fixture("M", "A")));
    EXPECT_FALSE(manager.MergeLibrary(Path("more.wfl"), true, {}));
    EXPECT_EQ(failed, QStringList{Path()});
    EXPECT_EQ(Names(), QStringLiteral("A"));
}

} // namespace
