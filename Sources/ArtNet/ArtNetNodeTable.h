// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <list>
#include <memory>
#include <string_view>
#include <unordered_map>

#include <boost/container/small_vector.hpp>

#include "ArtNet/ArtNetNodeInfo.h"

/// The nodes of one server: which replies came, and which nodes are published. A node is its
/// address. It has a page for each BindIndex; without one (0), pages are told apart by their
/// switches, as long as they come in turns. Life is counted in polls: a page that leaves five of
/// them in a row without an answer is gone, and with its last page the node. A reply costs the same
/// however many nodes there are, since it is taken under the service's mutex. No lock of its own.
class ArtNetNodeTable
{
public:
    /// What is beyond these bounds is not taken, but for the first page of a node. A newcomer waits
    /// until another node has died: if it took the place of one that answers, the list would be
    /// another one with each poll. All of it takes a few megabytes.
    static constexpr std::size_t MaxNodes = 4096;
    static constexpr std::size_t MaxPagesOfNode = 64;
    static constexpr std::size_t MaxPages = 16384;

    using Snapshot = std::shared_ptr<const ArtNetNodeList>;

    ArtNetNodeTable();
    ArtNetNodeTable(const ArtNetNodeTable&) = delete;
    ArtNetNodeTable& operator=(const ArtNetNodeTable&) = delete;

    /// Takes a reply. It shows in the published list at the next Age.
    void Hear(const ArtNetReply& reply);
    /// Takes a whole node that is known from elsewhere, until it replies itself.
    void Feed(const ArtNetNodeInfo& node);
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
    struct Page
    {
        std::uint8_t bindIndex = 1;
        std::int8_t timeToLive = 0; ///< in polls
        bool fed = false;           ///< known from elsewhere
        bool shown = false;         ///< at the last Age
        bool inTurns = false;       ///< has come again after another page of its BindIndex
        std::uint8_t count = 0;
        std::array<std::uint16_t, 4> universes{};
        std::uint32_t switches = 0;
        std::uint64_t heard = 0; ///< of all replies, which one
    };
    using Pages = boost::container::small_vector<Page, 1>;

    struct Entry;
    using Entries = std::list<Entry>;

    struct Entry
    {
        ArtNetNodeInfo node;  ///< without universes
        Pages pages;          ///< by BindIndex and then by switches
        bool changed = false; ///< since the last Age
    };

    /// Null when there is no room.
    [[nodiscard]] Entry* Provide(const ArtNetNodeInfo& node);
    [[nodiscard]] Page* PageFor(Entry& entry, const ArtNetReply& reply);
    [[nodiscard]] Page* AddPage(Entry& entry, std::uint8_t bindIndex, std::uint32_t switches);
    /// Behind the pages that have the BindIndex of the first.
    [[nodiscard]] static Pages::iterator EndOfSame(const Pages::iterator& first,
                                                   const Pages::iterator& end);
    void ErasePages(Entry& entry, const Pages::iterator& first, const Pages::iterator& last);
    void AgePages(Entry& entry);
    [[nodiscard]] static ArtNetNodeInfo Whole(const Entry& entry);

    bool Append(const Entry& entry);
    void Remove(Entries::iterator entry);
    void RemoveDead();

    Entries entries_; ///< in order of first arrival
    std::unordered_map<std::string_view, Entries::iterator>
        byAddress_; ///< the first of each address
    std::size_t pageCount_ = 0;
    std::uint64_t heard_ = 0;
    Snapshot published_;
    std::uint32_t generation_ = 0;
};
