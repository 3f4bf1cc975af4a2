// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "FixtureImport/Conversion.h"

namespace Support {

/// A mode in one line: its grid, pixel type and cells, then its constants by channel, as in
/// "2x1 RGB 1 4 | 7=255"; or why it is left out.
inline std::string TextOf(const FixtureImport::ImportedMode& mode)
{
    if (!mode.fixture)
        return "left out: " + InWords(mode.fault).toStdString();
    const PixelMap& map = mode.fixture->pixelMap;
    std::string text = std::to_string(map.GetWidth()) + "x" + std::to_string(map.GetHeight()) +
                       " " +
                       QString::fromWCharArray(PixelMapTypeToText(map.GetType())).toStdString();
    for (const std::int32_t cell : map.GetChannels())
        text += " " + std::to_string(cell);
    text += " |";
    for (const StaticChannel& entry : mode.fixture->staticChannels) {
        if (entry.value != StaticChannel::Unassigned)
            text += " " + std::to_string(entry.channel) + "=" + std::to_string(entry.value);
    }
    return text;
}

/// The first mode of a definition.
inline std::string TextOfFirst(const FixtureImport::Definition& definition)
{
    return TextOf(FixtureImport::Convert(definition).modes.at(0));
}

} // namespace Support
