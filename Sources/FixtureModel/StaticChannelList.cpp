// SPDX-License-Identifier: MIT
#include "FixtureModel/StaticChannelList.h"

#include <algorithm>

#include "Log/Log.h"
#include "XmlText/XmlText.h"

namespace {

using IntState = XmlText::IntAttribute::State;

bool IsInRange(std::int32_t channel, std::int32_t start, std::int32_t count)
{
    return channel >= start && std::int64_t{channel} < std::int64_t{start} + count;
}

std::wstring TextOf(const tinyxml2::XMLElement& element, const char* name)
{
    return XmlText::Attribute(element, name).value_or(std::wstring());
}

std::optional<StaticChannel> ReadStaticChannel(const tinyxml2::XMLElement& element)
{
    const auto channel = XmlText::ReadInt(element, "channel");
    if (channel.state == IntState::Missing) {
        ZEN_LOG_ERROR("Assignment channel not defined");
        return std::nullopt;
    }
    if (channel.state == IntState::NoNumber) {
        ZEN_LOG_ERROR("Assignment channel syntax error: \"%ls\"",
                      TextOf(element, "channel").c_str());
        return std::nullopt;
    }
    if (channel.value < 1 || channel.value > StaticChannel::LastChannel) {
        ZEN_LOG_ERROR("Assignment channel should be in range (1-512): \"%ls\"",
                      TextOf(element, "channel").c_str());
        return std::nullopt;
    }
    const auto value = XmlText::ReadInt(element, "value");
    if (value.state == IntState::Missing)
        return StaticChannel{channel.value, StaticChannel::Unassigned};
    if (value.state == IntState::NoNumber) {
        ZEN_LOG_ERROR("Assignment value syntax error: \"%ls\"", TextOf(element, "value").c_str());
        return std::nullopt;
    }
    if (value.value < 0 || value.value > 255) {
        ZEN_LOG_ERROR("Assignment value should be in range (0-255): \"%ls\"",
                      TextOf(element, "value").c_str());
        return std::nullopt;
    }
    return StaticChannel{channel.value, value.value};
}

} // namespace

const StaticChannel* StaticChannelList::Find(std::int32_t channel) const
{
    const auto found = std::ranges::find(*this, channel, &StaticChannel::channel);
    return found == end() ? nullptr : &*found;
}

void StaticChannelList::Set(std::int32_t channel, std::int32_t value)
{
    const auto found = std::ranges::find(*this, channel, &StaticChannel::channel);
    if (found == end())
        push_back({channel, value});
    else
        found->value = value;
}

void StaticChannelList::SetUnassigned(std::int32_t start, std::int32_t count)
{
    const std::int64_t end = std::min(std::int64_t{start} + count, std::int64_t{INT32_MAX} + 1);
    for (std::int64_t channel = start; channel < end; ++channel)
        Set(static_cast<std::int32_t>(channel), StaticChannel::Unassigned);
}

void StaticChannelList::RemoveRange(std::int32_t start, std::int32_t count)
{
    std::erase_if(
        *this, [=](const StaticChannel& entry) { return IsInRange(entry.channel, start, count); });
}

bool StaticChannelList::HasValueInRange(std::int32_t start, std::int32_t count) const
{
    return std::ranges::any_of(*this, [=](const StaticChannel& entry) {
        return IsInRange(entry.channel, start, count) && entry.value != StaticChannel::Unassigned;
    });
}

std::int32_t StaticChannelList::GetHighestChannel() const
{
    return empty() ? 0 : std::ranges::max_element(*this, {}, &StaticChannel::channel)->channel;
}

std::optional<StaticChannelList> StaticChannelList::FromXml(const tinyxml2::XMLElement& fixture,
                                                            const PixelMap& pixelMap)
{
    const auto covered = pixelMap.GetCoveredChannels();
    StaticChannelList list;
    for (const auto* child = fixture.FirstChildElement("StaticChannel"); child;
         child = child->NextSiblingElement("StaticChannel"))
    {
        const auto entry = ReadStaticChannel(*child);
        if (!entry)
            return std::nullopt;
        if (list.Find(entry->channel)) {
            ZEN_LOG_ERROR("Channel %d has multiple static value assignments", entry->channel);
            return std::nullopt;
        }
        if (covered.test(static_cast<std::size_t>(entry->channel))) {
            ZEN_LOG_ERROR("Channel %d assignment overlaps with fixture pixel mapping",
                          entry->channel);
            return std::nullopt;
        }
        list.push_back(*entry);
    }
    return list;
}
