// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include "FixtureImport/Definition.h"

namespace FixtureImport {

struct QxfFile
{
    Definition definition;
    ImportFault fault;
};

/// Reads a QLC+ fixture definition (.qxf). A mode that names an unknown channel gets a fault, and
/// the others are read.
[[nodiscard]] QxfFile ReadQxf(const QByteArray& xml);

} // namespace FixtureImport
