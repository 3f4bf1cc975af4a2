// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetNodeTable.h"

#include <algorithm>
#include <span>

namespace {

constexpr std::int8_t FullLife = 5;

} // namespace

ArtNetNodeTable::ArtNetNodeTable()
    : published_(std::make_shared<ArtNetNodeList>())
{}

// ---- What comes in -----------------------------------------------------------------------------

void ArtNetNodeTable::Hear(const ArtNetReply& reply)
{
    Entry* provided = Provide(reply.node);
    if (!provided)
        return;
    Entry& entry = *provided;
    if (!entry.pages.empty() && entry.pages.front().fed)
        ErasePages(entry, entry.pages.begin(), entry.pages.end());
    Page* page = PageFor(entry, reply);
    if (!page)
        return;
    // The first page names the node, or of those without a number the first that came this time.
    const std::span before(entry.pages.data(), page);
    const bool names = std::ranges::none_of(before, [page](const Page& other) {
        return other.bindIndex != page->bindIndex || other.timeToLive == FullLife;
    });
    if (names && entry.node.name != reply.node.name) {
        entry.node.name = reply.node.name;
        entry.changed = true;
    }
    const std::span known(page->universes.data(), page->count);
    if (!std::ranges::equal(known, reply.node.universes)) {
        page->count = static_cast<std::uint8_t>(
            std::min(reply.node.universes.size(), page->universes.size()));
        std::copy_n(reply.node.universes.begin(), page->count, page->universes.begin());
        entry.changed = true;
    }
    page->switches = reply.switches;
    page->timeToLive = FullLife;
    page->heard = ++heard_;
}

ArtNetNodeTable::Entry* ArtNetNodeTable::Provide(const ArtNetNodeInfo& node)
{
    const auto found = byAddress_.find(node.Ip());
    if (found != byAddress_.end())
        return &*found->second;
    Entry added;
    added.node.name = node.name;
    added.node.ip = node.ip;
    return Append(added) ? &entries_.back() : nullptr;
}

ArtNetNodeTable::Page* ArtNetNodeTable::PageFor(Entry& entry, const ArtNetReply& reply)
{
    const std::uint8_t bindIndex = std::max<std::uint8_t>(reply.bindIndex, 1);
    const auto first = std::find_if(entry.pages.begin(), entry.pages.end(),
                                    [=](const Page& page) { return page.bindIndex == bindIndex; });
    const auto end = EndOfSame(first, entry.pages.end());
    if (first == end)
        return AddPage(entry, bindIndex, reply.switches);
    if (reply.bindIndex > 0) {
        ErasePages(entry, first + 1, end);
        return &*first;
    }
    const auto found =
        std::find_if(first, end, [&](const Page& page) { return page.switches == reply.switches; });
    if (found == end)
        return AddPage(entry, bindIndex, reply.switches);
    for (auto other = first; other != end; ++other) {
        if (other->heard > found->heard)
            other->inTurns = found->inTurns = true;
    }
    return &*found;
}

ArtNetNodeTable::Pages::iterator ArtNetNodeTable::EndOfSame(const Pages::iterator& first,
                                                            const Pages::iterator& end)
{
    return std::find_if(first, end,
                        [first](const Page& page) { return page.bindIndex != first->bindIndex; });
}

ArtNetNodeTable::Page* ArtNetNodeTable::AddPage(Entry& entry, std::uint8_t bindIndex,
                                                std::uint32_t switches)
{
    const bool full = entry.pages.size() >= MaxPagesOfNode || pageCount_ >= MaxPages;
    if (full && !entry.pages.empty())
        return nullptr;
    const auto place = std::ranges::find_if(entry.pages, [&](const Page& page) {
        return std::pair(page.bindIndex, page.switches) > std::pair(bindIndex, switches);
    });
    Page page;
    page.bindIndex = bindIndex;
    page.switches = switches;
    ++pageCount_;
    return &*entry.pages.insert(place, page);
}

void ArtNetNodeTable::Feed(const ArtNetNodeInfo& node)
{
    Entry* provided = Provide(node);
    if (!provided)
        return;
    Entry& entry = *provided;
    if (!entry.pages.empty() && Whole(entry) == node) {
        for (Page& page : entry.pages)
            page.timeToLive = page.shown ? FullLife : page.timeToLive;
        return;
    }
    ErasePages(entry, entry.pages.begin(), entry.pages.end());
    entry.node.name = node.name;
    entry.changed = true;
    std::span universes(node.universes.data(), node.universes.size());
    for (std::uint8_t bindIndex = 1; bindIndex == 1 || !universes.empty(); ++bindIndex) {
        Page* page = AddPage(entry, bindIndex, 0);
        if (!page)
            return;
        page->fed = true;
        page->timeToLive = FullLife;
        page->count = static_cast<std::uint8_t>(std::min(universes.size(), page->universes.size()));
        std::copy_n(universes.begin(), page->count, page->universes.begin());
        universes = universes.subspan(page->count);
    }
}

bool ArtNetNodeTable::Append(const Entry& entry)
{
    if (entries_.size() >= MaxNodes)
        return false;
    const auto added = entries_.insert(entries_.end(), entry);
    byAddress_.try_emplace(added->node.Ip(), added);
    pageCount_ += entry.pages.size();
    return true;
}

void ArtNetNodeTable::TakeFrom(const ArtNetNodeTable& other)
{
    for (const Entry& entry : other.entries_)
        Append(entry);
    auto list = std::make_shared<ArtNetNodeList>(*published_);
    list->insert(list->end(), other.published_->begin(), other.published_->end());
    published_ = std::move(list);
}

// ---- What goes and what shows ------------------------------------------------------------------

void ArtNetNodeTable::ErasePages(Entry& entry, const Pages::iterator& first,
                                 const Pages::iterator& last)
{
    pageCount_ -= static_cast<std::size_t>(last - first);
    entry.changed = entry.changed || first != last;
    entry.pages.erase(first, last);
}

void ArtNetNodeTable::Remove(Entries::iterator entry)
{
    ErasePages(*entry, entry->pages.begin(), entry->pages.end());
    const auto known = byAddress_.find(entry->node.Ip());
    if (known != byAddress_.end() && known->second == entry)
        byAddress_.erase(known);
    entries_.erase(entry);
}

void ArtNetNodeTable::AgePages(Entry& entry)
{
    Pages& pages = entry.pages;
    for (Page& page : pages)
        --page.timeToLive;
    const auto dead = std::remove_if(pages.begin(), pages.end(),
                                     [](const Page& page) { return page.timeToLive <= 0; });
    ErasePages(entry, dead, pages.end());
    // Of pages without a number the last one shows, and any other that came since the last poll or
    // comes in turns with others: a node that was patched anew repeats no page.
    for (auto first = pages.begin(); first != pages.end();) {
        const auto end = EndOfSame(first, pages.end());
        const auto last = std::max_element(
            first, end, [](const Page& a, const Page& b) { return a.heard < b.heard; });
        for (auto page = first; page != end; ++page) {
            const bool shown = page == last || page->inTurns || page->timeToLive == FullLife - 1;
            entry.changed = entry.changed || shown != page->shown;
            page->shown = shown;
        }
        first = end;
    }
}

ArtNetNodeInfo ArtNetNodeTable::Whole(const Entry& entry)
{
    ArtNetNodeInfo node = entry.node;
    for (const Page& page : entry.pages) {
        if (page.shown)
            node.universes.insert(node.universes.end(), page.universes.begin(),
                                  page.universes.begin() + page.count);
    }
    return node;
}

void ArtNetNodeTable::Age()
{
    bool changed = false;
    bool anyDead = false;
    for (Entry& entry : entries_) {
        AgePages(entry);
        anyDead = anyDead || entry.pages.empty();
        changed = changed || entry.changed;
        entry.changed = false;
    }
    if (anyDead)
        RemoveDead();
    if (!changed)
        return;
    auto list = std::make_shared<ArtNetNodeList>();
    list->reserve(entries_.size());
    for (const Entry& entry : entries_)
        list->push_back(Whole(entry));
    if (*list == *published_) // what changed may have changed back
        return;
    published_ = std::move(list);
    ++generation_;
}

void ArtNetNodeTable::RemoveDead()
{
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const auto next = std::next(entry);
        if (entry->pages.empty())
            Remove(entry);
        entry = next;
    }
    // Where the first entry of an address has died, a second one may take its place.
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry)
        byAddress_.try_emplace(entry->node.Ip(), entry);
}
