// SPDX-License-Identifier: MIT
#include "FixtureModel/PixelMap.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

#include "Log/Log.h"
#include "XmlText/XmlText.h"

namespace {

struct TypeRow
{
    const wchar_t* text;
    std::int32_t channels;
};

constexpr std::array<TypeRow, 21> Types{{
    {L"RGB", 3},  {L"RBG", 3},    {L"GRB", 3},    {L"GBR", 3},      {L"BRG", 3},       {L"BGR", 3},
    {L"RGBL", 4}, {L"RGBA", 4},   {L"RGBW+", 4},  {L"RGBW-", 4},    {L"L", 1},         {L"CMY", 3},
    {L"YMC", 3},  {L"RGBXXX", 6}, {L"RrGgBb", 6}, {L"RGBAmber", 4}, {L"RGBWAmber", 5}, {L"RB", 2},
    {L"R", 1},    {L"G", 1},      {L"B", 1},
}};

const TypeRow* RowOf(PixelMapType type)
{
    const auto index = static_cast<std::size_t>(type);
    return index < Types.size() ? &Types[index] : nullptr;
}

std::int64_t LastChannelOf(std::int32_t cell, std::int32_t channelsPerPixel)
{
    return std::int64_t{cell} + channelsPerPixel - 1;
}

std::int32_t Narrowed(std::int64_t value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

/// The size attribute of this name, nothing after a line in the log.
std::optional<std::int32_t> ReadSize(const tinyxml2::XMLElement& element, const char* name,
                                     const char* title)
{
    const auto size = XmlText::ReadInt(element, name);
    using State = XmlText::IntAttribute::State;
    if (size.state == State::Good)
        return size.value;
    if (size.state == State::Missing)
        ZEN_LOG_ERROR("%s not found in Description", title);
    else
        ZEN_LOG_ERROR("Syntact error in Description / %s", title);
    return std::nullopt;
}

/// Fills `cells` with `count` numbers of `text`, between blanks and line feeds. False when there
/// are fewer; the rest of the text is ignored.
bool ReadCells(std::string_view text, std::vector<std::int32_t>& cells, std::size_t count)
{
    const auto isGap = [](char c) {
        return c == ' ' || c == '\n';
    };
    const char* at = text.data();
    const char* end = at + text.size();
    while (cells.size() < count) {
        at = std::find_if_not(at, end, isGap);
        if (at != end && *at == '+' && at + 1 != end && at[1] != '-')
            ++at;
        std::int32_t value = 0;
        if (std::from_chars(at, end, value).ec != std::errc{})
            return false;
        cells.push_back(value);
        at = std::find_if(at, end, isGap);
    }
    return true;
}

} // namespace

std::int32_t PixelMapTypeFromText(std::wstring_view text)
{
    const auto row = std::ranges::find(Types, text, &TypeRow::text);
    return row == Types.end() ? -1 : static_cast<std::int32_t>(row - Types.begin());
}

const wchar_t* PixelMapTypeToText(PixelMapType type)
{
    const TypeRow* row = RowOf(type);
    return row ? row->text : nullptr;
}

std::int32_t ChannelsPerPixel(PixelMapType type)
{
    const TypeRow* row = RowOf(type);
    return row ? row->channels : -1;
}

std::wstring PixelComponentName(PixelMapType type, std::int32_t component)
{
    const TypeRow* row = RowOf(type);
    if (!row || component < 0 || component >= row->channels)
        return {};
    // The only component whose name is a word.
    if (type == PixelMapType::RGBAmber && component == 3)
        return L"Amber";
    return {row->text[component]};
}

PixelMap::PixelMap(std::int32_t columns, std::int32_t rows, PixelMapType colourLayout)
    : width(std::max(columns, 0))
    , height(std::max(rows, 0))
    , type(colourLayout)
{
    ResizeCells();
}

void PixelMap::ResizeCells()
{
    channels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
}

std::int32_t PixelMap::GetCell(std::int32_t column, std::int32_t row) const
{
    return channels.at(static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                       static_cast<std::size_t>(column));
}

void PixelMap::SetCell(std::int32_t column, std::int32_t row, std::int32_t channel)
{
    channels.at(static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                static_cast<std::size_t>(column)) = channel;
}

void PixelMap::SetWidth(std::int32_t newWidth)
{
    width = std::max(newWidth, 0);
    ResizeCells();
}

void PixelMap::SetHeight(std::int32_t newHeight)
{
    height = std::max(newHeight, 0);
    ResizeCells();
}

void PixelMap::Clear()
{
    std::ranges::fill(channels, 0);
}

std::int32_t PixelMap::GetTotalChannels() const
{
    return Narrowed(std::int64_t{GetChannelsPerPixel()} *
                    static_cast<std::int64_t>(channels.size()));
}

std::int32_t PixelMap::GetHighestStartChannel() const
{
    return channels.empty() ? 0 : *std::ranges::max_element(channels);
}

std::int32_t PixelMap::GetHighestChannel() const
{
    const std::int32_t start = GetHighestStartChannel();
    return start < 1 ? 0 : Narrowed(LastChannelOf(start, GetChannelsPerPixel()));
}

std::bitset<513> PixelMap::GetCoveredChannels() const
{
    std::bitset<513> covered;
    const std::int32_t n = GetChannelsPerPixel();
    for (const std::int32_t cell : channels) {
        if (cell == 0)
            continue;
        for (std::int64_t channel = cell; channel <= LastChannelOf(cell, n); ++channel) {
            if (channel >= 1 && channel < static_cast<std::int64_t>(covered.size()))
                covered.set(static_cast<std::size_t>(channel));
        }
    }
    return covered;
}

std::int32_t PixelMap::GetPixelForChannel(std::int32_t channel) const
{
    const std::int32_t n = GetChannelsPerPixel();
    const auto covers = [&](std::int32_t cell) {
        return cell != 0 && cell <= channel && channel <= LastChannelOf(cell, n);
    };
    const auto found = std::ranges::find_if(channels, covers);
    return found == channels.end() ? -1 : static_cast<std::int32_t>(found - channels.begin());
}

std::vector<std::int32_t> PixelMap::GetPixelsOverlapping(std::int32_t startChannel) const
{
    const std::int32_t n = GetChannelsPerPixel();
    const std::int64_t end = std::int64_t{startChannel} + n;
    std::vector<std::int32_t> indices;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const std::int32_t cell = channels[i];
        if (cell == 0)
            continue;
        const std::int64_t last = LastChannelOf(cell, n);
        const bool startsInside = cell <= startChannel && startChannel <= last;
        const bool endsInside = cell <= end - 1 && end - 1 <= last;
        if (startsInside || endsInside)
            indices.push_back(static_cast<std::int32_t>(i));
    }
    return indices;
}

std::vector<std::int32_t> PixelMap::GetPixelsBeyondChannel(std::int32_t channel) const
{
    const std::int32_t n = GetChannelsPerPixel();
    std::vector<std::int32_t> indices;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        if (LastChannelOf(channels[i], n) > channel)
            indices.push_back(static_cast<std::int32_t>(i));
    }
    return indices;
}

std::unique_ptr<PixelMap> PixelMap::FromXml(const tinyxml2::XMLElement& element)
{
    const auto columns = ReadSize(element, "width", "Width");
    if (!columns)
        return nullptr;
    const auto rows = ReadSize(element, "height", "Height");
    if (!rows)
        return nullptr;
    const auto typeText = XmlText::Attribute(element, "type");
    if (!typeText) {
        ZEN_LOG_ERROR("Type not found in Description");
        return nullptr;
    }
    const std::int32_t typeIndex = PixelMapTypeFromText(*typeText);
    if (typeIndex < 0) {
        ZEN_LOG_ERROR("Unknown PixelMap Type");
        return nullptr;
    }
    // Memory is taken as numbers come in: a size alone, however large, costs none.
    const bool soundSize =
        *columns > 0 && *rows > 0 && std::int64_t{*columns} * *rows <= MaxPixelMapCells;
    std::vector<std::int32_t> cells;
    if (!soundSize ||
        !ReadCells(XmlText::FirstText(element), cells,
                   static_cast<std::size_t>(*columns) * static_cast<std::size_t>(*rows)))
    {
        ZEN_LOG_ERROR("PixelMap content not completely filled");
        return nullptr;
    }
    auto map = std::make_unique<PixelMap>(0, 0, static_cast<PixelMapType>(typeIndex));
    map->width = *columns;
    map->height = *rows;
    map->channels = std::move(cells);
    return map;
}

int PixelMap::ToXml(tinyxml2::XMLElement& parent) const
{
    const wchar_t* typeText = PixelMapTypeToText(type);
    if (!typeText)
        return -1;
    std::string text;
    text.reserve(channels.size() * 4);
    for (std::size_t i = 0; i < channels.size(); ++i) {
        text += std::to_string(channels[i]);
        text += ' ';
        if ((i + 1) % static_cast<std::size_t>(width) == 0)
            text += ' ';
    }
    auto& element = XmlText::AddElement(parent, "PixelMapping");
    XmlText::SetAttribute(element, "width", width);
    XmlText::SetAttribute(element, "height", height);
    XmlText::SetAttribute(element, "type", typeText);
    element.SetText(text.c_str());
    return 0;
}
