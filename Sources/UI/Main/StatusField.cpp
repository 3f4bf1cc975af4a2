// SPDX-License-Identifier: MIT
#include "UI/Main/StatusField.h"

#include <algorithm>
#include <utility>

#include <QPainter>
#include <QStyle>
#include <QVariant>

namespace {

constexpr int Padding = 4; ///< on each side, as in the style sheet
constexpr int SwatchSide = 12;

} // namespace

StatusField::StatusField(const char* objectName)
{
    setObjectName(QLatin1String(objectName));
    setTextFormat(Qt::PlainText);
    setIndent(0); // which else depends on the style's frame, and cuts the text
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void StatusField::SetWords(const QString& name, const QString& widest)
{
    setAccessibleName(name);
    widest_ = widest;
    updateGeometry();
    Fit();
}

void StatusField::Show(const QString& text)
{
    if (text == whole_)
        return;
    whole_ = text;
    Fit();
}

void StatusField::Fit()
{
    const QString shown =
        fontMetrics().elidedText(whole_, Qt::ElideRight, std::max(0, width() - 2 * Padding));
    setText(shown);
    setToolTip(shown == whole_ ? accessibleName()
                               : accessibleName() + QStringLiteral(": ") + whole_);
}

void StatusField::SetWarns(bool warns)
{
    if (property("warns").toBool() == warns)
        return;
    setProperty("warns", warns);
    // A style sheet reads a property only when the widget is polished.
    style()->unpolish(this);
    style()->polish(this);
}

QSize StatusField::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(widest_) + 2 * Padding + 1,
            QLabel::sizeHint().height()};
}

QSize StatusField::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void StatusField::resizeEvent(QResizeEvent* event)
{
    Fit();
    QLabel::resizeEvent(event);
}

ColourSwatch::ColourSwatch()
{
    setFixedSize(SwatchSide, SwatchSide);
}

void ColourSwatch::Show(const QColor& colour)
{
    if (colour == colour_)
        return;
    colour_ = colour;
    update();
}

void ColourSwatch::paintEvent(QPaintEvent*)
{
    if (!colour_.isValid())
        return;
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.setBrush(colour_);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
