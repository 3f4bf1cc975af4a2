// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "ArtNet/ArtNetNodeInfo.h"

/// The nodes of one server: which replies came, and which nodes are published. Life is counted in
/// polls: a node that leaves five of them in a row without an answer is gone. A reply costs the
/// same however many nodes there are, since it is taken under the service's mutex. No lock of its
/// own.
class ArtNetNodeTable
{
public:
    /// No network has more nodes; beyond it the least recently heard makes room.
    static constexpr std::size_t MaxNodes = 1024;

    using Snapshot = std::shared_ptr<const ArtNetNodeList>;

    ArtNetNodeTable();
    ArtNetNodeTable(const ArtNetNodeTable&) = delete;
    ArtNetNodeTable& operator=(const ArtNetNodeTable&) = delete;

    /// Takes a reply. It shows in the published list at the next Age.
    void Hear(const ArtNetNodeInfo& node);
    /// One poll has passed: publishes the nodes that are alive, in order of first arrival.
    void Age();
    /// Appends what another table knows. Of two entries of one node the first is kept up to date
    /// and the other dies of age.
    void TakeFrom(const ArtNetNodeTable& other);

    /// The list as it is now, which later changes of the table leave alone. Never null.
    [[nodiscard]] const Snapshot& Published() const { return published_; }
    /// Grows with each change of the published list.
    [[nodiscard]] std::uint32_t Generation() const { return generation_; }

private:
    struct Entry;
    using Entries = std::list<Entry>;

    struct Entry
    {
        ArtNetNodeInfo node;
        std::int32_t timeToLive = 0;                 ///< in polls
        bool changed = false;                        ///< since the last Age
        std::list<Entries::iterator>::iterator turn; ///< its place in byTurn_
    };

    void Append(const Entry& entry);
    void Remove(Entries::iterator entry);
    void RemoveDead();

    Entries entries_;                     ///< in order of first arrival
    std::list<Entries::iterator> byTurn_; ///< the least recently heard first
    std::unordered_map<std::string_view, Entries::iterator>
        byAddress_; ///< the first of each address
    Snapshot published_;
    std::uint32_t generation_ = 0;
};
