// SPDX-License-Identifier: MIT
// The file of the mapping document: byte for byte, and in every state of disrepair.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappingFile.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QSignalSpy>

#include <array>
#include <locale>
#include <string>
#include <vector>

namespace {

const std::string Good = R"(    <Element description="Lamp &lt;1&gt;&#x0A;" fixture="Lamp">
        <VideoMapping>
            <center>0.500000,-0.250000</center>
            <size>0.125000,2.000000</size>
            <rotation>45.000000</rotation>
            <horizontalflip>true</horizontalflip>
            <verticalflip>false</verticalflip>
            <filtermode>hypersampling</filtermode>
        </VideoMapping>
        <DMXMapping type="ArtNet">
            <ArtNetMapping subnet="1" universe="2" channel="3" ipconf="2.0.0.10" ipName="Left" />
        </DMXMapping>
    </Element>
)";
const std::string Start = R"(<LEDFixtureLibrary>
    <LEDFixture manufacturer="Maker" product="Lamp">
        <PixelMapping width="2" height="1" type="RGB">1 4  </PixelMapping>
    </LEDFixture>
</LEDFixtureLibrary>
<UniverseMerging Enabled="1" FromStartSubnet="1" FromStartUniverse="2" ConsecutiveUniverses="3" )"
                          R"(ToStartSubnet="4" ToStartUniverse="5" MergerDMXSource="ReelCommand" />
<ManualNetworkNodes>
    <ManualNode Name="Stage &amp; left" IP="2.0.0.10" />
</ManualNetworkNodes>
<Mapping name="Show" version="2.5" resolution="115,35" autoUnicast="1" network="2.X.X.X">
)";
const std::string Whole = Start + Good + "</Mapping>\n";

/// The text with each `from` changed to something else.
std::string Altered(std::string text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

class DocumentFile : public ::testing::Test
{
protected:
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
    std::string Saved(const std::string& name = "out.wfm")
    {
        EXPECT_TRUE(manager.SaveMapping(Path(name), nodes));
        return XmlText::Decode(Support::ReadBytes(folder.Path() / name));
    }
    /// The texts of these columns of a row.
    std::string Texts(int row, const std::vector<int>& columns)
    {
        QStringList texts;
        for (const int column : columns)
            texts << document.index(row, column).data().toString();
        return texts.join(QLatin1Char('|')).toStdString();
    }

    Support::TemporaryFolder folder;
    Support::LogCapture log;
    ArtNetNodeModel nodes;
    DeviceManager manager{QString()};
    bool ready = manager.Initialize();
    MappedDeviceModel& document = *manager.GetMappedDeviceModel();
};

/// The numbers of a user with a decimal comma, for whom the machine needs no locale.
struct DecimalComma : std::numpunct<char>
{
    [[nodiscard]] char do_decimal_point() const override { return ','; }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

TEST_F(DocumentFile, ASavedDocumentIsTheLoadedOneByteForByte)
{
    const QSignalSpy changes(&document, &MappedDeviceModel::mappingsChanged);
    ASSERT_TRUE(Load(XmlText::Encode(Whole)));
    EXPECT_GE(changes.count(), 1);
    EXPECT_EQ(Texts(0, {0, 1, 2, 5, 7, 9, 10}), "Maker|Lamp||Lamp <1>\n|1|1/2/3|Left");
    document.UpdateFixtureInElements(1, *manager.GetLEDFixtureByProduct(L"Lamp"));
    EXPECT_EQ(Texts(0, {1, 2}), "Lamp|2x1");
    // Files and folders may have names of any script, and are made.
    const std::string name = "\u821E\u53F0 \u0421\u0446 \U0001F4A1 B\u00FChne";
    const std::string path = name + '/' + name + ".wfm";
    // Without a name, so that the C library's locale stays as it is.
    const std::locale point(std::locale::classic(), new std::numpunct<char>);
    for (const std::locale& user : {std::locale(point, new DecimalComma), point}) {
        std::locale::global(user);
        ASSERT_TRUE(Load(Whole));
        EXPECT_EQ(Saved(path), Whole);
        ASSERT_TRUE(manager.LoadMapping(Path(path), nodes));
        EXPECT_EQ(Saved(), Whole);
        EXPECT_EQ(Support::ReadBytes(folder.Path() / "out.wfm"), XmlText::Encode(Whole));
    }
    EXPECT_EQ(manager.SaveMapping(Path("out.wfm/no folder"), nodes).Reason(),
              QStringLiteral("There is a file where its folder should be."));
    EXPECT_EQ(manager.SaveMapping(Path(name), nodes).Reason(),
              QStringLiteral("There is a folder of this name."));
}

TEST_F(DocumentFile, WhatCantBeReadIsNamedAndCostsNothing)
{
    struct Case
    {
        std::string text;
        const char* logged;
        const char* told;
    };
    const auto with = [](const char* from, const char* to) {
        return Altered(Whole, from, to);
    };
    const std::string encoded = XmlText::Encode(Whole);
    const char* unread = "Could not read mapping XML file";
    const char* noSize = "The size of its canvas is missing or damaged.";
    const char* badSize = "Mapping resolution out of range";
    const std::vector<Case> cases = {
        {"", unread, "The file is empty."},
        {"half a fi", unread, "It is no file of PixelWeft."},
        {encoded.substr(0, encoded.size() - 30), unread, "The file is cut off or damaged."},
        {with("</Mapping>", "</Maping>"), unread, "The file is cut off or damaged."},
        {"<Other />", "No Mapping node found", "It holds no mapping."},
        {with(R"(version="2.5")", ""), "Mapping version not defined",
         "The version of the mapping is missing or damaged."},
        {with(R"(version="2.5")", R"(version="2,5")"), "Mapping version syntax error",
         "The version of the mapping is missing or damaged."},
        {with(R"(resolution="115,35")", ""), "Mapping resolution not defined", noSize},
        {with(R"("115,35")", R"("115.35")"), "Mapping resolution syntax error", noSize},
        {with(R"("115,35")", R"("115,3,5")"), "Mapping resolution syntax error", noSize},
        {with(R"("115,35")", R"("99999999999,5")"), "Mapping resolution syntax error", noSize},
        {with("115,35", "0,35"), badSize,
         "Its canvas of 0 x 35 pixels is impossible: a canvas has 1 to 100,000 pixels on each "
         "side."},
        {with("115,35", "115,100001"), badSize,
         "Its canvas of 115 x 100,001 pixels is impossible: a canvas has 1 to 100,000 pixels on "
         "each side."},
        {with(R"(<Mapping name="Show")", "<Mapping"), "Mapping name not defined",
         "The name of the mapping is missing."}};
    QLocale::setDefault(QLocale(QLocale::English));
    ASSERT_TRUE(Load(Whole));
    for (const Case& bad : cases) {
        EXPECT_FALSE(Load(Altered(bad.text, R"(Unicast="1")", R"(Unicast="0")")));
        EXPECT_EQ(log.Count(bad.logged), 1) << bad.logged;
        EXPECT_EQ(manager.ReadMapping(Path("in.wfm")).Fault().toStdString(), bad.told);
        EXPECT_EQ(Saved(), Whole) << bad.logged;
    }
    EXPECT_FALSE(manager.LoadMapping(Path("absent.wfm"), nodes));
    EXPECT_EQ(Saved(), Whole);
    // The fixtures of elements stay with them when the library loses them.
    manager.GetDeviceModel()->removeFixture(L"Maker", L"Lamp");
    EXPECT_EQ(Saved(), Whole);
}

TEST_F(DocumentFile, AnElementThatCantBeReadIsNamedAndCostsNoOther)
{
    using Fault = std::array<const char*, 4>; // a change, what is logged, what the operator reads
    const std::vector<Fault> faults = {
        {R"(description="Lamp &lt;1&gt;&#x0A;" )", "", "Element description is not defined",
         "Element 2: it has no description"},
        {R"(fixture="Lamp")", "", "Element fixture is not defined",
         "Lamp <1>: it names no fixture"},
        {R"(fixture="Lamp")", R"(fixture="lamp")",
         "Element fixture not found in the library, fixture name: lamp",
         "Lamp <1>: its fixture \"lamp\" is unknown"},
        {"VideoMapping>", "Video>", "Video mapping node not found",
         "Lamp <1>: its place on the canvas is damaged"},
        {"DMXMapping", "DMX", "DMX mapping node not found", "Lamp <1>: its address is damaged"},
        {R"("ArtNet")", R"("ECue")", "ECue DMX Mapping type not supported",
         "Lamp <1>: its address is damaged"}};
    for (const auto& [from, to, logged, told] : faults) {
        ASSERT_TRUE(Load(Start + Good + Altered(Good, from, to) + Good + "</Mapping>")) << logged;
        EXPECT_EQ(log.Count(logged), 1) << logged;
        EXPECT_EQ(Texts(0, {7}) + Texts(1, {7}), "13") << logged; // The number stays unused.
        EXPECT_EQ(Saved(), Start + Good + Good + "</Mapping>\n");
        const MappingFile file = manager.ReadMapping(Path("in.wfm"));
        EXPECT_TRUE(file.IsReadable() && !file.IsWhole());
        EXPECT_EQ(file.Losses().toStdString(),
                  std::string("1 of its 3 elements can't be read:\n\n") + told);
    }
    std::string text = Start;
    for (int element = 0; element < 13; ++element)
        text += Altered(Good, R"(fixture="Lamp")", "");
    ASSERT_TRUE(Load(text + "</Mapping>"));
    const QString lost = manager.ReadMapping(Path("in.wfm")).Losses();
    EXPECT_EQ(lost.count(QStringLiteral("names no fixture")), 10);
    EXPECT_TRUE(lost.endsWith(QStringLiteral("\nand 3 more")));
}

TEST_F(DocumentFile, OldFilesAndOddNetworksLoad)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {R"(network="192.168.1.X")", "192.168.1.X"},
        {R"(network="0.0.0.0")", ""},
        {R"(network="2.X.X")", ""},
        {R"(network="2.x.x.x")", ""},
        {R"(network="" broadcastAddress="4294967042")", ""},
        {R"(broadcastAddress="4294967042")", "2.X.X.X"},
        {R"(broadcastAddress="4278298816")", "192.168.1.X"},
        {R"(broadcastAddress="0")", ""},
        {R"(broadcastAddress="99999999999")", ""},
        {R"(autoUnicast="no")", ""}};
    const std::string node = R"( ipconf="2.0.0.10" ipName="Left")";
    for (const auto& [attribute, network] : cases) {
        ASSERT_TRUE(Load(
            Altered(Altered(Whole, R"(autoUnicast="1" network="2.X.X.X")", attribute), node, "")))
            << attribute;
        const std::string other = R"(autoUnicast="0" network=")" + network + '"';
        EXPECT_EQ(Saved(), Altered(Altered(Whole, R"(autoUnicast="1" network="2.X.X.X")", other),
                                   node, R"( ipconf="Auto" ipName="")"))
            << attribute;
    }
    const std::string synchronised =
        Altered(Whole, R"(autoUnicast="1")", R"(autoUnicast="1" artSync="1")");
    for (const std::string& text : {synchronised, Whole}) {
        ASSERT_TRUE(Load(text));
        EXPECT_EQ(Saved(), text);
    }
}

TEST_F(DocumentFile, ManualNodesComeUpToTheFirstWithoutAName)
{
    const std::string longIp(70, '9');
    const std::string line = R"(    <ManualNode Name="Stage &amp; left" IP="2.0.0.10" />)";
    ASSERT_TRUE(Load(Altered(
        Whole, line,
        R"(<ManualNode Name="b" IP="2.0.0.2"/><Other/><ManualNode Name="none"/>)"
        R"(<ManualNode Name="a" IP="2.0.0.1"/><ManualNode Name="again" IP="2.0.0.2"/>)"
        R"(<ManualNode Name="long" IP=")" +
            longIp + R"("/><ManualNode IP="2.0.0.3"/><ManualNode Name="c" IP="2.0.0.4"/>)")));
    const MappingFile file = manager.ReadMapping(Path("in.wfm"));
    EXPECT_FALSE(file.IsWhole());
    EXPECT_EQ(file.Losses().toStdString(),
              "3 of its 7 manual nodes can't be read: a node needs a name and an address, and "
              "those behind one without a name are left out.");
    ArtNetNodeRecord live;
    live.ip = "2.0.0.9";
    nodes.UpdateNodes({live});
    EXPECT_EQ(Saved(), Altered(Whole, line,
                               "    <ManualNode Name=\"a\" IP=\"2.0.0.1\" />\n"
                               "    <ManualNode Name=\"b\" IP=\"2.0.0.2\" />\n"
                               "    <ManualNode Name=\"long\" IP=\"" +
                                   longIp.substr(0, 64) + "\" />"));
}

TEST_F(DocumentFile, ThePictureIsInTheBitmapToItsLastRow)
{
    QImage picture(2, 3, QImage::Format_ARGB32);
    for (int i = 0; i < 6; ++i)
        picture.setPixel(i % 2, i / 2, qRgba(10 * i, 10 * i + 1, 10 * i + 2, 128));
    document.SetTestImage(picture);
    const ZenBitmap& bitmap = *document.GetTestBitmap();
    ASSERT_EQ(bitmap.width * 100 + bitmap.height * 10 + bitmap.bytesPerRow, 238);
    EXPECT_EQ(std::vector<int>(bitmap.data, bitmap.data + 24),
              (std::vector<int>{2,  1,  0,  255, 12, 11, 10, 255, 22, 21, 20, 255,
                                32, 31, 30, 255, 42, 41, 40, 255, 52, 51, 50, 255}));
    document.SetTestImage(QImage());
    EXPECT_EQ(document.GetTestBitmap(), nullptr);
}

} // namespace
