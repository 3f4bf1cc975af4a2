// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QJsonObject>

#include "FixtureImport/Definition.h"

// The channels of an Open Fixture Library definition.

namespace FixtureImport {

/// A channel from its JSON, without what it switches. `wheels` are the definition's wheels.
/// Members of a wrong type count as missing.
[[nodiscard]] ChannelDefinition
ReadOpenFixtureChannel(const QString& key, const QJsonObject& channel, const QJsonObject& wheels);

/// The capability that holds a value of 8 bits, an empty object for none.
[[nodiscard]] QJsonObject CapabilityAt(const QJsonObject& channel, std::int32_t value);

} // namespace FixtureImport
