// SPDX-License-Identifier: MIT
#include "FixtureModel/SharedChannels.h"

#include <algorithm>
#include <tuple>

#include "FixtureModel/DMXMapping.h"

namespace {

bool Share(const PatchedElement& a, const PatchedElement& b)
{
    return a.channels.first <= b.channels.last && b.channels.first <= a.channels.last &&
           (a.node == b.node || a.node == AutoNode || b.node == AutoNode);
}

} // namespace

std::vector<std::optional<std::size_t>> FirstSharing(std::span<const PatchedElement> elements)
{
    std::vector<std::size_t> sorted;
    sorted.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!elements[i].channels.AreNone())
            sorted.push_back(i);
    }
    std::ranges::sort(sorted, {}, [&](std::size_t i) {
        return std::tuple(elements[i].portAddress, elements[i].channels.first, i);
    });
    std::vector<std::optional<std::size_t>> first(elements.size());
    auto begin = sorted.begin(); // of the universe
    for (const std::size_t index : sorted) {
        const PatchedElement& element = elements[index];
        while (elements[*begin].portAddress != element.portAddress)
            ++begin;
        if (!element.chosen)
            continue;
        for (auto other = begin;
             other != sorted.end() && elements[*other].portAddress == element.portAddress &&
             elements[*other].channels.first <= element.channels.last;
             ++other)
        {
            if (*other != index && Share(element, elements[*other])) {
                first[index] = *other;
                break;
            }
        }
    }
    return first;
}
