// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The user's fixture library. The first call of a new user makes its folder and puts the library
/// of the program there; a library that exists is left alone. When that fails the debug output says
/// so, and the path is given all the same. Empty when the user has no data folder.
[[nodiscard]] QString GetFixtureLibraryPath();
