// SPDX-License-Identifier: MIT
// The readers of the files' elements. Each has a sound text; parts of it are changed, and the
// element is read and written again, or rejected with one line in the log.
#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/LEDFixture.h"
#include "FixtureModel/UniverseMerging.h"
#include "FixtureModel/VideoMapping.h"
#include "Support/LogCapture.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace {

using Document = XmlText::Document;

/// The text of a document in one line, with single quotes: the layout is judged with whole files.
std::string OneLine(const Document& document)
{
    std::istringstream lines(XmlText::Print(document));
    std::string text;
    for (std::string line; std::getline(lines >> std::ws, line);)
        text += line;
    std::ranges::replace(text, '"', '\'');
    return text;
}

/// The text of an element, empty without one.
template <typename Element>
std::string Written(const Element& element)
{
    if (!element)
        return {};
    Document document;
    EXPECT_EQ(element->ToXml(XmlText::AddElement(document, "P")), 0);
    const std::string text = OneLine(document);
    return text.substr(3, text.size() - 7);
}

/// A document's first element as it is written after it was read, empty when it is rejected.
template <typename Element>
std::string First(const Document& document)
{
    return Written(Element::FromXml(*document.FirstChildElement()));
}

std::string FirstFixture(const Document& document)
{
    std::int32_t intensity = 0;
    return Written(LEDFixture::FromXml(*document.FirstChildElement(), 1, intensity));
}

std::string FirstMerging(const Document& document)
{
    const auto merging = UniverseMerging::FromXml(document);
    Document written;
    return merging && merging->ToXml(written) ? OneLine(written) : std::string();
}

struct Reader
{
    std::string sound;
    std::string (*again)(const Document& document);
    bool isSilent = false; ///< when it rejects
};

const std::string Map =
    "<PixelMapping width='3' height='2' type='RGBW+'>5 0 1  -13 9 501  </PixelMapping>";
const Reader PixelMaps{Map, First<PixelMap>};
const Reader Fixtures{
    "<LEDFixture manufacturer='M&amp;N' product='P 1' channel_count='24'>" + Map +
        "<StaticChannel channel='20' value='255' /><StaticChannel channel='22' value='0' />"
        "</LEDFixture>",
    FirstFixture};
const Reader Placements{
    "<VideoMapping><center>0.882162,-0.362088</center><size>-1.500000,0.038462</size>"
    "<rotation>-725.500000</rotation><horizontalflip>true</horizontalflip>"
    "<verticalflip>true</verticalflip><filtermode>hypersampling</filtermode></VideoMapping>",
    First<VideoMapping>};
const Reader Addresses{
    "<DMXMapping type='ArtNet'><ArtNetMapping subnet='1' universe='15' channel='125' "
    "ipconf='2.0.0.10' ipName='&apos;1&apos;' /></DMXMapping>",
    First<DMXMapping>};
const Reader Mergings{"<UniverseMerging Enabled='1' FromStartSubnet='2' FromStartUniverse='3' "
                      "ConsecutiveUniverses='63' ToStartSubnet='12' ToStartUniverse='5' "
                      "MergerDMXSource='ReelCommand' />",
                      FirstMerging, true};

/// The sound text with another in the place of `from`.
std::string Changed(const Reader& reader, const std::string& from, const std::string& to)
{
    const auto at = reader.sound.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? from : std::string(reader.sound).replace(at, from.size(), to);
}

std::string Again(const Reader& reader, const std::string& text)
{
    Document document;
    EXPECT_TRUE(XmlText::Parse(text, document)) << text;
    return reader.again(document);
}

/// A part, what it becomes, and the line that rejects it, or what is written for it.
using Change = std::array<std::string, 3>;

void ExpectRejected(const Reader& reader, const std::vector<Change>& changes)
{
    Support::LogCapture log;
    for (const auto& [from, to, message] : changes) {
        log.Clear();
        EXPECT_EQ(Again(reader, Changed(reader, from, to)), "") << from << " -> " << to;
        EXPECT_EQ(log.Messages(), std::vector(reader.isSilent ? 0 : 1, message)) << to;
    }
}

void ExpectWritten(const Reader& reader, const std::vector<Change>& changes)
{
    const Support::LogCapture log;
    EXPECT_EQ(Again(reader, reader.sound), reader.sound);
    for (const auto& [from, to, written] : changes)
        EXPECT_EQ(Again(reader, Changed(reader, from, to)), Changed(reader, from, written)) << to;
    EXPECT_TRUE(log.Messages().empty());
}

TEST(Readers, PixelMap)
{
    const std::string cells = "5 0 1  -13 9 501  ";
    ExpectWritten(PixelMaps, {{cells, "\n 5 0\n\n 1\n-13 9 501", cells},
                              {cells, "+5 0x 1y -13 9 501 17 x", cells},
                              {"5 0", "2147483647 -2147483648", "2147483647 -2147483648"}});
    const std::string unfilled = "PixelMap content not completely filled";
    std::vector<Change> changes = {
        {"width='3'", "", "Width not found in Description"},
        {"'3' height='2' type='RGBW+'", "'4.5'", "Syntact error in Description / Width"},
        {"height='2' type='RGBW+'", "type='?'", "Height not found in Description"},
        {"'2' type='RGBW+'", "'1a' type='?'", "Syntact error in Description / Height"},
        {"type='RGBW+'", "", "Type not found in Description"},
        {"RGBW+", "rgbw+", "Unknown PixelMap Type"},
        {"'3' height='2'", "'-3' height='-2'", unfilled},
        {"'3' height='2'", "'65536' height='65536'", unfilled},
        {"'3' height='2'", "'2147483647' height='2147483647'", unfilled},
        {"'3'", "'0'", unfilled},
        {"'2'", "'0'", unfilled},
        {cells, "", unfilled},
        {cells, "<!-- x -->" + cells, unfilled}};
    for (const char* cell : {"", "x", "+-1", "2147483648"})
        changes.push_back({"501", cell, unfilled});
    ExpectRejected(PixelMaps, changes);
}

TEST(Readers, Fixture)
{
    ExpectWritten(Fixtures, {{" manufacturer='M&amp;N'", " manufacturer=''", ""},
                             {" product='P 1'", " product=''", ""},
                             {" channel_count='24'", " intensity_channel='9'", ""},
                             {"'24'", "'0'", "'0'"},
                             {"'24'", "'512'", "'512'"},
                             {"'22'", "'512'", "'512'"},
                             {"<PixelMapping", "<Other /><PixelMapping", "<PixelMapping"}});
    ExpectRejected(
        Fixtures,
        {{"manufacturer='M&amp;N' product='P 1'", "", "Manufacturer is not defined"},
         {"product='P 1' ", "", "Product name is not defined"},
         {Map, "", "PixelMap node not found"},
         {"'24'><PixelMapping", "'x'><PixelMapping ", "Channel count is unreadable: \"x\""},
         {"'24'", "'513'", "Channel count is out of range: 513"},
         {"'24'", "'-1'", "Channel count is out of range: -1"},
         {"channel_count='24'", "intensity_channel=''", "Intensity value is unreadable: \"\""},
         {"channel='22' value='0'", "value='x'", "Assignment channel not defined"},
         {"'22'", "'5a'", "Assignment channel syntax error: \"5a\""},
         {"'22'", "'0'", "Assignment channel should be in range (1-512): \"0\""},
         {"'22'", "'513'", "Assignment channel should be in range (1-512): \"513\""},
         {"'22'", "'20'", "Channel 20 has multiple static value assignments"},
         {"'22'", "'12'", "Channel 12 assignment overlaps with fixture pixel mapping"},
         {"'255'", "''", "Assignment value syntax error: \"\""},
         {"'255'", "'-1'", "Assignment value should be in range (0-255): \"-1\""},
         {"'255'", "'256'", "Assignment value should be in range (0-255): \"256\""}});
}

TEST(Readers, Placement)
{
    const std::string center = "<center>0.882162,-0.362088</center>";
    const std::string size = "<size>-1.500000,0.038462</size>";
    const std::string across = "<horizontalflip>true</horizontalflip>";
    const std::string down = "<verticalflip>true</verticalflip>";
    ExpectWritten(
        Placements,
        {{center + size, "<Other>1</Other>" + size + center, center + size},
         {across, "", "<horizontalflip>false</horizontalflip>"},
         {down, "<verticalflip>false</verticalflip>", "<verticalflip>false</verticalflip>"},
         {down, "", "<verticalflip>false</verticalflip>"},
         {"<filtermode>hypersampling</filtermode>", "", "<filtermode>bilinear</filtermode>"},
         {"hypersampling", "nearestneighbor", "nearestneighbor"}});
    std::vector<Change> changes = {
        {center, "", "Video mapping center node is not defined"},
        {size, "", "Video mapping size is not defined"},
        {size, "<size />", "Video mapping size syntax error"},
        {"<rotation>-725.500000</rotation>", "", "Video mapping rotation is not defined"},
        {"-725.500000", "-inf", "Video mapping rotation syntax error"}};
    for (const char* bad : {"0.5", "0,0,0", "0;0", "a,b", "", "nan,0", "0,inf", "1e39,0"})
        changes.push_back({"0.882162,-0.362088", bad, "Video mapping center node syntax error"});
    for (const char* bad : {"True", "1", ""}) {
        changes.push_back({"true", bad, "Video mapping \"horizontalflip\" syntax error"});
        changes.push_back({down, std::string("<verticalflip>") + bad + "</verticalflip>",
                           "Video mapping \"verticalflip\" syntax error"});
        changes.push_back({"hypersampling", bad, "Video mapping \"filtermode\" syntax error"});
    }
    ExpectRejected(Placements, changes);
}

TEST(Readers, Address)
{
    const std::string odd = "'20' universe='-3' channel='600'";
    ExpectWritten(Addresses, {{"'1' universe='15' channel='125'", odd, odd},
                              {"<ArtNetMapping", "<Other /><ArtNetMapping", "<ArtNetMapping"}});
    const std::string fault = "ArtNet DMX Mapping ";
    ExpectRejected(
        Addresses,
        {{" type='ArtNet'", "", "DMX Mapping type is not defined"},
         {"<ArtNetMapping", "<Other", "ArtNet mapping node is not defined"},
         {"type='ArtNet'", "type='ECue'", "ECue DMX Mapping type not supported"},
         {"type='ArtNet'", "type='artnet'", "Unknown DMX Mapping type"},
         {"subnet='1' universe='15'", "universe='x'", fault + "subnet is not defined"},
         {"'1'", "'0x1'", fault + "subnet syntax error"},
         {"universe='15' channel='125'", "channel='x'", fault + "universe is not defined"},
         {"'15'", "''", fault + "universe syntax error"},
         {"channel='125'", "", fault + "channel is not defined"},
         {"'125'", "'2147483648'", fault + "channel syntax error"}});
}

TEST(Readers, Merging)
{
    using Numbers = std::array<std::string, 5>;
    std::vector<Change> odd = {{"'ReelCommand'", "'reelcommand'", "'PixelWeft'"},
                               {"Enabled='1'", "Enabled='0'", "Enabled='0'"},
                               {"Enabled='1'", "Enabled='-7'", "Enabled='1'"}};
    std::vector<Change> wrong = {{"<UniverseMerging ", "<UniverseMerging /><UniverseMerging ", ""},
                                 {"Enabled", "enabled", ""}};
    // A number, its value, the largest one, one beyond, and what is written for that.
    for (const auto& [name, value, most, beyond, byDefault] :
         {Numbers{"FromStartSubnet=", "2", "15", "16", "0"},
          {"FromStartUniverse=", "3", "15", "16", "0"},
          {"ConsecutiveUniverses=", "63", "64", "65", "1"},
          {"ToStartSubnet=", "12", "15", "16", "0"},
          {"ToStartUniverse=", "5", "15", "16", "0"}})
    {
        const std::string sound = name + "'" + value + "'";
        const auto with = [&attribute = name](const std::string& text) {
            return attribute + "'" + text + "'";
        };
        odd.push_back({sound, with(most), with(most)});
        for (const std::string& outside : {beyond, std::string("-1"), std::string("0")})
            odd.push_back({sound, with(outside), with(byDefault)});
        wrong.push_back({sound, "", ""});
        wrong.push_back({sound, with("x"), ""});
    }
    ExpectWritten(Mergings, odd);
    ExpectRejected(Mergings, wrong);
    EXPECT_EQ(Again(Mergings, "<Mapping>" + Mergings.sound + "</Mapping>"), "");
}

TEST(Readers, AMillionCellsUnderEveryConstantAndOneCellMore)
{
    std::string cells;
    for (std::int64_t i = 0; i <= MaxPixelMapCells; ++i)
        cells += "0 ";
    std::string constants;
    for (int channel = 1; channel <= 512; ++channel)
        constants += "<StaticChannel channel='" + std::to_string(channel) + "' value='7' />";
    const auto text = [&](const std::string& width) {
        return "<LEDFixture manufacturer='M' product='P'><PixelMapping width='" + width +
               "' height='1' type='L'>" + cells + "</PixelMapping>" + constants + "</LEDFixture>";
    };
    const std::string written = Again(Fixtures, text("1000000"));
    EXPECT_TRUE(written.ends_with("0 0  </PixelMapping>" + constants + "</LEDFixture>"));
    EXPECT_EQ(Again(Fixtures, text("1000001")), "");
}

} // namespace
