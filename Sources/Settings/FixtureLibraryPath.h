// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The path of the user's fixture library. If there is none, makes its folder and copies the
/// program's own library there; an existing one stays as it is. When the copy fails the debug
/// output says so, and the path is returned all the same. Empty when the user has no data folder.
[[nodiscard]] QString GetFixtureLibraryPath();
