// SPDX-License-Identifier: MIT
#include "FixtureModel/VideoMapping.h"

#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>

#include "FixtureModel/Rounding.h"
#include "Log/Log.h"
#include "Platform/Numbers.h"
#include "XmlText/XmlText.h"

namespace {

constexpr std::array<std::string_view, 3> FilterModes{"nearestneighbor", "bilinear",
                                                      "hypersampling"};

std::optional<bool> ParseBool(std::string_view text)
{
    if (text == "true")
        return true;
    return text == "false" ? std::optional(false) : std::nullopt;
}

std::string PairText(PointF pair)
{
    return Platform::FormatFloat(pair.x) + ',' + Platform::FormatFloat(pair.y);
}

/// The pair of a required child; nothing after a line in the log.
std::optional<PointF> ReadPair(const tinyxml2::XMLElement& element, const char* name,
                               const char* missing, const char* wrong)
{
    const auto* child = element.FirstChildElement(name);
    if (!child) {
        ZEN_LOG_ERROR("%s", missing);
        return std::nullopt;
    }
    const auto pair = XmlText::ParseFloatPair(XmlText::FirstText(*child), ',');
    if (!pair) {
        ZEN_LOG_ERROR("%s", wrong);
        return std::nullopt;
    }
    return PointF{pair->first, pair->second};
}

/// Reads an optional child into `value`; false after a line in the log.
bool ReadFlip(const tinyxml2::XMLElement& element, const char* name, bool& value)
{
    const auto* child = element.FirstChildElement(name);
    if (!child)
        return true;
    const auto read = ParseBool(XmlText::FirstText(*child));
    if (!read)
        ZEN_LOG_ERROR("Video mapping \"%s\" syntax error", name);
    value = read.value_or(false);
    return read.has_value();
}

bool ReadFilterMode(const tinyxml2::XMLElement& element, VideoFilterMode& mode)
{
    const auto* child = element.FirstChildElement("filtermode");
    if (!child)
        return true;
    const std::string_view text = XmlText::FirstText(*child);
    for (std::size_t i = 0; i < FilterModes.size(); ++i) {
        if (text == FilterModes[i]) {
            mode = static_cast<VideoFilterMode>(i);
            return true;
        }
    }
    ZEN_LOG_ERROR("Video mapping \"filtermode\" syntax error");
    return false;
}

} // namespace

PointF rotatePoint(PointF point, float degrees)
{
    // The angle is converted in double precision; the rest is in floats, as the sampled pixels
    // must be the same on every machine.
    const double radians = static_cast<double>(degrees) * (std::numbers::pi / 180.0);
    const auto cosine = static_cast<float>(std::cos(radians));
    const auto sine = static_cast<float>(std::sin(radians));
    return {point.x * cosine - point.y * sine, point.x * sine + point.y * cosine};
}

VideoMapping::VideoMapping(PointF center, PointF size, float degrees, bool mirrorLeftRight,
                           bool mirrorTopBottom)
    : centerX(center.x)
    , centerY(center.y)
    , width(size.x)
    , height(size.y)
    , rotation(degrees)
    , flipHorizontal(mirrorLeftRight)
    , flipVertical(mirrorTopBottom)
{}

void VideoMapping::SetCenter(PointF center)
{
    centerX = center.x;
    centerY = center.y;
}

void VideoMapping::SetSize(PointF size)
{
    width = size.x;
    height = size.y;
}

void VideoMapping::SetRotation(float degrees)
{
    if (!std::isfinite(degrees))
        return;
    rotation = static_cast<float>(Rounding::WholeDegrees(static_cast<double>(degrees)));
}

void VideoMapping::SetTopLeft(float x, float y)
{
    centerX = x + width / 2;
    centerY = y + height / 2;
}

namespace {

PointF Corner(const VideoMapping& mapping, float signX, float signY)
{
    const PointF offset =
        rotatePoint({signX * mapping.width / 2, signY * mapping.height / 2}, mapping.rotation);
    return {mapping.centerX + offset.x, mapping.centerY + offset.y};
}

} // namespace

PointF VideoMapping::GetTopLeft() const
{
    return Corner(*this, -1, -1);
}

PointF VideoMapping::GetTopRight() const
{
    return Corner(*this, 1, -1);
}

PointF VideoMapping::GetBottomLeft() const
{
    return Corner(*this, -1, 1);
}

PointF VideoMapping::GetBottomRight() const
{
    return Corner(*this, 1, 1);
}

std::unique_ptr<VideoMapping> VideoMapping::FromXml(const tinyxml2::XMLElement& element)
{
    const auto center = ReadPair(element, "center", "Video mapping center node is not defined",
                                 "Video mapping center node syntax error");
    if (!center)
        return nullptr;
    const auto size = ReadPair(element, "size", "Video mapping size is not defined",
                               "Video mapping size syntax error");
    if (!size)
        return nullptr;
    const auto* rotationChild = element.FirstChildElement("rotation");
    if (!rotationChild) {
        ZEN_LOG_ERROR("Video mapping rotation is not defined");
        return nullptr;
    }
    const auto degrees = Platform::ParseFloat(XmlText::FirstText(*rotationChild));
    if (!degrees) {
        ZEN_LOG_ERROR("Video mapping rotation syntax error");
        return nullptr;
    }
    auto mapping = std::make_unique<VideoMapping>(*center, *size, *degrees, false, false);
    if (!ReadFlip(element, "horizontalflip", mapping->flipHorizontal) ||
        !ReadFlip(element, "verticalflip", mapping->flipVertical) ||
        !ReadFilterMode(element, mapping->filterMode))
        return nullptr;
    return mapping;
}

int VideoMapping::ToXml(tinyxml2::XMLElement& parent) const
{
    const auto flag = [](bool on) {
        return on ? "true" : "false";
    };
    const auto mode = static_cast<std::size_t>(filterMode);
    auto& element = XmlText::AddElement(parent, "VideoMapping");
    XmlText::AddTextElement(element, "center", PairText(GetCenter()));
    XmlText::AddTextElement(element, "size", PairText(GetSize()));
    XmlText::AddTextElement(element, "rotation", Platform::FormatFloat(rotation));
    XmlText::AddTextElement(element, "horizontalflip", flag(flipHorizontal));
    XmlText::AddTextElement(element, "verticalflip", flag(flipVertical));
    XmlText::AddTextElement(element, "filtermode",
                            std::string(FilterModes[mode < FilterModes.size() ? mode : 1]));
    return 0;
}
