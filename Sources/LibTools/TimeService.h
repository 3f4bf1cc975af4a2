// SPDX-License-Identifier: MIT
#pragma once

/// A clock that a host may bring. This program has no use for it yet.
class TimeService
{
public:
    TimeService() = default;
    TimeService(const TimeService&) = delete;
    TimeService& operator=(const TimeService&) = delete;
    virtual ~TimeService() = default;
};
