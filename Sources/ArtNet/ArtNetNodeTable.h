// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "ArtNet/ArtNetNodeInfo.h"

/// The nodes of one server: what was heard, and what of it is published. Life is counted in polls:
/// a node that answers five of them in a row with silence is gone. No lock of its own.
class ArtNetNodeTable
{
public:
    /// No network has more nodes; beyond it the least recently heard makes room.
    static constexpr std::size_t MaxNodes = 4096;

    /// A reply came in. It shows in the published list at the next Age.
    void Hear(const ArtNetNodeInfo& node);
    /// One poll has passed: publishes the nodes that are alive, in order of first arrival.
    void Age();
    /// Appends what another table knows.
    void TakeFrom(const ArtNetNodeTable& other);

    [[nodiscard]] const ArtNetNodeList& Published() const { return published_; }
    /// Grows with each change of the published list.
    [[nodiscard]] std::uint32_t Generation() const { return generation_; }

private:
    struct Entry
    {
        ArtNetNodeInfo node;
        std::int32_t timeToLive = 0; ///< in polls
        bool changed = false;
    };

    void MakeRoom();

    std::vector<Entry> entries_;
    ArtNetNodeList published_;
    std::uint32_t generation_ = 0;
};
