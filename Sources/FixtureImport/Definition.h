// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <QString>

#include "FixtureImport/ImportFault.h"

// What the readers of all formats give: a definition as it stands in its file, before anything is
// decided. Values and indexes only.

namespace FixtureImport {

enum class ChannelKind : std::uint8_t
{
    Colour,    ///< the brightness of one colour
    Intensity, ///< the brightness of a lamp or of the whole fixture
    Other
};

enum class Colour : std::uint8_t
{
    None,
    Red,
    Green,
    Blue,
    Cyan,
    Magenta,
    Yellow,
    White,
    WarmWhite,
    ColdWhite,
    Amber,
    Other ///< lime, indigo, ultraviolet and what else no pixel type knows
};

/// How well a range of a channel suits a light that is on and still, from the best to the worst.
enum class RangeUse : std::uint8_t
{
    Open,     ///< the shutter or the iris is open
    Bright,   ///< dims, and is at its brightest
    Nothing,  ///< no function, off, stopped
    Clear,    ///< an empty or white place of a wheel
    Middle,   ///< pan and tilt
    Rest,     ///< a speed or an amount that matters only while something else is on, at its least
    Position, ///< zoom, focus, colour temperature: on and still wherever it is
    Changes,  ///< strobe, colour macro, effect
    Dark,     ///< the shutter is closed, blackout
    Never     ///< reset, lamp off
};

/// A range of a channel's values, in 8 bits whatever the channel's resolution.
struct ChannelRange
{
    std::int32_t from = 0; ///< 0 to 255
    std::int32_t to = 255; ///< `from` to 255
    RangeUse use = RangeUse::Changes;
    /// The value to take of this range.
    std::int32_t best = 0;
    /// Dims from dark at `from` to bright at `to`.
    bool rises = false;
    /// The definition's own words, may be empty.
    QString text;
};

/// What a channel does, shared by all modes.
struct ChannelDefinition
{
    QString name;
    ChannelKind kind = ChannelKind::Other;
    Colour colour = Colour::None;
    /// 0 to 255; only where the definition gives it.
    std::optional<std::int32_t> defaultValue;
    /// The second byte of the default.
    std::int32_t defaultFine = 0;
    /// In the definition's order; at least one, and MaxRanges at most. Ranges may leave gaps.
    std::vector<ChannelRange> ranges;
};

/// One DMX channel of a mode.
struct ModeChannel
{
    QString name;
    std::int32_t channel = -1; ///< index in Definition::channels, -1 for one that is not used
    std::int32_t fineness = 0; ///< 0 the value itself, 1 its second byte, 2 its third
    std::int32_t coarse = -1;  ///< of a fine channel the index of its first byte in the mode, or -1
    std::int32_t part = -1;    ///< index in DefinitionMode::parts, -1 for the whole fixture
};

/// A part of a fixture with channels of its own: a matrix pixel, a group of them, or a head.
struct LampPart
{
    /// Its cells in the grid of the mode, row by row from the top left; empty when nobody says
    /// where it is. Shared, since a group may have many and stand in many modes.
    std::shared_ptr<const std::vector<std::int32_t>> cells;
};

struct DefinitionMode
{
    QString name;
    std::vector<ModeChannel> channels; ///< in the order of DMX
    std::vector<LampPart> parts;
    std::int32_t columns = 0; ///< of the grid; 0 when the definition has none
    std::int32_t rows = 0;
    /// Why the mode can't be taken from its file, if so.
    ImportFault fault;
};

struct Definition
{
    QString manufacturer;
    QString name;
    /// It makes smoke, haze or wind: its output is no light that a picture could dim.
    bool isMachine = false;
    std::vector<ChannelDefinition> channels;
    std::vector<DefinitionMode> modes;
};

/// The most cells of a grid, and the most modes of a definition that are read: far above real
/// fixtures, and low enough that a hostile file costs neither memory nor time.
inline constexpr std::int32_t MaxGridCells = 16'384;
inline constexpr std::int32_t MaxModes = 256;
/// The most ranges of a channel that are kept: a byte has no more values.
inline constexpr std::size_t MaxRanges = 256;

} // namespace FixtureImport
