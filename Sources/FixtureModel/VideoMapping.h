// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

namespace tinyxml2 {
class XMLElement;
}

/// Two numbers that belong together: a point or a size, in fractions of the canvas or in pixels, as
/// the place of use says.
struct PointF
{
    float x = 0;
    float y = 0;

    bool operator==(const PointF&) const = default;
};

/// (x, y) turned by `degrees` about the origin, clockwise on a canvas whose y grows downward.
[[nodiscard]] PointF rotatePoint(PointF point, float degrees);

enum class VideoFilterMode : std::int32_t
{
    NearestNeighbor = 0,
    Bilinear = 1,
    Hypersampling = 2
};

/// Where an element samples the canvas: a rotated, possibly mirrored rectangle in fractions
/// of the canvas. Values outside 0 to 1 are legal: an element may hang over the edge.
struct VideoMapping
{
    float centerX = 0;
    float centerY = 0;
    float width = 0;    ///< before rotation
    float height = 0;   ///< before rotation
    float rotation = 0; ///< degrees
    bool flipHorizontal = false;
    bool flipVertical = false;
    VideoFilterMode filterMode = VideoFilterMode::Bilinear;

    VideoMapping() = default;
    VideoMapping(PointF center, PointF size, float degrees, bool mirrorLeftRight,
                 bool mirrorTopBottom);

    void SetCenter(PointF center);
    [[nodiscard]] PointF GetCenter() const { return {centerX, centerY}; }
    void SetSize(PointF size);
    [[nodiscard]] PointF GetSize() const { return {width, height}; }
    /// Brings the angle down to 360 or less and to the next whole degree below. A negative angle is
    /// not brought up.
    void SetRotation(float degrees);
    void SetTopLeft(float x, float y);

    /// The corners of the turned rectangle, in fractions, without regard to the canvas' shape.
    [[nodiscard]] PointF GetTopLeft() const;
    [[nodiscard]] PointF GetTopRight() const;
    [[nodiscard]] PointF GetBottomLeft() const;
    [[nodiscard]] PointF GetBottomRight() const;

    /// A mapping from a <VideoMapping> element; nothing, after one line in the log, when anything
    /// in it is wrong. Numbers that are not finite are wrong.
    [[nodiscard]] static std::unique_ptr<VideoMapping> FromXml(const tinyxml2::XMLElement& element);

    /// Adds a <VideoMapping> element at the end of `parent`. Always 0.
    int ToXml(tinyxml2::XMLElement& parent) const;

    bool operator==(const VideoMapping&) const = default;
};
