// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "FixtureImport/Definition.h"
#include "FixtureModel/PixelMap.h"

namespace FixtureImport {

/// The pixels of a mode.
struct FoundPixels
{
    /// What a channel of the mode is to the map.
    struct Use
    {
        std::int32_t cell = -1; ///< of the pixel that covers the channel, -1 for none
        std::int32_t component = 0;
    };

    PixelMap map{0, 0, PixelMapType::RGB};
    std::vector<Use> uses;      ///< by channel of the mode
    std::vector<bool> litParts; ///< by part of the mode: it has a pixel, or holds a part with one
    bool placed = false;        ///< the definition says where the pixels are
};

/// The pixels, or why there are none. Red, green and blue come first, then cyan, magenta and
/// yellow, then single colours, then dimmers; once a mode has some of the former it is not taken
/// for the latter. Parts of the fixture go before colours of the whole fixture, and small parts
/// before the groups that hold them: those are masters.
struct PixelSearchResult
{
    std::optional<FoundPixels> pixels;
    ImportFault fault;
};
[[nodiscard]] PixelSearchResult FindPixels(const Definition& definition,
                                           const DefinitionMode& mode);

} // namespace FixtureImport
