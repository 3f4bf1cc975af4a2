// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <QModelIndex>
#include <QString>

// What goes through DeviceManager's door: the record of a new element, and the entries of its batch
// operations. An index is one of the document model (never of a proxy), in any column of the
// element's row. All lengths are scene pixels, all angles degrees.

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

    // What a removal keeps beside, to bring the element back as it was. Adding an element doesn't
    // look at these.
    std::int64_t elementID = 0;
    int naturalWidth = 0;
    int naturalHeight = 0;
    float rotation = 0;
    bool flipHorizontal = false;
    bool flipVertical = false;
};

/// An element that was added, with the record it was made from.
struct AddedObject
{
    QModelIndex index;
    MappedObjectParams params;
};

/// A place: the left top corner for a move, the centre where the operation says so.
struct ObjectPosition
{
    QModelIndex index;
    double x = 0;
    double y = 0;
};

struct ObjectSize
{
    QModelIndex index;
    double width = 0;
    double height = 0;
};

struct ObjectRotation
{
    QModelIndex index;
    float degrees = 0;
};

enum FlipDirection : int
{
    FlipHorizontal = 0,
    FlipVertical = 1
};

struct ObjectFlip
{
    QModelIndex index;
    int direction = FlipHorizontal;
    bool state = false;
};

/// A centre and a size.
struct ObjectRect
{
    QModelIndex index;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};
