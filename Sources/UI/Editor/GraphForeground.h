// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Editor/LEDGraphicsItem.h"

class QGraphicsView;

/// A grey veil over everything that its view shows. Hidden by default.
class GraphForeground final : public LEDGraphicsItem
{
public:
    GraphForeground();

    /// The view to cover, which outlives the item; null for none.
    void Cover(const QGraphicsView* view);

    [[nodiscard]] QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    /// What lies under the veil can't be reached.
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent*) override {}

private:
    const QGraphicsView* view_ = nullptr;
    QRectF rect_{0, 0, 1, 1};
};
