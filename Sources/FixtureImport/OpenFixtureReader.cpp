// SPDX-License-Identifier: MIT
#include "FixtureImport/OpenFixtureReader.h"

#include <optional>
#include <utility>

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>

#include "FixtureImport/OpenFixtureChannels.h"
#include "FixtureImport/OpenFixtureMatrix.h"
#include "FixtureModel/LEDFixture.h"

namespace FixtureImport {

namespace {

/// Above real definitions: of templates and pixels, since a short insert makes hundreds of names
/// of them, and each of those may hold the pixel's several times.
constexpr int LongestKey = 200;

/// One mode: its list of keys and inserts becomes a list of channels.
class ModeReading
{
public:
    ModeReading(OpenFixtureMatrix& matrix, OpenFixtureChannels& channels)
        : matrix_(matrix)
        , channels_(channels)
    {}

    DefinitionMode Read(const QJsonObject& mode)
    {
        read_.name = mode[QLatin1String("name")].toString();
        read_.columns = matrix_.Columns();
        read_.rows = matrix_.Rows();
        for (const auto& entry : mode[QLatin1String("channels")].toArray()) {
            if (entry.isObject())
                Insert(entry.toObject());
            else if (TakesAnother())
                AddKey(entry);
        }
        if (!read_.fault && count_ > LEDFixture::MaxChannels)
            Fail(FaultKind::TooManyChannels, QString::number(count_));
        if (read_.fault)
            read_.channels.clear();
        FindCoarseChannels();
        return std::move(read_);
    }

private:
    void Fail(FaultKind kind, const QString& detail)
    {
        if (!read_.fault)
            read_.fault = {kind, detail};
    }

    void Insert(const QJsonObject& insert)
    {
        if (!read_.fault)
            read_.fault = matrix_.Fault();
        if (read_.fault)
            return;
        const QJsonArray templates = insert[QLatin1String("templateChannels")].toArray();
        const QStringList pixels = PixelsOf(insert[QLatin1String("repeatFor")]);
        // A short insert may ask for billions, or for nothing again and again: what is too much is
        // counted and not made.
        const qint64 more = qint64{templates.size()} * pixels.size();
        if (more == 0 || count_ + more > LEDFixture::MaxChannels)
            count_ += more;
        else if (insert[QLatin1String("channelOrder")].toString() == QLatin1String("perChannel")) {
            for (const auto& key : templates) {
                for (const QString& pixel : pixels)
                    AddTemplate(key, pixel);
            }
        } else {
            for (const QString& pixel : pixels) {
                for (const auto& key : templates)
                    AddTemplate(key, pixel);
            }
        }
    }

    [[nodiscard]] QStringList PixelsOf(const QJsonValue& repeatFor)
    {
        QStringList pixels;
        for (const auto& key : repeatFor.toArray()) {
            if (!matrix_.Knows(key.toString()))
                Fail(FaultKind::UnknownPixel, key.toString());
            pixels += key.toString();
        }
        if (!repeatFor.isArray())
            pixels = matrix_.KeysFor(repeatFor.toString());
        if (pixels.isEmpty())
            Fail(FaultKind::UnknownPixel, repeatFor.toString());
        return pixels;
    }

    /// Counts one more channel. Whether it is worth a look: in a mode that has too many or that is
    /// left out already none is.
    [[nodiscard]] bool TakesAnother()
    {
        return ++count_ <= LEDFixture::MaxChannels && !read_.fault;
    }

    void AddKey(const QJsonValue& key)
    {
        if (key.isString())
            Add(key.toString(), channels_.Find(key.toString()));
        else
            Add({}, OpenFixtureChannels::Meaning{});
    }

    void AddTemplate(const QJsonValue& key, const QString& pixel)
    {
        if (!TakesAnother())
            return;
        const QString name = key.toString();
        if (!key.isString())
            Add({}, OpenFixtureChannels::Meaning{});
        else if (name.size() > LongestKey || pixel.size() > LongestKey)
            Fail(FaultKind::UnknownChannel, name);
        else
            Add(OpenFixtureChannels::KeyFor(name, pixel), channels_.Find(name, pixel));
    }

    void Add(const QString& key, const std::optional<OpenFixtureChannels::Meaning>& meaning)
    {
        if (!meaning) {
            Fail(FaultKind::UnknownChannel, key);
            return;
        }
        ModeChannel channel;
        channel.name = key.left(LongestKey);
        channel.channel = meaning->channel;
        channel.fineness = meaning->fineness;
        if (!meaning->pixel.isNull())
            channel.part = PartOf(meaning->pixel);
        read_.channels.push_back(std::move(channel));
    }

    std::int32_t PartOf(const QString& pixel)
    {
        const auto known = parts_.constFind(pixel);
        if (known != parts_.constEnd())
            return *known;
        const auto part = static_cast<std::int32_t>(read_.parts.size());
        read_.parts.push_back({matrix_.CellsOf(pixel)});
        parts_[pixel] = part;
        return part;
    }

    /// A finer byte belongs to the first byte of the same channel of the same pixel.
    void FindCoarseChannels()
    {
        QHash<std::pair<std::int32_t, std::int32_t>, std::int32_t> coarse;
        for (std::size_t i = 0; i < read_.channels.size(); ++i) {
            const ModeChannel& channel = read_.channels[i];
            if (channel.channel >= 0 && channel.fineness == 0)
                coarse[{channel.channel, channel.part}] = static_cast<std::int32_t>(i);
        }
        for (ModeChannel& channel : read_.channels) {
            if (channel.fineness > 0)
                channel.coarse = coarse.value({channel.channel, channel.part}, -1);
        }
    }

    OpenFixtureMatrix& matrix_;
    OpenFixtureChannels& channels_;
    DefinitionMode read_;
    qint64 count_ = 0; ///< of all channels, also of those that no fixture can have
    QHash<QString, std::int32_t> parts_;
};

bool HasCategory(const QJsonObject& fixture, const char* category)
{
    return fixture[QLatin1String("categories")].toArray().contains(QLatin1String(category));
}

void ReadModes(const QJsonObject& fixture, const QByteArray& json, Definition& definition)
{
    OpenFixtureMatrix matrix(fixture[QLatin1String("matrix")].toObject(), json);
    OpenFixtureChannels channels(fixture, matrix, definition);
    for (const auto& mode : fixture[QLatin1String("modes")].toArray()) {
        if (static_cast<std::int32_t>(definition.modes.size()) == MaxModes) {
            definition.modes.emplace_back().fault = {FaultKind::TooManyModes, {}};
            return;
        }
        definition.modes.push_back(ModeReading(matrix, channels).Read(mode.toObject()));
    }
}

} // namespace

OpenFixtureFile ReadOpenFixture(const QByteArray& json)
{
    OpenFixtureFile file;
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        file.fault = {FaultKind::Damaged, error.errorString()};
        return file;
    }
    const QJsonObject fixture = document.object();
    Definition& definition = file.definition;
    definition.name = fixture[QLatin1String("name")].toString();
    definition.manufacturer = fixture[QLatin1String("manufacturerKey")].toString();
    file.redirectTo = fixture[QLatin1String("redirectTo")].toString();
    file.isRenamed = fixture[QLatin1String("reason")].toString() == QLatin1String("FixtureRenamed");
    if (!file.redirectTo.isEmpty())
        return file;
    if (!fixture[QLatin1String("modes")].isArray()) {
        file.fault = {FaultKind::UnknownFormat, {}};
        return file;
    }
    definition.isMachine = HasCategory(fixture, "Smoke") || HasCategory(fixture, "Hazer") ||
                           HasCategory(fixture, "Fan");
    ReadModes(fixture, json, definition);
    if (definition.modes.empty())
        file.fault = {FaultKind::NoModes, {}};
    return file;
}

} // namespace FixtureImport
