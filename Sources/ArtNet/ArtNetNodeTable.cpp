// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetNodeTable.h"

namespace {

constexpr std::int32_t FullLife = 5;

} // namespace

ArtNetNodeTable::ArtNetNodeTable()
    : published_(std::make_shared<ArtNetNodeList>())
{}

void ArtNetNodeTable::Hear(const ArtNetNodeInfo& node)
{
    const auto found = byAddress_.find(node.Ip());
    if (found == byAddress_.end()) {
        Append({node, FullLife, true, {}});
        return;
    }
    Entry& known = *found->second;
    // A change counts until it is published, also when a later reply repeats it: with two poll
    // targets every node answers twice between two polls.
    known.changed = known.changed || !(known.node == node);
    known.node.name = node.name;
    known.node.universes = node.universes;
    known.timeToLive = FullLife;
    byTurn_.splice(byTurn_.end(), byTurn_, known.turn);
}

void ArtNetNodeTable::Append(const Entry& entry)
{
    if (entries_.size() >= MaxNodes)
        Remove(byTurn_.front());
    const auto added = entries_.insert(entries_.end(), entry);
    added->turn = byTurn_.insert(byTurn_.end(), added);
    byAddress_.try_emplace(added->node.Ip(), added);
}

void ArtNetNodeTable::Remove(Entries::iterator entry)
{
    const auto known = byAddress_.find(entry->node.Ip());
    if (known != byAddress_.end() && known->second == entry)
        byAddress_.erase(known);
    byTurn_.erase(entry->turn);
    entries_.erase(entry);
}

void ArtNetNodeTable::Age()
{
    bool changed = false;
    bool anyDead = false;
    for (Entry& entry : entries_) {
        const bool dead = --entry.timeToLive <= 0;
        anyDead = anyDead || dead;
        changed = changed || dead || entry.changed;
        entry.changed = false;
    }
    if (anyDead)
        RemoveDead();
    if (!changed)
        return;
    auto list = std::make_shared<ArtNetNodeList>();
    list->reserve(entries_.size());
    for (const Entry& entry : entries_)
        list->push_back(entry.node);
    // A node with more than four ports answers each poll with several reply pages, and each takes
    // the place of the one before: after the last of them nothing has changed.
    if (*list == *published_)
        return;
    published_ = std::move(list);
    ++generation_;
}

void ArtNetNodeTable::RemoveDead()
{
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const auto next = std::next(entry);
        if (entry->timeToLive <= 0)
            Remove(entry);
        entry = next;
    }
    // Where the first entry of an address has died, a second one may take its place.
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry)
        byAddress_.try_emplace(entry->node.Ip(), entry);
}

void ArtNetNodeTable::TakeFrom(const ArtNetNodeTable& other)
{
    for (const Entry& entry : other.entries_)
        Append(entry);
    auto list = std::make_shared<ArtNetNodeList>(*published_);
    list->insert(list->end(), other.published_->begin(), other.published_->end());
    published_ = std::move(list);
}
