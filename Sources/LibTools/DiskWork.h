// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <future>

#include "LibTools/SaveResult.h"

/// What the caller does until `done` is ready: what can't wait for a disk.
using DiskWait = std::function<void(const std::future<SaveResult>& done)>;

/// Does `work` on a thread of its own, while `wait` runs. Without `wait` the caller's thread works.
/// Returns when the work is done, with its result.
SaveResult DoOnDisk(const DiskWait& wait, const std::function<SaveResult()>& work);
