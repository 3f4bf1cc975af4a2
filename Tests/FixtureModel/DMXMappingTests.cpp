// SPDX-License-Identifier: MIT
#include "FixtureModel/DMXMapping.h"

#include <climits>
#include <tuple>

#include "Reading.h"

namespace {

std::string ArtNet(const std::string& attributes)
{
    // An element that is found by its name may follow others.
    return R"(<DMXMapping type="ArtNet"><Other /><ArtNetMapping )" + attributes +
           " /></DMXMapping>";
}

TEST(DMXMapping, OlderFilesLoadAsAutoAndAreWrittenInFull)
{
    const auto mapping =
        FromText(ArtNet(R"(subnet="0" universe="0" channel="1")"), DMXMapping::FromXml);
    ASSERT_TRUE(mapping);
    const std::string text = "<P>\n"
                             "    <DMXMapping type=\"ArtNet\">\n"
                             "        <ArtNetMapping subnet=\"0\" universe=\"0\" channel=\"1\" "
                             "ipconf=\"Auto\" ipName=\"\" />\n"
                             "    </DMXMapping>\n"
                             "</P>\n";
    EXPECT_EQ(Written(*mapping), text);
    EXPECT_EQ(Written(DMXMappingArtNet()), text);
}

TEST(DMXMapping, ValuesAreTakenAsReadAndCopied)
{
    const auto mapping =
        FromText(ArtNet(R"(subnet="20" universe="-3" channel="600" )"
                        R"(ipconf="no address" ipName="B&#252;hne &quot;1&quot;")"),
                 DMXMapping::FromXml);
    ASSERT_TRUE(mapping);
    const auto copy = mapping->Clone();
    const auto& artNet = dynamic_cast<const DMXMappingArtNet&>(*copy);
    EXPECT_EQ(artNet.GetDescription(), L"ArtNet/IP no address/sub 20/univ -3/ch 600");
    EXPECT_EQ(artNet.GetSortDescription(), L"ArtNet/IP no address/sub 020/univ -03/ch 600");
    EXPECT_EQ(artNet.GetIpName(), L"B\u00FChne \"1\"");
    EXPECT_EQ(DMXMappingArtNet(1000, 0, 1, L"", L"").GetSortDescription(),
              L"ArtNet/IP /sub 1000/univ 000/ch 001");
}

TEST(DMXMapping, RejectsWithOneLine)
{
    Rejections cases{{"<DMXMapping />", "DMX Mapping type is not defined"},
                     {R"(<DMXMapping type="ArtNet" />)", "ArtNet mapping node is not defined"},
                     {R"(<DMXMapping type="ECue" />)", "ECue DMX Mapping type not supported"},
                     {R"(<DMXMapping type="artnet" />)", "Unknown DMX Mapping type"}};
    for (const auto& [attributes, fault] :
         {std::pair(R"(universe="x")", "subnet is not defined"),
          {R"(subnet="1.0")", "subnet syntax error"},
          {R"(subnet="1" channel="x")", "universe is not defined"},
          {R"(subnet="1" universe="")", "universe syntax error"},
          {R"(subnet="1" universe="2")", "channel is not defined"},
          {R"(subnet="1" universe="2" channel="2147483648")", "channel syntax error"}})
        cases.emplace_back(ArtNet(attributes), std::string("ArtNet DMX Mapping ") + fault);
    ExpectRejected(cases, DMXMapping::FromXml);
}

TEST(DMXMapping, OrderPortAddressAndNode)
{
    DMXMappingArtNet mapping(1, 2, 3, L"z", L"");
    for (const auto& [subnet, universe, channel] :
         {std::tuple(2, 0, 0), {1, 3, 0}, {1, 2, 4}, {INT_MAX, INT_MIN, 0}})
        EXPECT_TRUE(mapping < DMXMappingArtNet(subnet, universe, channel, L"a", L""));
    EXPECT_FALSE(mapping < DMXMappingArtNet(1, 2, 3, L"zz", L""));
    for (const auto& [subnet, universe, address] :
         {std::tuple(1, 2, 18), {15, 15, 255}, {20, 1, 321}, {INT_MAX, INT_MAX, 0xFFEF}})
        EXPECT_EQ(DMXMappingArtNet(subnet, universe, 1, L"", L"").GetPortAddress(), address);
    EXPECT_TRUE(DMXMappingArtNet().IsAuto());
    mapping.SetNode(L"auto", L"Left");
    EXPECT_FALSE(mapping.IsAuto());
    EXPECT_EQ(mapping.GetIpName(), L"Left");
}

} // namespace
