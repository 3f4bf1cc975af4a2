// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <QString>

#include "FixtureImport/Definition.h"

namespace FixtureImport {

/// What a channel is for, as far as its ranges' texts need it: "On" opens a shutter and starts an
/// effect.
enum class TextSubject : std::uint8_t
{
    Brightness, ///< dimmers and shutters
    Wheel,      ///< colours, gobos, prisms: has an open place
    Other
};

/// A text as the functions below compare it: in small letters, without blanks at its ends, and one
/// byte for each character, since thousands of texts are judged in a large folder.
[[nodiscard]] std::string WordsOf(const QString& text);

/// The use of a range from the words of its definition, in English as both formats are; nothing
/// when the words name no still state and no harm.
[[nodiscard]] std::optional<RangeUse> UseFromText(std::string_view words, TextSubject subject);

/// Whether the words have one of these in them.
template <typename... Parts>
[[nodiscard]] bool Mentions(std::string_view words, Parts... parts)
{
    return ((words.find(parts) != std::string_view::npos) || ...);
}

/// The colour of this name; Colour::Other for any other one.
[[nodiscard]] Colour ColourFromName(const QString& name);

/// The value of a range that is farthest from its neighbours: fixtures are not exact at the edges.
[[nodiscard]] constexpr std::int32_t InnerValue(std::int32_t from, std::int32_t to)
{
    if (from == 0)
        return 0;
    return to == 255 ? 255 : (from + to) / 2;
}

} // namespace FixtureImport
