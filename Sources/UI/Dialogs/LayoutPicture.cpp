// SPDX-License-Identifier: MIT
#include "UI/Dialogs/LayoutPicture.h"

#include <algorithm>
#include <utility>

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QTransform>

#include "Model/DocumentSummary.h"

namespace {

/// Where the canvas lies in an area of this size; at least a pixel wide and high.
QRectF FittedCanvas(QSize canvas, QSize size)
{
    QSizeF fitted(canvas);
    fitted.scale(size, Qt::KeepAspectRatio);
    fitted = fitted.expandedTo({1, 1});
    return {(size.width() - fitted.width()) / 2, (size.height() - fitted.height()) / 2,
            fitted.width(), fitted.height()};
}

QPolygonF OutlineOf(const VideoMapping& place, const QRectF& canvas)
{
    const double width = double{place.width} * canvas.width();
    const double height = double{place.height} * canvas.height();
    QTransform turned;
    turned.translate(canvas.x() + double{place.centerX} * canvas.width(),
                     canvas.y() + double{place.centerY} * canvas.height());
    turned.rotate(double{place.rotation});
    return turned.map(QPolygonF(QRectF(-width / 2, -height / 2, width, height)));
}

} // namespace

QPixmap DrawLayout(const DocumentSummary& summary, QSize size, qreal pixelRatio)
{
    QPixmap picture(size * pixelRatio);
    picture.setDevicePixelRatio(pixelRatio);
    picture.fill(Qt::transparent);
    const QPalette palette = QGuiApplication::palette();
    const QRectF canvas = FittedCanvas(summary.canvas, size);
    QPainter painter(&picture);
    painter.setPen(QPen(palette.color(QPalette::Window), 0)); // a thin line at any size
    painter.setBrush(palette.color(QPalette::Base));
    painter.drawRect(canvas.adjusted(0, 0, -1, -1));
    painter.setClipRect(canvas);
    QColor inside = palette.color(QPalette::Highlight);
    inside.setAlphaF(0.4F);
    painter.setBrush(inside);
    painter.setPen(QPen(palette.color(QPalette::Highlight), 0));
    // An element may lie anywhere: what is far beyond the canvas is not worth its arithmetic.
    const double most = 100 * std::max(canvas.width(), canvas.height());
    for (const VideoMapping& place : summary.places) {
        const QPolygonF outline = OutlineOf(place, canvas);
        const QRectF box = outline.boundingRect();
        if (box.width() < most && box.height() < most &&
            box.adjusted(-1, -1, 1, 1).intersects(canvas))
            painter.drawPolygon(outline);
    }
    return picture;
}

void LayoutPicture::Show(std::shared_ptr<const DocumentSummary> summary)
{
    summary_ = std::move(summary);
    drawn_ = QPixmap();
    update();
}

void LayoutPicture::paintEvent(QPaintEvent*)
{
    if (!summary_)
        return;
    if (drawn_.size() != size() * devicePixelRatioF())
        drawn_ = DrawLayout(*summary_, size(), devicePixelRatioF());
    QPainter(this).drawPixmap(0, 0, drawn_);
}
