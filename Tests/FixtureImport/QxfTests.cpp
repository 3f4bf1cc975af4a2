// SPDX-License-Identifier: MIT
// QLC+ definitions: heads, layouts, fine and switching channels, and what the words and presets of
// channels and capabilities mean. Expected maps and constants are written by hand.
#include "FixtureImport/QxfReader.h"
#include "Support/ImportedText.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <ctime>

namespace {

const std::string Channels = R"(
<Channel Name="R" Preset="IntensityRed"/><Channel Name="r" Preset="IntensityRedFine"/>
<Channel Name="G" Preset="IntensityGreen"/><Channel Name="g" Preset="IntensityGreenFine"/>
<Channel Name="B" Preset="IntensityBlue"/><Channel Name="b" Preset="IntensityBlueFine"/>
<Channel Name="W" Preset="IntensityWhite"/><Channel Name="U" Preset="IntensityUV"/>
<Channel Name="M" Preset="IntensityMasterDimmer"/>
<Channel Name="D"><Group Byte="0">Intensity</Group><Capability Min="0" Max="255">0-100%</Capability></Channel>
<Channel Name="d"><Group Byte="1">Intensity</Group><Capability Min="0" Max="255">Fine</Capability></Channel>
<Channel Name="P" Preset="PositionPan"/><Channel Name="p" Preset="PositionPanFine"/>
<Channel Name="Curves"><Group Byte="0">Intensity</Group>
  <Capability Min="0" Max="127">Strobe slow</Capability><Capability Min="128" Max="255">Sound</Capability></Channel>
<Channel Name="Mode"><Group Byte="0">Effect</Group>
  <Capability Min="0" Max="9" Preset="Alias">Off<Alias Mode="M" Channel="X" With="R"/></Capability>
  <Capability Min="10" Max="255" Preset="Alias">Show<Alias Mode="M" Channel="X" With="D"/></Capability></Channel>
<Channel Name="X" Preset="NoFunction"/>
)";

std::string ImportQxf(const std::string& channels, const std::string& mode,
                      const std::string& physical = "", const std::string& type = "Color Changer")
{
    const std::string xml = R"(<?xml version="1.0"?><!DOCTYPE FixtureDefinition>
<FixtureDefinition xmlns="http://www.qlcplus.org/FixtureDefinition"><Manufacturer>Maker</Manufacturer>
<Model>Bar</Model><Type>)" + type +
                            "</Type>" + Channels + channels + R"(<Mode Name="M">)" + mode +
                            "</Mode><Physical>" + physical + "</Physical></FixtureDefinition>";
    const auto read = FixtureImport::ReadQxf(QByteArray::fromStdString(xml));
    EXPECT_FALSE(read.fault) << InWords(read.fault).toStdString();
    return read.fault ? std::string() : Support::TextOfFirst(read.definition);
}

/// A mode of these channels, "R G B", with heads as "1,2,3 4,5,6" from 0.
std::string Mode(const std::string& names, const std::string& heads = "")
{
    std::string xml;
    int number = 0;
    for (const QString& name : QString::fromStdString(names).split(QLatin1Char(' ')))
        xml += "<Channel Number=\"" + std::to_string(number++) + "\">" + name.toStdString() +
               "</Channel>";
    for (const QString& head :
         QString::fromStdString(heads).split(QLatin1Char(' '), Qt::SkipEmptyParts))
    {
        xml += "<Head>";
        for (const QString& channel : head.split(QLatin1Char(',')))
            xml += "<Channel>" + channel.toStdString() + "</Channel>";
        xml += "</Head>";
    }
    return xml;
}

TEST(Qxf, PixelsOfModesAndHeads)
{
    const std::string layout2x2 = R"(<Layout Width="2" Height="2"/>)";
    const struct
    {
        std::string names;
        std::string heads;
        std::string layout;
        std::string expected;
    } cases[] = {
        {"M R G B", "", "", "1x1 RGB 2 | 1=255"},
        {"R G B W U", "", layout2x2, "1x1 RGBW+ 1 | 5=0"},
        {"R r G g B b", "", "", "1x1 RrGgBb 1 |"},
        {"R G B r g b", "", "", "1x1 RGB 1 | 4=0 5=0 6=0"},
        {"D d P p", "", "", "1x1 L 1 | 2=0 3=128 4=0"},
        {"R G B R G B", "", "", "2x1 RGB 1 4 |"},
        {"R G B R G B", "3,4,5 0,1,2", "", "2x1 RGB 4 1 |"},
        {"R G B R G B R G B R G B", "0,1,2 3,4,5 9,10,11 6,7,8", layout2x2, "2x2 RGB 1 4 10 7 |"},
        {"R G B R G B R G B", "0,1,2 3,4,5 6,7,8", layout2x2, "3x1 RGB 1 4 7 |"},
        {"M R G B R G B", "0,1,2,3 0,4,5,6", "", "2x1 RGB 2 5 | 1=255"},
        {"R G B D R G B D W", "0,1,2,3 4,5,6,7", "", "2x1 RGB 1 5 | 4=255 8=255 9=0"},
        {"R G B D D", "0,1,2,3 4", "", "1x1 RGB 1 | 4=255 5=0"},
        {"R G B R G B", "0,1,2 3,4", "", "2x1 RGB 1 4 |"},
        {"R G B R G B R G B", "0,1,2,3,4,5 6,7,8", "", "3x1 RGB 1 4 7 |"},
        {"R r G g B b R G B", "", "", "1x1 RrGgBb 1 | 7=0 8=0 9=0"},
        {"R r G g B b R G B R G B R G B R G B", "", "",
         "4x1 RGB 7 10 13 16 | 1=0 2=0 3=0 4=0 5=0 6=0"},
        {"Mode X G B", "", "", "1x1 RGB 2 | 1=0"},
        {"D Curves", "", "", "1x1 L 1 | 2=0"},
        {"M D D", "", "", "2x1 L 2 3 | 1=255"},
        {"R G W B", "", "", "left out: The colours of a pixel lie apart: R (1), G (2), B (4)."},
        {"R R G G B B", "0,2,4 1,3,5", "",
         "left out: The colours of a pixel lie apart: R (1), G (3), B (5)."},
        {"Curves", "", "",
         "left out: It has no colours, and its dimmer \"Curves\" does more than dim."},
        {"R G Q", "", "", "left out: The definition doesn't say what the channel \"Q\" does."},
    };
    for (const auto& row : cases)
        EXPECT_EQ(ImportQxf("", Mode(row.names, row.heads), row.layout), row.expected)
            << row.names << " " << row.heads;
    EXPECT_EQ(ImportQxf("", Mode("D"), "", "Hazer"),
              "left out: It makes smoke or wind and has no colours.");
    EXPECT_EQ(ImportQxf("",
                        Mode("R G B R G B", "0,1,2 3,4,5") +
                            R"(<Physical><Layout Width="1" Height="2"/></Physical>)",
                        R"(<Layout Width="2" Height="1"/>)"),
              "1x2 RGB 1 4 |");
    EXPECT_EQ(ImportQxf("", R"(<Channel Number="2">D</Channel><Channel Number="-1">R</Channel>)"),
              "1x1 L 3 | 1=0 2=0");
    EXPECT_EQ(ImportQxf("", R"(<Channel Number="2000000000">D</Channel>)"),
              "left out: It has 2000000001 channels. A fixture has 512 at most.");
}

TEST(Qxf, OtherChannelsLeaveTheLightOnAndStill)
{
    const struct
    {
        std::string group;
        std::string capabilities; ///< "0-9 Preset|Text;..."
        std::string expected;     ///< of channel 4, "" for free
    } cases[] = {
        {"Shutter", "0-9 ShutterClose|Closed;10-19 ShutterOpen|Open;20-255 StrobeSlowToFast|Strobe",
         " 4=14"},
        {"Shutter", "0-9 |Shutter closed;10-199 |Strobe slow to fast;200-255 |Shutter open",
         " 4=255"},
        {"Shutter", "0-9 |Open pulse, slow to fast;10-29 |No strobe", " 4=19"},
        {"Shutter", "0-99 |Dimmer 0% to 100%;100-255 |Strobe", " 4=99"},
        {"Shutter", "0-255 |Iris, closed to open", " 4=255"},
        {"Colour", "0-9 ColorMacro|Red;10-19 ColorMacro|White;20-255 |Rainbow slow to fast",
         " 4=14"},
        {"Colour", "0-127 ColorMacro|Red;128-255 |No function", " 4=255"},
        {"Colour", "0-127 ColorMacro|Red;128-255 ColorMacro|Green", " 4=0"},
        {"Gobo", "0-9 GoboMacro|Gobo 1;10-29 GoboMacro|Open;30-255 GoboShakeMacro|Open shake",
         " 4=19"},
        {"Gobo",
         "0-127 RotationClockwiseSlowToFast|;128-130 RotationStop|;131-255 RotationClockwise|",
         " 4=129"},
        {"Maintenance", "0-9 ResetAll|All;10-99 LampOn|;100-255 |Unused", " 4=255"},
        {"Maintenance", "0-9 ResetAll|All;10-20 |Fan 2", " 4=15"},
        {"Effect", "0-9 |Show;10-19 |Off", " 4=14"},
        {"Effect", "0-9 |Blackout;10-29 |Show", " 4=19"},
        {"Speed", "0-255 |Fast to slow", " 4=0"},
        {"Speed", "0-99 |Forward rotation;100-120 |Stop", " 4=110"},
        {"Tilt", "0-199 |0 to 180 degrees;200-255 |Rotation", " 4=100"},
        {"Beam", "0-255 |Zoom", ""},
        {"Beam", "0-255 |Frost 0 to 100 percent", " 4=0"},
        {"Prism", "0-9 PrismEffectOn|;10-255 PrismEffectOff|", " 4=255"},
        {"Nothing", "0-255 |", " 4=0"},
        {"Intensity", "0-9 |Off;10-199 |Dimmer;200-255 |Strobe", " 4=199"},
        {"Intensity", "0-9 |Light off;10-255 |Led off to on", " 4=255"},
        {"Intensity", "0-9 |--;10-19 |PR.01;20-255 |Auto", " 4=0"},
        {"Intensity", "0-9 |Off;10-29 |Dimmer;30-255 |Strobe", " 4=29"},
        {"Speed", "0-9 |Preset speed;10-255 |Linear", " 4=0"},
        {"Prism", "0-9 |Prism out;10-19 |Prism in no rotation;20-255 |Prism left", " 4=0"},
        {"Anything", "300-255 |No range;x-y |None;9-3 |Backwards", " 4=0"},
    };
    for (const auto& row : cases) {
        const bool isZoom = row.capabilities.find("Zoom") != std::string::npos;
        const bool isIris = row.capabilities.find("Iris") != std::string::npos;
        std::string xml = std::string(R"(<Channel Name=")") +
                          (isZoom   ? "Zoom"
                           : isIris ? "Iris"
                                    : "Y") +
                          R"("><Group Byte="0">)" + row.group + "</Group>";
        for (const QString& text : QString::fromStdString(row.capabilities).split(QLatin1Char(';')))
        {
            const QStringList parts = text.section(QLatin1Char(' '), 1).split(QLatin1Char('|'));
            const QStringList limits = text.section(QLatin1Char(' '), 0, 0).split(QLatin1Char('-'));
            xml += QStringLiteral(R"(<Capability Min="%1" Max="%2" Preset="%3">%4</Capability>)")
                       .arg(limits[0], limits[1], parts[0], parts[1])
                       .toStdString();
        }
        const std::string name = isZoom ? "Zoom" : isIris ? "Iris" : "Y";
        EXPECT_EQ(ImportQxf(xml + "</Channel>", Mode("R G B " + name)),
                  "1x1 RGB 1 |" + row.expected)
            << row.capabilities;
    }
    EXPECT_EQ(ImportQxf(R"(<Channel Name="Y" Default="7"><Group Byte="0">Effect</Group>
                        <Capability Min="0" Max="255">Show</Capability></Channel>)",
                        Mode("R G B Y")),
              "1x1 RGB 1 | 4=7");
}

TEST(Qxf, ColoursThatDoMore)
{
    const auto import = [](const std::string& capabilities) {
        return ImportQxf(
            R"(<Channel Name="Y"><Group Byte="0">Intensity</Group><Colour>Red</Colour>)" +
                capabilities + "</Channel>",
            Mode("Y G B"));
    };
    const std::string more = "left out: The colour channel \"Y\" does more than its colour.";
    EXPECT_EQ(import(R"(<Capability Min="0" Max="9">Off</Capability>
                        <Capability Min="10" Max="255">Red</Capability>)"),
              "1x1 RGB 1 |");
    EXPECT_EQ(import(R"(<Capability Min="0" Max="9">Clear</Capability>
                        <Capability Min="10" Max="255">Red</Capability>)"),
              "1x1 RGB 1 |");
    EXPECT_EQ(import(R"(<Capability Min="0" Max="199">Red</Capability>
                        <Capability Min="200" Max="255">Deep red</Capability>)"),
              more);
    EXPECT_EQ(import(R"(<Capability Min="0" Max="199">Red</Capability>
                        <Capability Min="200" Max="255">Auto program</Capability>)"),
              more);
    EXPECT_EQ(import(R"(<Capability Min="0" Max="99" Preset="ColorMacro">Red</Capability>
                        <Capability Min="100" Max="255" Preset="ColorMacro">Blue</Capability>)"),
              more);
    EXPECT_EQ(import(R"(<Capability Min="0" Max="200">No function</Capability>
                        <Capability Min="201" Max="255">0-100%</Capability>)"),
              more);
}

TEST(Qxf, HostileDefinitionsCostNeitherTimeNorMemory)
{
    std::string aliases;
    for (int i = 0; i < 180'000; ++i)
        aliases += R"(<Alias Mode="M" Channel="Z" With="R"/>)";
    std::string names = "R";
    for (int i = 1; i < 512; ++i)
        names += " P";
    std::string modes;
    for (int i = 0; i < 40; ++i)
        modes += Mode(names) + R"(</Mode><Mode Name="M">)";
    const std::clock_t before = std::clock();
    EXPECT_EQ(ImportQxf(R"(<Channel Name="Y"><Group Byte="0">Effect</Group>
                        <Capability Min="0" Max="255">)" +
                            aliases + "</Capability></Channel>",
                        modes)
                  .substr(0, 9),
              "1x1 R 1 |");
    EXPECT_LT((std::clock() - before) / CLOCKS_PER_SEC, 5) << "it would take half a minute";
    std::string ranges;
    for (int i = 0; i < 1000; ++i)
        ranges += R"(<Capability Min="0" Max="0">Show</Capability>)";
    const auto read = FixtureImport::ReadQxf(QByteArray::fromStdString(
        R"(<FixtureDefinition><Channel Name="Y"><Group Byte="0">Effect</Group>)" + ranges +
        "</Channel><Mode/></FixtureDefinition>"));
    EXPECT_EQ(read.definition.channels.at(0).ranges.size(), 256U);
}

} // namespace
