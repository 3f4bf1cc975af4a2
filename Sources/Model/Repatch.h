// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QFlags>
#include <QPolygonF>
#include <QString>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/PatchTurns.h"
#include "FixtureModel/UniverseMerging.h"
#include "Model/ElementChanges.h"
#include "Model/ElementOrder.h"
#include "Model/Trouble.h"

class DeviceManager;
class MappedLedItem;

/// What the operator chooses for a repatch.
struct RepatchOptions
{
    enum Sequence : int
    {
        ByPlace = 0,
        ByAddress = 1, ///< by universe, node and channel, as it is now
        AsListed = 2   ///< as the list of the elements shows them
    };
    struct Node
    {
        std::wstring address; ///< AutoNode or dotted
        std::wstring name;
    };

    Sequence sequence = ByPlace;
    ElementOrder place; ///< for ByPlace
    PatchRules rules;
    std::optional<Node> node; ///< nothing: each element keeps its own
};

/// What a repatch would leave wrong with an element.
enum class RepatchFault : std::uint8_t
{
    NoUniverse = 1,     ///< no universe is left for it: it keeps the address that it has
    CutOff = 2,         ///< it has channels beyond 512, which are not sent
    SharedChannels = 4, ///< another element, repatched or not, is sent on some of its channels
    MergerTarget = 8,   ///< its universe is one that the merger sends on
    MixedUniverse = 16  ///< its universe is broadcast and also sent to a chosen node
};
Q_DECLARE_FLAGS(RepatchFaults, RepatchFault)
Q_DECLARE_OPERATORS_FOR_FLAGS(RepatchFaults)

/// An element in the new order, with what a repatch would make of its address.
struct RepatchRow
{
    std::size_t element = 0; ///< index in Repatch::Elements()
    bool beginsLine = false; ///< ByPlace: the first one of a row or column
    std::optional<DMXMappingArtNet> address;
    RepatchFaults faults;
    QString sharedWith; ///< the description of the first element that shares channels

    [[nodiscard]] Trouble GetTrouble() const;
    /// What is wrong, a sentence for each fault; empty without any.
    [[nodiscard]] QString Words() const;
};

/// Elements that are to be repatched, with all of the document that counts for it, read once:
/// plans are made from it while the operator tries options. The document may change meanwhile.
class Repatch
{
public:
    struct Element
    {
        std::int64_t uniqueID = 0;
        QString description;
        std::int32_t channelCount = 0;
        std::optional<DMXMappingArtNet> address;
        QPolygonF outline; ///< on the canvas, in scene pixels; empty for one without a place
    };

    /// Ids without element are passed over.
    Repatch(const DeviceManager& manager, const ElementIds& ids);

    /// In the order of the list.
    [[nodiscard]] const std::vector<Element>& Elements() const { return elements_; }
    /// The lowest address that one of the elements has; 0/0/1 when none has any.
    [[nodiscard]] PatchAddress LowestAddress() const;
    /// Where an element of so many channels starts behind all elements that stay as they are;
    /// nothing when no universe is left.
    [[nodiscard]] std::optional<PatchAddress> BehindTheOthers(std::int32_t channelCount) const;

    /// A row for each element, in the new order.
    [[nodiscard]] std::vector<RepatchRow> Plan(const RepatchOptions& options) const;
    [[nodiscard]] bool Changes(const RepatchRow& row) const
    {
        return row.address != elements_[row.element].address;
    }
    /// The addresses of a plan, for DeviceManager::SetAddresses.
    [[nodiscard]] std::vector<ElementAddress>
    AddressesOf(const std::vector<RepatchRow>& rows) const;

private:
    /// An element that stays as it is.
    struct Other
    {
        QString description;
        std::int32_t channelCount = 0;
        DMXMappingArtNet address;
    };

    void Read(const MappedLedItem& item, QSizeF canvas);
    [[nodiscard]] std::vector<RepatchRow> InOrder(const RepatchOptions& options) const;
    [[nodiscard]] std::vector<RepatchRow> ByPlace(const ElementOrder& order) const;
    void SetAddresses(std::vector<RepatchRow>& rows, const RepatchOptions& options) const;
    void FindFaults(std::vector<RepatchRow>& rows) const;
    void FindShared(std::vector<RepatchRow>& rows) const;

    std::vector<Element> elements_;
    std::vector<Other> others_;
    UniverseMerging merging_;
};
