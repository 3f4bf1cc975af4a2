// SPDX-License-Identifier: MIT
#pragma once

#include "Model/ElementChanges.h"

/// What the inspector asks of the canvas.
class InspectorCanvas
{
public:
    virtual ~InspectorCanvas() = default;

    /// The elements that the next edit is for.
    [[nodiscard]] virtual ElementIds SelectedIds() const = 0;
    /// The angle of the frame round a selection of several: what all elements have, 0 when they
    /// differ.
    [[nodiscard]] virtual double GroupAngle() const = 0;
    /// Turns the group about its middle, as one undo step; none when nothing changes by it.
    virtual void TurnGroupBy(double degrees) = 0;
    /// Whether a gesture of the mouse changes the elements at the moment.
    [[nodiscard]] virtual bool IsDragging() const = 0;
    /// Ends a gesture of the mouse that still runs: its elements must not be edited in the middle
    /// of it.
    virtual void EndGesture() = 0;
    [[nodiscard]] virtual bool SnapsToGrid() const = 0;
    /// Gives the keyboard back to the canvas.
    virtual void TakeFocus() = 0;
};
