// SPDX-License-Identifier: MIT
#include "FixtureModel/DMXMapping.h"

#include <climits>

#include "Reading.h"

namespace {

std::string MappingText(const std::string& children)
{
    return "<DMXMapping type=\"ArtNet\">" + children + "</DMXMapping>";
}

TEST(DMXMapping, OlderFilesLoadAsAutoAndAreWrittenInFull)
{
    // What is found by name may stand behind other elements.
    const auto mapping =
        FromText(MappingText(R"(<Other /><ArtNetMapping subnet="0" universe="0" channel="1" />)"),
                 DMXMapping::FromXml);
    ASSERT_TRUE(mapping);
    EXPECT_EQ(mapping->GetIpconf(), L"Auto");
    const std::string text =
        "<P>\n"
        "    <DMXMapping type=\"ArtNet\">\n"
        "        <ArtNetMapping subnet=\"0\" universe=\"0\" channel=\"1\" ipconf=\"Auto\" "
        "ipName=\"\" />\n"
        "    </DMXMapping>\n"
        "</P>\n";
    EXPECT_EQ(Written(*mapping), text);
    EXPECT_EQ(Written(DMXMappingArtNet()), text);
}

TEST(DMXMapping, ValuesAreTakenAsRead)
{
    const auto mapping = FromText(
        MappingText(R"(<ArtNetMapping subnet="20" universe="-3" channel="600" ipconf="no address" )"
                    R"(ipName="B&#252;hne &quot;1&quot;" />)"),
        DMXMapping::FromXml);
    ASSERT_TRUE(mapping);
    EXPECT_EQ(mapping->GetDescription(), L"ArtNet/IP no address/sub 20/univ -3/ch 600");
    const auto copy = mapping->Clone();
    const auto& artNet = dynamic_cast<const DMXMappingArtNet&>(*copy);
    EXPECT_EQ(artNet.GetIpconf(), L"no address");
    EXPECT_EQ(artNet.GetIpName(), L"B\u00FChne \"1\"");
    EXPECT_EQ(artNet.GetSubnet(), 20);
    EXPECT_EQ(artNet.GetUniverse(), -3);
    EXPECT_EQ(artNet.GetMappingType(), 0);
    EXPECT_FALSE(artNet.IsAuto());
    EXPECT_EQ(Written(*copy), Written(*mapping));
}

TEST(DMXMapping, RejectsWithOneLine)
{
    const auto artNet = [](const std::string& attributes) {
        return MappingText("<ArtNetMapping " + attributes + " />");
    };
    ExpectRejected(
        {{"<DMXMapping />", "DMX Mapping type is not defined"},
         {MappingText("<Other />"), "ArtNet mapping node is not defined"},
         {"<DMXMapping type=\"ECue\" />", "ECue DMX Mapping type not supported"},
         {"<DMXMapping type=\"artnet\" />", "Unknown DMX Mapping type"},
         {"<DMXMapping type=\"\" />", "Unknown DMX Mapping type"},
         {artNet("universe=\"x\""), "ArtNet DMX Mapping subnet is not defined"},
         {artNet("subnet=\"1.0\""), "ArtNet DMX Mapping subnet syntax error"},
         {artNet("subnet=\"1\" channel=\"x\""), "ArtNet DMX Mapping universe is not defined"},
         {artNet("subnet=\"1\" universe=\"\""), "ArtNet DMX Mapping universe syntax error"},
         {artNet("subnet=\"1\" universe=\"2\""), "ArtNet DMX Mapping channel is not defined"},
         {artNet("subnet=\"1\" universe=\"2\" channel=\"2147483648\""),
          "ArtNet DMX Mapping channel syntax error"}},
        DMXMapping::FromXml);
}

TEST(DMXMapping, SortDescriptionPadsNumbers)
{
    EXPECT_EQ(DMXMappingArtNet().GetSortDescription(), L"ArtNet/IP Auto/sub 000/univ 000/ch 001");
    const DMXMappingArtNet bound(1, 15, 125, L"2.0.0.10", L"Stage");
    EXPECT_EQ(bound.GetSortDescription(), L"ArtNet/IP 2.0.0.10/sub 001/univ 015/ch 125");
    EXPECT_EQ(bound.GetDescription(), L"ArtNet/IP 2.0.0.10/sub 1/univ 15/ch 125");
    EXPECT_EQ(DMXMappingArtNet(1000, 0, 1, L"", L"").GetSortDescription(),
              L"ArtNet/IP /sub 1000/univ 000/ch 001");
}

TEST(DMXMapping, OrderAndPortAddress)
{
    const DMXMappingArtNet mapping(1, 2, 3, L"z", L"");
    EXPECT_TRUE(mapping < DMXMappingArtNet(2, 0, 0, L"a", L""));
    EXPECT_TRUE(mapping < DMXMappingArtNet(1, 3, 0, L"a", L""));
    EXPECT_TRUE(mapping < DMXMappingArtNet(1, 2, 4, L"a", L""));
    EXPECT_FALSE(mapping < DMXMappingArtNet(1, 2, 3, L"zz", L""));
    EXPECT_EQ(mapping.GetPortAddress(), 18);
    EXPECT_EQ(DMXMappingArtNet(15, 15, 1, L"", L"").GetPortAddress(), 255);
    EXPECT_EQ(DMXMappingArtNet(20, 1, 1, L"", L"").GetPortAddress(), 321);
    EXPECT_EQ(DMXMappingArtNet(INT_MAX, INT_MAX, 1, L"", L"").GetPortAddress(), 0xFFEF);
    EXPECT_EQ(DMXMappingArtNet(INT_MIN, -1, 1, L"", L"").GetPortAddress(), 0xFFFF);
}

TEST(DMXMapping, NodeIsSetAsAWhole)
{
    DMXMappingArtNet mapping;
    EXPECT_TRUE(mapping.IsAuto());
    mapping.SetNode(L"10.0.0.1", L"Left");
    EXPECT_FALSE(mapping.IsAuto());
    EXPECT_EQ(mapping.GetIpName(), L"Left");
    mapping.SetNode(L"auto", L"");
    EXPECT_FALSE(mapping.IsAuto());
}

} // namespace
