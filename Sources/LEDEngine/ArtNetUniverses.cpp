// SPDX-License-Identifier: MIT
#include "LEDEngine/ArtNetUniverses.h"

#include <algorithm>
#include <cstring>

#include "FixtureModel/DMXMapping.h"
#include "Log/Log.h"

namespace {

/// How many of `count` values fit from channel `first` on.
std::size_t Fitting(std::int32_t first, std::size_t count)
{
    constexpr auto last = static_cast<std::int32_t>(DMXUniverse::ChannelCount);
    if (first < 1 || first > last)
        return 0;
    return std::min(count, static_cast<std::size_t>(last - first + 1));
}

} // namespace

NodeAddress::NodeAddress(std::wstring_view address)
{
    constexpr char notInAddresses = '?';
    const std::size_t room = text_.size() - 1;
    const std::size_t count = std::min(address.size(), room);
    std::transform(
        address.begin(), address.begin() + static_cast<std::ptrdiff_t>(count), text_.begin(),
        [](wchar_t c) { return c > 0 && c < 128 ? static_cast<char>(c) : notInAddresses; });
    if (address.size() > room)
        text_[room - 1] = notInAddresses;
}

void ArtNetUniverses::Clear()
{
    broadcast_.clear();
    unicast_.clear();
}

DMXUniverse& ArtNetUniverses::Get(std::uint16_t portAddress, const std::wstring& address)
{
    DMXUniverse& universe = address == AutoNode
                                ? broadcast_[portAddress]
                                : unicast_[UnicastKey(NodeAddress(address), portAddress)];
    universe.portAddress = portAddress;
    return universe;
}

void CopyChannels(DMXUniverse& universe, std::int32_t first, std::span<const std::uint8_t> values)
{
    const std::size_t count = Fitting(first, values.size());
    if (count == 0)
        return;
    const std::size_t start = static_cast<std::size_t>(first) - 1;
    if (universe.channels.size() < start)
        universe.channels.resize(start, std::uint8_t{0});
    // The channels that are written next need no zeros first; this is what fills most universes.
    if (universe.channels.size() < start + count)
        universe.channels.resize(start + count, boost::container::default_init);
    std::memcpy(universe.channels.data() + start, values.data(), count);
}

void BlendChannels(DMXUniverse& universe, std::int32_t first, const ElementDMX& element)
{
    const std::size_t count = Fitting(first, element.values.size());
    if (count == 0)
        return;
    const std::size_t start = static_cast<std::size_t>(first) - 1;
    if (universe.channels.size() < start + count)
        universe.channels.resize(start + count, std::uint8_t{0});
    for (std::size_t i = 0; i < count; ++i) {
        std::uint8_t& channel = universe.channels[start + i];
        switch (element.types[i]) {
        case ChannelType::Pixel:
        case ChannelType::Constant:
            channel = element.values[i];
            break;
        case ChannelType::Free:
            break;
        default:
            ZEN_LOG_ERROR("Unhandled channel type");
        }
    }
}
