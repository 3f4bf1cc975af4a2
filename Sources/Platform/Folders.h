// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Platform {

/// The per-user application data folder, UTF-8, without a trailing separator: $XDG_DATA_HOME when
/// that is an absolute path, else ~/.local/share. Empty when the user has no home.
[[nodiscard]] std::string FindUserDataFolder();

/// The same; it is created when it is missing.
[[nodiscard]] std::string UserDataFolder();

} // namespace Platform
