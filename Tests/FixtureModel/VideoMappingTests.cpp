// SPDX-License-Identifier: MIT
#include "FixtureModel/VideoMapping.h"

#include <cmath>
#include <limits>

#include "Reading.h"

namespace {

const std::string Center = "<center>0.5,0.5</center>";
const std::string Size = "<size>0.2,0.1</size>";
const std::string Required = Center + Size + "<rotation>0</rotation>";

std::string Text(const std::string& children)
{
    return "<VideoMapping>" + children + "</VideoMapping>";
}

std::unique_ptr<VideoMapping> Read(const std::string& children)
{
    return FromText(Text(children), VideoMapping::FromXml);
}

TEST(VideoMapping, ReadsChildrenInAnyOrderWithDefaults)
{
    const auto plain = Read(Required);
    ASSERT_TRUE(plain);
    EXPECT_EQ(*plain, VideoMapping({0.5F, 0.5F}, {0.2F, 0.1F}, 0, false, false));
    EXPECT_EQ(plain->filterMode, VideoFilterMode::Bilinear);
    const auto mapping = Read(
        "<filtermode>hypersampling</filtermode><Other>1</Other><verticalflip>true</verticalflip>"
        "<rotation>-725.5</rotation><size>2,-1.5</size><center>-0.25,3</center>");
    ASSERT_TRUE(mapping);
    VideoMapping expected({-0.25F, 3}, {2, -1.5F}, -725.5F, false, true);
    expected.filterMode = VideoFilterMode::Hypersampling;
    EXPECT_EQ(*mapping, expected);
    EXPECT_EQ(Read(Required + "<filtermode>nearestneighbor</filtermode>")->filterMode,
              VideoFilterMode::NearestNeighbor);
}

TEST(VideoMapping, WritesSixDecimalsAndTheSameTextAgain)
{
    EXPECT_EQ(
        Written(VideoMapping({0.882162F, 1.0F / 3}, {0.11215F, -0.0384625F}, 90, true, false)),
        "<P>\n"
        "    <VideoMapping>\n"
        "        <center>0.882162,0.333333</center>\n"
        "        <size>0.112150,-0.038463</size>\n"
        "        <rotation>90.000000</rotation>\n"
        "        <horizontalflip>true</horizontalflip>\n"
        "        <verticalflip>false</verticalflip>\n"
        "        <filtermode>bilinear</filtermode>\n"
        "    </VideoMapping>\n"
        "</P>\n");
    for (const float value : {1.0F / 3, 12.0F / 1921, -0.1234565F, 1234.567F}) {
        const std::string first =
            Written(VideoMapping({value, -value}, {value, value}, 9, true, true));
        const auto read = FromText(first, [](const auto& parent) {
            return VideoMapping::FromXml(*parent.FirstChildElement());
        });
        ASSERT_TRUE(read);
        EXPECT_EQ(Written(*read), first);
    }
}

TEST(VideoMapping, RejectsWithOneLine)
{
    Rejections cases{
        {Text("<size>x</size>"), "Video mapping center node is not defined"},
        {Text(Center + "<rotation>x</rotation>"), "Video mapping size is not defined"},
        {Text(Center + "<size />"), "Video mapping size syntax error"},
        {Text(Center + Size + "<verticalflip>x</verticalflip>"),
         "Video mapping rotation is not defined"},
        {Text(Center + Size + "<rotation>-inf</rotation>"), "Video mapping rotation syntax error"}};
    for (const std::string bad : {"0.5", ",0.5", "a,b", "", "nan,0", "0,inf", "1e39,0"})
        cases.emplace_back(Text("<center>" + bad + "</center>"),
                           "Video mapping center node syntax error");
    for (const std::string name : {"horizontalflip", "verticalflip", "filtermode"}) {
        for (const std::string bad : {"True", "1", ""})
            cases.emplace_back(Text(Required + "<" + name + ">" + bad + "</" + name + ">"),
                               "Video mapping \"" + name + "\" syntax error");
    }
    ExpectRejected(cases, VideoMapping::FromXml);
}

TEST(VideoMapping, OnlyFiniteRotationsAreStored)
{
    VideoMapping mapping;
    mapping.SetRotation(725.5F);
    EXPECT_EQ(mapping.rotation, 5);
    mapping.SetRotation(std::numeric_limits<float>::infinity());
    mapping.SetRotation(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(mapping.rotation, 5);
}

TEST(VideoMapping, CornersTurnWithTheRectangle)
{
    const auto expectNear = [](PointF point, float x, float y) {
        EXPECT_NEAR(point.x, x, 1e-6);
        EXPECT_NEAR(point.y, y, 1e-6);
    };
    VideoMapping mapping({0.5F, 0.5F}, {0.2F, 0.1F}, 90, false, false);
    expectNear(mapping.GetTopLeft(), 0.55F, 0.4F);
    expectNear(mapping.GetTopRight(), 0.55F, 0.6F);
    expectNear(mapping.GetBottomLeft(), 0.45F, 0.4F);
    expectNear(mapping.GetBottomRight(), 0.45F, 0.6F);
    mapping.SetTopLeft(0, 0.25F);
    expectNear(mapping.GetCenter(), 0.1F, 0.3F);
    expectNear(rotatePoint({1, 0}, -90), 0, -1);
}

} // namespace
