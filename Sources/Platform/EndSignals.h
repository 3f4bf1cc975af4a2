// SPDX-License-Identifier: MIT
#pragma once

namespace Platform {

/// From now on the first signal to end the process (Ctrl-C, a closed terminal, the end of the
/// session) doesn't kill it: it makes the result, a file descriptor, readable, so that an event
/// loop can end in order. A second signal of the same kind kills, in case that loop hangs. Gives -1
/// and changes nothing when the system refuses. Call it once.
[[nodiscard]] int CatchEndSignals();

} // namespace Platform
