// SPDX-License-Identifier: MIT
#include "FixtureModel/UniverseMerging.h"

#include <array>
#include <tuple>

#include "Reading.h"

namespace {

constexpr std::array Names = {"Enabled",           "FromStartSubnet",
                              "FromStartUniverse", "ConsecutiveUniverses",
                              "ToStartSubnet",     "ToStartUniverse"};

std::optional<UniverseMerging> Read(std::string_view text)
{
    XmlText::Document document;
    EXPECT_TRUE(XmlText::Parse(text, document)) << text;
    return UniverseMerging::FromXml(document);
}

/// An element whose six numbers are these texts.
std::string ElementText(const std::vector<std::string>& numbers, const std::string& rest = {})
{
    std::string text = "<UniverseMerging ";
    for (std::size_t i = 0; i < numbers.size(); ++i)
        text += std::string(Names[i]) + "=\"" + numbers[i] + "\" ";
    return text + rest + "/>";
}

UniverseMerging RunOf(std::uint32_t fromSubnet, std::uint32_t fromUniverse, std::int32_t length,
                      std::uint32_t toSubnet, std::uint32_t toUniverse)
{
    return {
        true, fromSubnet, fromUniverse, length, toSubnet, toUniverse, MergerDMXSource::PixelWeft};
}

TEST(UniverseMerging, FileForm)
{
    XmlText::Document document;
    XmlText::AddElement(document, "Mapping");
    const UniverseMerging record(true, 1, 2, 64, 15, 4, MergerDMXSource::ReelCommand);
    EXPECT_TRUE(record.ToXml(document));
    EXPECT_EQ(UniverseMerging::FromXml(document), record);
    EXPECT_TRUE(UniverseMerging().ToXml(document));
    const std::string text = XmlText::Print(document);
    EXPECT_EQ(text.substr(text.rfind("<U")),
              "<UniverseMerging Enabled=\"0\" FromStartSubnet=\"0\" "
              "FromStartUniverse=\"0\" ConsecutiveUniverses=\"1\" ToStartSubnet=\"0\" "
              "ToStartUniverse=\"0\" MergerDMXSource=\"PixelWeft\" />\n");
    EXPECT_EQ(Read(ElementText({"1", "0", "0", "1", "0", "0"}, "MergerDMXSource='reelcommand'"))
                  ->GetMergerDMXSource(),
              MergerDMXSource::PixelWeft);
}

TEST(UniverseMerging, NumbersOutOfRangeKeepTheDefault)
{
    for (const char* length : {"0", "65", "-1", "2147483647"})
        EXPECT_EQ(Read(ElementText({"1", "2", "3", length, "4", "5"})), RunOf(2, 3, 1, 4, 5));
    for (const char* part : {"16", "-1", "-2147483648"})
        EXPECT_EQ(Read(ElementText({"-7", part, part, "64", part, part})), RunOf(0, 0, 64, 0, 0));
    EXPECT_EQ(Read(ElementText({"1", "15", "15", "8", "15", "15"})), RunOf(15, 15, 8, 15, 15));
}

TEST(UniverseMerging, BrokenElementsGiveNothingSilently)
{
    const Support::LogCapture log;
    const std::vector<std::string> good{"1", "0", "0", "1", "0", "0"};
    for (std::size_t i = 0; i < good.size(); ++i) {
        auto broken = good;
        broken[i] = "x";
        EXPECT_FALSE(Read(ElementText(broken))) << i;
        EXPECT_FALSE(Read(ElementText({good.begin(), good.begin() + static_cast<long>(i)}))) << i;
    }
    EXPECT_FALSE(Read("<Mapping>" + ElementText(good) + "</Mapping>"));
    // The first one counts, even a broken one.
    EXPECT_FALSE(Read("<UniverseMerging />" + ElementText(good)));
    EXPECT_TRUE(log.Messages().empty());
}

TEST(UniverseMerging, RangesAndTranslation)
{
    const auto up = RunOf(0, 1, 2, 1, 0);
    for (const auto& [address, inside] : {std::pair(0, false), {1, true}, {2, true}, {3, false}})
        EXPECT_EQ(up.IsInFromRange(address), inside) << address;
    EXPECT_EQ(up.TranslateToOutput(1), 16);
    EXPECT_EQ(RunOf(2, 1, 4, 0, 3).TranslateToOutput(33), 3);
    for (const auto& [from, length, to, overlap] :
         {std::tuple(0U, 3, 3U, false), {0U, 4, 3U, true}, {3U, 3, 0U, false}, {3U, 4, 0U, true}})
        EXPECT_EQ(RunOf(0, from, length, 0, to).RangesOverlap(), overlap);
}

} // namespace
