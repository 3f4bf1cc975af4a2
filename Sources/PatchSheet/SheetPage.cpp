// SPDX-License-Identifier: MIT
#include "PatchSheet/SheetPage.h"

#include <cmath>

#include <QPaintDevice>
#include <QPainter>

namespace {

constexpr double MillimetresPerInch = 25.4;

/// How much of `text` fits, at least a character.
int FittingLength(const QString& text, double width, const QFontMetricsF& metrics)
{
    int fits = 1;
    int tooLong = static_cast<int>(text.size()) + 1;
    while (tooLong - fits > 1) {
        const int middle = (fits + tooLong) / 2;
        (metrics.horizontalAdvance(text, middle) <= width ? fits : tooLong) = middle;
    }
    return fits;
}

} // namespace

void SheetPage::AddLine(double x1, double x2, double y, double width)
{
    shapes.push_back({.outline = QPolygonF(QVector<QPointF>{{x1, y}, {x2, y}}), .pen = width});
}

SheetInk::SheetInk(QPaintDevice& device)
    : device_(device)
    , pixels_(device.logicalDpiX() / MillimetresPerInch)
{}

const SheetInk::Face& SheetInk::FaceOf(const SheetFont& font)
{
    const int key = static_cast<int>(std::lround(font.points * 100)) * 2 + (font.bold ? 1 : 0);
    const auto known = faces_.find(key);
    if (known != faces_.end())
        return known->second;
    QFont face(QStringLiteral("Sans Serif"));
    face.setStyleHint(QFont::SansSerif);
    face.setPointSizeF(font.points);
    face.setBold(font.bold);
    return faces_.emplace(key, Face{face, QFontMetricsF(face, &device_)}).first->second;
}

double SheetInk::WidthOf(const QString& text, const SheetFont& font)
{
    return FaceOf(font).metrics.horizontalAdvance(text) / pixels_;
}

double SheetInk::LineHeight(const SheetFont& font)
{
    return FaceOf(font).metrics.height() / pixels_;
}

QString SheetInk::FirstLine(QString& rest, double width, const SheetFont& font)
{
    const QFontMetricsF& metrics = FaceOf(font).metrics;
    if (metrics.horizontalAdvance(rest) <= width * pixels_)
        return std::exchange(rest, {});
    int length = FittingLength(rest, width * pixels_, metrics);
    const auto blank = rest.lastIndexOf(QLatin1Char(' '), length);
    if (blank > 0)
        length = static_cast<int>(blank);
    else if (rest.at(length - 1).isHighSurrogate() && length < rest.size())
        ++length;
    QString line = rest.left(length).trimmed();
    rest = rest.mid(length).trimmed();
    return line;
}

QStringList SheetInk::Wrapped(const QString& text, double width, const SheetFont& font,
                              int mostLines)
{
    QStringList lines;
    QString rest = text.simplified();
    while (!rest.isEmpty() && lines.size() < mostLines - 1)
        lines << FirstLine(rest, width, font);
    if (!rest.isEmpty() || lines.isEmpty())
        lines << FaceOf(font).metrics.elidedText(rest, Qt::ElideRight, width * pixels_);
    return lines;
}

void SheetInk::Draw(QPainter& painter, const SheetShape& shape) const
{
    const auto scaled = [this](const QRectF& rect) {
        return QRectF(rect.topLeft() * pixels_, rect.size() * pixels_);
    };
    painter.setClipping(false);
    if (!shape.clip.isEmpty())
        painter.setClipRect(scaled(shape.clip));
    QPen pen(Qt::black, shape.pen * pixels_, shape.dashed ? Qt::DashLine : Qt::SolidLine,
             Qt::FlatCap, Qt::MiterJoin);
    painter.setPen(shape.pen > 0 ? pen : QPen(Qt::NoPen));
    painter.setBrush(shape.fill == SheetShape::Fill::None    ? QBrush(Qt::NoBrush)
                     : shape.fill == SheetShape::Fill::White ? QBrush(Qt::white)
                                                             : QBrush(Qt::black));
    QPolygonF outline = shape.outline;
    for (QPointF& point : outline)
        point *= pixels_;
    if (outline.size() == 2)
        painter.drawLine(outline[0], outline[1]);
    else
        painter.drawPolygon(outline);
}

void SheetInk::Draw(QPainter& painter, const SheetPage& page)
{
    for (const SheetShape& shape : page.shapes)
        Draw(painter, shape);
    painter.setClipping(false);
    painter.setPen(Qt::black);
    for (const SheetText& text : page.texts) {
        painter.setFont(FaceOf(text.font).font);
        painter.drawText(QRectF(text.box.topLeft() * pixels_, text.box.size() * pixels_),
                         static_cast<int>(text.alignment) | Qt::TextSingleLine | Qt::TextDontClip,
                         text.text);
    }
}
