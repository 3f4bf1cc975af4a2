// SPDX-License-Identifier: MIT
#include "UI/Widgets/LedIndicator.h"

#include <QConicalGradient>
#include <QEvent>
#include <QPainter>
#include <QRadialGradient>

#include "UI/Widgets/DeskLook.h"

LedIndicator::LedIndicator(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(SideLength, SideLength);
    timer_.setInterval(HoldMilliseconds);
    connect(&timer_, &QTimer::timeout, this, &LedIndicator::toggleOff);
    timer_.start();
}

void LedIndicator::SetColor(const QColor& color)
{
    if (color == color_)
        return;
    color_ = color;
    pixmaps_ = {};
    update();
}

void LedIndicator::toggleOn()
{
    holdOn = true;
    if (!on_)
        Show(true);
}

void LedIndicator::SetSteady(bool steady)
{
    steady_ = steady;
    if (steady)
        toggleOn();
}

void LedIndicator::toggleOff()
{
    if (on_ && !holdOn && !steady_)
        Show(false);
    holdOn = false;
}

void LedIndicator::Show(bool on)
{
    on_ = on;
    update(); // not at once: a tick may be running
}

void LedIndicator::paintEvent(QPaintEvent*)
{
    QPixmap& pixmap = pixmaps_[on_ ? 1 : 0];
    if (pixmap.isNull() || pixmap.devicePixelRatio() != devicePixelRatioF())
        pixmap = Draw(on_);
    QPainter(this).drawPixmap(0, 0, pixmap);
}

void LedIndicator::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::StyleChange)
        pixmaps_ = {};
    QWidget::changeEvent(event);
}

QPixmap LedIndicator::Draw(bool on) const
{
    constexpr double ringWidth = 3.0;
    QPixmap pixmap(size() * devicePixelRatioF());
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);

    const QRectF outside = QRectF(rect()).adjusted(2, 2, -2, -2);
    QConicalGradient ring(outside.center(), 90);
    const Look& look = CurrentLook();
    ring.setColorAt(0.2, look.lampRimDark);
    ring.setColorAt(0.5, look.lampRimLight);
    ring.setColorAt(0.8, look.lampRimDark);
    painter.setBrush(ring);
    painter.drawEllipse(outside);

    const QRectF disc = outside.adjusted(ringWidth, ringWidth, -ringWidth, -ringWidth);
    const QColor base = on ? color_ : DarkLampColour();
    QRadialGradient glow(QPointF(disc.center().x(), disc.top() + disc.height() / 3),
                         disc.width() * 2 / 3);
    glow.setColorAt(0.0, base.lighter(on ? 250 : 140));
    glow.setColorAt(0.5, base.lighter(on ? 130 : 115));
    glow.setColorAt(1.0, base);
    painter.setBrush(glow);
    painter.setOpacity(look.lampStrength);
    painter.drawEllipse(disc);
    return pixmap;
}
