// SPDX-License-Identifier: MIT
#include "FixtureModel/PatchOverlaps.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/FreePatch.h"

namespace {

/// The greatest value that was noted of all chosen elements, of those without a node and of those
/// of each node.
class Greatest
{
public:
    static constexpr std::int32_t None = -PatchAddress::LastChannel - 1;

    void Note(std::wstring_view node, std::int32_t value)
    {
        any_ = std::max(any_, value);
        if (node == AutoNode) {
            auto_ = std::max(auto_, value);
        } else {
            std::int32_t& ofNode = ofNode_.try_emplace(node, None).first->second;
            ofNode = std::max(ofNode, value);
        }
    }
    /// Of the elements that reach a node together with one of this node.
    [[nodiscard]] std::int32_t For(std::wstring_view node) const
    {
        if (node == AutoNode)
            return any_;
        const auto ofNode = ofNode_.find(node);
        return std::max(auto_, ofNode == ofNode_.end() ? None : ofNode->second);
    }

private:
    std::int32_t any_ = None;
    std::int32_t auto_ = None;
    std::unordered_map<std::wstring_view, std::int32_t> ofNode_;
};

using Indices = std::vector<std::size_t>;

bool OneReceivesBoth(std::wstring_view one, std::wstring_view other)
{
    return one == other || one == AutoNode || other == AutoNode;
}

/// Marks the overlaps in one universe, whose elements are sorted by their first channel: an element
/// shares channels with a chosen one before it when one of these ends late enough, and with one
/// behind it when one of these begins early enough.
void MarkUniverse(std::span<const PatchedElement> elements, std::span<const std::size_t> universe,
                  std::vector<bool>& marks)
{
    Greatest end;
    for (const std::size_t index : universe) {
        const PatchedElement& element = elements[index];
        if (end.For(element.node) >= element.channels.first)
            marks[index] = true;
        if (element.chosen)
            end.Note(element.node, element.channels.last);
    }
    Greatest begin; // negative, so that the greatest is the earliest
    for (auto place = universe.rbegin(); place != universe.rend(); ++place) {
        const PatchedElement& element = elements[*place];
        if (begin.For(element.node) >= -element.channels.last)
            marks[*place] = true;
        if (element.chosen)
            begin.Note(element.node, -element.channels.first);
    }
}

/// The elements that have channels, by universe, first channel and index.
Indices SortedByChannel(std::span<const PatchedElement> elements)
{
    Indices sorted;
    sorted.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!elements[i].channels.AreNone())
            sorted.push_back(i);
    }
    std::ranges::sort(sorted, {}, [&](std::size_t i) {
        return std::tuple(elements[i].portAddress, elements[i].channels.first, i);
    });
    return sorted;
}

/// Calls `work` with the part of `sorted` that is in each universe.
template <class Work>
void ForEachUniverse(std::span<const PatchedElement> elements, const Indices& sorted, Work work)
{
    for (auto begin = sorted.begin(); begin != sorted.end();) {
        const auto end = std::find_if(begin, sorted.end(), [&](std::size_t i) {
            return elements[i].portAddress != elements[*begin].portAddress;
        });
        work(std::span(begin, end));
        begin = end;
    }
}

/// The first in `others`, which are sorted by their first channel, that has a channel of this
/// element, as a place in it; its end when none has.
std::size_t FirstWithChannelOf(std::size_t index, std::span<const PatchedElement> elements,
                               const Indices& others)
{
    const SentChannels& channels = elements[index].channels;
    for (std::size_t place = 0; place < others.size(); ++place) {
        const SentChannels& its = elements[others[place]].channels;
        if (its.first > channels.last)
            break;
        if (others[place] != index && its.last >= channels.first)
            return place;
    }
    return others.size();
}

/// Of one universe. Node by node: what no node receives together need not be looked at.
void FindFirstSharing(std::span<const PatchedElement> elements,
                      std::span<const std::size_t> universe,
                      std::vector<std::optional<std::size_t>>& first)
{
    const Indices all(universe.begin(), universe.end());
    std::unordered_map<std::wstring_view, Indices> ofNode;
    for (const std::size_t index : universe)
        ofNode[elements[index].node].push_back(index);
    const auto isEarlier = [&](std::size_t one, std::size_t other) {
        return std::pair(elements[one].channels.first, one) <
               std::pair(elements[other].channels.first, other);
    };
    const auto consider = [&](std::size_t index, const Indices& others) {
        const std::size_t place = FirstWithChannelOf(index, elements, others);
        std::optional<std::size_t>& best = first[index];
        if (place < others.size() && (!best || isEarlier(others[place], *best)))
            best = others[place];
    };
    for (const std::size_t index : universe) {
        if (!elements[index].chosen)
            continue;
        if (elements[index].node == AutoNode) {
            consider(index, all);
        } else {
            consider(index, ofNode[elements[index].node]);
            consider(index, ofNode[AutoNode]);
        }
    }
}

/// Gathers the groups of one universe from its elements, in the order of their first channels.
class Grouping
{
public:
    explicit Grouping(std::span<const PatchedElement> elements)
        : elements_(elements)
    {}

    void Add(std::size_t index)
    {
        const PatchedElement& element = elements_[index];
        const std::size_t part = parts_.size();
        parts_.push_back({{element.portAddress, PatchAddress::LastChannel, 0, {index}}, part});
        // Of the elements of one node, the one that ends last shares channels with this one if any
        // of them does, and is in the group of all that do.
        for (auto& [node, open] : open_) {
            const std::int32_t end = elements_[open.element].channels.last;
            if (OneReceivesBoth(node, element.node) && end >= element.channels.first)
                Join(part, open.part, element.channels.first, std::min(end, element.channels.last));
        }
        const auto [open, isNew] = open_.try_emplace(element.node, Open{index, part});
        if (!isNew && elements_[open->second.element].channels.last < element.channels.last)
            open->second = {index, part};
    }

    void MoveGroupsTo(std::vector<OverlapGroup>& groups)
    {
        for (Part& part : parts_) {
            if (part.group.elements.size() < 2)
                continue;
            std::ranges::sort(part.group.elements);
            groups.push_back(std::move(part.group));
        }
    }

private:
    /// A group that grows. One that was joined to another is empty, and leads to it.
    struct Part
    {
        OverlapGroup group;
        std::size_t leader;
    };
    struct Open
    {
        std::size_t element;
        std::size_t part;
    };

    std::size_t LeaderOf(std::size_t part)
    {
        while (parts_[part].leader != part)
            part = parts_[part].leader = parts_[parts_[part].leader].leader;
        return part;
    }
    void Join(std::size_t one, std::size_t other, std::int32_t first, std::int32_t last)
    {
        one = LeaderOf(one);
        other = LeaderOf(other);
        OverlapGroup& into = parts_[std::min(one, other)].group;
        if (one != other) {
            OverlapGroup& from = parts_[std::max(one, other)].group;
            into.elements.insert(into.elements.end(), from.elements.begin(), from.elements.end());
            into.first = std::min(into.first, from.first);
            into.last = std::max(into.last, from.last);
            from.elements.clear();
            parts_[std::max(one, other)].leader = std::min(one, other);
        }
        into.first = std::min(into.first, first);
        into.last = std::max(into.last, last);
    }

    std::span<const PatchedElement> elements_;
    std::vector<Part> parts_;
    std::unordered_map<std::wstring_view, Open> open_; ///< the one that ends last, of each node
};

} // namespace

SentChannels ChannelsSent(std::int32_t channel, std::int32_t channelCount)
{
    if (channel < 1)
        return {};
    const std::int64_t last = std::int64_t{channel} + channelCount - 1;
    return {channel, static_cast<std::int32_t>(std::min(last, PatchAddress::LastChannel)),
            last > PatchAddress::LastChannel};
}

bool ShareChannels(const PatchedElement& one, const PatchedElement& other)
{
    return one.portAddress == other.portAddress && OneReceivesBoth(one.node, other.node) &&
           one.channels.first <= other.channels.last && other.channels.first <= one.channels.last;
}

std::vector<std::size_t> OverlapsWithChosen(std::span<const PatchedElement> elements)
{
    Indices sorted = SortedByChannel(elements);
    std::vector<bool> marks(elements.size());
    ForEachUniverse(elements, sorted, [&](std::span<const std::size_t> universe) {
        MarkUniverse(elements, universe, marks);
    });
    std::erase_if(sorted, [&](std::size_t i) { return !marks[i]; });
    return sorted;
}

std::vector<OverlapGroup> OverlapGroups(std::span<const PatchedElement> elements)
{
    std::vector<OverlapGroup> groups;
    ForEachUniverse(elements, SortedByChannel(elements),
                    [&](std::span<const std::size_t> universe) {
                        Grouping grouping(elements);
                        for (const std::size_t index : universe)
                            grouping.Add(index);
                        grouping.MoveGroupsTo(groups);
                    });
    return groups;
}

std::vector<std::optional<std::size_t>> FirstSharing(std::span<const PatchedElement> elements)
{
    std::vector<std::optional<std::size_t>> first(elements.size());
    ForEachUniverse(elements, SortedByChannel(elements),
                    [&](std::span<const std::size_t> universe) {
                        FindFirstSharing(elements, universe, first);
                    });
    return first;
}
