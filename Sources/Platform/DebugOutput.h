// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Platform {

/// Writes one line (UTF-8, given without its line end) to the debugger's text channel, which is
/// standard error: in one write, so that lines of several threads never mix. A channel that is
/// closed changes nothing.
void WriteDebugLine(std::string_view line) noexcept;

/// The system's number for the calling thread, never 0.
[[nodiscard]] unsigned CurrentThreadId() noexcept;

} // namespace Platform
