// SPDX-License-Identifier: MIT
#pragma once

/// A source of bytes that a host may bring. This program has no use for it yet.
class ZenInputStream
{
public:
    ZenInputStream() = default;
    ZenInputStream(const ZenInputStream&) = delete;
    ZenInputStream& operator=(const ZenInputStream&) = delete;
    virtual ~ZenInputStream() = default;
};
