// SPDX-License-Identifier: MIT
#include "FixtureImport/QxfReader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QHash>
#include <QXmlStreamReader>

#include "FixtureImport/QxfChannel.h"
#include "FixtureImport/SteadyValue.h"
#include "FixtureModel/LEDFixture.h"

namespace FixtureImport {

namespace {

struct Size
{
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// A mode as the file has it.
struct ModeText
{
    QString name;
    std::vector<QString> channels; ///< by number; null where the mode names none
    std::vector<std::vector<std::int32_t>> heads;
    std::optional<Size> layout;
    std::int32_t highest = -1; ///< number of a channel
};

/// The channel of this name in a mode gives way to another one.
struct Replacement
{
    QString channel;
    ModeChannel with;
};

class Reading
{
public:
    explicit Reading(const QByteArray& text)
        : xml_(text)
    {}

    QxfFile Read()
    {
        if (!xml_.readNextStartElement() || xml_.name() != QLatin1String("FixtureDefinition")) {
            file_.fault = xml_.hasError() ? Damage() : ImportFault{FaultKind::UnknownFormat, {}};
            return std::move(file_);
        }
        while (xml_.readNextStartElement())
            ReadPart();
        // What follows the last element of a file that was cut off is missing.
        while (!xml_.atEnd())
            xml_.readNext();
        if (xml_.hasError()) {
            file_ = {};
            file_.fault = Damage();
            return std::move(file_);
        }
        FindReplacements();
        for (const ModeText& mode : modes_)
            file_.definition.modes.push_back(ToMode(mode));
        if (tooManyModes_)
            file_.definition.modes.emplace_back().fault = {FaultKind::TooManyModes, {}};
        if (file_.definition.modes.empty())
            file_.fault = {FaultKind::NoModes, {}};
        return std::move(file_);
    }

private:
    [[nodiscard]] ImportFault Damage() const
    {
        return {FaultKind::Damaged, QStringLiteral("%1 (%2:%3)")
                                        .arg(xml_.errorString())
                                        .arg(xml_.lineNumber())
                                        .arg(xml_.columnNumber())};
    }

    [[nodiscard]] QString Text()
    {
        return xml_.readElementText(QXmlStreamReader::SkipChildElements);
    }

    // ---- The file's elements

    void ReadPart()
    {
        const auto name = xml_.name();
        if (name == QLatin1String("Manufacturer")) {
            file_.definition.manufacturer = Text();
        } else if (name == QLatin1String("Model")) {
            file_.definition.name = Text();
        } else if (name == QLatin1String("Type")) {
            const QString type = Text();
            file_.definition.isMachine = type == QLatin1String("Smoke") ||
                                         type == QLatin1String("Hazer") ||
                                         type == QLatin1String("Fan");
        } else if (name == QLatin1String("Channel")) {
            ReadChannel();
        } else if (name == QLatin1String("Mode")) {
            ReadMode();
        } else if (name == QLatin1String("Physical")) {
            layout_ = ReadLayout();
        } else {
            xml_.skipCurrentElement();
        }
    }

    void ReadChannel()
    {
        QxfChannel channel = ReadQxfChannel(xml_);
        const auto index = static_cast<std::int32_t>(channels_.size());
        byName_.insert(channel.definition.name, index);
        file_.definition.channels.push_back(std::move(channel.definition));
        if (!channel.aliases.empty())
            switching_.push_back(index);
        channels_.push_back(std::move(channel));
    }

    void ReadMode()
    {
        if (static_cast<std::int32_t>(modes_.size()) == MaxModes) {
            tooManyModes_ = true;
            xml_.skipCurrentElement();
            return;
        }
        ModeText& mode = modes_.emplace_back();
        mode.name = xml_.attributes().value(QLatin1String("Name")).toString();
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("Channel"))
                ReadModeChannel(mode);
            else if (xml_.name() == QLatin1String("Head"))
                mode.heads.push_back(ReadHead());
            else if (xml_.name() == QLatin1String("Physical"))
                mode.layout = ReadLayout();
            else
                xml_.skipCurrentElement();
        }
    }

    void ReadModeChannel(ModeText& mode)
    {
        bool isNumber = false;
        const int number = xml_.attributes().value(QLatin1String("Number")).toInt(&isNumber);
        const QString name = Text();
        if (!isNumber || number < 0)
            return;
        mode.highest = std::max(mode.highest, number);
        if (number >= LEDFixture::MaxChannels)
            return;
        const auto index = static_cast<std::size_t>(number);
        if (mode.channels.size() <= index)
            mode.channels.resize(index + 1);
        mode.channels[index] = name;
    }

    [[nodiscard]] std::vector<std::int32_t> ReadHead()
    {
        std::vector<std::int32_t> head;
        while (xml_.readNextStartElement()) {
            bool isNumber = false;
            const int number = Text().toInt(&isNumber);
            if (isNumber && number >= 0 && number < LEDFixture::MaxChannels)
                head.push_back(number);
        }
        return head;
    }

    [[nodiscard]] std::optional<Size> ReadLayout()
    {
        std::optional<Size> layout;
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("Layout"))
                layout = Size{xml_.attributes().value(QLatin1String("Width")).toInt(),
                              xml_.attributes().value(QLatin1String("Height")).toInt()};
            xml_.skipCurrentElement();
        }
        return layout;
    }

    // ---- From names to indexes

    [[nodiscard]] DefinitionMode ToMode(const ModeText& text) const
    {
        DefinitionMode mode;
        mode.name = text.name;
        if (text.highest >= LEDFixture::MaxChannels) {
            mode.fault = {FaultKind::TooManyChannels, QString::number(qint64{text.highest} + 1)};
            return mode;
        }
        for (const QString& name : text.channels) {
            ModeChannel channel;
            channel.name = name;
            channel.channel = byName_.value(name, -1);
            if (channel.channel < 0 && !name.isNull()) {
                mode.fault = {FaultKind::UnknownChannel, name};
                mode.channels.clear();
                return mode;
            }
            mode.channels.push_back(channel);
        }
        Switch(mode);
        AddHeads(text, mode);
        NoteFineness(mode);
        return mode;
    }

    /// What the switching channels put into each mode at their steady values. A mode has no more
    /// channels to replace than a fixture.
    void FindReplacements()
    {
        for (const std::int32_t index : switching_) {
            const auto at = static_cast<std::size_t>(index);
            const std::int32_t value =
                std::max(0, SteadyValueOf(file_.definition.channels[at]).value);
            for (const QxfAlias& alias : channels_[at].aliases) {
                const auto with = byName_.constFind(alias.with);
                if (value < alias.from || value > alias.to || with == byName_.constEnd())
                    continue;
                std::vector<Replacement>& ofMode = replacements_[alias.mode];
                if (ofMode.size() < static_cast<std::size_t>(LEDFixture::MaxChannels))
                    ofMode.push_back({alias.channel, {alias.with, *with, 0, -1, -1}});
            }
        }
    }

    void Switch(DefinitionMode& mode) const
    {
        const auto replacements = replacements_.constFind(mode.name);
        if (replacements == replacements_.constEnd())
            return;
        for (const Replacement& replacement : *replacements) {
            const auto slot =
                std::ranges::find(mode.channels, replacement.channel, &ModeChannel::name);
            if (slot != mode.channels.end())
                *slot = replacement.with;
        }
    }

    void AddHeads(const ModeText& text, DefinitionMode& mode) const
    {
        const Size layout = text.layout.value_or(layout_.value_or(Size{}));
        const auto heads = static_cast<qint64>(text.heads.size());
        // A layout with another number of places doesn't say which of them are empty.
        const bool isPlaced = layout.width > 0 && layout.height > 0 &&
                              qint64{layout.width} * layout.height == heads &&
                              heads <= MaxGridCells;
        mode.columns = isPlaced ? layout.width : 0;
        mode.rows = isPlaced ? layout.height : 0;
        std::vector<std::int32_t> owners(mode.channels.size());
        for (std::size_t i = 0; i < text.heads.size(); ++i) {
            LampPart part;
            if (isPlaced)
                part.cells = std::make_shared<const std::vector<std::int32_t>>(
                    1, static_cast<std::int32_t>(i));
            mode.parts.push_back(std::move(part));
            for (const std::int32_t number : text.heads[i])
                NoteOwner(number, i, mode, owners);
        }
    }

    /// A channel of several heads is one of the whole fixture.
    static void NoteOwner(std::int32_t number, std::size_t head, DefinitionMode& mode,
                          std::vector<std::int32_t>& owners)
    {
        const auto at = static_cast<std::size_t>(number);
        if (at >= owners.size())
            return;
        ModeChannel& channel = mode.channels[at];
        const auto part = static_cast<std::int32_t>(head);
        if (channel.part == part)
            return;
        ++owners[at];
        channel.part = owners[at] == 1 ? part : -1;
    }

    /// A second byte belongs to the last first byte of the same subject before it.
    void NoteFineness(DefinitionMode& mode) const
    {
        QHash<QString, std::int32_t> lastOf;
        for (std::size_t i = 0; i < mode.channels.size(); ++i) {
            ModeChannel& channel = mode.channels[i];
            if (channel.channel < 0)
                continue;
            const QxfChannel& read = channels_[static_cast<std::size_t>(channel.channel)];
            channel.fineness = read.fineness;
            if (read.fineness == 0)
                lastOf[read.subject] = static_cast<std::int32_t>(i);
            else
                channel.coarse = lastOf.value(read.subject, -1);
        }
    }

    QXmlStreamReader xml_;
    QxfFile file_;
    std::vector<QxfChannel> channels_; ///< without their definitions
    QHash<QString, std::int32_t> byName_;
    std::vector<std::int32_t> switching_;                   ///< channels with aliases
    QHash<QString, std::vector<Replacement>> replacements_; ///< by the mode's name
    std::vector<ModeText> modes_;
    std::optional<Size> layout_;
    bool tooManyModes_ = false;
};

} // namespace

QxfFile ReadQxf(const QByteArray& xml)
{
    return Reading(xml).Read();
}

} // namespace FixtureImport
