// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The program's version as people read it, "1.2.3": that of the project in the top CMakeLists.txt.
[[nodiscard]] QString ProgramVersion();

/// The program's name with its version, which the title of the window begins with.
[[nodiscard]] QString ProgramTitle();
