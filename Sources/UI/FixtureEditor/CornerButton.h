// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

#include "FixtureModel/AutoMapWalk.h"

/// Chooses a corner in which auto-mapping starts, with a drawing of the walk from there: a dot
/// where it starts, an arrow where it ends.
class CornerButton : public QPushButton
{
    Q_OBJECT

public:
    explicit CornerButton(GridCorner corner, QWidget* parent = nullptr);

    /// Orientation and snake of the walk in the drawing.
    void SetWalk(bool horizontal, bool snake);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    AutoMapWalk walk_;
};
