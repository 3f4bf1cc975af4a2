// SPDX-License-Identifier: MIT
#pragma once

#include <bitset>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tinyxml2 {
class XMLElement;
}

/// The colour layout of a pixel on its consecutive channels. Files hold the text, never the number.
enum class PixelMapType : std::int32_t
{
    RGB = 0,
    RBG,
    GRB,
    GBR,
    BRG,
    BGR,
    RGBL,      ///< red, green, blue, the fixture's intensity
    RGBA,      ///< red, green, blue, 0
    RGBWPlus,  ///< white is added on top of the colour
    RGBWMinus, ///< white is taken out of the colour
    L,
    CMY,
    YMC,
    RGBXXX,
    RrGgBb,
    RGBAmber,
    RGBWAmber,
    RB,
    R,
    G,
    B
};

/// The index of a type's text, compared exactly; -1 for any other text.
[[nodiscard]] std::int32_t PixelMapTypeFromText(std::wstring_view text);

/// The text of a type, null for an index outside the table.
[[nodiscard]] const wchar_t* PixelMapTypeToText(PixelMapType type);

/// 1 to 6, or -1 for an index outside the table.
[[nodiscard]] std::int32_t ChannelsPerPixel(PixelMapType type);

/// What a pixel has on its channel `component`, counted from 0: "R", "W", "Amber". Empty for a
/// component that the type hasn't.
[[nodiscard]] std::wstring PixelComponentName(PixelMapType type, std::int32_t component);

/// The pixels of one fixture on its DMX channels. Cells run row by row from the top left; a cell
/// holds the first channel of its pixel, counted from 1, or 0 where no pixel sits. Cells may
/// overlap and may hold any number: the editor keeps them apart, the engine skips pixels that don't
/// fit a universe.
class PixelMap
{
public:
    /// A map of columns x rows empty cells. A negative size counts as 0.
    PixelMap(std::int32_t columns, std::int32_t rows, PixelMapType colourLayout);

    [[nodiscard]] std::int32_t GetWidth() const { return width; }
    [[nodiscard]] std::int32_t GetHeight() const { return height; }
    [[nodiscard]] PixelMapType GetType() const { return type; }
    [[nodiscard]] const std::vector<std::int32_t>& GetChannels() const { return channels; }
    [[nodiscard]] std::int32_t GetCell(std::int32_t column, std::int32_t row) const;

    /// A new size forgets the whole mapping, also when it is the old size.
    void SetWidth(std::int32_t newWidth);
    void SetHeight(std::int32_t newHeight);
    void SetType(PixelMapType newType) { type = newType; }
    void SetCell(std::int32_t column, std::int32_t row, std::int32_t channel);
    void Clear();

    [[nodiscard]] std::int32_t GetChannelsPerPixel() const { return ChannelsPerPixel(type); }
    /// What a fully packed map needs.
    [[nodiscard]] std::int32_t GetTotalChannels() const;
    [[nodiscard]] std::int32_t GetHighestStartChannel() const;
    /// The last channel that a pixel covers, 0 for a map without pixels.
    [[nodiscard]] std::int32_t GetHighestChannel() const;
    /// Which of the channels 1 to 512 a pixel covers. The whole map in one walk: a file can ask for
    /// every channel of a map of a million cells.
    [[nodiscard]] std::bitset<513> GetCoveredChannels() const;
    /// Index of the first cell whose pixel covers the channel, -1 when none does.
    [[nodiscard]] std::int32_t GetPixelForChannel(std::int32_t channel) const;
    /// Cells whose pixel overlaps one that would start on `startChannel`, in array order.
    [[nodiscard]] std::vector<std::int32_t> GetPixelsOverlapping(std::int32_t startChannel) const;
    /// Cells whose last channel is above `channel`, in array order.
    [[nodiscard]] std::vector<std::int32_t> GetPixelsBeyondChannel(std::int32_t channel) const;

    /// A map from a <PixelMapping> element; nothing, after one line in the log, when anything in it
    /// is missing or wrong.
    [[nodiscard]] static std::unique_ptr<PixelMap> FromXml(const tinyxml2::XMLElement& element);

    /// Adds a <PixelMapping> element at the end of `parent`. -1, with nothing added, when the type
    /// has no text; else 0.
    int ToXml(tinyxml2::XMLElement& parent) const;

    bool operator==(const PixelMap&) const = default;

private:
    void ResizeCells();

    std::int32_t width;
    std::int32_t height;
    PixelMapType type;
    std::vector<std::int32_t> channels;
};

/// The most cells that a map from a file may have. One universe holds 512 pixels at most; a grid of
/// them with gaps stays far below this.
inline constexpr std::int64_t MaxPixelMapCells = 1'000'000;
