// SPDX-License-Identifier: MIT
#pragma once

#include "FixtureImport/Definition.h"
#include "FixtureImport/ImportedFixture.h"

namespace FixtureImport {

/// A fixture of each mode that has pixels, with constants on its other channels so that it lights
/// up at once and is still. A fixture has the number 0 and is named "Name - Mode".
[[nodiscard]] ImportedDefinition Convert(const Definition& definition);

inline constexpr int LongestName = 200;

/// A text for lists and files: control characters and runs of blanks become one blank, and what is
/// longer than `longest` characters is cut. `otherwise` stands for an empty one.
[[nodiscard]] QString CleanName(const QString& name, const QString& otherwise,
                                int longest = LongestName);

} // namespace FixtureImport
