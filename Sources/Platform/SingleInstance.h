// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Platform {

/// Claims `name` (at most 107 bytes count) for this process, for as long as it lives. False when a
/// process on this machine (in this network namespace) has it. The kernel frees the name with the
/// process, however that ends, so a claim is never stale. True where the system refuses the socket
/// behind it: a program that runs twice is better than one that never starts.
[[nodiscard]] bool ClaimSingleInstance(std::string_view name);

} // namespace Platform
