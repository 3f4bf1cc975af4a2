// SPDX-License-Identifier: MIT
#include "FixtureImport/OpenFixtureValues.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <QJsonArray>

#include "FixtureImport/RangeText.h"

namespace FixtureImport {

namespace {

/// How a capability's use follows from its type.
enum class TypeRule : std::uint8_t
{
    Fixed,   ///< always the same
    Shutter, ///< from its shutterEffect
    Dims,    ///< from its brightness
    Turns,   ///< still at an angle, or at a speed of nothing
    Slot,    ///< from the slot of its wheel
    Worded   ///< from its words
};

struct TypeRow
{
    const char* type;
    TypeRule rule;
    RangeUse use;         ///< of the rule Fixed, and where a rule finds nothing
    const char* property; ///< whose least value is the best one; for Open its greatest
};
constexpr std::array<TypeRow, 41> Types{{
    {"NoFunction", TypeRule::Fixed, RangeUse::Nothing, ""},
    {"ShutterStrobe", TypeRule::Shutter, RangeUse::Changes, ""},
    {"StrobeSpeed", TypeRule::Fixed, RangeUse::Rest, "speed"},
    {"StrobeDuration", TypeRule::Fixed, RangeUse::Rest, "duration"},
    {"Intensity", TypeRule::Dims, RangeUse::Bright, "brightness"},
    {"ColorIntensity", TypeRule::Dims, RangeUse::Bright, "brightness"},
    {"ColorPreset", TypeRule::Worded, RangeUse::Changes, ""},
    {"ColorTemperature", TypeRule::Fixed, RangeUse::Position, ""},
    {"Pan", TypeRule::Fixed, RangeUse::Middle, ""},
    {"Tilt", TypeRule::Fixed, RangeUse::Middle, ""},
    {"PanContinuous", TypeRule::Turns, RangeUse::Changes, "speed"},
    {"TiltContinuous", TypeRule::Turns, RangeUse::Changes, "speed"},
    {"PanTiltSpeed", TypeRule::Fixed, RangeUse::Rest, ""},
    {"WheelSlot", TypeRule::Slot, RangeUse::Changes, ""},
    {"WheelShake", TypeRule::Fixed, RangeUse::Changes, ""},
    {"WheelSlotRotation", TypeRule::Turns, RangeUse::Changes, "speed"},
    {"WheelRotation", TypeRule::Turns, RangeUse::Changes, "speed"},
    {"Effect", TypeRule::Worded, RangeUse::Changes, ""},
    {"EffectSpeed", TypeRule::Fixed, RangeUse::Rest, "speed"},
    {"EffectDuration", TypeRule::Fixed, RangeUse::Rest, "duration"},
    {"EffectParameter", TypeRule::Fixed, RangeUse::Rest, "parameter"},
    {"SoundSensitivity", TypeRule::Fixed, RangeUse::Rest, "soundSensitivity"},
    {"BeamAngle", TypeRule::Fixed, RangeUse::Position, ""},
    {"BeamPosition", TypeRule::Fixed, RangeUse::Position, ""},
    {"Focus", TypeRule::Fixed, RangeUse::Position, ""},
    {"Zoom", TypeRule::Fixed, RangeUse::Position, ""},
    {"Iris", TypeRule::Fixed, RangeUse::Open, "openPercent"},
    {"IrisEffect", TypeRule::Fixed, RangeUse::Changes, ""},
    {"Frost", TypeRule::Fixed, RangeUse::Rest, "frostIntensity"},
    {"FrostEffect", TypeRule::Fixed, RangeUse::Changes, ""},
    {"Prism", TypeRule::Fixed, RangeUse::Changes, ""},
    {"PrismRotation", TypeRule::Turns, RangeUse::Changes, "speed"},
    {"BladeInsertion", TypeRule::Fixed, RangeUse::Rest, "insertion"},
    {"BladeRotation", TypeRule::Fixed, RangeUse::Position, ""},
    {"BladeSystemRotation", TypeRule::Fixed, RangeUse::Position, ""},
    {"FogOutput", TypeRule::Fixed, RangeUse::Rest, "fogOutput"},
    {"FogType", TypeRule::Fixed, RangeUse::Rest, ""},
    {"Rotation", TypeRule::Turns, RangeUse::Changes, "speed"},
    {"Speed", TypeRule::Fixed, RangeUse::Rest, "speed"},
    {"Time", TypeRule::Fixed, RangeUse::Rest, "time"},
    {"Generic", TypeRule::Worded, RangeUse::Changes, ""},
}};
/// Maintenance, fog, and types of times to come.
constexpr TypeRow OtherType{"", TypeRule::Worded, RangeUse::Changes, ""};

const TypeRow& RowOfType(const QString& type)
{
    const auto* row = std::ranges::find_if(
        Types, [&](const TypeRow& known) { return type == QLatin1String(known.type); });
    return row == Types.end() ? OtherType : *row;
}

struct Keyword
{
    const char* word;
    double amount;
};
/// The words that stand for percents, without those of nothing.
constexpr std::array<Keyword, 18> Keywords{{
    {"slow", 1},
    {"dark", 1},
    {"low", 1},
    {"weak", 1},
    {"short", 1},
    {"near", 1},
    {"narrow", 1},
    {"small", 1},
    {"fast", 100},
    {"bright", 100},
    {"high", 100},
    {"strong", 100},
    {"long", 100},
    {"far", 100},
    {"wide", 100},
    {"big", 100},
    {"in", 100},
    {"open", 100},
}};

/// How much of something "50%", "2.5Hz", "slow CCW" or "off" is, whatever the unit: amounts of one
/// capability have the same one. Directions don't count.
double AmountOf(const QJsonValue& value)
{
    if (value.isDouble())
        return std::abs(value.toDouble());
    const QString text = value.toString();
    const QString word = text.section(QLatin1Char(' '), 0, 0);
    for (const Keyword& known : Keywords) {
        if (word == QLatin1String(known.word))
            return known.amount;
    }
    int digits = 0;
    while (digits < text.size() && (text[digits].isDigit() || text[digits] == QLatin1Char('.') ||
                                    text[digits] == QLatin1Char('-')))
        ++digits;
    return std::abs(text.left(digits).toDouble());
}

/// The amounts at both ends of a capability's range; nothing when it doesn't give them.
std::optional<std::pair<double, double>> AmountsOf(const QJsonObject& capability,
                                                   const QString& property)
{
    if (capability.contains(property)) {
        const double amount = AmountOf(capability[property]);
        return std::pair(amount, amount);
    }
    const QString start = property + QLatin1String("Start");
    if (property.isEmpty() || !capability.contains(start))
        return std::nullopt;
    return std::pair(AmountOf(capability[start]),
                     AmountOf(capability[property + QLatin1String("End")]));
}

QString TextOf(const QJsonObject& capability)
{
    for (const auto* name : {"comment", "effectName", "shutterEffect", "effectPreset"}) {
        QString text = capability[QLatin1String(name)].toString();
        if (!text.isEmpty())
            return text;
    }
    return {};
}

/// One capability while it becomes a range, or two where one end of it is still.
class CapabilityReading
{
public:
    CapabilityReading(const QJsonObject& capability, const QJsonObject& wheels,
                      const QString& channelKey, ChannelRange range)
        : capability_(capability)
        , wheels_(wheels)
        , channelKey_(channelKey)
        , range_(std::move(range))
    {}

    void ReadInto(std::vector<ChannelRange>& ranges)
    {
        Read();
        if (stillEnd_)
            ranges.push_back(std::move(*stillEnd_));
        ranges.push_back(std::move(range_));
    }

private:
    void Read()
    {
        const TypeRow& row = RowOfType(capability_[QLatin1String("type")].toString());
        range_.text = TextOf(capability_);
        range_.use = row.use;
        range_.best = InnerValue(range_.from, range_.to);
        const auto amounts = AmountsOf(capability_, QLatin1String(row.property));
        switch (row.rule) {
        case TypeRule::Fixed:
            ReadAmounts(amounts);
            break;
        case TypeRule::Shutter:
            ReadShutter();
            break;
        case TypeRule::Dims:
            ReadBrightness(amounts.value_or(std::pair(0.0, 100.0)));
            break;
        case TypeRule::Turns:
            ReadTurning(amounts);
            break;
        case TypeRule::Slot:
            ReadSlot();
            break;
        case TypeRule::Worded:
            ReadWords();
            break;
        }
    }

    void ReadAmounts(const std::optional<std::pair<double, double>>& amounts)
    {
        if (range_.use == RangeUse::Middle)
            range_.best = (range_.from + range_.to + 1) / 2;
        else if (range_.use == RangeUse::Rest && !amounts)
            range_.best = range_.from;
        if (!amounts)
            return;
        if (amounts->first != amounts->second)
            range_.best = (amounts->first < amounts->second) == (range_.use == RangeUse::Rest)
                              ? range_.from
                              : range_.to;
        if (range_.use == RangeUse::Rest)
            TakeStillEnd(*amounts);
        else if (range_.use == RangeUse::Open && amounts->first == 0 && amounts->second == 0)
            range_.use = RangeUse::Dark;
    }

    /// Where the amount is nothing at one end alone, only that value is still: the definition's
    /// default may well be another one of the range.
    void TakeStillEnd(std::pair<double, double> amounts)
    {
        if (amounts.first != 0 && amounts.second != 0)
            return;
        const bool isAtStart = amounts.first == 0;
        if (amounts.first == amounts.second || range_.from == range_.to) {
            range_.use = RangeUse::Nothing;
            return;
        }
        const std::int32_t end = isAtStart ? range_.from : range_.to;
        stillEnd_ = ChannelRange{end, end, RangeUse::Nothing, end, false, range_.text};
        (isAtStart ? range_.from : range_.to) += isAtStart ? 1 : -1;
        range_.best = isAtStart ? range_.from : range_.to;
    }

    void ReadShutter()
    {
        const QString effect = capability_[QLatin1String("shutterEffect")].toString();
        if (effect == QLatin1String("Open"))
            range_.use = RangeUse::Open;
        else if (effect == QLatin1String("Closed"))
            range_.use = RangeUse::Dark;
    }

    void ReadBrightness(std::pair<double, double> brightness)
    {
        range_.rises = brightness.first < brightness.second;
        if (brightness.first == brightness.second)
            range_.use = brightness.first > 0 ? RangeUse::Open : RangeUse::Dark;
        else
            range_.best = range_.rises ? range_.to : range_.from;
    }

    void ReadTurning(const std::optional<std::pair<double, double>>& speeds)
    {
        const bool hasAngle = capability_.contains(QLatin1String("angle")) ||
                              capability_.contains(QLatin1String("angleStart"));
        if (hasAngle)
            range_.use = RangeUse::Position;
        else if (speeds)
            TakeStillEnd(*speeds);
    }

    void ReadSlot()
    {
        const QJsonValue wheel = capability_[QLatin1String("wheel")];
        const QString name = wheel.isString() ? wheel.toString() : channelKey_;
        const QJsonArray places = wheels_[name].toObject()[QLatin1String("slots")].toArray();
        const double number = capability_[QLatin1String("slotNumber")].toDouble();
        const int index =
            number >= 1 && number <= static_cast<int>(places.size()) ? static_cast<int>(number) : 0;
        const QJsonObject slot = index > 0 ? places[index - 1].toObject() : QJsonObject();
        if (number == index && slot[QLatin1String("type")].toString() == QLatin1String("Open"))
            range_.use = RangeUse::Clear;
        if (range_.text.isEmpty())
            range_.text = slot[QLatin1String("name")].toString();
    }

    void ReadWords()
    {
        const bool isColour = capability_.contains(QLatin1String("colors")) ||
                              capability_[QLatin1String("type")] == QLatin1String("ColorPreset");
        const auto use =
            UseFromText(WordsOf(range_.text), isColour ? TextSubject::Wheel : TextSubject::Other);
        range_.use = use.value_or(range_.use);
    }

    const QJsonObject& capability_;
    const QJsonObject& wheels_;
    const QString& channelKey_;
    ChannelRange range_;
    std::optional<ChannelRange> stillEnd_;
};

/// The bytes of a channel's values in the definition: as many as the channel has, or as it says.
int ResolutionOf(const QJsonObject& channel)
{
    const QString given = channel[QLatin1String("dmxValueResolution")].toString();
    if (given == QLatin1String("8bit"))
        return 1;
    if (given == QLatin1String("16bit"))
        return 2;
    if (given == QLatin1String("24bit"))
        return 3;
    const auto fine = channel[QLatin1String("fineChannelAliases")].toArray().size();
    return static_cast<int>(std::clamp<qsizetype>(fine + 1, 1, 4));
}

/// Two bytes of a value, the first one above.
std::int32_t TwoBytesOf(double value, int resolution)
{
    const double scaled = std::floor(value * std::pow(256.0, 2 - resolution));
    return static_cast<std::int32_t>(std::clamp(scaled, 0.0, 65'535.0));
}

void ReadDefault(const QJsonObject& json, int resolution, ChannelDefinition& channel)
{
    const QJsonValue value = json[QLatin1String("defaultValue")];
    std::int32_t twoBytes = 0;
    if (value.isDouble()) {
        twoBytes = TwoBytesOf(value.toDouble(), resolution);
    } else if (value.isString() && value.toString().endsWith(QLatin1Char('%'))) {
        twoBytes = TwoBytesOf(AmountOf(value) * 655.35, 2);
    } else {
        return;
    }
    channel.defaultValue = twoBytes / 256;
    channel.defaultFine = twoBytes % 256;
}

bool ReadLimits(const QJsonObject& capability, int resolution, ChannelRange& range)
{
    const QJsonArray limits = capability[QLatin1String("dmxRange")].toArray();
    if (limits.size() != 2)
        return false;
    range.from = TwoBytesOf(limits[0].toDouble(), resolution) / 256;
    range.to = TwoBytesOf(limits[1].toDouble(), resolution) / 256;
    return range.from <= range.to;
}

/// A channel is of the kind that its capabilities show: one colour, or brightness with whatever
/// else; two colours on one channel are an effect.
void NoteKind(const QJsonObject& capability, ChannelDefinition& channel)
{
    const QString type = capability[QLatin1String("type")].toString();
    if (type == QLatin1String("ColorIntensity")) {
        const Colour colour = ColourFromName(capability[QLatin1String("color")].toString());
        const bool another = channel.kind == ChannelKind::Colour && channel.colour != colour;
        channel.kind = ChannelKind::Colour;
        channel.colour = another ? Colour::Other : colour;
    } else if (type == QLatin1String("Intensity") && channel.kind == ChannelKind::Other) {
        channel.kind = ChannelKind::Intensity;
    }
}

/// Hue and saturation have no type of their own and are written as brightness.
bool IsHueOrSaturation(const QString& key)
{
    return key.contains(QLatin1String("hue"), Qt::CaseInsensitive) ||
           key.contains(QLatin1String("saturation"), Qt::CaseInsensitive);
}

QJsonArray CapabilitiesOf(const QJsonObject& channel)
{
    if (channel[QLatin1String("capability")].isObject())
        return {channel[QLatin1String("capability")]};
    return channel[QLatin1String("capabilities")].toArray();
}

} // namespace

ChannelDefinition ReadOpenFixtureChannel(const QString& key, const QJsonObject& channel,
                                         const QJsonObject& wheels)
{
    ChannelDefinition read;
    read.name = channel[QLatin1String("name")].toString(key);
    const int resolution = ResolutionOf(channel);
    ReadDefault(channel, resolution, read);
    const QJsonArray capabilities = CapabilitiesOf(channel);
    for (const auto& value : capabilities) {
        if (read.ranges.size() >= MaxRanges)
            break;
        const QJsonObject capability = value.toObject();
        ChannelRange range;
        if (capabilities.size() > 1 && !ReadLimits(capability, resolution, range))
            continue;
        CapabilityReading(capability, wheels, key, std::move(range)).ReadInto(read.ranges);
        NoteKind(capability, read);
    }
    if (read.kind == ChannelKind::Intensity && IsHueOrSaturation(key)) {
        read.kind = ChannelKind::Other;
        read.ranges = {{0, 255, RangeUse::Rest, 0, false, {}}};
    }
    if (read.ranges.empty())
        read.ranges.push_back({});
    return read;
}

QJsonObject CapabilityAt(const QJsonObject& channel, std::int32_t value)
{
    const int resolution = ResolutionOf(channel);
    for (const auto& candidate : CapabilitiesOf(channel)) {
        ChannelRange range;
        QJsonObject capability = candidate.toObject();
        if (ReadLimits(capability, resolution, range) && range.from <= value && value <= range.to)
            return capability;
    }
    return {};
}

} // namespace FixtureImport
