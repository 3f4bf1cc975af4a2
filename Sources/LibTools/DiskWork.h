// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <future>

#include "LibTools/SaveResult.h"

/// Does `work` on a thread of its own, while `wait` does what can't wait for a disk until `done` is
/// ready. Without `wait` the caller's thread works. Returns when the work is done, with its result.
SaveResult DoOnDisk(const std::function<void(const std::future<SaveResult>& done)>& wait,
                    const std::function<SaveResult()>& work);
