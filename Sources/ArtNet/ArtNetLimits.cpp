// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetLimits.h"

#include <algorithm>
#include <span>

namespace {

constexpr std::int64_t Second = 1'000'000'000;
constexpr std::int64_t Tick = Second / 40;
constexpr std::size_t MostInATick = 1024;

} // namespace

bool ArtNetReplyLimit::Account::HasLeft(std::int32_t most, std::int64_t regainEvery,
                                        std::int64_t now)
{
    const auto regainedNow =
        static_cast<std::int32_t>(std::min<std::int64_t>((now - regained) / regainEvery, spent));
    spent -= regainedNow;
    regained = spent == 0 ? now : regained + regainedNow * regainEvery;
    return spent < most;
}

bool ArtNetReplyLimit::Allow(std::uint32_t poller, std::int64_t now)
{
    // The golden ratio's bits spread neighbouring addresses over the accounts.
    Account& own = accounts_[poller * 0x9E3779B9U >> 24];
    if (!own.HasLeft(8, Second / 2, now) || !all_.HasLeft(64, Second / 16, now))
        return false;
    ++own.spent;
    ++all_.spent;
    return true;
}

bool ArtNetErrorLimit::Allow(const std::error_code& error, std::int64_t now)
{
    if (count_ == 0 || now - since_ >= Second) {
        since_ = now;
        count_ = 0;
    }
    const auto logged = std::span(logged_).first(count_);
    if (count_ == Most || std::ranges::find(logged, error) != logged.end())
        return false;
    logged_[count_++] = error;
    return true;
}

bool ArtNetFloodGauge::IsFlood(std::size_t datagrams, std::int64_t now)
{
    if (now - since_ >= Tick) {
        before_ = now - since_ < 2 * Tick ? count_ : 0;
        count_ = 0;
        since_ = now;
    }
    count_ += datagrams;
    return std::max(before_, count_) > MostInATick;
}
