// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <vector>

/// The selected elements of the canvas. However many come and go at a time, the listener
/// is called once.
class ElementSelection
{
public:
    /// `changed` is called after each change, or once at the end of a batch that changed anything.
    explicit ElementSelection(std::function<void()> changed);

    /// While one lives, changes are gathered.
    class Batch
    {
    public:
        explicit Batch(ElementSelection& selection);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        ElementSelection& selection_;
    };

    void Set(std::int64_t id, bool selected);

    [[nodiscard]] int Count() const { return static_cast<int>(ids_.size()); }
    [[nodiscard]] bool IsEmpty() const { return ids_.empty(); }
    /// Ascending.
    [[nodiscard]] std::vector<std::int64_t> Ids() const { return {ids_.begin(), ids_.end()}; }

private:
    void Tell();

    std::function<void()> tellChange_;
    std::set<std::int64_t> ids_;
    int batches_ = 0;
    bool changed_ = false;
};
