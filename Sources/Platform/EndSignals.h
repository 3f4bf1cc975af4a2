// SPDX-License-Identifier: MIT
#pragma once

namespace Platform {

/// From here on the first wish to end the process (Ctrl-C, a closed terminal, the end of the
/// session) doesn't kill it: it makes the result readable, so that an event loop can end in order.
/// A second wish of the same kind kills, should the first not be heard. -1 when the system refuses;
/// then all is as it was.
[[nodiscard]] int CatchEndSignals();

} // namespace Platform
