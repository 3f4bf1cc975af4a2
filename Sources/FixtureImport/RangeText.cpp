// SPDX-License-Identifier: MIT
#include "FixtureImport/RangeText.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace FixtureImport {

namespace {

using Words = std::string_view;

struct ColourName
{
    const char* name;
    Colour colour;
};
constexpr std::array<ColourName, 10> ColourNames{{
    {"Red", Colour::Red},
    {"Green", Colour::Green},
    {"Blue", Colour::Blue},
    {"Cyan", Colour::Cyan},
    {"Magenta", Colour::Magenta},
    {"Yellow", Colour::Yellow},
    {"White", Colour::White},
    {"Warm White", Colour::WarmWhite},
    {"Cold White", Colour::ColdWhite},
    {"Amber", Colour::Amber},
}};

constexpr Phrases Harmful{"lamp off", "lamp on", "calibrat", "shut down",
                          "shutdown", "restart", "ignit"};
constexpr Phrases Still{"no func",    "no effect",     "no strobe",  "no macro",     "no rotation",
                        "no program", "no action",     "not used",   "function off", "macro off",
                        "macros off", "strobe off",    "effect off", "effects off",  "program off",
                        "nothing",    "unused",        "without",    "inactive",     "disabled",
                        "prism out",  "prism excluded"};
constexpr Phrases StillAtStart{"off",     "no ",     "none",     "not ",     "stop",
                               "default", "normal",  "reserved", "standard", "manual",
                               "idle",    "disable", "dmx",      "static"};
constexpr Phrases DarkAtStart{"closed",    "close", "shutter close", "blackout", "black out",
                              "black-out", "dark",  "led off",       "leds off", "light off"};
constexpr Phrases OpenAtStart{"open",     "shutter open", "strobe open", "shuuter open", "full",
                              "light on", "led on",       "leds on",     "always on"};
constexpr Phrases ClearAtStart{"open", "white", "clear", "empty", "no ", "hole"};
/// A text with one of these goes on to something that moves.
constexpr Phrases Moving{"->",     ">",   " to ", "slow", "fast", "while",
                         "during", "mov", "+",    "/",    "sound"};

/// What is preset resets nothing.
bool Resets(Words text)
{
    const std::size_t at = text.find("reset");
    return at != Words::npos && (at == 0 || text[at - 1] != 'p');
}

std::optional<RangeUse> UseOfBrightness(Words text)
{
    // "Shutter open", but "Open pulse, slow to fast" is none.
    if (DarkAtStart.OneBegins(text) && !Moving.IsOneIn(text))
        return RangeUse::Dark;
    if ((OpenAtStart.OneBegins(text) || text == "on") && !Moving.IsOneIn(text) &&
        text.find("puls") == Words::npos)
        return RangeUse::Open;
    // What is off is the strobe, where it says so; otherwise it may be the light.
    if (text == "off")
        return RangeUse::Dark;
    return std::nullopt;
}

} // namespace

Colour ColourFromName(const QString& name)
{
    const auto* known = std::ranges::find_if(
        ColourNames, [&](const ColourName& row) { return name == QLatin1String(row.name); });
    return known == ColourNames.end() ? Colour::Other : known->colour;
}

std::string WordsOf(const QString& text)
{
    const QStringView view = QStringView(text).trimmed();
    std::string words(static_cast<std::size_t>(view.size()), '\0');
    std::ranges::transform(view, words.begin(), [](QChar c) {
        const char letter = c.unicode() < 0x80 ? c.toLatin1() : '?';
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    });
    return words;
}

std::optional<RangeUse> UseFromText(std::string_view words, TextSubject subject)
{
    if (Still.IsOneIn(words))
        return RangeUse::Nothing;
    if (Harmful.IsOneIn(words) || Resets(words))
        return RangeUse::Never;
    if (subject == TextSubject::Brightness) {
        if (const auto use = UseOfBrightness(words))
            return use;
    } else if (DarkAtStart.OneBegins(words) && !Moving.IsOneIn(words)) {
        return RangeUse::Dark;
    }
    if (StillAtStart.OneBegins(words) || words.ends_with(" off"))
        return RangeUse::Nothing;
    if (subject == TextSubject::Wheel && ClearAtStart.OneBegins(words) && !Moving.IsOneIn(words))
        return RangeUse::Clear;
    return std::nullopt;
}

} // namespace FixtureImport
