// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetNodeTable.h"

#include <algorithm>

namespace {

constexpr std::int32_t FullLife = 5;

} // namespace

void ArtNetNodeTable::Hear(const ArtNetNodeInfo& node)
{
    const auto known = std::ranges::find_if(
        entries_, [&node](const Entry& entry) { return entry.node.ip == node.ip; });
    if (known != entries_.end()) {
        // A change stays noted until it was published, also when a later reply repeats it.
        known->changed = known->changed || !(known->node == node);
        known->node = node;
        known->timeToLive = FullLife;
        return;
    }
    MakeRoom();
    entries_.push_back({node, FullLife, true});
}

void ArtNetNodeTable::MakeRoom()
{
    if (entries_.size() < MaxNodes)
        return;
    entries_.erase(std::ranges::min_element(entries_, {}, &Entry::timeToLive));
}

void ArtNetNodeTable::Age()
{
    bool changed = false;
    published_.clear();
    for (Entry& entry : entries_) {
        const bool alive = --entry.timeToLive > 0;
        if (alive)
            published_.push_back(entry.node);
        changed = changed || !alive || entry.changed;
        entry.changed = false;
    }
    std::erase_if(entries_, [](const Entry& entry) { return entry.timeToLive <= 0; });
    if (changed)
        ++generation_;
}

void ArtNetNodeTable::TakeFrom(const ArtNetNodeTable& other)
{
    entries_.insert(entries_.end(), other.entries_.begin(), other.entries_.end());
    published_.insert(published_.end(), other.published_.begin(), other.published_.end());
}
