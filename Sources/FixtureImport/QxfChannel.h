// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include <QString>
#include <QXmlStreamReader>

#include "FixtureImport/Definition.h"

// The channels of a QLC+ definition.

namespace FixtureImport {

/// While a capability holds the channel's value, a channel of a mode is replaced by another one.
struct QxfAlias
{
    std::int32_t from = 0; ///< of the capability, 0 to 255
    std::int32_t to = 0;
    QString mode;
    QString channel;
    QString with;
};

struct QxfChannel
{
    ChannelDefinition definition;
    std::int32_t fineness = 0;
    /// What the bytes of one channel have in common.
    QString subject;
    std::vector<QxfAlias> aliases;
};

/// Reads the <Channel> element of a definition that `xml` has just entered, to its end. What is
/// missing or no number counts as not given.
[[nodiscard]] QxfChannel ReadQxfChannel(QXmlStreamReader& xml);

} // namespace FixtureImport
