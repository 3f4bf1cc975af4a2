// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QModelIndex>
#include <QString>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/VideoMapping.h"

// What DeviceManager takes and gives: the record of a new element, and the entries of its batch
// operations. An index is one of the document model (never of a proxy), in any column of the
// element's row. All lengths are scene pixels and all angles degrees, but for ElementMapping.

/// Identifiers of elements, as MappedLedItem::uniqueID.
using ElementIds = std::vector<std::int64_t>;

/// What a new element is made from.
struct MappedObjectParams
{
    QString ipconf; ///< "Auto" or the dotted address of the receiving node
    QString ipName;
    float posX = 0; ///< centre
    float posY = 0; ///< centre
    float width = 0;
    float height = 0;
    std::int64_t fixtureID = 0; ///< of the fixture in the library
    std::int32_t channel = 1;
    std::int32_t universe = 0;
    std::int32_t subnet = 0;
};

/// An element that was added, with the record it was made from.
struct AddedElement
{
    QModelIndex index;
    MappedObjectParams params;
};

/// The whole geometry of an element as the document keeps it, in fractions of the canvas.
struct ElementMapping
{
    std::int64_t uniqueID = 0;
    VideoMapping video;

    bool operator==(const ElementMapping&) const = default;
};

/// Where the channels of an element are sent; nothing for an element without Art-Net address.
struct ElementAddress
{
    std::int64_t uniqueID = 0;
    std::optional<DMXMappingArtNet> address;

    bool operator==(const ElementAddress&) const = default;
};

/// The name of an element.
struct ElementDescription
{
    std::int64_t uniqueID = 0;
    std::wstring description;

    bool operator==(const ElementDescription&) const = default;
};

/// A place: the left top corner for a move, the centre where the operation says so.
struct ElementPosition
{
    QModelIndex index;
    double x = 0;
    double y = 0;
};

struct ElementSize
{
    QModelIndex index;
    double width = 0;
    double height = 0;
};

struct ElementRotation
{
    QModelIndex index;
    float degrees = 0;
};

enum FlipDirection : int
{
    FlipHorizontal = 0,
    FlipVertical = 1
};

struct ElementFlip
{
    QModelIndex index;
    int direction = FlipHorizontal;
    bool state = false;
};

/// A centre and a size.
struct ElementRect
{
    QModelIndex index;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};
