// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Platform {

/// One line (UTF-8, without its end) to the debugger's text channel: standard error, in one write,
/// so that lines of several threads never mix.
void WriteDebugLine(std::string_view line) noexcept;

/// The system's number for the calling thread, never 0.
[[nodiscard]] unsigned CurrentThreadId() noexcept;

} // namespace Platform
