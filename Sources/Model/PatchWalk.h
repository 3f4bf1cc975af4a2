// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "Model/ElementChanges.h"

class MappedDeviceModel;

/// Goes through elements of a document one by one in patch order: by universe, node and channel,
/// and where these are equal in the order of their rows. Elements without an address are sent
/// nowhere; they are counted and left out.
class PatchWalk
{
public:
    /// Through these elements, or through all of the document when there are none of them. Begins
    /// at `start` when that is among them, otherwise at the first one.
    void Begin(const MappedDeviceModel& document, const ElementIds& chosen, std::int64_t start);
    /// After elements came, went or got other addresses. Stays at the present element; when that
    /// went, goes to the next one that is left, or behind the last one to the one before.
    void Follow(const MappedDeviceModel& document);

    /// The identifier of the present element, 0 for none.
    [[nodiscard]] std::int64_t Current() const { return order_.empty() ? 0 : order_[position_]; }
    /// Of the present element, from 0 on.
    [[nodiscard]] std::size_t Position() const { return position_; }
    [[nodiscard]] std::size_t Count() const { return order_.size(); }
    [[nodiscard]] std::size_t LeftOut() const { return leftOut_; }
    /// The elements that Begin was given; none for a walk through all.
    [[nodiscard]] const ElementIds& Chosen() const { return chosen_; }

    // These stay within the walk, and do nothing in an empty one.

    void Step(std::ptrdiff_t by);
    void GoToFirst() { position_ = 0; }
    void GoToLast() { position_ = order_.empty() ? 0 : order_.size() - 1; }
    /// False, and nothing done, when the element isn't in the walk.
    bool GoTo(std::int64_t element);

private:
    void Arrange(const MappedDeviceModel& document);

    ElementIds chosen_;
    ElementIds order_;
    std::size_t position_ = 0;
    std::size_t leftOut_ = 0;
};
