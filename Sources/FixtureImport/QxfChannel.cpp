// SPDX-License-Identifier: MIT
#include "FixtureImport/QxfChannel.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "FixtureImport/RangeText.h"

namespace FixtureImport {

namespace {

// ---- Presets of whole channels

struct PresetRow
{
    const char* preset;
    ChannelKind kind;
    Colour colour;
    RangeUse use;
    std::int32_t best;
};
constexpr auto NoColour = Colour::None;
constexpr std::array<PresetRow, 33> Presets{{
    {"IntensityMasterDimmer", ChannelKind::Intensity, NoColour, RangeUse::Bright, 255},
    {"IntensityDimmer", ChannelKind::Intensity, NoColour, RangeUse::Bright, 255},
    {"IntensityRed", ChannelKind::Colour, Colour::Red, RangeUse::Bright, 255},
    {"IntensityGreen", ChannelKind::Colour, Colour::Green, RangeUse::Bright, 255},
    {"IntensityBlue", ChannelKind::Colour, Colour::Blue, RangeUse::Bright, 255},
    {"IntensityCyan", ChannelKind::Colour, Colour::Cyan, RangeUse::Bright, 255},
    {"IntensityMagenta", ChannelKind::Colour, Colour::Magenta, RangeUse::Bright, 255},
    {"IntensityYellow", ChannelKind::Colour, Colour::Yellow, RangeUse::Bright, 255},
    {"IntensityAmber", ChannelKind::Colour, Colour::Amber, RangeUse::Bright, 255},
    {"IntensityWhite", ChannelKind::Colour, Colour::White, RangeUse::Bright, 255},
    {"IntensityUV", ChannelKind::Colour, Colour::Other, RangeUse::Bright, 255},
    {"IntensityIndigo", ChannelKind::Colour, Colour::Other, RangeUse::Bright, 255},
    {"IntensityLime", ChannelKind::Colour, Colour::Other, RangeUse::Bright, 255},
    {"IntensityHue", ChannelKind::Other, NoColour, RangeUse::Rest, 0},
    {"IntensitySaturation", ChannelKind::Other, NoColour, RangeUse::Rest, 0},
    {"IntensityLightness", ChannelKind::Other, NoColour, RangeUse::Bright, 255},
    {"IntensityValue", ChannelKind::Other, NoColour, RangeUse::Bright, 255},
    {"PositionPan", ChannelKind::Other, NoColour, RangeUse::Middle, 128},
    {"PositionTilt", ChannelKind::Other, NoColour, RangeUse::Middle, 128},
    {"PositionXAxis", ChannelKind::Other, NoColour, RangeUse::Middle, 128},
    {"PositionYAxis", ChannelKind::Other, NoColour, RangeUse::Middle, 128},
    {"ColorCTOMixer", ChannelKind::Other, NoColour, RangeUse::Position, 0},
    {"ColorCTBMixer", ChannelKind::Other, NoColour, RangeUse::Position, 0},
    {"ColorCTCMixer", ChannelKind::Other, NoColour, RangeUse::Position, 0},
    {"GoboIndex", ChannelKind::Other, NoColour, RangeUse::Position, 0},
    {"ShutterStrobeSlowFast", ChannelKind::Other, NoColour, RangeUse::Rest, 0},
    {"ShutterStrobeFastSlow", ChannelKind::Other, NoColour, RangeUse::Rest, 255},
    {"ShutterIrisMinToMax", ChannelKind::Other, NoColour, RangeUse::Open, 255},
    {"ShutterIrisMaxToMin", ChannelKind::Other, NoColour, RangeUse::Open, 0},
    {"PrismRotationSlowFast", ChannelKind::Other, NoColour, RangeUse::Rest, 0},
    {"PrismRotationFastSlow", ChannelKind::Other, NoColour, RangeUse::Rest, 255},
    {"NoFunction", ChannelKind::Other, NoColour, RangeUse::Nothing, 0},
    {"", ChannelKind::Other, NoColour, RangeUse::Changes, 0},
}};

const PresetRow& RowOfPreset(const QString& preset)
{
    return *std::ranges::find_if(Presets.begin(), Presets.end() - 1, [&](const PresetRow& row) {
        return preset == QLatin1String(row.preset);
    });
}

void ApplyPreset(QString preset, QxfChannel& channel)
{
    const QLatin1String fine("Fine");
    if (preset.endsWith(fine)) {
        preset.chop(fine.size());
        channel.fineness = 1;
    }
    const PresetRow& row = RowOfPreset(preset);
    channel.subject = preset;
    channel.definition.kind = row.kind;
    channel.definition.colour = row.colour;
    ChannelRange range{0, 255, row.use, row.best, row.use == RangeUse::Bright, {}};
    if (preset.startsWith(QLatin1String("BeamFocus")) ||
        preset.startsWith(QLatin1String("BeamZoom")))
        range.use = RangeUse::Position;
    else if (preset.startsWith(QLatin1String("Speed")))
        range.use = RangeUse::Rest;
    channel.definition.ranges = {range};
}

// ---- Presets of capabilities

struct CapabilityPreset
{
    const char* begin; ///< of its name
    RangeUse use;
};
/// The first that fits counts. Presets that aren't here say what a range looks like, not what it
/// does to the light: its words are read.
constexpr std::array<CapabilityPreset, 16> CapabilityPresets{{
    {"ShutterOpen", RangeUse::Open},
    {"ShutterClose", RangeUse::Dark},
    {"Strobe", RangeUse::Changes},
    {"Pulse", RangeUse::Changes},
    {"Ramp", RangeUse::Changes},
    {"GoboShake", RangeUse::Changes},
    {"Reset", RangeUse::Never},
    {"Lamp", RangeUse::Never},
    {"RotationStop", RangeUse::Nothing},
    {"RotationIndexed", RangeUse::Position},
    {"Rotation", RangeUse::Changes},
    {"PrismEffectOff", RangeUse::Nothing},
    {"PrismEffectOn", RangeUse::Changes},
    {"SilentModeOff", RangeUse::Nothing},
    {"BigToSmall", RangeUse::Position},
    {"SmallToBig", RangeUse::Position},
}};

std::optional<RangeUse> UseOfPreset(QStringView preset)
{
    if (preset.isEmpty())
        return std::nullopt;
    for (const CapabilityPreset& row : CapabilityPresets) {
        if (preset.startsWith(QLatin1String(row.begin)))
            return row.use;
    }
    return std::nullopt;
}

// ---- Channels by group

/// What a channel is for, as its <Group> says.
enum class Group : std::uint8_t
{
    Intensity,
    Shutter,
    Position, ///< pan or tilt
    Speed,
    Beam,
    Wheel, ///< colour, gobo or prism
    Nothing,
    Other
};

struct GroupName
{
    const char* name;
    Group group;
};
constexpr std::array<GroupName, 10> GroupNames{{{"Intensity", Group::Intensity},
                                                {"Shutter", Group::Shutter},
                                                {"Pan", Group::Position},
                                                {"Tilt", Group::Position},
                                                {"Speed", Group::Speed},
                                                {"Beam", Group::Beam},
                                                {"Colour", Group::Wheel},
                                                {"Gobo", Group::Wheel},
                                                {"Prism", Group::Wheel},
                                                {"Nothing", Group::Nothing}}};

Group GroupOf(const QString& name)
{
    for (const GroupName& row : GroupNames) {
        if (name == QLatin1String(row.name))
            return row.group;
    }
    return Group::Other;
}

// ---- Words of names and ranges

/// In the name of an intensity that dims no light.
constexpr Phrases NoBrightness{"fan", "fog", "haz", "smoke", "pump", "speed", "hue", "saturation"};
/// In a range of pan or tilt that is no place.
constexpr Phrases Turning{"rotat", "continu", "speed", "clockwise", "cw", "endless"};
/// In a range of a speed that moves something by itself.
constexpr Phrases Directed{"rotat", "clockwise", "cw", "forward", "backward", "spin"};
/// In the name of a beam's channel that leaves the light on and still wherever it is.
constexpr Phrases BeamPosition{"zoom", "focus", "angle", "edge"};
/// In a range of a dimmer that does more than dim.
constexpr Phrases Running{"strob", "sound",  "auto",  "speed",   "program",  "macro", "puls",
                          "chase", "random", "snake", "fade in", "fade out", "music"};
/// In a range of a dimmer that dims, however few values it has.
constexpr Phrases Dimming{"dim", "bright", "intens", "%", "light", "full", "max"};
/// A narrower range of a dimmer or a colour is one of many programs or settings, unless its words
/// say that it dims, and the lowest one is its rest.
constexpr std::int32_t FewestValues = 64;
/// In a range of an iris that moves.
constexpr Phrases Pulsing{"puls", "random", "fast", "slow"};
/// At the start of a range that dims on a channel of another group, and what there only sets how.
constexpr Phrases Dims{"dimm", "master dim", "intensity"};
constexpr Phrases SetsDimmer{"curve", "speed", "mode", "strob", "set", "linear"};
constexpr Phrases ColourTemperature{"cto", "ctb", "ctc", "temperature", "tint"};

bool Contains(std::string_view words, std::string_view part)
{
    return words.find(part) != std::string_view::npos;
}

/// A channel that says its group, its colour and its ranges.
class GroupedChannel
{
public:
    GroupedChannel(const QString& group, const QString& colour, QxfChannel& channel)
        : group_(GroupOf(group))
        , name_(WordsOf(channel.definition.name))
        , isIris_(Contains(name_, "iris"))
    {
        channel.subject = group + colour;
        const bool isBrightness = group_ == Group::Intensity && !NoBrightness.IsOneIn(name_);
        if (isBrightness) {
            const bool isWhole = colour.isEmpty() || colour == QLatin1String("Generic");
            channel.definition.kind = isWhole ? ChannelKind::Intensity : ChannelKind::Colour;
            channel.definition.colour = isWhole ? Colour::None : ColourFromName(colour);
        }
        kind_ = channel.definition.kind;
    }

    [[nodiscard]] bool IsIris() const { return isIris_; }

    /// The use of a range without a preset that says it.
    void Judge(ChannelRange& range) const
    {
        const std::string words = WordsOf(range.text);
        range.best = InnerValue(range.from, range.to);
        if (isIris_)
            JudgeIris(words, range);
        else if (const auto use = UseFromText(words, Subject()))
            range.use = *use;
        else
            JudgeByGroup(words, range);
    }

private:
    [[nodiscard]] TextSubject Subject() const
    {
        if (group_ == Group::Intensity || group_ == Group::Shutter)
            return TextSubject::Brightness;
        return group_ == Group::Wheel || group_ == Group::Beam ? TextSubject::Wheel
                                                               : TextSubject::Other;
    }

    void JudgeByGroup(std::string_view words, ChannelRange& range) const
    {
        switch (group_) {
        case Group::Intensity:
            JudgeBrightness(words, range);
            break;
        case Group::Position:
            if (!Turning.IsOneIn(words))
                Set(range, RangeUse::Middle, (range.from + range.to + 1) / 2);
            break;
        case Group::Speed:
            if (!Directed.IsOneIn(words))
                Set(range, RangeUse::Rest, range.from);
            break;
        case Group::Beam:
            if (BeamPosition.IsOneIn(name_))
                range.use = RangeUse::Position;
            else // frost, blades
                Set(range, RangeUse::Rest, range.from);
            break;
        case Group::Nothing:
            range.use = RangeUse::Nothing;
            break;
        default:
            JudgeRest(words, range);
            break;
        }
    }

    static void Set(ChannelRange& range, RangeUse use, std::int32_t best)
    {
        range.use = use;
        range.best = best;
    }

    static void SetRising(ChannelRange& range)
    {
        Set(range, RangeUse::Bright, range.to);
        range.rises = true;
    }

    void JudgeBrightness(std::string_view words, ChannelRange& range) const
    {
        if (kind_ == ChannelKind::Other)
            Set(range, RangeUse::Rest, range.from);
        else if (Running.IsOneIn(words))
            range.use = RangeUse::Changes;
        else if (range.to - range.from >= FewestValues || Dimming.IsOneIn(words))
            SetRising(range);
        else if (range.from == 0)
            range.use = RangeUse::Nothing; // "White/clear" of cyan, "--"
    }

    static void JudgeIris(std::string_view words, ChannelRange& range)
    {
        const auto leads = [&](std::string_view first, std::string_view second) {
            const std::size_t at = words.find(first);
            return at != std::string_view::npos && words.find(second, at) != std::string_view::npos;
        };
        const bool opens = leads("min", "max") || leads("small", "big") || leads("clos", "open");
        if (Pulsing.IsOneIn(words))
            range.use = RangeUse::Changes;
        else if (Contains(words, "clos") && !Contains(words, "open"))
            range.use = RangeUse::Dark;
        else
            Set(range, RangeUse::Open, opens ? range.to : range.from);
    }

    void JudgeRest(std::string_view words, ChannelRange& range) const
    {
        if (Dims.OneBegins(words) && !SetsDimmer.IsOneIn(words))
            SetRising(range);
        else if (ColourTemperature.IsOneIn(name_) || Contains(words, "index"))
            range.use = RangeUse::Position;
    }

    Group group_;
    std::string name_; ///< as WordsOf gives it
    bool isIris_;
    ChannelKind kind_ = ChannelKind::Other;
};

// ---- XML

/// A number of 8 bits, `otherwise` for what is none.
std::int32_t ByteOf(QStringView text, std::int32_t otherwise)
{
    std::int32_t number = 0;
    for (const QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9') || number > 255)
            return otherwise;
        number = 10 * number + (c.unicode() - u'0');
    }
    return text.isEmpty() || number > 255 ? otherwise : number;
}

struct Capability
{
    ChannelRange range;
    bool isRange = false;
    bool isColour = false; ///< its preset says so
    std::optional<RangeUse> presetUse;
};

// The reader copies its attributes and their texts when they are still held while it goes on.

QxfAlias AliasIn(const QXmlStreamAttributes& attributes, const ChannelRange& range)
{
    return {range.from, range.to, attributes.value(QLatin1String("Mode")).toString(),
            attributes.value(QLatin1String("Channel")).toString(),
            attributes.value(QLatin1String("With")).toString()};
}

/// What the attributes say. Of the range's use nothing is known yet but what its preset says.
Capability CapabilityIn(const QXmlStreamAttributes& attributes)
{
    Capability read;
    read.range.from = ByteOf(attributes.value(QLatin1String("Min")), -1);
    read.range.to = ByteOf(attributes.value(QLatin1String("Max")), -1);
    read.isRange = read.range.from >= 0 && read.range.from <= read.range.to;
    const auto preset = attributes.value(QLatin1String("Preset"));
    read.isColour = preset.startsWith(QLatin1String("Color"));
    read.presetUse = UseOfPreset(preset);
    return read;
}

Capability ReadCapability(QXmlStreamReader& xml, std::vector<QxfAlias>& aliases)
{
    Capability read = CapabilityIn(xml.attributes());
    while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::EndElement) {
        if (xml.isCharacters()) {
            read.range.text += xml.text();
        } else if (xml.isStartElement()) {
            if (read.isRange && xml.name() == QLatin1String("Alias"))
                aliases.push_back(AliasIn(xml.attributes(), read.range));
            xml.skipCurrentElement();
        }
    }
    read.range.text = read.range.text.trimmed();
    return read;
}

/// The channel's name and default. Its preset, null for none.
QString ReadAttributes(const QXmlStreamAttributes& attributes, ChannelDefinition& channel)
{
    channel.name = attributes.value(QLatin1String("Name")).toString();
    const std::int32_t value = ByteOf(attributes.value(QLatin1String("Default")), -1);
    if (value >= 0)
        channel.defaultValue = value;
    return attributes.value(QLatin1String("Preset")).toString();
}

/// The use of each range, once all of the channel are known.
void JudgeCapabilities(std::vector<Capability>& capabilities, const GroupedChannel& grouped,
                       ChannelDefinition& channel)
{
    channel.ranges.reserve(std::clamp<std::size_t>(capabilities.size(), 1, MaxRanges));
    for (Capability& capability : capabilities) {
        ChannelRange& range = capability.range;
        if (!capability.isRange || channel.ranges.size() == MaxRanges)
            continue;
        // One range alone, or a share of something, is a brightness that shows its colour.
        const bool isMacro = capability.isColour && capabilities.size() > 1 &&
                             !range.text.contains(QLatin1Char('%'));
        if (isMacro && channel.kind != ChannelKind::Other) {
            // Whatever its words are: no brightness.
        } else if (capability.presetUse && !grouped.IsIris()) {
            range.use = *capability.presetUse;
            range.best = InnerValue(range.from, range.to);
        } else {
            grouped.Judge(range);
        }
        channel.ranges.push_back(std::move(range));
    }
    if (channel.ranges.empty())
        grouped.Judge(channel.ranges.emplace_back());
}

} // namespace

QxfChannel ReadQxfChannel(QXmlStreamReader& xml)
{
    QxfChannel channel;
    const QString preset = ReadAttributes(xml.attributes(), channel.definition);
    QString group;
    QString colour;
    std::vector<Capability> capabilities;
    while (xml.readNextStartElement()) {
        // Most of all first.
        if (xml.name() == QLatin1String("Capability")) {
            capabilities.push_back(ReadCapability(xml, channel.aliases));
        } else if (xml.name() == QLatin1String("Group")) {
            channel.fineness = ByteOf(xml.attributes().value(QLatin1String("Byte")), 0) > 0 ? 1 : 0;
            group = xml.readElementText(QXmlStreamReader::SkipChildElements);
        } else if (xml.name() == QLatin1String("Colour")) {
            colour = xml.readElementText(QXmlStreamReader::SkipChildElements);
        } else {
            xml.skipCurrentElement();
        }
    }
    if (!preset.isNull())
        ApplyPreset(preset, channel);
    else
        JudgeCapabilities(capabilities, GroupedChannel(group, colour, channel), channel.definition);
    return channel;
}

} // namespace FixtureImport
