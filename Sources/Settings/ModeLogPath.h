// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>

/// The path of the log file of an application mode, in the host's folder of the user's data. Empty
/// for a mode without a log file. Relative when the user has no data folder.
[[nodiscard]] std::filesystem::path ModeLogPath(std::int32_t mode);
