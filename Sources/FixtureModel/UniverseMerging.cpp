// SPDX-License-Identifier: MIT
#include "FixtureModel/UniverseMerging.h"

#include <algorithm>
#include <array>

#include "XmlText/XmlText.h"

namespace {

constexpr std::uint32_t NibbleEnd = 16;

void StoreNibble(std::uint32_t& field, std::uint32_t value)
{
    if (value < NibbleEnd)
        field = value;
}

/// Whether the address is in a run of universes that begins at `start`.
bool IsInRun(std::int32_t address, std::int32_t start, std::int32_t length)
{
    return start <= address && address < start + length;
}

std::int32_t Signed(std::uint32_t value)
{
    return static_cast<std::int32_t>(value);
}

} // namespace

UniverseMerging::UniverseMerging(bool on, std::uint32_t fromSubnet, std::uint32_t fromUniverse,
                                 std::int32_t consecutive, std::uint32_t toSubnet,
                                 std::uint32_t toUniverse, MergerDMXSource source)
    : enabled(on)
    , mergerDMXSource(source)
{
    SetFromStartSubnet(fromSubnet);
    SetFromStartUniverse(fromUniverse);
    SetConsecutiveUniverses(consecutive);
    SetToStartSubnet(toSubnet);
    SetToStartUniverse(toUniverse);
}

UniverseMerging UniverseMerging::OfNewDocument()
{
    UniverseMerging merging;
    merging.SetToStartSubnet(1);
    return merging;
}

void UniverseMerging::SetFromStartSubnet(std::uint32_t value)
{
    StoreNibble(fromStartSubnet, value);
}

void UniverseMerging::SetFromStartUniverse(std::uint32_t value)
{
    StoreNibble(fromStartUniverse, value);
}

void UniverseMerging::SetToStartSubnet(std::uint32_t value)
{
    StoreNibble(toStartSubnet, value);
}

void UniverseMerging::SetToStartUniverse(std::uint32_t value)
{
    StoreNibble(toStartUniverse, value);
}

void UniverseMerging::SetConsecutiveUniverses(std::int32_t value)
{
    if (value >= 1 && value <= MaxConsecutiveUniverses)
        consecutiveUniverses = value;
}

std::int32_t UniverseMerging::GetFromStartAddress() const
{
    return Signed(fromStartSubnet * NibbleEnd + fromStartUniverse);
}

std::int32_t UniverseMerging::GetToStartAddress() const
{
    return Signed(toStartSubnet * NibbleEnd + toStartUniverse);
}

bool UniverseMerging::IsInFromRange(std::int32_t portAddress) const
{
    return IsInRun(portAddress, GetFromStartAddress(), consecutiveUniverses);
}

std::int32_t UniverseMerging::TranslateToOutput(std::int32_t portAddress) const
{
    return portAddress + GetToStartAddress() - GetFromStartAddress();
}

bool UniverseMerging::RangesOverlap() const
{
    return IsInFromRange(GetToStartAddress()) ||
           IsInRun(GetFromStartAddress(), GetToStartAddress(), consecutiveUniverses);
}

bool UniverseMerging::LeavesNet() const
{
    return std::max(GetFromStartAddress(), GetToStartAddress()) + consecutiveUniverses >
           Signed(NibbleEnd * NibbleEnd);
}

std::optional<UniverseMerging> UniverseMerging::FromXml(const tinyxml2::XMLDocument& document)
{
    const auto* element = document.FirstChildElement("UniverseMerging");
    if (!element)
        return std::nullopt;
    constexpr std::array names{"Enabled",           "FromStartSubnet",
                               "FromStartUniverse", "ConsecutiveUniverses",
                               "ToStartSubnet",     "ToStartUniverse"};
    std::array<std::int32_t, names.size()> values{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto number = XmlText::ReadInt(*element, names[i]);
        if (number.state != XmlText::IntAttribute::State::Good)
            return std::nullopt;
        values[i] = number.value;
    }
    const auto asUnsigned = [&values](std::size_t i) {
        return static_cast<std::uint32_t>(values[i]);
    };
    const bool fromHost = XmlText::Attribute(*element, "MergerDMXSource") == L"ReelCommand";
    return UniverseMerging(values[0] != 0, asUnsigned(1), asUnsigned(2), values[3], asUnsigned(4),
                           asUnsigned(5),
                           fromHost ? MergerDMXSource::ReelCommand : MergerDMXSource::PixelWeft);
}

bool UniverseMerging::ToXml(tinyxml2::XMLDocument& document) const
{
    auto& element = XmlText::AddElement(document, "UniverseMerging");
    XmlText::SetAttribute(element, "Enabled", enabled ? 1 : 0);
    XmlText::SetAttribute(element, "FromStartSubnet", Signed(fromStartSubnet));
    XmlText::SetAttribute(element, "FromStartUniverse", Signed(fromStartUniverse));
    XmlText::SetAttribute(element, "ConsecutiveUniverses", consecutiveUniverses);
    XmlText::SetAttribute(element, "ToStartSubnet", Signed(toStartSubnet));
    XmlText::SetAttribute(element, "ToStartUniverse", Signed(toStartUniverse));
    XmlText::SetAttribute(element, "MergerDMXSource",
                          mergerDMXSource == MergerDMXSource::ReelCommand ? L"ReelCommand"
                                                                          : L"PixelWeft");
    return true;
}
