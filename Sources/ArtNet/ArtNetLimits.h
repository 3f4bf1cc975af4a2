// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <system_error>
#include <tuple>
#include <vector>

#include "ArtNet/ArtNetSourceConflict.h"

// What a flood may cost us. Times are nanoseconds of the monotonic clock. No locks.

/// How many ArtPolls are answered. A reply to a poller that doesn't exist waits in the system for
/// three seconds and is charged to the socket that sends the output, so replies have a bound: 64 at
/// once and 16 a second. Of these one poller gets 8 at once and two a second, so that a flood from
/// one address doesn't use up the others' share. An answer of several pages counts once, since the
/// pages behind the first are sent only to a poller that exists.
class ArtNetReplyLimit
{
public:
    /// Whether this poller gets an answer now, which is then counted.
    [[nodiscard]] bool Allow(std::uint32_t poller, std::int64_t now);

private:
    struct Account
    {
        std::int32_t spent = 0;
        std::int64_t regained = 0; ///< when one was last regained

        [[nodiscard]] bool HasLeft(std::int32_t most, std::int64_t regainEvery, std::int64_t now);
    };
    Account all_;
    std::array<Account, 256> accounts_{}; ///< by a hash of the address; few pollers share one
};

/// Which errors of the network are logged: each once a second, and three lines a second in all.
/// Without it a pulled cable would log every send.
class ArtNetErrorLimit
{
public:
    [[nodiscard]] bool Allow(const std::error_code& error, std::int64_t now);

private:
    static constexpr std::size_t Most = 3;
    std::array<std::error_code, Most> logged_{};
    std::size_t count_ = 0;
    std::int64_t since_ = 0;
};

/// Which universes with two senders are logged: each once for a pair of senders, at most two lines
/// at once, and nothing more when that was 1024 times.
class ArtNetConflictLog
{
public:
    /// The lines for those that were not logged yet.
    [[nodiscard]] std::vector<std::string> Take(std::span<const ArtNetSourceConflict> conflicts);

private:
    std::set<std::tuple<std::uint16_t, std::uint32_t, std::uint32_t>> logged_;
};

/// Whether more comes in than any show sends. A wake-up for each datagram of a flood would take a
/// processor that the window and the output need.
class ArtNetFloodGauge
{
public:
    /// Counts datagrams that just came in. True while there are more than 1024 in a tick of 25 ms,
    /// which is four times what 256 universes make at 40 frames a second.
    [[nodiscard]] bool IsFlood(std::size_t datagrams, std::int64_t now);

private:
    std::size_t before_ = 0; ///< in the tick before
    std::size_t count_ = 0;
    std::int64_t since_ = 0;
};
