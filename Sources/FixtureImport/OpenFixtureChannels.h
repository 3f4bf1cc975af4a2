// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include <QHash>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include "FixtureImport/Definition.h"
#include "FixtureImport/OpenFixtureMatrix.h"

namespace FixtureImport {

/// What the keys in the modes of a definition mean: channels, their finer bytes, templates for each
/// pixel, and aliases that another channel switches.
class OpenFixtureChannels
{
public:
    /// A key as a mode names it. Nothing stands for a key that the definition doesn't explain.
    struct Meaning
    {
        std::int32_t channel = -1; ///< index in the definition's channels
        std::int32_t fineness = 0;
        QString pixel; ///< the pixel or group whose channel it is; null for none
    };

    /// Reads all channels into `definition`. The matrix must outlive the object.
    OpenFixtureChannels(const QJsonObject& fixture, const OpenFixtureMatrix& matrix,
                        Definition& definition);

    [[nodiscard]] std::optional<Meaning> Find(const QString& key);
    /// A template of the definition for a pixel or a group.
    [[nodiscard]] std::optional<Meaning> Find(const QString& templateKey, const QString& pixel);
    [[nodiscard]] static QString KeyFor(QString templateKey, const QString& pixel);

private:
    struct Target
    {
        std::int32_t channel = -1;
        std::int32_t fineness = 0;
    };
    /// Ordered, so that a key that two templates fit means the same on each day.
    using Targets = QMap<QString, Target>;
    using Aliases = QMap<QString, QString>;

    void ReadChannels(const QJsonObject& channels, const QJsonObject& wheels, Targets& targets,
                      Aliases& switched, Definition& definition);
    static void NoteSwitched(const QJsonObject& channel, const ChannelDefinition& read,
                             Aliases& switched);
    [[nodiscard]] std::optional<Meaning> FindDirect(const QString& key);
    [[nodiscard]] std::optional<Meaning> FindByTemplate(const QString& key);

    const OpenFixtureMatrix& matrix_;
    Targets channels_;
    Targets templates_;
    /// Of each alias the key that it stands for while the switching channel is at rest.
    Aliases switched_;
    Aliases switchedTemplates_;
    QHash<QString, std::optional<Meaning>> found_;
};

} // namespace FixtureImport
