// SPDX-License-Identifier: MIT
#include "Platform/Clock.h"

#include <chrono>

namespace Platform {

std::int64_t MonotonicNanoseconds()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace Platform
