// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetOtherSenders.h"

#include <algorithm>

bool ArtNetOtherSenders::Hear(std::uint16_t portAddress, std::uint32_t sender, std::int64_t now,
                              bool known)
{
    // Sixteen sub-nets of sixteen universes, which is what shows use, have a row each.
    auto& row = rows_[portAddress % rows_.size()];
    const ArtNetOtherSender who{portAddress, sender};
    const auto noted = std::ranges::find_if(
        row, [&](const Entry& entry) { return entry.who == who && !entry.IsSilent(now); });
    if (noted != row.end()) {
        noted->heard = now;
        return true;
    }
    if (!known)
        return false;
    *std::ranges::min_element(row, {}, &Entry::heard) = {who, now};
    return true;
}

std::vector<ArtNetOtherSender> ArtNetOtherSenders::Heard(std::int64_t now) const
{
    std::vector<ArtNetOtherSender> heard;
    for (const auto& row : rows_) {
        for (const Entry& entry : row) {
            if (!entry.IsSilent(now))
                heard.push_back(entry.who);
        }
    }
    std::ranges::sort(heard);
    return heard;
}
