// SPDX-License-Identifier: MIT
#include "UI/Repatch/OrderPicture.h"

#include <algorithm>
#include <utility>

#include <QEvent>
#include <QPainter>
#include <QPalette>
#include <QTransform>

#include "UI/Widgets/DeskLook.h"

namespace {

constexpr double Margin = 16;   ///< room for the numbers at the ends
constexpr float Within = 0.25F; ///< how much of the ground the elements cover
constexpr int TextPixels = 11;

} // namespace

OrderPicture::OrderPicture(QWidget* parent)
    : QWidget(parent)
{
    setAccessibleName(tr("Picture of the order"));
}

void OrderPicture::SetOutlines(std::vector<QPolygonF> outlines)
{
    outlines_ = std::move(outlines);
    box_ = QRectF();
    for (const QPolygonF& outline : outlines_)
        box_ = box_.united(outline.boundingRect());
    elements_ = QPixmap();
    update();
}

void OrderPicture::ShowPath(std::vector<Stop> path)
{
    path_.clear();
    places_.clear();
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (outlines_[path[i].outline].isEmpty())
            continue;
        path_.push_back(path[i]);
        places_.push_back(static_cast<int>(i));
    }
    update();
}

void OrderPicture::Mark(int place)
{
    marked_ = place;
    update();
}

// ---- Painting ----------------------------------------------------------------------------------

QTransform OrderPicture::Fitted() const
{
    const QRectF room = QRectF(rect()).adjusted(Margin, Margin, -Margin, -Margin);
    const QSizeF size = box_.size().expandedTo({1, 1});
    const double scale = std::min(room.width() / size.width(), room.height() / size.height());
    QTransform fitted;
    fitted.translate(room.center().x(), room.center().y());
    fitted.scale(scale, scale);
    fitted.translate(-box_.center().x(), -box_.center().y());
    return fitted;
}

void OrderPicture::DrawElements(const QTransform& toWidget)
{
    elements_ = QPixmap(size() * devicePixelRatioF());
    elements_.setDevicePixelRatio(devicePixelRatioF());
    elements_.fill(CurrentLook().list);
    QPainter painter(&elements_);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor inside = CurrentLook().listTextFaded;
    painter.setPen(QPen(inside, 0));
    inside.setAlphaF(Within);
    painter.setBrush(inside);
    for (const QPolygonF& outline : outlines_) {
        if (!outline.isEmpty())
            painter.drawPolygon(toWidget.map(outline));
    }
}

void OrderPicture::DrawPath(QPainter& painter, const QTransform& toWidget) const
{
    const auto centre = [&](const Stop& stop) {
        return toWidget.map(outlines_[stop.outline].boundingRect().center());
    };
    QVector<QLineF> runs;
    QVector<QLineF> jumps;
    for (std::size_t i = 1; i < path_.size(); ++i)
        (path_[i].afterJump ? jumps : runs).append({centre(path_[i - 1]), centre(path_[i])});
    QPen pen(CurrentLook().accent, 1, Qt::DotLine);
    painter.setPen(pen);
    painter.drawLines(jumps);
    pen.setStyle(Qt::SolidLine);
    pen.setWidthF(2);
    painter.setPen(pen);
    painter.drawLines(runs);
    if (path_.size() > 1)
        DrawNumber(painter, centre(path_.back()), places_.back() + 1);
    DrawNumber(painter, centre(path_.front()), places_.front() + 1);
}

void OrderPicture::DrawNumber(QPainter& painter, QPointF at, int number) const
{
    const QString text = QString::number(number);
    const double height = painter.fontMetrics().height();
    const double width =
        std::max(height, painter.fontMetrics().horizontalAdvance(text) + height / 2);
    QRectF ground(at.x() - width / 2, at.y() - height / 2, width, height);
    ground.moveLeft(std::clamp(ground.left(), 0.0, std::max(0.0, this->width() - width)));
    painter.setPen(Qt::NoPen);
    painter.setBrush(CurrentLook().accent);
    painter.drawRoundedRect(ground, height / 2, height / 2);
    painter.setPen(CurrentLook().accentText);
    painter.drawText(ground, Qt::AlignCenter, text);
}

void OrderPicture::DrawMark(QPainter& painter, const QTransform& toWidget) const
{
    const auto place = std::ranges::find(places_, marked_);
    if (place == places_.end())
        return;
    const QPolygonF& outline =
        outlines_[path_[static_cast<std::size_t>(place - places_.begin())].outline];
    painter.setPen(QPen(CurrentLook().listText, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(toWidget.map(outline));
    DrawNumber(painter, toWidget.map(outline.boundingRect().center()), marked_ + 1);
}

void OrderPicture::paintEvent(QPaintEvent*)
{
    const QTransform toWidget = Fitted();
    if (elements_.size() != size() * devicePixelRatioF())
        DrawElements(toWidget);
    QPainter painter(this);
    painter.drawPixmap(0, 0, elements_);
    if (path_.empty())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    QFont small = font();
    small.setPixelSize(TextPixels);
    painter.setFont(small);
    DrawPath(painter, toWidget);
    DrawMark(painter, toWidget);
}

void OrderPicture::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::StyleChange)
        elements_ = QPixmap();
    QWidget::changeEvent(event);
}
