// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace Platform {

/// Puts `bytes` in the place of the file at `path`, whole or not at all: writes them to `next`,
/// which lies in the same folder and doesn't exist, brings them to the disk, renames, and brings
/// the folder to the disk, too. An old file's permissions stay; a new one gets those of the user's
/// mask. No error when it is done; else what the system says, with `path` as it was and `next`
/// removed. A used-up quota is a full disk.
[[nodiscard]] std::error_code ReplaceFile(const std::string& path, const std::string& next,
                                          std::string_view bytes);

} // namespace Platform
