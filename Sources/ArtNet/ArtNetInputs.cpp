// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetInputs.h"

#include <algorithm>
#include <cstring>

void ArtNetInputs::Add(std::int32_t portAddress, bool offered)
{
    Input& input = inputs_[portAddress];
    offered = offered || input.offered;
    input = {};
    input.offered = offered;
}

const ArtNetInputs::Universe* ArtNetInputs::Find(std::int32_t portAddress) const
{
    const auto found = inputs_.find(portAddress);
    return found == inputs_.end() ? nullptr : &found->second.channels;
}

ArtNetInputs::Verdict ArtNetInputs::Take(const ArtNetPackets::Dmx& dmx, std::uint32_t sender,
                                         std::int64_t now, bool known)
{
    const auto found = inputs_.find(dmx.portAddress);
    if (found == inputs_.end())
        return others_.Hear(dmx.portAddress, sender, now, known) ? Verdict::NotKept
                                                                 : Verdict::Unheard;
    Input& input = found->second;
    if (!known && !input.taken.Is(sender, now) && !input.ignored.Is(sender, now))
        return Verdict::Unheard;
    if (input.taken.address != sender && !input.taken.IsSilent(now)) {
        input.ignored = {sender, now};
        return Verdict::Ignored;
    }
    if (input.ignored.address == sender)
        input.ignored = {};
    input.taken = {sender, now};
    ++input.packets;
    const std::size_t count = std::min(dmx.channels.size(), input.channels.size());
    if (count > 0)
        std::memcpy(input.channels.data(), dmx.channels.data(), count);
    std::fill(input.channels.begin() + count, input.channels.end(), std::uint8_t{0});
    return Verdict::Taken;
}

std::vector<ArtNetInputs::Page> ArtNetInputs::Offered(std::int64_t now) const
{
    std::vector<Page> pages;
    for (const auto& [portAddress, input] : inputs_) {
        if (!input.offered)
            continue;
        const auto net = static_cast<std::uint8_t>(portAddress >> 8);
        const auto subNet = static_cast<std::uint8_t>(portAddress >> 4 & 0xF);
        if (pages.empty() || pages.back().net != net || pages.back().subNet != subNet ||
            pages.back().count == pages.back().outputs.size())
        {
            if (pages.size() == MaxPages)
                break;
            pages.push_back({.net = net, .subNet = subNet});
        }
        Page& page = pages.back();
        if (!input.taken.IsSilent(now))
            page.dataComesIn = static_cast<std::uint8_t>(page.dataComesIn | 1U << page.count);
        page.outputs[page.count++] = static_cast<std::uint8_t>(portAddress & 0xF);
    }
    return pages;
}

std::vector<ArtNetReceived> ArtNetInputs::ComingIn(std::int64_t now, std::int32_t first,
                                                   std::int32_t count) const
{
    std::vector<ArtNetReceived> comingIn;
    auto input = inputs_.lower_bound(first);
    for (; input != inputs_.end() && std::int64_t{input->first} - first < count; ++input) {
        const auto& [portAddress, kept] = *input;
        if (!kept.taken.IsSilent(now))
            comingIn.push_back(
                {static_cast<std::uint16_t>(portAddress), kept.taken.address, kept.packets});
    }
    return comingIn;
}

std::int32_t ArtNetInputs::CountComingIn(std::int64_t now, std::int32_t first,
                                         std::int32_t count) const
{
    std::int32_t comingIn = 0;
    auto input = inputs_.lower_bound(first);
    for (; input != inputs_.end() && std::int64_t{input->first} - first < count; ++input)
        comingIn += input->second.taken.IsSilent(now) ? 0 : 1;
    return comingIn;
}

std::vector<ArtNetSourceConflict> ArtNetInputs::Conflicts(std::int64_t now, std::int32_t first,
                                                          std::int32_t count) const
{
    std::vector<ArtNetSourceConflict> conflicts;
    auto input = inputs_.lower_bound(first);
    for (; input != inputs_.end() && std::int64_t{input->first} - first < count; ++input) {
        const auto& [taken, ignored] = std::pair(input->second.taken, input->second.ignored);
        if (input->second.offered && !taken.IsSilent(now) && !ignored.IsSilent(now))
            conflicts.push_back(
                {static_cast<std::uint16_t>(input->first), taken.address, ignored.address});
    }
    return conflicts;
}
