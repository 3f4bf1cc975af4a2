// SPDX-License-Identifier: MIT
#include "UI/Editor/GraphCanvas.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QVector>

#include "UI/Editor/EditorDisplayState.h"

namespace {

/// A larger cache costs more to draw at a step of the zoom than painting what the view shows.
constexpr double MostCachedPixels = 3'000'000;

/// Lines closer than `SolidSpacing` screen pixels fade, and are gone before they cover the picture.
constexpr double SolidSpacing = 5.0;
constexpr double LeastSpacing = 2.0;
constexpr QColor GridColor(180, 180, 240, 125);

QColor FadedGridColor(double spacing)
{
    QColor color = GridColor;
    const double strength = (spacing - LeastSpacing) / (SolidSpacing - LeastSpacing);
    color.setAlphaF(static_cast<float>(color.alphaF() * std::clamp(strength, 0.0, 1.0)));
    return color;
}

/// Upright lines at these places, as a strip that is laid down again and again: a line that steps
/// from row to row costs several times as much.
void PaintColumns(QPainter& painter, const QRectF& part, const std::vector<double>& columns,
                  const QPen& pen)
{
    constexpr int stripHeight = 16;
    const QTransform world = painter.worldTransform();
    const QRect target = world.mapRect(part).toAlignedRect();
    const double ratio = painter.device()->devicePixelRatioF();
    QPixmap strip((QSizeF(target.width(), stripHeight) * ratio).toSize());
    if (strip.isNull())
        return;
    strip.setDevicePixelRatio(ratio);
    strip.fill(Qt::transparent);
    QPainter onto(&strip);
    onto.setPen(pen);
    for (const double x : columns) {
        const double at = world.map(QPointF(x, 0)).x() - target.left();
        onto.drawLine(QPointF(at, 0), QPointF(at, stripHeight));
    }
    onto.end();
    painter.setWorldTransform(QTransform());
    painter.drawTiledPixmap(target, strip);
    painter.setWorldTransform(world);
}

} // namespace

GraphCanvas::GraphCanvas(const EditorDisplayState& display)
    : LEDGraphicsItem(CanvasKind)
    , display_(display)
{
    setFlag(ItemUsesExtendedStyleOption); // Tells which part is to be painted.
}

void GraphCanvas::SetSize(QSizeF size)
{
    prepareGeometryChange();
    rect_ = QRectF(QPointF(), size);
    Redraw();
}

void GraphCanvas::SetTestPattern(const QPixmap& picture)
{
    testPattern_ = picture;
    Redraw();
}

void GraphCanvas::Redraw()
{
    cachedScale_ = QSizeF();
    update();
}

void GraphCanvas::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    if (testPattern_.isNull() || rect_.isEmpty())
        return;
    const QRectF part = option->exposedRect.intersected(rect_);
    if (!display_.showGrid) {
        cache_ = QPixmap();
        PaintPicture(*painter, part);
        return;
    }
    const QTransform world = painter->worldTransform();
    const QSizeF scale(world.m11(), world.m22());
    const double ratio = painter->device()->devicePixelRatioF();
    const double pixels =
        rect_.width() * scale.width() * ratio * rect_.height() * scale.height() * ratio;
    const bool isSteady = scale == shownScale_;
    shownScale_ = scale;
    // A step of the zoom paints what the view shows; the whole is drawn when the zoom has settled.
    if (isSteady && pixels <= MostCachedPixels && world.type() <= QTransform::TxScale) {
        PaintCached(*painter);
        return;
    }
    cache_ = QPixmap();
    PaintPicture(*painter, part);
    PaintGrid(*painter, part);
}

void GraphCanvas::PaintCached(QPainter& painter)
{
    const QTransform world = painter.worldTransform();
    const QSizeF scale(world.m11(), world.m22());
    const double ratio = painter.device()->devicePixelRatioF();
    if (cache_.isNull() || cachedScale_ != scale || cache_.devicePixelRatioF() != ratio) {
        const QSizeF size(rect_.width() * scale.width(), rect_.height() * scale.height());
        const QSize pixels = (size * ratio).toSize().expandedTo(QSize(1, 1));
        if (cache_.size() != pixels)
            cache_ = QPixmap(pixels);
        cache_.setDevicePixelRatio(ratio);
        cache_.fill(Qt::transparent);
        QPainter onto(&cache_);
        onto.setRenderHints(painter.renderHints());
        onto.scale(scale.width(), scale.height());
        PaintPicture(onto, rect_);
        PaintGrid(onto, rect_);
        cachedScale_ = scale;
    }
    painter.save();
    painter.setWorldTransform(QTransform::fromTranslate(world.dx(), world.dy()));
    painter.drawPixmap(QPointF(), cache_);
    painter.restore();
}

void GraphCanvas::PaintPicture(QPainter& painter, const QRectF& part) const
{
    const double x = testPattern_.width() / rect_.width();
    const double y = testPattern_.height() / rect_.height();
    painter.drawPixmap(part, testPattern_,
                       QRectF(part.x() * x, part.y() * y, part.width() * x, part.height() * y));
}

void GraphCanvas::PaintGrid(QPainter& painter, const QRectF& part) const
{
    const double pixel = display_.ScreenPixel();
    const int stepX = std::max(1, static_cast<int>(display_.gridStepX));
    const int stepY = std::max(1, static_cast<int>(display_.gridStepY));
    const double spacing = std::min(stepX, stepY) / pixel;
    if (spacing <= LeastSpacing)
        return;

    QVector<QLineF> lines;
    // A line beside the exposed part may still reach into it by its width.
    const QRectF reach = part.adjusted(-pixel, -pixel, pixel, pixel);
    const auto first = [](double from, int step) {
        return static_cast<int>(std::ceil(std::max(from, 0.0) / step)) * step;
    };
    for (int y = first(reach.top(), stepY); y <= std::min(reach.bottom(), rect_.bottom());
         y += stepY)
        lines.append(QLineF(part.left(), y, part.right(), y));
    std::vector<double> columns;
    for (int x = first(reach.left(), stepX); x <= std::min(reach.right(), rect_.right());
         x += stepX)
        columns.push_back(x);
    const QPen pen(FadedGridColor(spacing), 0);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(pen);
    painter.drawLines(lines);
    PaintColumns(painter, part, columns, pen);
}
