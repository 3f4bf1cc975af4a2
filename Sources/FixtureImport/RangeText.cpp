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

constexpr std::array Harmful{
    Words("reset"),     Words("lamp off"), Words("lamp on"), Words("calibrat"),
    Words("shut down"), Words("shutdown"), Words("restart"), Words("ignit"),
};
constexpr std::array Still{
    Words("no func"),      Words("no effect"),   Words("no strobe"),   Words("no macro"),
    Words("no rotation"),  Words("no program"),  Words("no action"),   Words("not used"),
    Words("function off"), Words("macro off"),   Words("macros off"),  Words("strobe off"),
    Words("effect off"),   Words("effects off"), Words("program off"), Words("nothing"),
    Words("unused"),       Words("without"),     Words("inactive"),    Words("disabled"),
};
constexpr std::array StillAtStart{
    Words("off"),     Words("no "),     Words("none"),     Words("not "),     Words("stop"),
    Words("default"), Words("normal"),  Words("reserved"), Words("standard"), Words("manual"),
    Words("idle"),    Words("disable"), Words("dmx"),      Words("static"),
};
constexpr std::array DarkAtStart{
    Words("closed"),    Words("close"),     Words("shutter close"), Words("blackout"),
    Words("black out"), Words("black-out"), Words("dark"),          Words("led off"),
    Words("leds off"),  Words("light off"),
};
constexpr std::array OpenAtStart{
    Words("open"),         Words("shutter open"), Words("strobe open"),
    Words("shuuter open"), Words("full"),         Words("light on"),
    Words("led on"),       Words("leds on"),      Words("always on"),
};
constexpr std::array ClearAtStart{
    Words("open"), Words("white"), Words("clear"), Words("empty"), Words("no "), Words("hole"),
};
/// A text with one of these goes on to something that moves.
constexpr std::array Moving{
    Words("->"),     Words(">"),   Words(" to "), Words("slow"), Words("fast"),  Words("while"),
    Words("during"), Words("mov"), Words("+"),    Words("/"),    Words("sound"),
};

template <typename List>
bool ContainsOneOf(Words text, const List& list)
{
    return std::ranges::any_of(list, [&](Words words) { return text.find(words) != Words::npos; });
}

template <typename List>
bool StartsWithOneOf(Words text, const List& list)
{
    return std::ranges::any_of(list, [&](Words words) { return text.starts_with(words); });
}

std::optional<RangeUse> UseOfBrightness(Words text)
{
    // "Shutter open", but "Open pulse, slow to fast" is none.
    if (StartsWithOneOf(text, DarkAtStart) && !ContainsOneOf(text, Moving))
        return RangeUse::Dark;
    if ((StartsWithOneOf(text, OpenAtStart) || text == "on") && !ContainsOneOf(text, Moving) &&
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
    return text.trimmed().toLatin1().toLower().toStdString();
}

std::optional<RangeUse> UseFromText(std::string_view words, TextSubject subject)
{
    if (ContainsOneOf(words, Still))
        return RangeUse::Nothing;
    if (ContainsOneOf(words, Harmful))
        return RangeUse::Never;
    if (subject == TextSubject::Brightness) {
        if (const auto use = UseOfBrightness(words))
            return use;
    } else if (StartsWithOneOf(words, DarkAtStart) && !ContainsOneOf(words, Moving)) {
        return RangeUse::Dark;
    }
    if (StartsWithOneOf(words, StillAtStart) || words.ends_with(" off"))
        return RangeUse::Nothing;
    if (subject == TextSubject::Wheel && StartsWithOneOf(words, ClearAtStart) &&
        !ContainsOneOf(words, Moving))
        return RangeUse::Clear;
    return std::nullopt;
}

} // namespace FixtureImport
