// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/CornerButton.h"

#include <cmath>

#include <QPainter>
#include <QPolygonF>

namespace {

constexpr int Columns = 3;
constexpr int Rows = 3;
constexpr QSize ButtonSize(46, 34);
constexpr QSizeF Step(9, 7); ///< between two cells of the drawing
constexpr double DotRadius = 2.5;
constexpr double ArrowLength = 6;
constexpr double ArrowAngle = 0.5; ///< of each side to the line, in radians

void PaintArrow(QPainter& painter, QPointF from, QPointF tip)
{
    const double direction = std::atan2(tip.y() - from.y(), tip.x() - from.x());
    QPolygonF head(QVector<QPointF>{tip});
    for (const double side : {-ArrowAngle, ArrowAngle})
        head.append(tip -
                    ArrowLength * QPointF(std::cos(direction + side), std::sin(direction + side)));
    painter.drawPolygon(head);
}

} // namespace

CornerButton::CornerButton(GridCorner corner, QWidget* parent)
    : QPushButton(parent)
{
    walk_.corner = corner;
    setCheckable(true);
    setAutoDefault(false);
}

void CornerButton::SetWalk(bool horizontal, bool snake)
{
    walk_.horizontal = horizontal;
    walk_.snake = snake;
    update();
}

QSize CornerButton::sizeHint() const
{
    return ButtonSize;
}

void CornerButton::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF middle = QRectF(rect()).center();
    QPolygonF line;
    for (const std::int32_t cell : walk_.Cells(Columns, Rows)) {
        const int row = cell / Columns;
        const int column = cell % Columns;
        line.append(middle + QPointF((column - (Columns - 1) / 2.0) * Step.width(),
                                     (row - (Rows - 1) / 2.0) * Step.height()));
    }
    const QColor colour = palette().color(QPalette::ButtonText);
    painter.setPen(QPen(colour, 1.2));
    painter.drawPolyline(line);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(line.front(), DotRadius, DotRadius);
    PaintArrow(painter, line[line.size() - 2], line.back());
}
