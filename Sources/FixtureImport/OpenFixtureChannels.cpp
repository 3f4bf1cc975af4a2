// SPDX-License-Identifier: MIT
#include "FixtureImport/OpenFixtureChannels.h"

#include <QJsonArray>

#include "FixtureImport/OpenFixtureValues.h"
#include "FixtureImport/SteadyValue.h"

namespace FixtureImport {

namespace {

/// Above real definitions, since each key of a mode may have to be held against every template,
/// also against those that stand for second bytes or are switched.
constexpr int MaxTemplates = 1000;

const QLatin1String PixelVariable("$pixelKey");

/// The part of `key` in the place of the variable; null when the key isn't made of the template. A
/// template with the variable twice is used through inserts only.
QString PixelIn(const QString& key, const QString& templateKey)
{
    const auto at = templateKey.indexOf(PixelVariable);
    const QStringView before = QStringView(templateKey).left(at);
    const QStringView behind = QStringView(templateKey).mid(at + PixelVariable.size());
    const auto length = key.size() - static_cast<int>(before.size());
    if (at < 0 || behind.contains(PixelVariable) || length < behind.size() ||
        !key.startsWith(before) || !key.endsWith(behind))
        return {};
    return key.mid(at, length - static_cast<int>(behind.size()));
}

} // namespace

OpenFixtureChannels::OpenFixtureChannels(const QJsonObject& fixture,
                                         const OpenFixtureMatrix& matrix, Definition& definition)
    : matrix_(matrix)
{
    const QJsonObject wheels = fixture[QLatin1String("wheels")].toObject();
    ReadChannels(fixture[QLatin1String("availableChannels")].toObject(), wheels, channels_,
                 switched_, definition);
    const QJsonObject templates = fixture[QLatin1String("templateChannels")].toObject();
    ReadChannels(templates, wheels, templates_, switchedTemplates_, definition);
    if (templates_.size() + switchedTemplates_.size() > MaxTemplates) {
        templates_.clear();
        switchedTemplates_.clear();
    }
}

void OpenFixtureChannels::ReadChannels(const QJsonObject& channels, const QJsonObject& wheels,
                                       Targets& targets, Aliases& switched, Definition& definition)
{
    for (auto entry = channels.begin(); entry != channels.end(); ++entry) {
        const QJsonObject channel = entry.value().toObject();
        const auto index = static_cast<std::int32_t>(definition.channels.size());
        definition.channels.push_back(ReadOpenFixtureChannel(entry.key(), channel, wheels));
        targets[entry.key()] = {index, 0};
        std::int32_t fineness = 0;
        for (const auto& alias : channel[QLatin1String("fineChannelAliases")].toArray())
            targets[alias.toString()] = {index, ++fineness};
        NoteSwitched(channel, definition.channels.back(), switched);
    }
}

void OpenFixtureChannels::NoteSwitched(const QJsonObject& channel, const ChannelDefinition& read,
                                       Aliases& switched)
{
    // The channel will hold its steady value, so the aliases mean one channel each.
    const SteadyValue steady = SteadyValueOf(read);
    const std::int32_t value = std::max(0, steady.value);
    const QJsonObject aliases =
        CapabilityAt(channel, value)[QLatin1String("switchChannels")].toObject();
    for (auto alias = aliases.begin(); alias != aliases.end(); ++alias)
        switched[alias.key()] = alias.value().toString();
}

QString OpenFixtureChannels::KeyFor(QString templateKey, const QString& pixel)
{
    return templateKey.replace(PixelVariable, pixel);
}

std::optional<OpenFixtureChannels::Meaning> OpenFixtureChannels::Find(const QString& key)
{
    const auto known = found_.constFind(key);
    if (known != found_.constEnd())
        return *known;
    std::optional<Meaning> meaning = FindDirect(key);
    if (!meaning) {
        const auto alias = switched_.constFind(key);
        if (alias != switched_.constEnd())
            meaning = alias->isEmpty() ? Meaning{} : FindDirect(*alias);
    }
    found_[key] = meaning;
    return meaning;
}

/// A channel or a resolved template, but no alias: an alias doesn't lead to another one.
std::optional<OpenFixtureChannels::Meaning> OpenFixtureChannels::FindDirect(const QString& key)
{
    std::optional<Meaning> meaning = FindByTemplate(key);
    // A channel of its own may take the place of a template for one pixel.
    const auto own = channels_.constFind(key);
    if (own != channels_.constEnd())
        meaning = Meaning{own->channel, own->fineness, meaning ? meaning->pixel : QString()};
    return meaning;
}

std::optional<OpenFixtureChannels::Meaning> OpenFixtureChannels::FindByTemplate(const QString& key)
{
    for (auto entry = templates_.constBegin(); entry != templates_.constEnd(); ++entry) {
        const QString pixel = PixelIn(key, entry.key());
        if (matrix_.Knows(pixel))
            return Meaning{entry->channel, entry->fineness, pixel};
    }
    for (auto entry = switchedTemplates_.constBegin(); entry != switchedTemplates_.constEnd();
         ++entry) {
        const QString pixel = PixelIn(key, entry.key());
        if (matrix_.Knows(pixel))
            return Find(entry.key(), pixel);
    }
    return std::nullopt;
}

std::optional<OpenFixtureChannels::Meaning> OpenFixtureChannels::Find(const QString& templateKey,
                                                                      const QString& pixel)
{
    const auto own = channels_.constFind(KeyFor(templateKey, pixel));
    if (own != channels_.constEnd())
        return Meaning{own->channel, own->fineness, pixel};
    const auto direct = templates_.constFind(templateKey);
    if (direct != templates_.constEnd())
        return Meaning{direct->channel, direct->fineness, pixel};
    const auto alias = switchedTemplates_.constFind(templateKey);
    if (alias == switchedTemplates_.constEnd())
        return std::nullopt;
    if (alias->isEmpty())
        return Meaning{};
    const auto target = templates_.constFind(*alias);
    if (target != templates_.constEnd())
        return Meaning{target->channel, target->fineness, pixel};
    const auto whole = channels_.constFind(*alias);
    return whole == channels_.constEnd()
               ? std::nullopt
               : std::optional(Meaning{whole->channel, whole->fineness, pixel});
}

} // namespace FixtureImport
