// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <system_error>

// What a flood may cost us. Times are nanoseconds of the monotonic clock. No locks.

/// How many ArtPolls are answered. A reply to a poller that isn't there waits in the system for
/// three seconds and is charged to the socket that the light leaves by, so replies have a bound: 64
/// at once and 16 a second. Pollers share eight accounts by their address, and one that floods us
/// spends only its own.
class ArtNetReplyLimit
{
public:
    [[nodiscard]] bool Allow(std::uint32_t poller, std::int64_t now);

private:
    static constexpr std::int32_t Most = 8;
    struct Account
    {
        std::int32_t spent = 0;
        std::int64_t regained = 0; ///< when one was last given back
    };
    std::array<Account, 8> accounts_{};
};

/// Which errors of the network are worth a line: each once a second, and three lines a second in
/// all. A cable that is out fails every send.
class ArtNetErrorLimit
{
public:
    [[nodiscard]] bool Allow(const std::error_code& error, std::int64_t now);

private:
    static constexpr std::size_t Most = 3;
    std::array<std::error_code, Most> said_{};
    std::size_t count_ = 0;
    std::int64_t since_ = 0;
};
