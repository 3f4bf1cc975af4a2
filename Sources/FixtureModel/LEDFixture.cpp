// SPDX-License-Identifier: MIT
#include "FixtureModel/LEDFixture.h"

#include <algorithm>
#include <utility>

#include "Log/Log.h"
#include "XmlText/XmlText.h"

namespace {

using IntState = XmlText::IntAttribute::State;

/// The stored count of an element, nothing after a line in the log.
std::optional<std::int32_t> ReadChannelCount(const tinyxml2::XMLElement& element)
{
    const auto count = XmlText::ReadInt(element, "channel_count");
    if (count.state == IntState::Missing)
        return LEDFixture::AutomaticChannelCount;
    if (count.state == IntState::NoNumber) {
        ZEN_LOG_ERROR("Channel count is unreadable: \"%ls\"",
                      XmlText::Attribute(element, "channel_count").value_or(L"").c_str());
        return std::nullopt;
    }
    if (count.value < 0 || count.value > LEDFixture::MaxChannels) {
        ZEN_LOG_ERROR("Channel count is out of range: %d", count.value);
        return std::nullopt;
    }
    return count.value;
}

} // namespace

LEDFixture::LEDFixture(std::wstring manufacturerName, std::wstring productName, PixelMap map,
                       std::int64_t identifier, std::int32_t channels)
    : uniqueID(identifier)
    , manufacturer(std::move(manufacturerName))
    , product(std::move(productName))
    , pixelMap(std::move(map))
    , channelCount(channels)
{}

LEDFixture::~LEDFixture() = default;

std::int32_t LEDFixture::GetChannelCount() const
{
    if (channelCount != AutomaticChannelCount)
        return channelCount;
    return std::max({pixelMap.GetHighestChannel(), staticChannels.GetHighestChannel(), 0});
}

void LEDFixture::SetChannelCount(std::int32_t count)
{
    if (count < 0 || count > MaxChannels) {
        ZEN_LOG_ERROR("Setting channel count is out of range %d", count);
        return;
    }
    channelCount = count;
}

bool LEDFixture::HasDefinitionOf(const LEDFixture& other) const
{
    const auto constants = [](StaticChannelList list) {
        std::erase_if(list, [](const StaticChannel& entry) {
            return entry.value == StaticChannel::Unassigned;
        });
        return list;
    };
    return *this == other && manufacturer == other.manufacturer &&
           channelCount == other.channelCount &&
           constants(staticChannels) == constants(other.staticChannels);
}

int LEDFixture::ToXml(tinyxml2::XMLElement& parent) const
{
    auto& element = XmlText::AddElement(parent, "LEDFixture");
    if (!manufacturer.empty())
        XmlText::SetAttribute(element, "manufacturer", manufacturer);
    if (!product.empty())
        XmlText::SetAttribute(element, "product", product);
    if (channelCount != AutomaticChannelCount)
        XmlText::SetAttribute(element, "channel_count", channelCount);
    if (intensity != NeutralIntensity)
        XmlText::SetAttribute(element, "intensity_channel", std::int32_t{intensity});
    pixelMap.ToXml(element);
    for (const StaticChannel& entry : staticChannels) {
        if (entry.value == StaticChannel::Unassigned)
            continue;
        auto& child = XmlText::AddElement(element, "StaticChannel");
        XmlText::SetAttribute(child, "channel", entry.channel);
        XmlText::SetAttribute(child, "value", entry.value);
    }
    return 0;
}

std::optional<LEDFixture> LEDFixture::FromXml(const tinyxml2::XMLElement& element,
                                              std::int64_t identifier,
                                              std::int32_t& intensityChannel)
{
    auto manufacturer = XmlText::Attribute(element, "manufacturer");
    if (!manufacturer) {
        ZEN_LOG_ERROR("Manufacturer is not defined");
        return std::nullopt;
    }
    auto product = XmlText::Attribute(element, "product");
    if (!product) {
        ZEN_LOG_ERROR("Product name is not defined");
        return std::nullopt;
    }
    const auto* mapElement = element.FirstChildElement("PixelMapping");
    if (!mapElement) {
        ZEN_LOG_ERROR("PixelMap node not found");
        return std::nullopt;
    }
    const auto map = PixelMap::FromXml(*mapElement);
    if (!map)
        return std::nullopt;
    const auto count = ReadChannelCount(element);
    if (!count)
        return std::nullopt;
    LEDFixture fixture(std::move(*manufacturer), std::move(*product), std::move(*map), identifier,
                       *count);
    const auto intensity = XmlText::ReadInt(element, "intensity_channel");
    if (intensity.state == IntState::NoNumber) {
        ZEN_LOG_ERROR("Intensity value is unreadable: \"%ls\"",
                      XmlText::Attribute(element, "intensity_channel").value_or(L"").c_str());
        return std::nullopt;
    }
    intensityChannel = intensity.value;
    auto list = StaticChannelList::FromXml(element, fixture.pixelMap);
    if (!list)
        return std::nullopt;
    // Every channel without pixel and constant is listed as free: the editor shows these, and they
    // keep merged input.
    auto used = fixture.pixelMap.GetCoveredChannels();
    for (const StaticChannel& entry : *list)
        used.set(static_cast<std::size_t>(entry.channel));
    const std::int32_t last = std::min(fixture.GetChannelCount(), MaxChannels);
    for (std::int32_t channel = 1; channel <= last; ++channel) {
        if (!used.test(static_cast<std::size_t>(channel)))
            list->push_back({channel, StaticChannel::Unassigned});
    }
    fixture.staticChannels = std::move(*list);
    return fixture;
}
