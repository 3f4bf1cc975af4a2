// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Platform {

/// The per-user application data folder, UTF-8, without a trailing separator: $XDG_DATA_HOME when
/// that is an absolute path, else ~/.local/share. It is created when it is missing. Empty when the
/// user has no home.
[[nodiscard]] std::string UserDataFolder();

} // namespace Platform
