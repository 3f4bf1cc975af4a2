// SPDX-License-Identifier: MIT
// Every reader of the room over texts that are cut, reversed or changed in one place: it reads the
// rest, or logs exactly one line.
#include <functional>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/LEDFixture.h"
#include "FixtureModel/VideoMapping.h"
#include "Reading.h"

namespace {

struct Reader
{
    const char* name;
    std::string text;
    /// True when the first element of a well-formed document was read.
    std::function<bool(const tinyxml2::XMLElement&)> read;
};

std::vector<Reader> Readers()
{
    const std::string map =
        R"(<PixelMapping width="4" height="2" type="RGBW+">1 5 0 -9  13 9 511 600  </PixelMapping>)";
    return {
        {"map", map,
         [](const tinyxml2::XMLElement& element) {
             return PixelMap::FromXml(element) != nullptr;
         }},
        {"fixture",
         R"(<LEDFixture manufacturer="M&amp;N" product="P 1" channel_count="24" intensity_channel="9">)" +
             map + R"(<StaticChannel channel="20" value="255" /><StaticChannel channel="21" />)" +
             "</LEDFixture>",
         [](const tinyxml2::XMLElement& element) {
             std::int32_t intensity = 0;
             return LEDFixture::FromXml(element, 1, intensity).has_value();
         }},
        {"video",
         "<VideoMapping><center>0.882162,-0.362088</center><size>1.5e-3,0.038462</size>"
         "<rotation>90.000000</rotation><horizontalflip>false</horizontalflip>"
         "<verticalflip>true</verticalflip><filtermode>bilinear</filtermode></VideoMapping>",
         [](const tinyxml2::XMLElement& element) {
             const auto mapping = VideoMapping::FromXml(element);
             if (!mapping)
                 return false;
             // Every number that was read is finite.
             for (const float number : {mapping->centerX, mapping->centerY, mapping->width,
                                        mapping->height, mapping->rotation})
                 EXPECT_EQ(number - number, 0.0F);
             return true;
         }},
        {"address",
         R"(<DMXMapping type="ArtNet"><ArtNetMapping subnet="1" universe="15" channel="125" )"
         R"(ipconf="2.0.0.10" ipName="Rack" /></DMXMapping>)",
         [](const tinyxml2::XMLElement& element) {
             return DMXMapping::FromXml(element) != nullptr;
         }},
    };
}

TEST(DamagedInput, IsReadOrRejectedWithOneLine)
{
    for (const Reader& reader : Readers()) {
        SCOPED_TRACE(reader.name);
        const Support::LogCapture log;
        int parsed = 0;
        std::size_t rejected = 0;
        const auto attempt = [&](const std::string& text) {
            XmlText::Document document;
            if (!XmlText::Parse(text, document) || !document.FirstChildElement())
                return;
            ++parsed;
            rejected += reader.read(*document.FirstChildElement()) ? 0 : 1;
        };
        attempt(reader.text);
        EXPECT_EQ(parsed, 1);
        EXPECT_EQ(rejected, 0U);
        for (std::size_t at = 0; at < reader.text.size(); ++at) {
            attempt(reader.text.substr(at));
            attempt(std::string(reader.text).erase(at, 1));
            for (const char c : {'0', '9', '-', 'x', ' ', '"', '<', '&', '\xC3', '\0'}) {
                std::string changed = reader.text;
                changed[at] = c;
                attempt(changed);
            }
            for (const char* more : {"99999999999999999999", "nan", "inf", "1e999", "\n\n", "]]>"})
                attempt(std::string(reader.text).insert(at, more));
        }
        EXPECT_GT(parsed, 500);
        EXPECT_GT(rejected, 100U);
        EXPECT_EQ(log.Messages().size(), rejected);
    }
}

TEST(DamagedInput, AMillionCellsUnderEveryConstant)
{
    std::string cells;
    for (int i = 0; i < 1'000'000; ++i)
        cells += "0 ";
    std::string constants;
    for (int channel = 1; channel <= 512; ++channel)
        constants += "<StaticChannel channel=\"" + std::to_string(channel) + "\" value=\"7\" />";
    const std::string text =
        R"(<LEDFixture manufacturer="M" product="P"><PixelMapping width="1000" )"
        R"(height="1000" type="RGB">)" +
        cells + "</PixelMapping>" + constants + "</LEDFixture>";
    std::int32_t intensity = 0;
    const auto fixture = FromText(text, [&](const tinyxml2::XMLElement& element) {
        return LEDFixture::FromXml(element, 1, intensity);
    });
    ASSERT_TRUE(fixture);
    EXPECT_EQ(fixture->staticChannels.size(), 512U);
    EXPECT_EQ(fixture->GetChannelCount(), 512);
}

} // namespace
