// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Platform {

/// Claims `name` for this process, for as long as it lives. False when another process on this
/// machine (in this network namespace) has it. The kernel frees the name with the process, however
/// that ends, so a claim is never stale. A system that refuses the means altogether gives true: a
/// program that runs twice is better than one that never starts.
[[nodiscard]] bool ClaimSingleInstance(std::string_view name);

} // namespace Platform
