// SPDX-License-Identifier: MIT
// The mapping document: its file, byte for byte and in every state of disrepair, and its table.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QItemSelectionModel>
#include <QSignalSpy>

#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
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
        {Element(names, place("0.500000", "nan") + Address),
         "Video mapping center node syntax error"},
        {Element(names, place("45.000000", "1e99") + Address),
         "Video mapping rotation syntax error"},
        {Element(names, place("hypersampling", "best") + Address),
         "Video mapping \"filtermode\" syntax error"},
        {Element(names, Place), "DMX mapping node not found"},
        {Element(names, Place + address("\"ArtNet\"", "\"ECue\"")),
         "ECue DMX Mapping type not supported"},
        {Element(names, Place + address("\"ArtNet\"", "\"Other\"")), "Unknown DMX Mapping type"},
        {Element(names, Place + address("subnet", "sub")),
         "ArtNet DMX Mapping subnet is not defined"},
        {Element(names, Place + address("\"3\"", "\"3x\"")),
         "ArtNet DMX Mapping channel syntax error"}};
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

std::string OddDocument(std::mt19937& random)
{
    std::string elements;
    for (auto count = random() % 5; count > 0; --count) {
        const auto number = [&] {
            return OddNumber(random);
        };
        const std::string place = "<VideoMapping><center>" + number() + ',' + number() +
                                  "</center><size>" + number() + ',' + number() +
                                  "</size><rotation>" + number() + "</rotation></VideoMapping>";
        const std::string address = R"(<DMXMapping type="ArtNet"><ArtNetMapping subnet=")" +
                                    OddInteger(random) + R"(" universe=")" + OddInteger(random) +
                                    R"(" channel=")" + OddInteger(random) + R"(" ipconf=")" +
                                    OddText(random) + R"(" ipName=")" + OddText(random) +
                                    R"("/></DMXMapping>)";
        elements +=
            Element(R"(fixture="Lamp" description=")" + OddText(random) + '"', place + address);
    }
    return std::string("<LEDFixtureLibrary>") + Lamp + "</LEDFixtureLibrary><ManualNetworkNodes>" +
           R"(<ManualNode Name=")" + OddText(random) + R"(" IP=")" + OddText(random) +
           R"("/></ManualNetworkNodes><Mapping name=")" + OddText(random) + R"(" version=")" +
           OddInteger(random) + '.' + OddInteger(random) + R"(" resolution="1,100000" network=")" +
           OddText(random) + R"(">)" + elements + "</Mapping>";
}

TEST_F(DocumentTest, WhatIsSavedLoadsAndSavesAsTheSameBytes)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(3);
    std::mt19937 random(20260);
    int done = 0;
    for (; done < 1000 && (done < 20 || Clock::now() < end); ++done) {
        nodes.Clear();
        const std::string text = OddDocument(random);
        ASSERT_TRUE(Load(XmlText::Encode(text))) << text;
        const int rows = Document().rowCount();
        const std::string first = Saved();
        nodes.Clear();
        ASSERT_TRUE(manager.LoadMapping(Path("out.wfm"), nodes)) << first;
        ASSERT_EQ(Document().rowCount(), rows) << first;
        ASSERT_EQ(Saved(), first);
    }
    RecordProperty("documents", done);
}

} // namespace
