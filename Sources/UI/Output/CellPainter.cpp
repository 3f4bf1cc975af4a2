// SPDX-License-Identifier: MIT
#include "UI/Output/CellPainter.h"

#include <QFontMetrics>
#include <QPainter>

#include "UI/Widgets/DeskLook.h"

namespace {

constexpr int Margin = 2;
constexpr int BarHeight = 4;
constexpr int Line = 2; ///< where an owner begins, and round what is selected
constexpr int CutMark = 8;
constexpr double NumberSize = 0.78; ///< of the figures'

QFont NumberFont(const QFont& font)
{
    QFont smaller = font;
    if (font.pixelSize() > 0)
        smaller.setPixelSize(qRound(font.pixelSize() * NumberSize));
    else
        smaller.setPointSizeF(font.pointSizeF() * NumberSize);
    return smaller;
}

QColor TintOf(const UniverseCell& cell)
{
    const Look& look = CurrentLook();
    const std::array tints = {look.ownerA, look.ownerB, look.ownerC, look.ownerD};
    return cell.ground == UniverseCell::Ground::Owned ? tints.at(cell.tint) : look.list;
}

void Frame(QPainter& painter, const QRect& rect, int width, const QColor& colour)
{
    painter.fillRect(rect.left(), rect.top(), rect.width(), width, colour);
    painter.fillRect(rect.left(), rect.bottom() + 1 - width, rect.width(), width, colour);
    painter.fillRect(rect.left(), rect.top(), width, rect.height(), colour);
    painter.fillRect(rect.right() + 1 - width, rect.top(), width, rect.height(), colour);
}

} // namespace

QSize CellPainter::LeastCell(const QFont& font)
{
    const QFontMetrics figure(font);
    const QFontMetrics number(NumberFont(font));
    return {figure.horizontalAdvance(QStringLiteral("255")) + 2 * Margin + 2,
            number.ascent() + figure.ascent() + BarHeight + 2 * Margin + 2};
}

void CellPainter::SetUp(QSize cell, const QFont& font, qreal ratio)
{
    if (cell == cell_ && font == figureFont_ && qFuzzyCompare(ratio, ratio_) &&
        look_ == &CurrentLook())
        return;
    cell_ = cell;
    figureFont_ = font;
    numberFont_ = NumberFont(font);
    ratio_ = ratio;
    look_ = &CurrentLook();
    Forget();
}

void CellPainter::SetPercent(bool percent)
{
    percent_ = percent;
    figures_ = {};
}

void CellPainter::Forget()
{
    grounds_ = {};
    numbers_ = {};
    figures_ = {};
}

// ---- What is drawn once
// --------------------------------------------------------------------------

const QPixmap& CellPainter::GroundOf(const UniverseCell& cell)
{
    const std::size_t kind =
        cell.ground == UniverseCell::Ground::Owned
            ? cell.tint
            : UniverseCells::Tints +
                  static_cast<std::size_t>(cell.ground == UniverseCell::Ground::Received);
    QPixmap& ground = grounds_.at(2 * kind + (cell.shared ? 1 : 0));
    if (ground.isNull())
        ground = MakeGround(cell);
    return ground;
}

/// With the lines between the cells on its right and bottom.
QPixmap CellPainter::MakeGround(const UniverseCell& cell) const
{
    QPixmap ground(cell_ * ratio_);
    ground.setDevicePixelRatio(ratio_);
    const Look& look = CurrentLook();
    ground.fill(look.listLine);
    QPainter painter(&ground);
    const QRect inside(0, 0, cell_.width() - 1, cell_.height() - 1);
    painter.fillRect(inside, TintOf(cell));
    if (cell.ground == UniverseCell::Ground::Received)
        painter.fillRect(inside, QBrush(look.receivedDots, Qt::Dense6Pattern));
    if (cell.shared)
        painter.fillRect(inside, QBrush(look.caution, Qt::BDiagPattern));
    return ground;
}

const QPixmap& CellPainter::NumberOf(int channel, bool strong)
{
    const std::size_t place = static_cast<std::size_t>(channel - 1) + (strong ? 512 : 0);
    QPixmap& number = numbers_.at(place);
    if (number.isNull())
        number = MakeText(QString::number(channel), numberFont_,
                          strong ? CurrentLook().listText : CurrentLook().listTextFaded);
    return number;
}

const QPixmap& CellPainter::FigureOf(int value)
{
    QPixmap& figure = figures_.at(static_cast<std::size_t>(value));
    if (figure.isNull()) {
        constexpr double full = 255;
        figure = MakeText(QString::number(percent_ ? qRound(value * 100 / full) : value),
                          figureFont_, CurrentLook().listText);
    }
    return figure;
}

QPixmap CellPainter::MakeText(const QString& text, const QFont& font, const QColor& colour) const
{
    const QFontMetrics metrics(font);
    const QSize size(metrics.horizontalAdvance(text) + 1, metrics.ascent() + 1);
    QPixmap picture(size * ratio_);
    picture.setDevicePixelRatio(ratio_);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(0, metrics.ascent(), text);
    return picture;
}

// ---- A cell
// --------------------------------------------------------------------------------------

void CellPainter::Paint(QPainter& painter, QPoint at, int channel, const UniverseCell& cell,
                        int value, const Marks& marks)
{
    const Look& look = CurrentLook();
    const bool isFree = cell.ground == UniverseCell::Ground::Free;
    painter.drawPixmap(at, GroundOf(cell));
    painter.drawPixmap(at + QPoint(Margin, 1), NumberOf(channel, !isFree));
    if (value >= 0 && (!isFree || value > 0)) {
        constexpr int full = 255;
        const QPixmap& figure = FigureOf(value);
        const int width = qRound(figure.width() / ratio_);
        const int height = qRound(figure.height() / ratio_);
        const int barTop = cell_.height() - 1 - BarHeight;
        painter.drawPixmap(at + QPoint(cell_.width() - 1 - Margin - width, barTop - height - 1),
                           figure);
        const int length = (cell_.width() - 1) * value / full;
        painter.fillRect(at.x(), at.y() + barTop, cell_.width() - 1, BarHeight, look.list);
        painter.fillRect(at.x(), at.y() + barTop, length, BarHeight,
                         cell.ground == UniverseCell::Ground::Received ? look.listTextFaded
                                                                       : look.accent);
    }
    PaintMarks(painter, QRect(at, cell_ - QSize(1, 1)), cell, marks);
}

void CellPainter::PaintMarks(QPainter& painter, const QRect& inside, const UniverseCell& cell,
                             const Marks& marks)
{
    const Look& look = CurrentLook();
    if (cell.begins)
        painter.fillRect(inside.left(), inside.top(), Line, inside.height(), look.listText);
    if (cell.cut) {
        const QPoint corner = inside.topRight() + QPoint(1, 0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(look.trouble);
        painter.drawPolygon(
            QPolygon({corner - QPoint(CutMark, 0), corner, corner + QPoint(0, CutMark)}));
    }
    if (marks.selected) { // not along the bottom, where the bar of the value is
        painter.fillRect(inside.left(), inside.top(), inside.width(), Line, look.accent);
        if (cell.begins)
            painter.fillRect(inside.left(), inside.top(), Line, inside.height(), look.accent);
        if (cell.ends)
            painter.fillRect(inside.right() + 1 - Line, inside.top(), Line, inside.height(),
                             look.accent);
    }
    if (marks.refused)
        painter.fillRect(inside, QBrush(look.trouble, Qt::BDiagPattern));
    if (marks.target)
        Frame(painter, inside, Line, marks.refused ? look.trouble : look.accent);
    if (marks.current)
        Frame(painter, inside, marks.focused ? Line : 1, look.listText);
}
