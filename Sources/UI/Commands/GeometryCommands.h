// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QPointF>
#include <QSizeF>

#include "UI/Commands/ElementCommand.h"

// The edits of geometry. `manager` outlives each command. What elements become is set once, or
// again and again while a gesture runs, and counts from what they were when the command was made.

/// Moves elements by the mouse, by keys, or to a typed place.
class MoveCommand final : public ElementCommand
{
public:
    MoveCommand(DeviceManager& manager, const ElementIds& ids);

    void MoveBy(QPointF delta);
    /// The left and top edges that all elements get, as far as they are given.
    void MoveTo(std::optional<double> left, std::optional<double> top);
    /// This move goes on with the one before, as those of a held key do: one step for both, when
    /// the one before ended where this one begins.
    void GoOn() { goesOn_ = true; }

    [[nodiscard]] int id() const override { return MoveCommandId; }
    bool mergeWith(const QUndoCommand* next) override;

private:
    bool goesOn_ = false;
};

/// Resizes elements by a grabber, or to a typed size.
class SizeRectangleCommand final : public ElementCommand
{
public:
    SizeRectangleCommand(DeviceManager& manager, const ElementIds& ids);

    /// How much every element grows, in its own axes, from a corner; ElementGeometry::NoCorner
    /// keeps the centre. With `snap` the top left goes to a whole pixel.
    void GrowBy(QSizeF growth, int corner, bool snap);
    /// The width and height that all elements get, as far as they are given: whole pixels, at least
    /// one.
    void Resize(std::optional<double> width, std::optional<double> height);

    [[nodiscard]] int id() const override { return SizeCommandId; }
};

/// Turns each element about its own centre.
class RotateRectangleCommand final : public ElementCommand
{
public:
    RotateRectangleCommand(DeviceManager& manager, const ElementIds& ids);

    void TurnBy(double degrees);
    /// The angle that all elements get, as it was typed.
    void TurnTo(double degrees);

    [[nodiscard]] int id() const override { return RotateCommandId; }
};

/// Mirrors elements, or takes that back, in one direction.
class FlipRectangleCommand final : public ElementCommand
{
public:
    FlipRectangleCommand(DeviceManager& manager, const ElementIds& ids, FlipDirection direction,
                         bool state);

    [[nodiscard]] int id() const override { return FlipCommandId; }
};

/// Turns a group about its middle: each element goes round it and turns by the same angle.
class RotateSelectionCommand final : public ElementCommand
{
public:
    RotateSelectionCommand(DeviceManager& manager, const ElementIds& ids, QPointF centre);

    void TurnBy(double degrees);

private:
    QPointF centre_;
};

/// Brings elements to a common edge or line.
class AlignRectangleCommand final : public ElementCommand
{
public:
    AlignRectangleCommand(DeviceManager& manager, const ElementIds& ids,
                          ElementGeometry::AlignMode mode);

    [[nodiscard]] int id() const override { return AlignCommandId; }
};

/// Spreads elements with equal gaps between the outermost ones.
class AlignDistributeRectangleCommand final : public ElementCommand
{
public:
    AlignDistributeRectangleCommand(DeviceManager& manager, const ElementIds& ids,
                                    ElementGeometry::DistributeMode mode);

    [[nodiscard]] int id() const override { return DistributeCommandId; }
};
