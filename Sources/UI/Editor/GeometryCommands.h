// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QPointF>
#include <QSizeF>

#include "UI/Editor/ElementCommand.h"

/// Moves elements by the mouse, or to a typed place.
class MoveCommand final : public ElementCommand
{
public:
    /// `final` is how the model's signal names the change: true for a typed place, false for a
    /// drag.
    MoveCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids, bool final);

    void SetDelta(QPointF delta) { delta_ = delta; }
    /// The left or top edge that all elements get; counts as long as there is no delta.
    void SetLeft(double left) { left_ = left; }
    void SetTop(double top) { top_ = top; }
    [[nodiscard]] bool ChangesNothing() const;

    void undo() override;
    void redo() override;
    [[nodiscard]] int id() const override { return MoveCommandId; }

private:
    bool final_;
    QPointF delta_;
    std::optional<double> left_;
    std::optional<double> top_;
};

/// Resizes elements by a grabber, or to a typed size.
class SizeRectangleCommand final : public ElementCommand
{
public:
    /// `corner` is EditorGeometry::NoCorner for a typed size.
    SizeRectangleCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids,
                         int corner, bool snap);

    /// How much every element grows, in its own axes.
    void SetGrowth(QSizeF growth) { growth_ = growth; }
    /// The width or height that all elements get; counts as long as nothing grows.
    void SetWidth(double width) { width_ = width; }
    void SetHeight(double height) { height_ = height; }
    [[nodiscard]] bool ChangesNothing() const;

    void undo() override;
    void redo() override;
    [[nodiscard]] int id() const override { return SizeCommandId; }

private:
    [[nodiscard]] EditorGeometry::Placement After(const ElementState& element) const;

    int corner_;
    bool snap_;
    QSizeF growth_{0, 0};
    std::optional<double> width_;
    std::optional<double> height_;
};

/// Turns each element about its own centre.
class RotateRectangleCommand final : public ElementCommand
{
public:
    RotateRectangleCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids);

    /// Relative to what the elements have, or the angle that all get.
    void SetAngle(double degrees, bool relative = true);
    [[nodiscard]] bool ChangesNothing() const;

    void undo() override;
    void redo() override;
    [[nodiscard]] int id() const override { return RotateCommandId; }

private:
    [[nodiscard]] float After(const ElementState& element) const;

    bool relative_ = true;
    double angle_ = 0;
};

/// Mirrors elements, or takes that back, in one direction.
class FlipRectangleCommand final : public ElementCommand
{
public:
    FlipRectangleCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids,
                         FlipDirection direction, bool state);

    void undo() override;
    void redo() override;
    [[nodiscard]] int id() const override { return FlipCommandId; }

private:
    FlipDirection direction_;
    bool state_;
};

/// Turns a group about its middle: each element goes round it and turns by the same angle.
class RotateSelectionCommand final : public ElementCommand
{
public:
    /// `startAngle` is what the angle of the group counts from.
    RotateSelectionCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids,
                           QPointF centre, double startAngle);

    void SetAngle(double degrees) { angle_ = degrees; }
    [[nodiscard]] double GetTurn() const { return angle_ - startAngle_; }
    [[nodiscard]] bool ChangesNothing() const { return qFuzzyIsNull(GetTurn()); }

    void undo() override;
    void redo() override;

private:
    QPointF centre_;
    double startAngle_;
    double angle_;
};
