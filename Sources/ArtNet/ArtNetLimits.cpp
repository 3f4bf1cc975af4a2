// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetLimits.h"

#include <algorithm>
#include <map>
#include <utility>

#include "Platform/IPv4.h"

namespace {

constexpr std::int64_t Second = 1'000'000'000;
constexpr std::int64_t Tick = Second / 40;
constexpr std::size_t MostInATick = 1024;
constexpr std::size_t MostConflicts = 1024;
constexpr std::size_t MostLines = 2;

/// "4, 6-9" for ascending numbers.
std::string RangesOf(std::span<const std::uint16_t> numbers)
{
    constexpr std::size_t longest = 200;
    std::string text;
    for (std::size_t i = 0; i < numbers.size() && text.size() < longest; ++i) {
        const std::size_t first = i;
        while (i + 1 < numbers.size() && numbers[i + 1] == numbers[i] + 1)
            ++i;
        text += (text.empty() ? "" : ", ") + std::to_string(numbers[first]);
        if (i > first)
            text += "-" + std::to_string(numbers[i]);
    }
    return text;
}

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

std::vector<std::string> ArtNetConflictLog::Take(std::span<const ArtNetSourceConflict> conflicts)
{
    using Pair = std::pair<std::uint32_t, std::uint32_t>;
    std::map<Pair, std::vector<std::uint16_t>> universes;
    for (const auto& [portAddress, taken, ignored] : conflicts) {
        const Pair pair{taken, ignored};
        const bool room = universes.size() < MostLines || universes.contains(pair);
        if (room && logged_.size() < MostConflicts &&
            logged_.emplace(portAddress, std::min(taken, ignored), std::max(taken, ignored)).second)
            universes[pair].push_back(portAddress);
    }
    std::vector<std::string> lines;
    lines.reserve(universes.size());
    for (const auto& [pair, numbers] : universes)
        lines.push_back(Platform::FormatIPv4(pair.first) + " and " +
                        Platform::FormatIPv4(pair.second) + " both send Port-Address " +
                        RangesOf(numbers) + ": the first one counts until it is silent for 2.5 s");
    return lines;
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
