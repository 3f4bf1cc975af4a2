// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include "FixtureImport/Definition.h"

namespace FixtureImport {

/// What a file of the Open Fixture Library holds: a definition, or only the way to one.
struct OpenFixtureFile
{
    Definition definition; ///< its manufacturer is the key when the file gives one, else empty
    /// "manufacturer/fixture" of another file, empty for a definition.
    QString redirectTo;
    /// The fixture has another name by now; else it is also sold under this one.
    bool isRenamed = false;
    ImportFault fault;
};

/// Reads the JSON of a definition. Members of a wrong type count as missing; a mode that needs one
/// gets a fault and the others are read.
[[nodiscard]] OpenFixtureFile ReadOpenFixture(const QByteArray& json);

} // namespace FixtureImport
