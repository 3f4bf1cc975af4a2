// SPDX-License-Identifier: MIT
#include "FixtureModel/UniverseMerging.h"

#include "Reading.h"

namespace {

std::optional<UniverseMerging> Read(std::string_view text)
{
    XmlText::Document document;
    EXPECT_TRUE(XmlText::Parse(text, document)) << text;
    return UniverseMerging::FromXml(document);
}

/// An element whose six numbers are these texts.
std::string ElementText(const std::vector<std::string>& numbers, const std::string& rest = {})
{
    constexpr const char* names[] = {"Enabled",           "FromStartSubnet",
                                     "FromStartUniverse", "ConsecutiveUniverses",
                                     "ToStartSubnet",     "ToStartUniverse"};
    std::string text = "<UniverseMerging ";
    for (std::size_t i = 0; i < numbers.size(); ++i)
        text += std::string(names[i]) + "=\"" + numbers[i] + "\" ";
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
    EXPECT_TRUE(UniverseMerging().ToXml(document));
    EXPECT_EQ(XmlText::Print(document),
              "<Mapping />\n<UniverseMerging Enabled=\"0\" FromStartSubnet=\"0\" "
              "FromStartUniverse=\"0\" ConsecutiveUniverses=\"1\" ToStartSubnet=\"0\" "
              "ToStartUniverse=\"0\" MergerDMXSource=\"PixelWeft\" />\n");
    const UniverseMerging record(true, 1, 2, 64, 15, 4, MergerDMXSource::ReelCommand);
    document.Clear();
    XmlText::AddElement(document, "Mapping");
    record.ToXml(document);
    EXPECT_EQ(UniverseMerging::FromXml(document), record);
}

TEST(UniverseMerging, NumbersOutOfRangeKeepTheDefault)
{
    EXPECT_EQ(Read(ElementText({"1", "0", "0", "64", "0", "0"}))->GetConsecutiveUniverses(), 64);
    for (const char* length : {"0", "65", "-1", "2147483647"})
        EXPECT_EQ(Read(ElementText({"1", "2", "3", length, "4", "5"})), RunOf(2, 3, 1, 4, 5));
    for (const char* part : {"16", "-1", "-2147483648"})
        EXPECT_EQ(Read(ElementText({"-7", part, part, "8", part, part})), RunOf(0, 0, 8, 0, 0));
    EXPECT_EQ(Read(ElementText({"1", "15", "15", "8", "15", "15"})), RunOf(15, 15, 8, 15, 15));
}

TEST(UniverseMerging, SourceIsOptional)
{
    const std::vector<std::string> numbers{"1", "0", "0", "1", "0", "0"};
    const auto source = [&numbers](const std::string& rest) {
        return Read(ElementText(numbers, rest))->GetMergerDMXSource();
    };
    EXPECT_EQ(source(""), MergerDMXSource::PixelWeft);
    EXPECT_EQ(source("MergerDMXSource=\"ReelCommand\""), MergerDMXSource::ReelCommand);
    EXPECT_EQ(source("MergerDMXSource=\"reelcommand\""), MergerDMXSource::PixelWeft);
}

TEST(UniverseMerging, BrokenElementsGiveNothingSilently)
{
    Support::LogCapture log;
    const std::vector<std::string> good{"1", "0", "0", "1", "0", "0"};
    for (std::size_t i = 0; i < good.size(); ++i) {
        auto broken = good;
        broken[i] = "x";
        EXPECT_FALSE(Read(ElementText(broken))) << i;
        EXPECT_FALSE(Read(ElementText({good.begin(), good.begin() + static_cast<long>(i)}))) << i;
    }
    EXPECT_FALSE(Read("<Mapping>" + ElementText(good) + "</Mapping>"));
    // The first one counts, be it broken.
    EXPECT_FALSE(Read("<UniverseMerging />" + ElementText(good)));
    EXPECT_TRUE(log.Messages().empty());
}

TEST(UniverseMerging, SettersKeepTheOldValue)
{
    auto record = RunOf(1, 2, 3, 4, 5);
    record.SetFromStartSubnet(16);
    record.SetFromStartUniverse(0xFFFFFFFFU);
    record.SetConsecutiveUniverses(0);
    record.SetConsecutiveUniverses(65);
    record.SetToStartSubnet(16);
    record.SetToStartUniverse(16);
    EXPECT_EQ(record, RunOf(1, 2, 3, 4, 5));
}

TEST(UniverseMerging, RangesAndTranslation)
{
    const auto up = RunOf(0, 0, 2, 1, 0);
    EXPECT_TRUE(up.IsInFromRange(0));
    EXPECT_TRUE(up.IsInFromRange(1));
    EXPECT_FALSE(up.IsInFromRange(2));
    EXPECT_FALSE(up.IsInFromRange(-1));
    EXPECT_EQ(up.TranslateToOutput(1), 17);
    EXPECT_EQ(RunOf(2, 1, 4, 0, 3).TranslateToOutput(33), 3);
    EXPECT_FALSE(RunOf(0, 0, 3, 0, 3).RangesOverlap());
    EXPECT_TRUE(RunOf(0, 0, 4, 0, 3).RangesOverlap());
    EXPECT_FALSE(RunOf(0, 3, 3, 0, 0).RangesOverlap());
    EXPECT_TRUE(RunOf(0, 3, 4, 0, 0).RangesOverlap());
    EXPECT_TRUE(RunOf(3, 3, 1, 3, 3).RangesOverlap());
}

} // namespace
