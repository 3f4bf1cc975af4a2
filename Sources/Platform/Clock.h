// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace Platform {

/// Nanoseconds of the monotonic clock, since some fixed moment before the process began. A wall
/// clock that jumps changes nothing here.
[[nodiscard]] std::int64_t MonotonicNanoseconds();

} // namespace Platform
