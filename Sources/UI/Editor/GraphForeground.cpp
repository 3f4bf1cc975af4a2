// SPDX-License-Identifier: MIT
#include "UI/Editor/GraphForeground.h"

#include <QGraphicsView>
#include <QPainter>

GraphForeground::GraphForeground()
    : LEDGraphicsItem(ForegroundKind)
{
    setVisible(false);
}

void GraphForeground::Cover(const QGraphicsView* view)
{
    prepareGeometryChange();
    view_ = view;
}

QRectF GraphForeground::boundingRect() const
{
    return view_ ? view_->mapToScene(view_->rect()).boundingRect() : rect_;
}

void GraphForeground::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    painter->fillRect(boundingRect(), QColor(75, 75, 75, 100));
}
