// SPDX-License-Identifier: MIT
// The mapping document: its file, byte for byte and in every state of disrepair, and its table.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "Platform/Text.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QItemSelectionModel>
#include <QLocale>
#include <QSignalSpy>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <limits>
#include <locale>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr const char* Lamp = R"(    <LEDFixture manufacturer="Maker" product="Lamp">
        <PixelMapping width="2" height="1" type="RGB">1 4  </PixelMapping>
    </LEDFixture>
)";
constexpr const char* Place = R"(        <VideoMapping>
            <center>0.500000,-0.250000</center>
            <size>0.125000,2.000000</size>
            <rotation>45.000000</rotation>
            <horizontalflip>true</horizontalflip>
            <verticalflip>false</verticalflip>
            <filtermode>hypersampling</filtermode>
        </VideoMapping>
)";
constexpr const char* Address = R"(        <DMXMapping type="ArtNet">
            <ArtNetMapping subnet="1" universe="2" channel="3" ipconf="2.0.0.10" ipName="Left" />
        </DMXMapping>
)";

std::string Element(const std::string& attributes, const std::string& inside)
{
    return "    <Element " + attributes + ">\n" + inside + "    </Element>\n";
}

std::string Whole(const std::string& elements)
{
    return std::string("<LEDFixtureLibrary>\n") + Lamp + "</LEDFixtureLibrary>\n" +
           R"(<UniverseMerging Enabled="1" FromStartSubnet="1" FromStartUniverse="2" )"
           R"(ConsecutiveUniverses="3" ToStartSubnet="4" ToStartUniverse="5" )"
           R"(MergerDMXSource="ReelCommand" />)"
           "\n<ManualNetworkNodes>\n"
           R"(    <ManualNode Name="Stage &amp; left" IP="2.0.0.10" />)"
           "\n</ManualNetworkNodes>\n"
           R"(<Mapping name="Show" version="2.5" resolution="115,35" autoUnicast="1" )"
           R"(network="2.X.X.X">)"
           "\n" +
           elements + "</Mapping>\n";
}

class DocumentTest : public ::testing::Test
{
protected:
    /// Every save waits for its disk: with thousands of them that is best one in memory.
    static void SetUpTestSuite()
    {
        if (std::filesystem::is_directory("/dev/shm"))
            setenv("TMPDIR", "/dev/shm", 0);
    }
    void SetUp() override { manager.Initialize(); }

    MappedDeviceModel& Document() { return *manager.GetMappedDeviceModel(); }
    QString Path(const std::string& name) const
    {
        return QString::fromStdString((folder.Path() / name).string());
    }
    bool Load(const std::string& text)
    {
        folder.Write("in.wfm", text);
        log.Clear();
        return manager.LoadMapping(Path("in.wfm"), nodes);
    }
    std::string Saved()
    {
        EXPECT_EQ(manager.SaveMapping(Path("out.wfm"), nodes), 0);
        return XmlText::Decode(Support::ReadBytes(folder.Path() / "out.wfm"));
    }
    /// A document with this <Mapping> opening and one good element.
    bool LoadHeader(const std::string& attributes)
    {
        return Load(std::string("<LEDFixtureLibrary>") + Lamp + "</LEDFixtureLibrary><Mapping " +
                    attributes + ">" +
                    Element(R"(description="A" fixture="Lamp")", std::string(Place) + Address) +
                    "</Mapping>");
    }
    std::string Text(int row, int column)
    {
        return Document().index(row, column).data().toString().toStdString();
    }
    /// 'r'ed, 'o'range or '-' for each row.
    std::string Colours()
    {
        std::string text;
        for (int row = 0; row < Document().rowCount(); ++row) {
            const QVariant value = Document().index(row, 5).data(Qt::ForegroundRole);
            const QColor colour = value.value<QColor>();
            text += colour == QColor(255, 0, 0)     ? 'r'
                    : colour == QColor(255, 102, 0) ? 'o'
                    : value.isValid()               ? '?'
                                                    : '-';
        }
        return text;
    }
    QModelIndex Add(const char* ipconf, int universe)
    {
        MappedObjectParams params;
        params.ipconf = QString::fromLatin1(ipconf);
        params.fixtureID = 1;
        params.universe = universe;
        return manager.AddMappedObject(params);
    }

    Support::TemporaryFolder folder;
    Support::LogCapture log;
    ArtNetNodeModel nodes;
    DeviceManager manager{QString()};
};

// ---- The file ----------------------------------------------------------------------------------

TEST_F(DocumentTest, ASavedDocumentIsTheLoadedOneByteForByte)
{
    const std::string text = Whole(Element(R"(description="Lamp &lt;1&gt;&#x0A;" fixture="Lamp")",
                                           std::string(Place) + Address));
    QSignalSpy changes(&Document(), &MappedDeviceModel::mappingsChanged);
    ASSERT_TRUE(Load(XmlText::Encode(text)));
    EXPECT_GE(changes.count(), 1);
    EXPECT_TRUE(Document().IsAutoUnicast());
    EXPECT_EQ(Saved(), text);
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "out.wfm"), XmlText::Encode(text));
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "out.wfm").substr(0, 6),
              std::string("\xFF\xFE<\0L\0", 6));

    EXPECT_EQ(Text(0, 0) + '|' + Text(0, 1) + '|' + Text(0, 2) + '|' + Text(0, 5) + '|' +
                  Text(0, 7) + '|' + Text(0, 9),
              "Maker|Lamp||Lamp <1>\n|1|ArtNet/IP 2.0.0.10/sub 001/univ 002/ch 003");
    EXPECT_EQ(Document().columnCount(), 11);
    Document().UpdateFixtureInElements(1, *manager.GetLEDFixtureByProduct(L"Lamp"));
    EXPECT_EQ(Text(0, 2), "2x1");
}

TEST_F(DocumentTest, NamesOfAnyScriptLastInFilesAndFolders)
{
    const std::string names = "\u821E\u53F0 \u0421\u0446\u0435\u043D\u0430 \U0001F4A1 B\u00FChne";
    const auto show = folder.Path() / names / (names + ".wfm");
    const auto library = folder.Path() / names / (names + ".wfl");
    ASSERT_TRUE(Load(XmlText::Encode(
        "<LEDFixtureLibrary><LEDFixture manufacturer=\"" + names + "\" product=\"" + names +
        "\"><PixelMapping width='1' height='1' type='L'>1</PixelMapping></LEDFixture>"
        "</LEDFixtureLibrary><Mapping name=\"" +
        names + "\" version='1.0' resolution='9,9'>" +
        Element("description=\"" + names + "\" fixture=\"" + names + '"',
                std::string(Place) + Address) +
        "</Mapping>")));
    const QString path = QString::fromStdString(show.string());
    ASSERT_EQ(manager.SaveMapping(path, nodes), 0);
    ASSERT_EQ(manager.GetDeviceModel()->Save(Platform::Utf8ToWide(library.string())), 0);
    EXPECT_TRUE(std::filesystem::exists(show) && std::filesystem::exists(library));
    EXPECT_NE(XmlText::Decode(Support::ReadBytes(show)).find("description=\"" + names + '"'),
              std::string::npos);

    DeviceManager again{QString()};
    again.Initialize();
    EXPECT_TRUE(again.LoadLibrary(QString::fromStdString(library.string())));
    ASSERT_TRUE(again.LoadMapping(path, nodes));
    EXPECT_EQ(again.GetMappedDeviceModel()->index(0, 5).data().toString().toStdString(), names);
    EXPECT_EQ(again.GetMappedDeviceModel()->index(0, 1).data().toString().toStdString(), names);
    EXPECT_EQ(again.GetDeviceModel()->GetFixtures().size(), 1);
}

TEST_F(DocumentTest, EveryFaultOfTheHeaderIsNamedAndLoadsNothing)
{
    const std::string good = R"(name="N" version="3.4" resolution="20,30" )";
    ASSERT_TRUE(LoadHeader(good));
    ASSERT_EQ(Document().rowCount(), 1);
    const std::vector<std::pair<std::string, std::string>> faults = {
        {R"(name="X" resolution="1,2")", "Mapping version not defined"},
        {R"(name="X" version="1,0" resolution="1,2")", "Mapping version syntax error"},
        {R"(name="X" version="1" resolution="1,2")", "Mapping version syntax error"},
        {R"(name="X" version="a.b" resolution="1,2")", "Mapping version syntax error"},
        {R"(name="X" version="9.9")", "Mapping resolution not defined"},
        {R"(name="X" version="9.9" resolution="1.2")", "Mapping resolution syntax error"},
        {R"(name="X" version="9.9" resolution="1,")", "Mapping resolution syntax error"},
        {R"(name="X" version="9.9" resolution="99999999999,5")", "Mapping resolution syntax error"},
        {R"(version="9.9" resolution="1,2")", "Mapping name not defined"}};
    for (const auto& [attributes, message] : faults) {
        EXPECT_FALSE(LoadHeader(attributes)) << attributes;
        EXPECT_EQ(log.Count(message), 1) << attributes;
        EXPECT_EQ(Document().rowCount(), 0);
        EXPECT_EQ(Document().GetCanvasWidth(), 20);
    }
    EXPECT_NE(Saved().find(R"(<Mapping name="N" version="3.4" resolution="20,30")"),
              std::string::npos);
    // Numbers that no canvas has cost no element.
    EXPECT_TRUE(LoadHeader(R"(name="X" version="9.9" resolution="0,2000000000")"));
    EXPECT_EQ(Document().rowCount(), 1);
    EXPECT_EQ(log.Count("Mapping resolution 0,2000000000 is taken as 1,100000"), 1);
    manager.SetCanvasSize(-5, 100'001);
    int width = 0;
    int height = 0;
    manager.GetCanvasSize(width, height);
    EXPECT_EQ(width + height, 100'001);
    manager.SetCanvasSize(20, 30);

    for (const std::string bad : {"", "<Mapping", "<Mapping></Maping>", "\xFF\xFE<"}) {
        EXPECT_FALSE(Load(bad));
        EXPECT_EQ(log.Count("Could not read mapping XML file"), 1) << bad;
    }
    EXPECT_TRUE(Load("<Other />"));
    EXPECT_EQ(log.Count("No Mapping node found"), 1);
    ASSERT_TRUE(LoadHeader(good));
    EXPECT_FALSE(manager.LoadMapping(Path("absent.wfm"), nodes));
    EXPECT_EQ(Document().rowCount(), 1);
}

TEST_F(DocumentTest, AWrongElementIsLeftOutWithOneLine)
{
    const std::string names = R"(description="X" fixture="Lamp")";
    const auto place = [](const std::string& from, const std::string& to) {
        std::string text = Place;
        return text.replace(text.find(from), from.size(), to);
    };
    const auto address = [](const std::string& from, const std::string& to) {
        std::string text = Address;
        return text.replace(text.find(from), from.size(), to);
    };
    const std::vector<std::pair<std::string, std::string>> faults = {
        {Element(R"(fixture="Lamp")", std::string(Place) + Address),
         "Element description is not defined"},
        {Element(R"(description="X")", std::string(Place) + Address),
         "Element fixture is not defined"},
        {Element(R"(description="X" fixture="lamp")", std::string(Place) + Address),
         "Element fixture not found in the library, fixture name: lamp"},
        {Element(names, Address), "Video mapping node not found"},
        {Element(names, place("center>", "centre>") + Address), ""},
        {Element(names, place("0.125000,", "wide,") + Address), "Video mapping size syntax error"},
        {Element(names, Place), "DMX mapping node not found"},
        {Element(names, Place + address("\"ArtNet\"", "\"ECue\"")),
         "ECue DMX Mapping type not supported"},
    };
    const std::string good =
        Element(R"(description="Good" fixture="Lamp")", std::string(Place) + Address);
    for (const auto& [fault, message] : faults) {
        if (message.empty()) {
            EXPECT_FALSE(Load(Whole(fault))); // Not even well-formed.
            continue;
        }
        ASSERT_TRUE(Load(Whole(good + fault + good))) << message;
        EXPECT_EQ(log.Count(message), 1) << message;
        EXPECT_EQ(Text(0, 7) + Text(1, 7), "13") << message; // The number stays unused.
        EXPECT_EQ(Document().rowCount(), 2);
        EXPECT_EQ(Saved(), Whole(good + good));
    }
}

TEST_F(DocumentTest, OldFilesLoadWithDefaults)
{
    std::string address = Address;
    const std::string node = R"( ipconf="2.0.0.10" ipName="Left")";
    address.erase(address.find(node), node.size());
    ASSERT_TRUE(Load(std::string("<LEDFixtureLibrary>") + Lamp + "</LEDFixtureLibrary>" +
                     R"(<Mapping name="Old" version="1.0" resolution="9,8" )"
                     R"(broadcastAddress="4294967042">)" +
                     Element(R"(description="A" fixture="Lamp")", Place + address) + "</Mapping>"));
    EXPECT_FALSE(Document().IsAutoUnicast());
    EXPECT_EQ(Document().GetNetwork(), L"2.X.X.X");
    EXPECT_EQ(Colours(), "o");
    const std::string saved = Saved();
    EXPECT_NE(saved.find(R"(resolution="9,8" autoUnicast="0" network="2.X.X.X")"),
              std::string::npos);
    EXPECT_NE(saved.find(R"(ipconf="Auto" ipName="")"), std::string::npos);
    EXPECT_EQ(saved.find("broadcast"), std::string::npos);
}

TEST_F(DocumentTest, ANetworkIsKeptWhenItNamesOne)
{
    const std::string good = R"(name="N" version="1.0" resolution="20,30" )";
    const std::vector<std::pair<std::string, std::wstring>> cases = {
        {R"(network="192.168.1.X")", L"192.168.1.X"},
        {R"(network="10.0.0.1")", L"10.0.0.1"},
        {R"(network="X.X.X.X")", L"X.X.X.X"},
        {R"(network="0.0.0.0")", L""},
        {R"(network="")", L""},
        {R"(network="2.X.X")", L""},
        {R"(network="2.x.x.x")", L""},
        {R"(network="" broadcastAddress="4294967042")", L""},
        {R"(broadcastAddress="0")", L""},
        {R"(broadcastAddress="4278298816")", L"192.168.1.X"},
        {R"(broadcastAddress="99999999999")", L""},
        {R"(autoUnicast="no")", L""}};
    for (const auto& [attribute, network] : cases) {
        ASSERT_TRUE(LoadHeader(good + attribute)) << attribute;
        EXPECT_EQ(Document().GetNetwork(), network) << attribute;
        EXPECT_FALSE(Document().IsAutoUnicast());
    }
}

TEST_F(DocumentTest, ManualNodesComeUpToTheFirstWithoutAName)
{
    const std::string longIp(70, '9');
    ASSERT_TRUE(Load(R"(<ManualNetworkNodes><ManualNode Name="b" IP="2.0.0.2"/><Other/>)"
                     R"(<ManualNode Name="none"/><ManualNode Name="a" IP="2.0.0.1"/>)"
                     R"(<ManualNode Name="again" IP="2.0.0.2"/><ManualNode Name="long" IP=")" +
                     longIp +
                     R"("/><ManualNode IP="2.0.0.3"/><ManualNode Name="c" IP="2.0.0.4"/>)" +
                     "</ManualNetworkNodes>"));
    EXPECT_EQ(nodes.GetAllNodes().keys(),
              (QStringList{QStringLiteral("2.0.0.1"), QStringLiteral("2.0.0.2"),
                           QString(64, QLatin1Char('9'))}));
    EXPECT_TRUE(nodes.IsManualNode(QStringLiteral("2.0.0.1")));
    const std::string saved = Saved();
    EXPECT_NE(saved.find("<ManualNetworkNodes>\n    <ManualNode Name=\"a\" IP=\"2.0.0.1\" />\n"
                         "    <ManualNode Name=\"b\" IP=\"2.0.0.2\" />\n"),
              std::string::npos);
}

TEST_F(DocumentTest, AFailedSaveLeavesTheOldFileWhole)
{
    const std::string text =
        Whole(Element(R"(description="A" fixture="Lamp")", std::string(Place) + Address));
    ASSERT_TRUE(Load(text));
    EXPECT_EQ(manager.SaveMapping(Path("new/deep/out.wfm"), nodes), 0);
    EXPECT_EQ(XmlText::Decode(Support::ReadBytes(folder.Path() / "new/deep/out.wfm")), text);
    std::filesystem::remove_all(folder.Path() / "new");
    EXPECT_EQ(manager.SaveMapping(Path("new/deep/out.wfm"), nodes), 0);
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "new/deep/out.wfm"));

    const auto file = folder.Write("file", "old");
    EXPECT_EQ(manager.SaveMapping(Path("file/out.wfm"), nodes), -1);
    EXPECT_EQ(Support::ReadBytes(file), "old");
    std::filesystem::create_directories(folder.Path() / "taken.wfm" / "inside");
    EXPECT_EQ(manager.SaveMapping(Path("taken.wfm"), nodes), 1);
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "taken.wfm" / "inside"));
}

// ---- The table ---------------------------------------------------------------------------------

TEST_F(DocumentTest, ColoursFollowEveryChangeOfAnAddress)
{
    ASSERT_TRUE(Load(Whole("")));
    const QModelIndex broadcast = Add("Auto", 0);
    EXPECT_EQ(Colours(), "o");
    const QModelIndex chosen = Add("2.0.0.10", 0);
    EXPECT_EQ(Colours(), "rr");
    EXPECT_TRUE(Document().IsUniverseInConflict(broadcast));
    const auto move = [&](int universe) {
        manager.EditObjectArtNetMappings({chosen}, [universe](DMXMappingArtNet& address) {
            address = DMXMappingArtNet(0, universe, 1, address.GetIpconf(), address.GetIpName());
        });
    };
    move(1);
    EXPECT_EQ(Colours(), "o-");
    EXPECT_EQ(Text(1, 9), "ArtNet/IP 2.0.0.10/sub 000/univ 001/ch 001");
    move(0);
    EXPECT_EQ(Colours(), "rr");
    const auto rename = [&](const char* from, const char* to) {
        Document().ReplaceNodeAddress(QString::fromLatin1(from), QString::fromLatin1(to), {});
    };
    rename("2.0.0.1", "Auto");
    EXPECT_EQ(Colours(), "rr");
    rename("2.0.0.10", "Auto");
    EXPECT_EQ(Colours(), "oo");
    rename("Auto", "2.0.0.11");
    EXPECT_EQ(Colours(), "--");
    EXPECT_EQ(Text(0, 9), "ArtNet/IP 2.0.0.11/sub 000/univ 000/ch 001");
    Add("Auto", 0);
    EXPECT_EQ(Colours(), "rrr");
    manager.RemoveMappedObjects({1, 2});
    EXPECT_EQ(Colours(), "o");
}

TEST_F(DocumentTest, IdentifiersAreNotReused)
{
    ASSERT_TRUE(Load(Whole("")));
    for (const char* node : {"Auto", "Auto", "Auto"})
        Add(node, 0);
    EXPECT_EQ(Text(0, 2) + ' ' + Text(2, 5), "2x1 Lamp-3");
    EXPECT_TRUE(Document().RemoveMappingElement(3));
    for (const qint64 none : {3, 0, -1, 99})
        EXPECT_FALSE(Document().RemoveMappingElement(none));
    EXPECT_EQ(manager.GetUniqueID(Add("Auto", 0)), 4);
    EXPECT_EQ(manager.GetUniqueID(Document().index(1, 0)), 2);
    EXPECT_EQ(Document().GetIndexOfUniqueID(4), Document().index(2, 0));
    EXPECT_EQ(Document().GetItemByUniqueID(3), nullptr);
    EXPECT_EQ(Document().GetItemByDescription(L"Lamp-4"), Document().GetItemByUniqueID(4));
    std::vector<std::unique_ptr<MappedLedItem>> taken;
    taken.push_back(std::make_unique<MappedLedItem>(
        L"Copy", Document().GetItemByUniqueID(4)->GetFixture(), nullptr, nullptr));
    taken.back()->uniqueID = 4;
    EXPECT_EQ(manager.GetUniqueID(manager.AddMappedItems(std::move(taken)).front()), 5);
    Document().Clear();
    EXPECT_EQ(manager.GetUniqueID(Add("Auto", 0)), 1);
}

/// Whoever hears of a removal finds each element under its own row, before it and after it.
TEST_F(DocumentTest, RemovalsLeaveOthersWhereTheyAre)
{
    const QAbstractItemModelTester table(&Document());
    const QAbstractItemModelTester shown(manager.GetMappedObjectListProxy());
    ASSERT_TRUE(Load(Whole("")));
    manager.GetMappedObjectListProxy()->sort(5, Qt::DescendingOrder);
    std::map<qint64, QPersistentModelIndex> kept;
    for (qint64 id = 1; id <= 60; ++id)
        kept[id] = Add("Auto", 0);
    QItemSelectionModel selection(manager.GetMappedObjectListProxy());
    const auto idOf = [](const QModelIndex& index) {
        return index.sibling(index.row(), 7).data(Qt::UserRole).toLongLong();
    };
    const auto selected = [&] {
        std::set<qint64> ids;
        for (const QModelIndex& index : selection.selectedRows())
            ids.insert(idOf(index));
        return ids;
    };
    std::set<qint64> wanted;
    for (int row = 0; row < 60; row += 3) {
        const QModelIndex index = manager.GetMappedObjectListProxy()->index(row, 0);
        selection.select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        wanted.insert(idOf(index));
    }
    int wrong = 0;
    QObject::connect(&selection, &QItemSelectionModel::selectionChanged, &manager, [&] {
        for (int row = 0; row < Document().rowCount(); ++row)
            wrong +=
                manager.GetUniqueID(Document().index(row, 0)) != idOf(Document().index(row, 0));
    });
    QSignalSpy changes(&manager, &DeviceManager::mappingsChanged);
    int removals = 0;
    for (const int step : {25, 2, 3}) { // a few, many, and many of which some are gone
        QList<qint64> leaving;
        for (qint64 id = 1; id <= 60; id += step)
            leaving.append(id);
        manager.RemoveMappedObjects(leaving);
        EXPECT_EQ(changes.count(), ++removals);
        for (const qint64 id : leaving) {
            EXPECT_FALSE(kept[id].isValid());
            EXPECT_EQ(Document().GetItemByUniqueID(id), nullptr);
            kept.erase(id);
            wanted.erase(id);
        }
        int row = 0;
        for (const auto& [id, index] : kept) {
            EXPECT_EQ(index.row(), row) << id;
            EXPECT_EQ(manager.GetUniqueID(index), id);
            EXPECT_EQ(Document().GetIndexOfUniqueID(id).row(), row);
            EXPECT_EQ(idOf(index), id);
            EXPECT_EQ(Text(row++, 5), "Lamp-" + std::to_string(id));
        }
        EXPECT_EQ(Document().rowCount(), row);
        EXPECT_EQ(selected(), wanted);
        EXPECT_EQ(idOf(manager.GetMappedObjectListProxy()->index(0, 0)), removals == 1 ? 9 : 8);
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_TRUE(Document().removeRow(0)); // past the model's own door
    EXPECT_EQ(Document().GetElement(0)->uniqueID, std::next(kept.begin())->first);
    EXPECT_EQ(Document().GetItemByUniqueID(kept.begin()->first), nullptr);
}

TEST_F(DocumentTest, TheSceneHearsOfEveryElementThatHasAPlace)
{
    std::string place = Place;
    place.replace(place.find("45.0"), 4, "45.9");
    const std::string element = Element(R"(description="A" fixture="Lamp")", place + Address);
    ASSERT_TRUE(Load(Whole(element + element)));
    std::vector<std::unique_ptr<MappedLedItem>> bare;
    bare.push_back(std::make_unique<MappedLedItem>(L"B", *manager.GetLEDFixtureByProduct(L"Lamp"),
                                                   nullptr, nullptr));
    manager.AddMappedItems(std::move(bare));
    QStringList told;
    QObject::connect(
        &manager, &DeviceManager::createRectangleDevice, &manager,
        [&told](float x, float y, float width, float height, int cellsX, int cellsY, float rotation,
                int flipX, int flipY, const QModelIndex& index, int64_t id) {
            QStringList values;
            for (const float value : {x, y, width, height, rotation})
                values << QString::number(value);
            for (const int value :
                 {cellsX, cellsY, flipX, flipY, index.row(), index.column(), static_cast<int>(id)})
                values << QString::number(value);
            told << values.join(QLatin1Char(' '));
        });
    log.Clear();
    manager.CreateSceneItems(); // on a canvas of 115 by 35
    EXPECT_EQ(told, (QStringList{QStringLiteral("57.5 -8.75 14.375 70 45 2 1 0 0 0 3 1"),
                                 QStringLiteral("57.5 -8.75 14.375 70 45 2 1 0 0 1 3 2")}));
    manager.CropToSelection({Document().index(0, 0), Document().index(2, 0)});
    EXPECT_NE(Saved().find("<Element description=\"B\" fixture=\"Lamp\" />"), std::string::npos);
    EXPECT_EQ(log.Messages(),
              (std::vector<std::string>{"Unexpected disappearance of VideoMapping!",
                                        "MappedLedItem's VideoMapping is null on row 2 -- ignoring",
                                        "MappedLedItem was null for row 2 -- ignoring",
                                        "MappedLedItem has no videoMapping!",
                                        "MappedLedItem has no dmxMapping!"}));
}

// ---- Any document ------------------------------------------------------------------------------

/// An attribute's value: any characters that a file can hold.
std::string OddText(std::mt19937& random)
{
    static const std::array<const char*, 16> pieces = {
        "a",   " ",      "  ",     "&lt;",   "&gt;",       "&amp;",    "&quot;", "&apos;",
        "Zoë", "&#x09;", "&#x0A;", "&#x1F;", "\U0001F4A1", "&amp;lt;", ";",      "]]&gt;"};
    std::string text;
    for (auto count = random() % 6; count > 0; --count)
        text += pieces[random() % pieces.size()];
    return text;
}

std::size_t Occurrences(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

std::string OddNumber(std::mt19937& random)
{
    static const std::array<const char*, 10> numbers = {
        "0",          "-0",  "1e38", "-3.4028234e38", "1e-45", "0.0000004",
        " 16777217 ", "0.1", "-1",   "360.5"};
    return numbers[random() % numbers.size()];
}

std::string OddInteger(std::mt19937& random)
{
    static const std::array<const char*, 6> numbers = {"0",   "-2147483648", "2147483647",
                                                       "+15", " 7 ",         "512"};
    return numbers[random() % numbers.size()];
}

constexpr std::array<const char*, 21> FixtureTypes = {
    "RGB", "RBG", "GRB", "GBR",    "BRG",    "BGR",      "RGBL",      "RGBA", "RGBW+", "RGBW-", "L",
    "CMY", "YMC", "RB",  "RGBXXX", "RrGgBb", "RGBAmber", "RGBWAmber", "R",    "G",     "B"};

/// Pixels on some of the channels up to 400, constants on some of those behind them.
std::string OddFixture(std::mt19937& random, const std::string& product)
{
    const auto number = [&random](unsigned long from, unsigned long many) {
        return std::to_string(from + random() % many);
    };
    const auto width = 1 + random() % 4;
    const auto height = 1 + random() % 3;
    std::string text =
        R"(<LEDFixture manufacturer="M)" + OddText(random) + R"(" product=")" + product + '"' +
        (random() % 2 ? " channel_count='" + number(420, 90) + '\'' : "") +
        "><PixelMapping width='" + std::to_string(width) + "' height='" + std::to_string(height) +
        "' type='" + FixtureTypes[random() % FixtureTypes.size()] + "'>";
    for (auto cell = width * height; cell > 0; --cell)
        text += (random() % 3 ? number(1, 400) : "0") + ' ';
    text += "</PixelMapping>";
    for (auto channel = 410 + random() % 50; channel <= 512; channel += 1 + random() % 20)
        text += "<StaticChannel channel='" + std::to_string(channel) + "' value='" +
                number(0, 256) + "'/>";
    return text + "</LEDFixture>";
}

std::string OddElement(std::mt19937& random, const std::string& product)
{
    const auto number = [&random] {
        return OddNumber(random);
    };
    const auto flag = [&random] {
        return random() % 2 ? "true" : "false";
    };
    const auto attribute = [](const char* name, const std::string& value) {
        return std::string(name) + "=\"" + value + "\" ";
    };
    return Element(
        attribute("fixture", product) + attribute("description", OddText(random)),
        "<VideoMapping><center>" + number() + ',' + number() + "</center><size>" + number() + ',' +
            number() + "</size><rotation>" + number() + "</rotation><horizontalflip>" + flag() +
            "</horizontalflip><verticalflip>" + flag() +
            "</verticalflip></VideoMapping><DMXMapping type=\"ArtNet\"><ArtNetMapping " +
            attribute("subnet", OddInteger(random)) + attribute("universe", OddInteger(random)) +
            attribute("channel", OddInteger(random)) + attribute("ipconf", OddText(random)) +
            attribute("ipName", OddText(random)) + "/></DMXMapping>");
}

std::string OddDocument(std::mt19937& random)
{
    std::string fixtures;
    std::string elements;
    for (auto count = 1 + random() % 3; count > 0; --count) {
        const std::string product = std::to_string(count) + OddText(random);
        fixtures += OddFixture(random, product);
        for (auto more = random() % 3; more > 0; --more)
            elements += OddElement(random, product);
    }
    return "<LEDFixtureLibrary>" + fixtures + "</LEDFixtureLibrary><ManualNetworkNodes>" +
           R"(<ManualNode Name=")" + OddText(random) + R"(" IP=")" + OddText(random) +
           R"("/></ManualNetworkNodes><Mapping name=")" + OddText(random) + R"(" version=")" +
           OddInteger(random) + '.' + OddInteger(random) + R"(" resolution="1,100000" network=")" +
           OddText(random) + R"(">)" + elements + "</Mapping>";
}

/// A user whose numbers have a decimal comma, by every road that needs no locale on the machine.
class DecimalComma
{
public:
    DecimalComma()
        : before_(std::locale::global(std::locale(std::locale::classic(), new Numbers)))
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        std::setlocale(LC_NUMERIC, "de_DE.UTF-8"); // where there is one
    }
    ~DecimalComma()
    {
        std::setlocale(LC_NUMERIC, "C");
        QLocale::setDefault(QLocale::c());
        std::locale::global(before_);
    }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

private:
    struct Numbers : std::numpunct<char>
    {
        [[nodiscard]] char do_decimal_point() const override { return ','; }
        [[nodiscard]] char do_thousands_sep() const override { return '.'; }
        [[nodiscard]] std::string do_grouping() const override { return "\3"; }
    };
    std::locale before_;
};

TEST_F(DocumentTest, WhatIsSavedLoadsAndSavesAsTheSameBytes)
{
    std::mt19937 random(20260);
    std::set<PixelMapType> types;
    std::size_t elements = 0;
    for (int done = 0; done < 1000; ++done) {
        const std::string text = OddDocument(random);
        folder.Write("in.wfm", XmlText::Encode(text));
        const auto savedFrom = [this](const char* name) {
            manager.ClearAll();
            nodes.Clear();
            return manager.LoadMapping(Path(name), nodes) ? Saved() : std::string();
        };
        const std::string first = savedFrom("in.wfm");
        const auto rows = static_cast<std::size_t>(Document().rowCount());
        elements += rows;
        for (const DeviceLedItem* fixture : manager.GetDeviceModel()->GetFixtures())
            types.insert(fixture->pixelMap.GetType());
        ASSERT_EQ(Occurrences(text, "<LEDFixture "), Occurrences(first, "<LEDFixture ")) << text;
        ASSERT_EQ(Occurrences(text, "<Element "), rows) << text;
        ASSERT_EQ(Occurrences(first, "<Element "), rows) << text;
        const std::optional<DecimalComma> elsewhere =
            done % 2 ? std::make_optional<DecimalComma>() : std::nullopt;
        ASSERT_EQ(savedFrom("out.wfm"), first);
    }
    EXPECT_EQ(types.size(), FixtureTypes.size());
    EXPECT_GT(elements, 1000U);
}

} // namespace
