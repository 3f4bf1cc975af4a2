// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
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

/// What to look for in a text. Dozens of phrases are held against each range of a definition: a
/// place in the text is compared with them only when one of them begins with its two letters.
template <std::size_t Count>
class Phrases
{
public:
    template <typename... Texts>
    constexpr explicit Phrases(Texts... texts)
        : phrases_{std::string_view(texts)...}
    {
        for (const std::string_view phrase : phrases_)
            begins_[Low(phrase.front())] |= phrase.size() > 1 ? 1U << Low(phrase[1]) : ~0U;
    }

    /// Whether one of them is in the words, at any place.
    [[nodiscard]] constexpr bool IsOneIn(std::string_view words) const
    {
        for (std::size_t at = 0; at < words.size(); ++at) {
            if (OneBegins(words.substr(at)))
                return true;
        }
        return false;
    }

    /// Whether the words begin with one of them.
    [[nodiscard]] constexpr bool OneBegins(std::string_view words) const
    {
        const char second = words.size() > 1 ? words[1] : '\0';
        return !words.empty() && (begins_[Low(words.front())] >> Low(second) & 1U) != 0 &&
               std::ranges::any_of(phrases_, [&](std::string_view phrase) {
                   return words.front() == phrase.front() && words.starts_with(phrase);
               });
    }

private:
    /// The bits that tell letters apart.
    [[nodiscard]] static constexpr std::size_t Low(char c)
    {
        return static_cast<unsigned char>(c) % 32U;
    }

    std::array<std::string_view, Count> phrases_;
    /// By the first letter of a phrase the bits of its second one.
    std::array<std::uint32_t, 32> begins_{};
};
template <typename... Texts>
Phrases(Texts...) -> Phrases<sizeof...(Texts)>;

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
