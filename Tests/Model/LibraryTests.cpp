// SPDX-License-Identifier: MIT
// The fixture library: what merging, overwriting, saving, removing and reloading leave of it, also
// with files that are no libraries.
#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/FixtureNames.h"
#include "Model/MappedDeviceModel.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

#include <chrono>
#include <filesystem>
#include <map>
#include <random>
#include <thread>

namespace {

using Identifiers = QList<qint64>;
using namespace std::string_literals;

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

/// The library of the user's file user.wfl, with `answer` to each question about a conflict.
class LibraryTest : public ::testing::Test
{
protected:
    LibraryTest()
    {
        DeviceModel::defaultConflictCallback = [this](const QString& maker, const QString& name) {
            asked << maker + name;
            return answer;
        };
        const auto note = [this](const QString& path) {
            reported << path.section(QLatin1Char('/'), -1);
        };
        QObject::connect(&manager, &DeviceManager::librarySaveFailed, &manager, note);
        QObject::connect(&manager, &DeviceManager::libraryKeptAside, &manager, note);
    }
    ~LibraryTest() override { DeviceModel::defaultConflictCallback = before; }

    QString Path() const { return QString::fromStdString((folder.Path() / "user.wfl").string()); }
    std::string File(const std::string& name = "user.wfl") const
    {
        return Support::ReadBytes(folder.Path() / name);
    }
    bool Load(const std::string& text)
    {
        folder.Write("user.wfl", text);
        return manager.LoadLibrary(Path());
    }
    void Merge(const std::string& text, bool force = true)
    {
        EXPECT_EQ(library.Merge(folder.Write("in.wfl", text).wstring(), force), 0);
    }
    /// Merges as the program does, with a save.
    bool Import(const std::string& text)
    {
        const auto path = folder.Write("more.wfl", text).string();
        return manager.MergeLibrary(QString::fromStdString(path), true, {});
    }
    bool RemoveRow(int row)
    {
        const QModelIndex cell = library.index(row, row % 5, library.index(0, 0));
        return manager.RemoveFixture(manager.GetDeviceListProxy()->mapFromSource(cell));
    }
    /// The rows of the tree: manufacturers, each with its fixtures behind it.
    std::string Rows() const
    {
        QStringList rows;
        for (int row = 0; row < library.rowCount(); ++row) {
            const QModelIndex maker = library.index(row, 0);
            rows << maker.data().toString();
            for (int child = 0; child < library.rowCount(maker); ++child) {
                const auto text = [&](int column) {
                    return library.index(child, column, maker).data().toString();
                };
                rows << QStringLiteral("%1 %2 #%3").arg(text(1), text(2), text(7));
            }
        }
        return rows.join(QLatin1Char('|')).toStdString();
    }

    Support::TemporaryFolder folder;
    Support::LogCapture log;
    FixtureConflictCallback before = DeviceModel::defaultConflictCallback;
    int answer = KeepFixture;
    QStringList asked;
    QStringList reported;
    DeviceManager manager{Path()};
    bool ready = manager.Initialize();
    DeviceModel& library = *manager.GetDeviceModel();
};

// ---- Merging -----------------------------------------------------------------------------------

TEST_F(LibraryTest, OnlyANewerVersionIsTakenUnlessForced)
{
    const std::vector<std::tuple<const char*, bool, int, bool>> cases = {
        {"3", false, 3, true},          {"3", false, 3, false},  {"2", false, 3, false},
        {"", false, 3, false},          {"010", false, 8, true}, {"2", true, 2, true},
        {"99999999999", true, 0, true}, {"-", true, 0, true},    {"0x10", false, 16, true}};
    for (const auto& [version, force, becomes, taken] : cases) {
        const auto known = library.GetFixtures().size();
        Merge(Library(Fixture("Maker", std::to_string(known)), version), force);
        EXPECT_EQ(library.GetVersion(), becomes) << version;
        EXPECT_EQ(library.GetFixtures().size(), known + (taken ? 1 : 0)) << version;
    }
    ASSERT_TRUE(manager.SaveLibrary());
    EXPECT_TRUE(XmlText::Decode(File()).starts_with(
        "<LEDFixtureLibrary version=\"16\">\n    <LEDFixture "));
}

TEST_F(LibraryTest, AFileCostsANumberForEachFixtureAndABrokenOneNothing)
{
    const std::string file =
        Library(Fixture("Elation", "B") + R"(<LEDFixture manufacturer="M" product="Broken" />)" +
                Fixture("Other", "B") + Fixture("Zed", "C") + Fixture("ELATION", "a", 2));
    const std::string rows = "Elation|B 1x1 #1|a 2x1 #5|Zed|C 1x1 #4";
    for (const std::string& text : {file, file, "<Mapping />"s, file.substr(0, file.size() - 2)}) {
        Merge(text);
        EXPECT_FALSE(library.WasReadWhole());
    }
    for (const char* fault : {"PixelMap node not found", "No LEDFixtureLibrary node found",
                              "Could not read library XML file"})
        EXPECT_TRUE(log.Has(fault)) << fault;
    const std::string conflict = Library(Fixture("Zed", "a", 3) + Fixture("Zed", "E"));
    answer = -1; // which stops
    Merge(conflict);
    EXPECT_EQ(Rows(), rows);
    answer = KeepFixture;
    Merge(conflict);
    EXPECT_EQ(Rows(), rows + "|E 1x1 #13");
    EXPECT_EQ(asked, QStringList({QStringLiteral("Zeda"), QStringLiteral("Zeda")}));
    EXPECT_EQ(library.GetManufacturers().join(QLatin1Char('|')),
              QStringLiteral("ELATION|Elation|Zed"));
    EXPECT_EQ(library.GetNextUniqueID(), 14);
    library.Clear();
    EXPECT_EQ(Rows(), "");
    Merge(file);
    EXPECT_EQ(Rows(), rows);
}

// ---- Overwriting and removing ------------------------------------------------------------------

/// Additions and removals at random, beside what the library must know of each product.
class LibraryWalk : public LibraryTest
{
protected:
    struct Known
    {
        int cells = 0;
        Identifiers numbers; ///< of all definitions so far: each leads to the present one
        int rows = 0;        ///< an overwritten fixture leaves its row
    };

    void Add()
    {
        const auto product = static_cast<wchar_t>(L'A' + random() % 5);
        const int cells = 1 + static_cast<int>(random() % 3);
        const bool taken = known[product].cells != cells;
        auto item = std::make_unique<DeviceLedItem>(L"M", std::wstring(1, product),
                                                    PixelMap(cells, 1, PixelMapType::L), 0, -1);
        EXPECT_EQ(library.AddFixture(std::move(item)), taken ? OverwriteFixture : KeepFixture);
        EXPECT_EQ(item == nullptr, taken); // NOLINT(bugprone-use-after-move): refused, it is ours
        if (!taken)
            return;
        known[product].cells = cells;
        known[product].numbers << ++lastId;
        ++known[product].rows;
    }
    void Remove()
    {
        list.SetFilter({});
        const QModelIndex maker = library.index(0, 0);
        const int row = static_cast<int>(random() % static_cast<unsigned>(library.rowCount(maker)));
        const QString product = library.index(row, 1, maker).data().toString();
        const auto found = known.find(static_cast<wchar_t>(product.at(0).unicode()));
        const bool isPresent =
            library.index(row, 7, maker).data().toLongLong() == found->second.numbers.last();
        EXPECT_TRUE(RemoveRow(row));
        --found->second.rows;
        if (isPresent)
            known.erase(found);
    }
    /// Gives a fixture another definition, often under the product of another one.
    void Change()
    {
        const auto source = std::next(known.begin(), static_cast<int>(random() % known.size()));
        const auto product = static_cast<wchar_t>(L'A' + random() % 5);
        Known moved = source->second;
        moved.cells = 1 + static_cast<int>(random() % 3);
        moved.rows = 1;
        const auto number =
            moved.numbers.at(static_cast<int>(random()) & 1 ? 0 : moved.numbers.size() - 1);
        EXPECT_TRUE(manager.ChangeFixture(number, {random() % 2 ? L"M" : L"m",
                                                   {product},
                                                   PixelMap(moved.cells, 1, PixelMapType::L),
                                                   0,
                                                   4}));
        known.erase(source);
        known[product] = moved;
    }
    void Check()
    {
        Identifiers numbers;
        int rows = 0;
        for (const wchar_t product : {L'A', L'B', L'C', L'D', L'E'}) {
            const DeviceLedItem* present = library.GetLEDFixtureByProduct({product});
            ASSERT_EQ(present != nullptr, known.contains(product));
            if (!present)
                continue;
            EXPECT_EQ(present->pixelMap.GetWidth(), known[product].cells);
            for (const qint64 number : known[product].numbers)
                EXPECT_EQ(library.GetLEDFixture(number), present);
            numbers << known[product].numbers;
            rows += known[product].rows;
        }
        std::sort(numbers.begin(), numbers.end());
        EXPECT_EQ(library.GetFixtures().keys(), numbers);
        EXPECT_EQ(library.rowCount(library.index(0, 0)), rows);
        if (list.IsFiltered())
            rows = known.contains(L'A') ? known[L'A'].rows : 0;
        EXPECT_EQ(list.CountShown(), rows);
        EXPECT_EQ(static_cast<QList<DeviceLedItem*>&>(library).size(), int(known.size()));
    }

    DeviceListProxy& list = *manager.GetDeviceListProxy();
    const QAbstractItemModelTester libraryTester{&library};
    const QAbstractItemModelTester listTester{&list};
    std::mt19937 random{2026};
    std::map<wchar_t, Known> known;
    qint64 lastId = 0;
};

TEST_F(LibraryWalk, EveryNumberLeadsToTheFixtureThatItMeans)
{
    answer = OverwriteFixture;
    for (int step = 0; step < 400 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        if (known.empty() || random() % 3 == 0)
            Add();
        else if (random() % 3)
            Change();
        else
            Remove();
        list.SetFilter(random() % 2 ? QStringLiteral("m a") : QString());
        Check();
    }
    EXPECT_FALSE(manager.RemoveFixture(list.index(0, 0)));
    // An overwritten fixture is written under each of its numbers, and read once.
    while (library.GetFixtures().size() == int(known.size()))
        Add();
    EXPECT_TRUE(manager.SaveLibrary() && manager.LoadLibrary(Path()));
    EXPECT_EQ(library.GetFixtures().size(), int(known.size()));
}

TEST_F(LibraryTest, AChangedFixtureTakesItsElementsAlong)
{
    ASSERT_TRUE(
        Load(Library(Fixture("Elation", "A") + Fixture("Other", "B") + Fixture("Elation", "C"))));
    MappedObjectParams placed;
    for (placed.fixtureID = 3; placed.fixtureID > 1; --placed.fixtureID)
        manager.AddMappedObject(placed);
    ElementIds refitted;
    QObject::connect(&manager, &DeviceManager::elementsRefitted,
                     [&](const ElementIds& ids) { refitted = ids; });
    const auto elements = [this] {
        QStringList texts;
        for (int row = 0; row < 2; ++row) {
            for (const int column : {0, 1, 2})
                texts << manager.GetMappedDeviceModel()->index(row, column).data().toString();
            const DeviceLedItem& own = manager.GetMappedItemByRow(row)->GetFixture();
            texts << QStringLiteral("#%1/%2").arg(own.uniqueID).arg(own.GetChannelCount());
        }
        return texts.join(QLatin1Char(' ')).toStdString();
    };
    struct Case
    {
        int number;
        const wchar_t* maker;
        const wchar_t* product;
        std::string rows;
        std::string placed;
        ElementIds refitted;
    };
    const std::string unchanged = "Elation C 1x1 #3/1 Other B 1x1 #2/1";
    const Case cases[] = {
        // One after the other.
        {9, L"M", L"A", "Elation|A 1x1 #1|C 1x1 #3|Other|B 1x1 #2", unchanged, {}},
        {1, L"ELATION", L"A", "ELATION|A 2x1 #1|C 1x1 #3|Other|B 1x1 #2", unchanged, {}},
        {2,
         L"elation",
         L"b",
         "ELATION|A 2x1 #1|C 1x1 #3|b 2x1 #2",
         "Elation C 1x1 #3/1 elation b 2x1 #2/7",
         {2}},
        {3,
         L"New",
         L"D",
         "ELATION|A 2x1 #1|b 2x1 #2|New|D 2x1 #3",
         "New D 2x1 #3/7 elation b 2x1 #2/7",
         {1}},
        // The elements of the fixture that had the product come along too.
        {3, L"New", L"b", "ELATION|A 2x1 #1|New|b 2x1 #3", "New b 2x1 #3/7 New b 2x1 #3/7", {1, 2}},
    };
    for (const auto& [number, maker, product, rows, texts, told] : cases) {
        refitted.clear();
        const LEDFixture wanted(maker, product, PixelMap(2, 1, PixelMapType::L), 0, 7);
        EXPECT_EQ(manager.ChangeFixture(number, wanted), number < 9);
        EXPECT_EQ(Rows(), rows);
        EXPECT_EQ(elements(), texts);
        EXPECT_EQ(refitted, told);
    }
}

TEST_F(LibraryTest, NamesComeBackFromTheFile)
{
    for (const std::wstring& name :
         {std::wstring(499, L'x') + L'\u821E', std::wstring(L"  at both ends \t"),
          std::wstring(L"\"two\" 'one' <&>&amp;"), std::wstring(L"line\nbreak\r"),
          std::wstring(L"\U0001F4A1 B\u00FChne"), std::wstring(L"a \x01 b"),
          std::wstring(L"&#x4; & &#xZ &#65;")})
    {
        EXPECT_TRUE(manager.AddFixture({name, name, PixelMap(1, 1, PixelMapType::L), 0, 1}));
        EXPECT_TRUE(manager.SaveLibrary() && manager.LoadLibrary(Path()));
        const DeviceLedItem* fixture = library.GetLEDFixtureByProduct(NameInFile(name));
        ASSERT_TRUE(fixture && library.WasReadWhole());
        EXPECT_EQ(fixture->manufacturer, NameInFile(name));
        EXPECT_EQ(NameInFile(name) == name, name.find(L"&#x4;") == std::wstring::npos);
    }
}

TEST_F(LibraryTest, AFilterShowsTheFixturesThatHaveAllOfItsWords)
{
    DeviceListProxy& list = *manager.GetDeviceListProxy();
    Merge(Library(Fixture("Gone", "X") + Fixture("\xC4nker S\xD6hne", "Bar 36") +
                  Fixture("\xC4nker S\xD6hne", "Tile 8x8") + Fixture("Robe", "Bar 8")));
    EXPECT_TRUE(RemoveRow(0));
    const std::vector<std::pair<const wchar_t*, const char*>> cases = {
        {L"bar", "Bar 36|Bar 8"},
        {L" 36  BAR ", "Bar 36"},
        {L"robe bar", "Bar 8"},
        {L"sohne", "Bar 36|Tile 8x8"},
        {L"S\u00F6hne \u00E4 8", "Tile 8x8"},
        {L"o\u0308hn tile", "Tile 8x8"},
        {L"robe tile", ""},
        {L"8 8 8", "Bar 8|Tile 8x8"}};
    for (const auto& [text, shown] : cases) {
        list.SetFilter(QString::fromWCharArray(text));
        QStringList products;
        for (int row = 0; row < list.rowCount(); ++row) {
            const QModelIndex maker = list.index(row, 0);
            EXPECT_TRUE(list.hasChildren(maker));
            for (int child = 0; child < list.rowCount(maker); ++child)
                products << list.index(child, 1, maker).data().toString();
        }
        products.sort();
        EXPECT_EQ(products.join(QLatin1Char('|')).toStdString(), shown);
        EXPECT_EQ(list.CountShown(), products.size());
        EXPECT_EQ(list.CountAll(), 3);
    }
    list.SetFilter(QStringLiteral(" "));
    EXPECT_FALSE(list.IsFiltered());
    EXPECT_EQ(list.rowCount(), 3) << "the empty manufacturer too";
}

// ---- The user's file ---------------------------------------------------------------------------

TEST_F(LibraryTest, PlacedElementsFollowTheLibraryThroughAReload)
{
    ASSERT_TRUE(Load(Library(Fixture("M", "A") + Fixture("M", "B") + Fixture("M", "C"))));
    MappedObjectParams placed;
    for (placed.fixtureID = 1; placed.fixtureID <= 3; placed.fixtureID += 2)
        manager.AddMappedObject(placed);
    const auto fixtures = [this] {
        return Identifiers{manager.GetMappedItemByRow(0)->GetFixture().uniqueID,
                           manager.GetMappedItemByRow(1)->GetFixture().uniqueID};
    };
    EXPECT_EQ(fixtures(), (Identifiers{1, 3}));
    ASSERT_TRUE(Load(Library(Fixture("M", "C") + Fixture("M", "D"))));
    EXPECT_EQ(fixtures(), (Identifiers{0, 1}));
    EXPECT_TRUE(manager.GetMappedDeviceModel()->IsFixtureUsed(1));
    EXPECT_FALSE(manager.GetMappedDeviceModel()->IsFixtureUsed(2));
    EXPECT_TRUE(Import(Library(Fixture("M", "A"))));
    EXPECT_EQ(fixtures(), (Identifiers{3, 1}));
    EXPECT_TRUE(manager.LoadLibrary(Path()));
    EXPECT_EQ(Rows(), "M|C 1x1 #1|D 1x1 #2|A 1x1 #3") << "it was saved";
}

TEST_F(LibraryTest, WhatCouldNotBeReadIsKeptAside)
{
    const std::string more = Library(Fixture("M", "A"));
    for (const char* aside : {"user.wfl.unreadable", "user.wfl.unreadable-2"}) {
        const std::string broken = std::string("<LEDFixtureLibrary> the user's ") + aside;
        EXPECT_FALSE(Load(broken));
        EXPECT_EQ(Rows() + File(), broken);
        EXPECT_TRUE(Import(more));
        EXPECT_EQ(File(aside), broken);
        EXPECT_TRUE(manager.LoadLibrary(Path()));
        EXPECT_EQ(Rows(), "M|A 1x1 #1");
    }
    // A file that can be read by the time of the save is taken up instead, and wins.
    EXPECT_FALSE(Load("<LEDFixtureLibrary>"));
    folder.Write("user.wfl", Library(Fixture("M", "Own") + Fixture("M", "A", 5)));
    EXPECT_TRUE(Import(more) && manager.LoadLibrary(Path()));
    EXPECT_EQ(Rows(), "M|A 5x1 #1|Own 1x1 #2");
    EXPECT_TRUE(asked.isEmpty());
    // A file of which a part was not understood is kept before the first save over it.
    const std::string partly = Library(Fixture("M", "A") + R"(<LEDFixture product="X"/>)");
    EXPECT_TRUE(Load(partly) && manager.SaveLibrary() && manager.SaveLibrary());
    EXPECT_EQ(File("user.wfl.unreadable-3"), partly);
    EXPECT_EQ(reported.join(QLatin1Char(' ')),
              QStringLiteral("user.wfl.unreadable user.wfl.unreadable-2 user.wfl.unreadable-3"));
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
    EXPECT_EQ(Rows(), "M|A 1x1 #1");
}

} // namespace
