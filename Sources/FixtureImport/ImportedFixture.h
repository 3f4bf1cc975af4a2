// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QString>

#include "FixtureImport/ImportFault.h"
#include "FixtureModel/LEDFixture.h"

// What comes of an import: values that own all they show, so that one thread may make them and
// another show them.

namespace FixtureImport {

/// Why a channel of an imported mode got what it got.
enum class ChannelReason : std::uint8_t
{
    Pixel,       ///< a pixel's colour
    FineOfPixel, ///< the second byte of a colour that the pixel drives in 8 bits
    OtherColour, ///< a colour that the pixel type hasn't: off
    OtherPart,   ///< a lamp that is no pixel of the map: off
    Open,        ///< shutter or iris open
    Bright,      ///< full
    Nothing,     ///< no function, off, stopped
    Clear,       ///< the open place of a wheel
    Middle,      ///< pan and tilt
    Rest,        ///< a speed or an amount at its least
    Default,     ///< the definition's default, since it names no value for a still light
    First,       ///< the first value: the definition names neither a still value nor a default
    Fine,        ///< the second byte of a constant
    Unused,      ///< the mode leaves the channel out
    Free         ///< left free for a desk
};

/// A channel of an imported mode.
struct ImportedChannel
{
    QString name;  ///< the definition's, as CleanName leaves it; empty for an unused one
    QString range; ///< likewise, its words for the range that the constant is in
    ChannelReason reason = ChannelReason::Free;
    /// 0 to 255 for a constant; StaticChannel::Unassigned for a free channel and for a pixel's.
    std::int32_t value = StaticChannel::Unassigned;
    std::int32_t pixel = -1;    ///< index of the cell in the map, -1 for none
    std::int32_t component = 0; ///< of the pixel, from 0
};

/// The channel's reason as a short text for the operator: "shutter open: Open".
[[nodiscard]] QString InWords(const ImportedChannel& channel);

/// One mode, which became a fixture or is left out.
struct ImportedMode
{
    QString name;
    std::optional<LEDFixture> fixture; ///< nothing when `fault` says why
    ImportFault fault;
    std::vector<ImportedChannel> channels; ///< in the order of DMX; empty when left out
    /// The matrix or layout of the definition says where the pixels are; else they are in a row.
    bool placed = false;
    /// The last pixel ends on channel 512 and is not sent (see PixelMap).
    bool endsBeyondReach = false;
};

struct ImportedDefinition
{
    QString manufacturer;
    QString name;
    std::vector<ImportedMode> modes;
};

/// One file with all that was found in it.
struct ImportedFile
{
    QString path;
    ImportFault fault; ///< then there are no definitions
    std::vector<ImportedDefinition> definitions;
    bool continues = false; ///< more of a file that was handed over in part

    /// Whether anything of the file is left out.
    [[nodiscard]] bool IsWhole() const;
};

} // namespace FixtureImport
