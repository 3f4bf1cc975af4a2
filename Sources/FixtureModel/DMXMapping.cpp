// SPDX-License-Identifier: MIT
#include "FixtureModel/DMXMapping.h"

#include <optional>
#include <tuple>
#include <utility>

#include "Log/Log.h"
#include "XmlText/XmlText.h"

namespace {

/// A required number of the <ArtNetMapping> element; nothing after a line in the log.
std::optional<std::int32_t> ReadNumber(const tinyxml2::XMLElement& element, const char* name)
{
    using State = XmlText::IntAttribute::State;
    const auto number = XmlText::ReadInt(element, name);
    if (number.state == State::Good)
        return number.value;
    if (number.state == State::Missing)
        ZEN_LOG_ERROR("ArtNet DMX Mapping %s is not defined", name);
    else
        ZEN_LOG_ERROR("ArtNet DMX Mapping %s syntax error", name);
    return std::nullopt;
}

std::unique_ptr<DMXMapping> ReadArtNet(const tinyxml2::XMLElement& element)
{
    const auto subnet = ReadNumber(element, "subnet");
    if (!subnet)
        return nullptr;
    const auto universe = ReadNumber(element, "universe");
    if (!universe)
        return nullptr;
    const auto channel = ReadNumber(element, "channel");
    if (!channel)
        return nullptr;
    // Files of older versions name no node.
    return std::make_unique<DMXMappingArtNet>(
        *subnet, *universe, *channel, XmlText::Attribute(element, "ipconf").value_or(AutoNode),
        XmlText::Attribute(element, "ipName").value_or(std::wstring()));
}

} // namespace

DMXMapping::~DMXMapping() = default;

std::unique_ptr<DMXMapping> DMXMapping::FromXml(const tinyxml2::XMLElement& element)
{
    const auto type = XmlText::Attribute(element, "type");
    if (!type) {
        ZEN_LOG_ERROR("DMX Mapping type is not defined");
        return nullptr;
    }
    if (*type == L"ArtNet") {
        const auto* child = element.FirstChildElement("ArtNetMapping");
        if (child)
            return ReadArtNet(*child);
        ZEN_LOG_ERROR("ArtNet mapping node is not defined");
    } else if (*type == L"ECue") {
        ZEN_LOG_ERROR("ECue DMX Mapping type not supported");
    } else {
        ZEN_LOG_ERROR("Unknown DMX Mapping type");
    }
    return nullptr;
}

DMXMappingArtNet::DMXMappingArtNet()
    : DMXMapping(AutoNode)
{}

DMXMappingArtNet::DMXMappingArtNet(std::int32_t artNetSubnet, std::int32_t artNetUniverse,
                                   std::int32_t firstChannel, std::wstring node,
                                   std::wstring nodeName)
    : DMXMapping(std::move(node))
    , subnet(artNetSubnet)
    , universe(artNetUniverse)
    , channel(firstChannel)
    , ipName(std::move(nodeName))
{}

int DMXMappingArtNet::ToXml(tinyxml2::XMLElement& parent) const
{
    auto& element = XmlText::AddElement(parent, "DMXMapping");
    XmlText::SetAttribute(element, "type", L"ArtNet");
    auto& child = XmlText::AddElement(element, "ArtNetMapping");
    XmlText::SetAttribute(child, "subnet", subnet);
    XmlText::SetAttribute(child, "universe", universe);
    XmlText::SetAttribute(child, "channel", channel);
    XmlText::SetAttribute(child, "ipconf", ipconf);
    XmlText::SetAttribute(child, "ipName", ipName);
    return 0;
}

std::unique_ptr<DMXMapping> DMXMappingArtNet::Clone() const
{
    return std::make_unique<DMXMappingArtNet>(*this);
}

std::uint16_t DMXMappingArtNet::GetPortAddress() const
{
    return static_cast<std::uint16_t>(static_cast<std::uint32_t>(subnet) * 16U +
                                      static_cast<std::uint32_t>(universe));
}

void DMXMappingArtNet::SetPortAddress(std::int32_t value)
{
    subnet = value / 16;
    universe = value % 16;
}

void DMXMappingArtNet::SetNode(std::wstring node, std::wstring nodeName)
{
    ipconf = std::move(node);
    ipName = std::move(nodeName);
}

bool DMXMappingArtNet::operator==(const DMXMappingArtNet& other) const
{
    const auto fields = [](const DMXMappingArtNet& mapping) {
        return std::tie(mapping.subnet, mapping.universe, mapping.channel, mapping.ipconf,
                        mapping.ipName);
    };
    return fields(*this) == fields(other);
}

bool DMXMappingArtNet::operator<(const DMXMappingArtNet& other) const
{
    return std::tie(subnet, universe, channel) <
           std::tie(other.subnet, other.universe, other.channel);
}
