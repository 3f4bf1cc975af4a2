// SPDX-License-Identifier: MIT
#include "FixtureImport/Conversion.h"

#include <algorithm>
#include <utility>

#include <QString>

#include "FixtureImport/PixelSearch.h"
#include "FixtureImport/SteadyValue.h"

namespace FixtureImport {

namespace {

// Where a definition lacks a name. They go into libraries and documents, which know a fixture by
// its names, so they are the same in every language.
const QString UnknownManufacturer = QStringLiteral("Unknown manufacturer");
const QString UnnamedFixture = QStringLiteral("Unnamed fixture");
const QString UnnamedMode = QStringLiteral("Standard");

/// Gives each channel of one mode what it gets.
class ModeConversion
{
public:
    ModeConversion(const Definition& definition, const DefinitionMode& mode,
                   const FoundPixels& pixels)
        : definition_(definition)
        , mode_(mode)
        , pixels_(pixels)
    {}

    [[nodiscard]] std::vector<ImportedChannel> Channels() const
    {
        std::vector<ImportedChannel> channels;
        channels.reserve(mode_.channels.size());
        for (std::size_t i = 0; i < mode_.channels.size(); ++i)
            channels.push_back(ChannelAt(i));
        return channels;
    }

private:
    [[nodiscard]] ImportedChannel ChannelAt(std::size_t index) const
    {
        const ModeChannel& channel = mode_.channels[index];
        const FoundPixels::Use& use = pixels_.uses[index];
        ImportedChannel imported;
        imported.name = CleanName(channel.name, {});
        if (use.cell >= 0) {
            imported.reason = ChannelReason::Pixel;
            imported.pixel = use.cell;
            imported.component = use.component;
            return imported;
        }
        if (channel.channel < 0)
            return Constant(std::move(imported), 0, ChannelReason::Unused);
        if (channel.fineness > 0)
            return FineChannel(std::move(imported), channel);
        const SteadyValue value = ValueOf(channel);
        if (value.range)
            imported.range = CleanName(value.range->text, {});
        return Constant(std::move(imported), value.value, value.reason);
    }

    [[nodiscard]] ImportedChannel FineChannel(ImportedChannel imported,
                                              const ModeChannel& channel) const
    {
        const bool hasCoarse = channel.coarse >= 0;
        if (hasCoarse && pixels_.uses[static_cast<std::size_t>(channel.coarse)].cell >= 0)
            return Constant(std::move(imported), 0, ChannelReason::FineOfPixel);
        const SteadyValue value =
            ValueOf(hasCoarse ? mode_.channels[static_cast<std::size_t>(channel.coarse)] : channel);
        return value.reason == ChannelReason::Free
                   ? imported
                   : Constant(std::move(imported), value.fine, ChannelReason::Fine);
    }

    /// What the first byte of a channel outside of all pixels holds.
    [[nodiscard]] SteadyValue ValueOf(const ModeChannel& channel) const
    {
        const ChannelDefinition& definition =
            definition_.channels[static_cast<std::size_t>(channel.channel)];
        if (definition.kind == ChannelKind::Colour)
            return {0, 0, ChannelReason::OtherColour, nullptr};
        if (definition.kind == ChannelKind::Intensity && channel.part >= 0 &&
            !pixels_.litParts[static_cast<std::size_t>(channel.part)])
            return {0, 0, ChannelReason::OtherPart, nullptr};
        return SteadyValueOf(definition);
    }

    [[nodiscard]] static ImportedChannel Constant(ImportedChannel imported, std::int32_t value,
                                                  ChannelReason reason)
    {
        imported.value = value;
        imported.reason = reason;
        return imported;
    }

    const Definition& definition_;
    const DefinitionMode& mode_;
    const FoundPixels& pixels_;
};

/// As a library's reader orders them: the constants, then the free channels.
StaticChannelList ConstantsOf(const std::vector<ImportedChannel>& channels)
{
    StaticChannelList list;
    for (const bool free : {false, true}) {
        for (std::size_t i = 0; i < channels.size(); ++i) {
            const ImportedChannel& channel = channels[i];
            if (channel.pixel < 0 && (channel.value == StaticChannel::Unassigned) == free)
                list.push_back({static_cast<std::int32_t>(i) + 1, channel.value});
        }
    }
    return list;
}

ImportFault FaultOf(const DefinitionMode& mode)
{
    if (mode.fault)
        return mode.fault;
    if (mode.channels.empty())
        return {FaultKind::NoChannels, {}};
    if (mode.channels.size() > static_cast<std::size_t>(LEDFixture::MaxChannels))
        return {FaultKind::TooManyChannels, QString::number(mode.channels.size())};
    return {};
}

ImportedMode ConvertMode(const Definition& definition, const DefinitionMode& mode,
                         const ImportedDefinition& names)
{
    ImportedMode imported;
    imported.name = CleanName(mode.name, UnnamedMode);
    imported.fault = FaultOf(mode);
    if (imported.fault)
        return imported;
    PixelSearchResult found = FindPixels(definition, mode);
    imported.fault = found.fault;
    if (!found.pixels)
        return imported;
    imported.channels = ModeConversion(definition, mode, *found.pixels).Channels();
    imported.placed = found.pixels->placed;
    imported.endsBeyondReach = found.pixels->map.GetHighestChannel() >= LEDFixture::MaxChannels;
    const QString product = QStringLiteral("%1 - %2").arg(names.name, imported.name);
    imported.fixture.emplace(names.manufacturer.toStdWString(), product.toStdWString(),
                             std::move(found.pixels->map), 0,
                             static_cast<std::int32_t>(mode.channels.size()));
    imported.fixture->staticChannels = ConstantsOf(imported.channels);
    return imported;
}

/// Names of nearly all fixtures need no change, and there are thousands: words of ASCII, one blank
/// between them.
bool IsPlainName(const QString& name)
{
    bool isBehindBlank = true;
    for (const QChar c : name) {
        const bool isBlank = c == QLatin1Char(' ');
        if (c < QLatin1Char(' ') || c > QLatin1Char('~') || c == QLatin1Char('&') ||
            (isBlank && isBehindBlank))
            return false;
        isBehindBlank = isBlank;
    }
    return !isBehindBlank;
}

} // namespace

QString CleanName(const QString& name, const QString& otherwise, int longest)
{
    if (name.isEmpty())
        return otherwise;
    if (name.size() <= longest && IsPlainName(name))
        return name;
    QString clean;
    for (const QChar c : name.left(longest)) {
        const bool isPlain = c.isPrint() || c.isHighSurrogate() || c.isLowSurrogate();
        clean += isPlain ? c : QLatin1Char(' ');
    }
    // Half of a surrogate pair would come back from a library's file as another character, and so
    // would what looks like a character reference.
    clean = QString::fromUtf8(clean.toUtf8()).simplified();
    clean.replace(QLatin1String("&#"), QLatin1String("& #"));
    return clean.isEmpty() ? otherwise : clean;
}

ImportedDefinition Convert(const Definition& definition)
{
    ImportedDefinition imported;
    imported.manufacturer = CleanName(definition.manufacturer, UnknownManufacturer);
    imported.name = CleanName(definition.name, UnnamedFixture);
    imported.modes.reserve(definition.modes.size());
    for (const DefinitionMode& mode : definition.modes)
        imported.modes.push_back(ConvertMode(definition, mode, imported));
    return imported;
}

} // namespace FixtureImport
