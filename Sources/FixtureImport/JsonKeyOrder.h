// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>

namespace FixtureImport {

/// The keys of the object that `path` leads to from the top, in the order of the file, which
/// QJsonObject doesn't keep. `json` is text that QJsonDocument has read. Empty when there is no
/// such object; a key that stands twice is listed twice.
[[nodiscard]] QStringList JsonKeysInOrder(const QByteArray& json, const QStringList& path);

} // namespace FixtureImport
