// SPDX-License-Identifier: MIT
#pragma once

#include <QGraphicsItem>

/// The common base of what the scene holds.
class LEDGraphicsItem : public QGraphicsItem
{
public:
    enum Kind : int
    {
        CanvasKind = 0,
        MappingKind = 1,
        ForegroundKind = 2
    };

    /// The kind, as a type of Qt's.
    [[nodiscard]] int type() const override { return UserType + static_cast<int>(kind_); }

protected:
    explicit LEDGraphicsItem(Kind kind)
        : kind_(kind)
    {}

private:
    Kind kind_;
};
