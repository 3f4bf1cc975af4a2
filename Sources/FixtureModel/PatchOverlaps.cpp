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

} // namespace

SentChannels ChannelsSent(std::int32_t channel, std::int32_t channelCount)
{
    if (channel < 1)
        return {};
    const std::int64_t last = std::int64_t{channel} + channelCount - 1;
    return {channel, static_cast<std::int32_t>(std::min(last, PatchAddress::LastChannel)),
            last > PatchAddress::LastChannel};
}

std::vector<std::size_t> OverlapsWithChosen(std::span<const PatchedElement> elements)
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
    std::vector<bool> marks(elements.size());
    for (auto begin = sorted.begin(); begin != sorted.end();) {
        const auto end = std::find_if(begin, sorted.end(), [&](std::size_t i) {
            return elements[i].portAddress != elements[*begin].portAddress;
        });
        MarkUniverse(elements, {begin, end}, marks);
        begin = end;
    }
    std::erase_if(sorted, [&](std::size_t i) { return !marks[i]; });
    return sorted;
}
