// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <string>

#include <QString>

#include "Model/ElementChanges.h"
#include "Model/Trouble.h"

class MappedDeviceModel;

/// What can be wrong with a patch. Within a universe problems are listed in this order.
enum class PatchRule : std::uint8_t
{
    OutsideUniverse, ///< an element begins outside of channels 1 to 512
    BeyondUniverse,  ///< an element reaches beyond 512
    SplitPixel,      ///< and the end of the universe is within a pixel of it
    SharedChannels,  ///< a node receives channels of several elements
    MixedUniverse,   ///< broadcast, and also sent to a chosen node
    OutsideNetwork,  ///< a chosen node is not in the network
    SilentNode,      ///< a chosen node does not answer
    NoPort,          ///< a chosen node has no port for a universe that it is sent
    NoSubscriber,    ///< not sent, since no node announced it
    NotPutOut,       ///< broadcast, and none of the nodes that answer puts it out
    OtherSender,     ///< someone else sends one of our universes
    ManyBroadcasts,  ///< more universes by broadcast than nodes can be asked to take in
    MergerTarget,    ///< elements write on what the merger sends
    MergerNode,      ///< elements that are merged name a node, which has no meaning
    MergerSource,    ///< elements that are merged are sent on another universe
    SeveralNodes,    ///< elements of one universe go to several chosen nodes
    SameUniverse,    ///< several nodes put out the same universe
    UnusedPorts,     ///< nothing is patched to ports of a node
    FixtureChanged,  ///< the library has another definition than the elements
    FixtureGone,     ///< the library has no such fixture
    OffCanvas,       ///< no pixel of an element is on the canvas
    OverEdge,        ///< some are not
    TooSmall         ///< an element covers fewer pixels of the canvas than it has
};

/// How a problem is put right.
enum class PatchRemedy : std::uint8_t
{
    None, ///< by the operator, who alone knows how
    FreeAddress,
    SendToAll, ///< "Auto" for the elements
    LibraryDefinition,
    OntoCanvas,
    FitPixels ///< as large as the pixels need, about the same centre
};

/// Something that is wrong with a patch, as plain values: the words are made when they are shown.
struct PatchProblem
{
    PatchRule rule = PatchRule::OutsideUniverse;
    /// None for a hint: all works, and it may not be what was meant.
    Trouble trouble = Trouble::None;
    std::int32_t universe = -1; ///< Port-Address; -1 for a problem of no single universe
    std::wstring node;          ///< dotted address, of another sender too; empty for none
    std::wstring name;          ///< of the node or the fixture
    ElementIds elements;        ///< that it concerns, in the order of their rows
    // Channels, 1-based. ManyBroadcasts: how many. MergerNode and MergerSource: `first` is the
    // Port-Address that is sent. TooSmall: the columns and rows of pixels.
    std::int32_t first = 0;
    std::int32_t last = 0;
    /// The addresses of nodes, or the universes of ports, as a list for people.
    std::wstring list;

    bool operator==(const PatchProblem&) const = default;
};

/// Gravest first, then by universe, with those of none last, rule and element. Problems of which
/// neither comes first are the same one, seen again: what it concerns may have changed.
[[nodiscard]] std::weak_ordering OrderOf(const PatchProblem& a, const PatchProblem& b);

[[nodiscard]] PatchRemedy RemedyOf(PatchRule rule);

// ---- Words -------------------------------------------------------------------------------------

/// "Fault", "Caution" or "Hint".
[[nodiscard]] QString SeverityText(Trouble trouble);
/// What is the matter, what it does to the output, and what the remedy's button says (empty without
/// a remedy).
[[nodiscard]] QString MatterText(const PatchProblem& problem);
[[nodiscard]] QString EffectText(const PatchProblem& problem);
[[nodiscard]] QString RemedyText(PatchRemedy remedy);
/// The universe of the problem, "0/4"; empty for none.
[[nodiscard]] QString ProblemUniverseText(const PatchProblem& problem);
/// The descriptions of the elements, at most `limit` of them and how many more there are.
[[nodiscard]] QString ProblemElementsText(const PatchProblem& problem,
                                          const MappedDeviceModel& document, int limit);
/// All of it in one line, for a terminal or a copy.
[[nodiscard]] QString ProblemLine(const PatchProblem& problem, const MappedDeviceModel& document);
