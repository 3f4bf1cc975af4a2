// SPDX-License-Identifier: MIT
#include "FixtureModel/VideoMapping.h"

#include <cmath>
#include <limits>

#include "Reading.h"

namespace {

constexpr const char* Full = "<center>0.882162,0.362088</center>"
                             "<size>0.112150,0.038462</size>"
                             "<rotation>0.000000</rotation>";

std::unique_ptr<VideoMapping> Read(const std::string& children)
{
    return FromText("<VideoMapping>" + children + "</VideoMapping>", VideoMapping::FromXml);
}

TEST(VideoMapping, OptionalChildrenHaveDefaults)
{
    const auto mapping = Read(Full);
    ASSERT_TRUE(mapping);
    EXPECT_EQ(*mapping,
              VideoMapping({0.882162F, 0.362088F}, {0.112150F, 0.038462F}, 0, false, false));
    EXPECT_EQ(mapping->filterMode, VideoFilterMode::Bilinear);
    EXPECT_EQ(Written(*mapping), "<P>\n"
                                 "    <VideoMapping>\n"
                                 "        <center>0.882162,0.362088</center>\n"
                                 "        <size>0.112150,0.038462</size>\n"
                                 "        <rotation>0.000000</rotation>\n"
                                 "        <horizontalflip>false</horizontalflip>\n"
                                 "        <verticalflip>false</verticalflip>\n"
                                 "        <filtermode>bilinear</filtermode>\n"
                                 "    </VideoMapping>\n"
                                 "</P>\n");
}

TEST(VideoMapping, ReadsChildrenInAnyOrderAndRotationAsStored)
{
    const auto mapping = Read(
        "<filtermode>hypersampling</filtermode><Other>1</Other><verticalflip>true</verticalflip>"
        "<rotation>-725.5</rotation><size>2,-1.5</size><center>-0.25,3</center>");
    ASSERT_TRUE(mapping);
    EXPECT_EQ(mapping->rotation, -725.5F);
    EXPECT_EQ(mapping->GetCenter(), (PointF{-0.25F, 3}));
    EXPECT_EQ(mapping->GetSize(), (PointF{2, -1.5F}));
    EXPECT_FALSE(mapping->flipHorizontal);
    EXPECT_TRUE(mapping->flipVertical);
    EXPECT_EQ(mapping->filterMode, VideoFilterMode::Hypersampling);
    const auto nearest = Read(std::string(Full) + "<filtermode>nearestneighbor</filtermode>");
    ASSERT_TRUE(nearest);
    EXPECT_EQ(nearest->filterMode, VideoFilterMode::NearestNeighbor);
}

TEST(VideoMapping, SecondSaveIsTheSameText)
{
    for (const float value : {1.0F / 3, 12.0F / 1921, -0.1234565F, 1234.567F}) {
        VideoMapping mapping({value, -value}, {value, value}, 90, true, false);
        const std::string first = Written(mapping);
        const auto read = FromText(first, [](const auto& parent) {
            return VideoMapping::FromXml(*parent.FirstChildElement());
        });
        ASSERT_TRUE(read);
        // Six decimals, and the float's own grain for what is not small.
        const double grain = std::abs(std::nextafter(value, 0.0F) - value);
        EXPECT_NEAR(read->centerX, value, 0.0000005 + grain);
        EXPECT_EQ(Written(*read), first);
    }
}

TEST(VideoMapping, RejectsWithOneLine)
{
    Rejections cases;
    const auto reject = [&cases](const std::string& children, const std::string& message) {
        cases.emplace_back("<VideoMapping>" + children + "</VideoMapping>", message);
    };
    const std::string center = "<center>0,0</center>";
    const std::string size = "<size>1,1</size>";
    reject("<size>x</size>", "Video mapping center node is not defined");
    for (const char* bad :
         {"0.5", "0.5,", ",0.5", "a,b", "", "nan,0", "0,inf", "1e39,0", "0.5;0.5"})
        reject("<center>" + std::string(bad) + "</center>" + size,
               "Video mapping center node syntax error");
    reject(center + "<rotation>x</rotation>", "Video mapping size is not defined");
    reject(center + "<size />", "Video mapping size syntax error");
    reject(center + size + "<verticalflip>x</verticalflip>",
           "Video mapping rotation is not defined");
    reject(center + size + "<rotation>90deg</rotation>", "Video mapping rotation syntax error");
    reject(center + size + "<rotation>-inf</rotation>", "Video mapping rotation syntax error");
    for (const std::string name : {"horizontalflip", "verticalflip", "filtermode"}) {
        for (const char* bad : {"True", "1", "", "Bilinear"})
            reject(Full + ("<" + name + ">" + bad + "</" + name + ">"),
                   "Video mapping \"" + name + "\" syntax error");
    }
    ExpectRejected(cases, VideoMapping::FromXml);
}

TEST(VideoMapping, RotationComesDownToWholeDegrees)
{
    VideoMapping mapping;
    const auto stored = [&mapping](float degrees) {
        mapping.SetRotation(degrees);
        return mapping.rotation;
    };
    EXPECT_EQ(stored(-1.5F), -2);
    EXPECT_EQ(stored(-725), -725);
    const float huge = stored(std::numeric_limits<float>::max());
    EXPECT_GE(huge, 0);
    EXPECT_LE(huge, 360);
    mapping.SetRotation(45);
    EXPECT_EQ(stored(std::numeric_limits<float>::infinity()), 45);
    EXPECT_EQ(stored(std::numeric_limits<float>::quiet_NaN()), 45);
}

void ExpectNear(PointF point, float x, float y)
{
    EXPECT_NEAR(point.x, x, 1e-6);
    EXPECT_NEAR(point.y, y, 1e-6);
}

TEST(VideoMapping, CornersTurnWithTheRectangle)
{
    VideoMapping mapping({0.5F, 0.5F}, {0.2F, 0.1F}, 90, false, false);
    ExpectNear(mapping.GetTopLeft(), 0.55F, 0.4F);
    ExpectNear(mapping.GetTopRight(), 0.55F, 0.6F);
    ExpectNear(mapping.GetBottomLeft(), 0.45F, 0.4F);
    ExpectNear(mapping.GetBottomRight(), 0.45F, 0.6F);
    mapping.SetRotation(0);
    mapping.SetTopLeft(0, 0.25F);
    ExpectNear(mapping.GetCenter(), 0.1F, 0.3F);
    ExpectNear(mapping.GetTopLeft(), 0, 0.25F);
    ExpectNear(rotatePoint({1, 0}, -90), 0, -1);
}

} // namespace
