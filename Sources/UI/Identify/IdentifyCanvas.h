// SPDX-License-Identifier: MIT
#pragma once

#include "Model/ElementChanges.h"

class QWidget;

/// What identifying asks of the canvas.
class IdentifyCanvas
{
public:
    virtual ~IdentifyCanvas() = default;

    [[nodiscard]] virtual ElementIds SelectedIds() const = 0;
    /// Selects these elements and no others, and scrolls them into sight. No undo step.
    virtual void Select(const ElementIds& ids) = 0;
    /// Ends a gesture of the mouse that still runs.
    virtual void EndGesture() = 0;
    /// What has the keyboard while one works on the canvas. Lives as long as the canvas.
    [[nodiscard]] virtual QWidget& View() const = 0;
    /// The list that selects the same elements. It has the keyboard, or a child of it while a name
    /// is edited. Lives as long as the canvas.
    [[nodiscard]] virtual QWidget& List() const = 0;
};
