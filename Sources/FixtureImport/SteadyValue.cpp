// SPDX-License-Identifier: MIT
#include "FixtureImport/SteadyValue.h"

#include <algorithm>

namespace FixtureImport {

namespace {

ChannelReason ReasonOf(RangeUse use)
{
    switch (use) {
    case RangeUse::Open:
        return ChannelReason::Open;
    case RangeUse::Bright:
        return ChannelReason::Bright;
    case RangeUse::Nothing:
        return ChannelReason::Nothing;
    case RangeUse::Clear:
        return ChannelReason::Clear;
    case RangeUse::Middle:
        return ChannelReason::Middle;
    case RangeUse::Rest:
        return ChannelReason::Rest;
    default:
        return ChannelReason::First;
    }
}

bool Holds(const ChannelRange& range, std::int32_t value)
{
    return range.from <= value && value <= range.to;
}

/// The best range. Of several the one with the default, else the first.
const ChannelRange& BestOf(const ChannelDefinition& channel)
{
    const auto best = std::ranges::min_element(channel.ranges, {}, &ChannelRange::use);
    if (channel.defaultValue) {
        const auto with = std::ranges::find_if(channel.ranges, [&](const ChannelRange& range) {
            return range.use == best->use && Holds(range, *channel.defaultValue);
        });
        if (with != channel.ranges.end())
            return *with;
    }
    return *best;
}

/// Where every range changes the light: what the maker starts with, if that leaves it on.
SteadyValue LeastChange(const ChannelDefinition& channel)
{
    const auto isHarmful = [](const ChannelRange* range) {
        return range && range->use >= RangeUse::Dark;
    };
    if (channel.defaultValue && !isHarmful(RangeAt(channel, *channel.defaultValue)))
        return {*channel.defaultValue, channel.defaultFine, ChannelReason::Default,
                RangeAt(channel, *channel.defaultValue)};
    if (!isHarmful(RangeAt(channel, 0)))
        return {0, 0, ChannelReason::First, RangeAt(channel, 0)};
    const ChannelRange& best = BestOf(channel);
    return {best.best, 0, ChannelReason::First, &best};
}

} // namespace

const ChannelRange* RangeAt(const ChannelDefinition& channel, std::int32_t value)
{
    const auto at = std::ranges::find_if(
        channel.ranges, [&](const ChannelRange& range) { return Holds(range, value); });
    return at == channel.ranges.end() ? nullptr : &*at;
}

SteadyValue SteadyValueOf(const ChannelDefinition& channel)
{
    const ChannelRange& best = BestOf(channel);
    switch (best.use) {
    case RangeUse::Position:
        return {};
    case RangeUse::Bright:
        return {best.best, best.best == 255 ? 255 : 0, ChannelReason::Bright, &best};
    case RangeUse::Open:
    case RangeUse::Nothing:
    case RangeUse::Clear:
        if (channel.defaultValue && Holds(best, *channel.defaultValue))
            return {*channel.defaultValue, channel.defaultFine, ReasonOf(best.use), &best};
        return {best.best, 0, ReasonOf(best.use), &best};
    case RangeUse::Middle:
    case RangeUse::Rest:
        return {best.best, 0, ReasonOf(best.use), &best};
    default:
        return LeastChange(channel);
    }
}

} // namespace FixtureImport
