// SPDX-License-Identifier: MIT
#include "LibTools/DiskWork.h"

#include <system_error>

#include "Log/Log.h"

SaveResult DoOnDisk(const DiskWait& wait, const std::function<SaveResult()>& work)
{
    std::future<SaveResult> done;
    try {
        if (wait)
            done = std::async(std::launch::async, std::cref(work));
    } catch (const std::system_error&) {
        ZEN_LOG_ERROR("No thread for a save: the output waits for the disk");
    }
    if (!done.valid())
        return work();
    wait(done);
    return done.get();
}
