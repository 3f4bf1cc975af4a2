// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>

/// Where the log file of an application mode lies, in the host's folder of the user's data. Empty
/// for a mode without a log file. Relative when the user has no data folder.
[[nodiscard]] std::filesystem::path ModeLogPath(std::int32_t mode);
