// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/ZenPixelMap.h"

#include <algorithm>
#include <utility>

#include <QCursor>
#include <QFocusEvent>
#include <QFont>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include "UI/FixtureEditor/CellWords.h"
#include "UI/Widgets/DeskLook.h"

namespace {

constexpr int SmallestCell = 6;
constexpr int ColumnsOfSmallFigures = 17;
constexpr float GlossAlpha = 0.08F;
/// So many changed cells are repainted one by one; with more, the whole grid is quicker.
constexpr std::size_t MostSingleCells = 64;
/// From this side on a mark has an edge.
constexpr int SideForEdges = 14;
constexpr int CursorWidth = 2;

/// How far left of a cell's centre its figure begins.
int FigureOffset(int channel, int digitWidth)
{
    if (channel == 0)
        return digitWidth / 2;
    if (channel <= 9)
        return digitWidth / 3;
    if (channel <= 99)
        return 2 * digitWidth / 3;
    if (channel <= 999)
        return digitWidth;
    return 4 * digitWidth / 3;
}

/// A triangle for channels that are shared and a bar for those that the fixture hasn't: the marks
/// differ by shape, so that colours are not needed to read them.
void PaintFaults(QPainter& painter, const QRect& square, FixtureLayout::CellFault fault)
{
    if (!fault.overlaps && !fault.beyond)
        return;
    const int side = std::min(square.width(), square.height());
    const bool large = side >= SideForEdges;
    const int gap = large ? CursorWidth : 0; // where the cursor's frame is
    const QRect place = square.adjusted(gap, gap, -gap, -gap);
    painter.setPen(large ? QPen(Qt::black) : QPen(Qt::NoPen));
    if (fault.overlaps) {
        const int leg = std::clamp(side / 3, 4, 12);
        const QPoint corner(place.left() + place.width(), place.top());
        painter.setBrush(CurrentLook().cellOverlap);
        painter.drawPolygon(QPolygon({corner, corner - QPoint(leg, 0), corner + QPoint(0, leg)}));
    }
    if (fault.beyond) {
        const int height = std::clamp(side / 6, 2, 5);
        painter.setBrush(CurrentLook().cellBeyond);
        painter.drawRect(QRect(place.left(), place.bottom() + 1 - height, place.width(), height));
    }
}

/// Seen on every colour, and around the smallest cell.
void PaintCursor(QPainter& painter, const QRect& cell)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
    painter.drawRect(cell);
    painter.setPen(Qt::white);
    painter.drawRect(cell.adjusted(1, 1, -1, -1));
    if (std::min(cell.width(), cell.height()) >= SideForEdges)
        painter.drawRect(cell.adjusted(CursorWidth, CursorWidth, -CursorWidth, -CursorWidth));
}

} // namespace

ZenPixelMap::ZenPixelMap(QWidget* parent)
    : QWidget(parent)
    , figureFont_(QStringLiteral("Arial"))
{
    setObjectName(QStringLiteral("pixelMapWidget"));
    setAccessibleDescription(tr("Arrow keys move, Space maps a pixel, Delete clears it"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

// ---- What it shows -----------------------------------------------------------------------------

void ZenPixelMap::Show(const PixelMap* map, std::vector<FixtureLayout::CellFault> faults,
                       int lastChannel)
{
    const bool sameSize = map && map->GetWidth() == columns_ && map->GetHeight() == rows_;
    const bool sameFigures = std::exchange(lastChannel_, lastChannel) == lastChannel;
    pixelMapData = map;
    if (sameSize)
        ShowChanges(faults);
    else
        ShowOtherSize();
    faults_ = std::move(faults);
    if (sameSize && !sameFigures) {
        Measure();
        update();
    }
    Tell();
}

void ZenPixelMap::ShowChanges(const std::vector<FixtureLayout::CellFault>& faults)
{
    const std::vector<std::int32_t>& channels = pixelMapData->GetChannels();
    std::vector<int> changed;
    for (std::size_t cell = 0; cell < channels.size(); ++cell) {
        if (channels[cell] == channels_[cell] && faults[cell] == faults_[cell])
            continue;
        channels_[cell] = channels[cell];
        changed.push_back(static_cast<int>(cell));
    }
    if (changed.size() > MostSingleCells)
        return update();
    for (const int cell : changed)
        UpdateCell(cell);
}

void ZenPixelMap::ShowOtherSize()
{
    channels_.clear();
    if (pixelMapData)
        channels_ = pixelMapData->GetChannels();
    columns_ = pixelMapData ? pixelMapData->GetWidth() : 0;
    rows_ = pixelMapData ? pixelMapData->GetHeight() : 0;
    cursor_ = 0;
    pointed_ = -1;
    lastX = -1;
    lastY = -1;
    setMinimumSize(columns_ * SmallestCell, rows_ * SmallestCell);
    Measure();
    update();
}

void ZenPixelMap::Measure()
{
    cellWidth = columns_ > 0 ? width() / columns_ : 0;
    cellHeight = rows_ > 0 ? height() / rows_ : 0;
    const bool small = columns_ >= ColumnsOfSmallFigures;
    digitWidth = small ? 6 : 8;
    fontSize = small ? 9 : 12;
    figureFont_.setPixelSize(fontSize);
    figureFont_.setWeight(QFont::Bold);
    // All cells or none: figures here and there would look like the mapping.
    const int widest = QFontMetrics(figureFont_).horizontalAdvance(QString::number(lastChannel_));
    figuresFit_ = widest < cellWidth && fontSize + 1 < cellHeight;
}

void ZenPixelMap::resizeEvent(QResizeEvent*)
{
    Measure();
}

/// It was scrolled under the mouse.
void ZenPixelMap::moveEvent(QMoveEvent*)
{
    if (pointed_ < 0)
        return;
    pointed_ = CellAt(mapFromGlobal(QCursor::pos()));
    Tell();
}

void ZenPixelMap::Tell()
{
    if (channels_.empty())
        return emit cellInfoChanged(QString());
    const auto faultOf = [this](int cell) {
        return faults_.at(static_cast<std::size_t>(cell));
    };
    const QString spoken = SpokenCell(*pixelMapData, faultOf(cursor_), cursor_);
    if (spoken != accessibleName())
        setAccessibleName(spoken);
    const int told = pointed_ >= 0 ? pointed_ : cursor_;
    emit cellInfoChanged(WordsForCell(*pixelMapData, faultOf(told), told));
}

// ---- Places ------------------------------------------------------------------------------------

/// -1 outside of the map, and where it is scrolled out of sight.
int ZenPixelMap::CellAt(QPoint place) const
{
    if (channels_.empty() || !visibleRegion().contains(place))
        return -1;
    const int column = place.x() / cellWidth;
    const int row = place.y() / cellHeight;
    return column < columns_ && row < rows_ ? row * columns_ + column : -1;
}

QRect ZenPixelMap::CellRect(int cell) const
{
    return {cell % columns_ * cellWidth, cell / columns_ * cellHeight, cellWidth, cellHeight};
}

void ZenPixelMap::UpdateCell(int cell)
{
    update(CellRect(cell).adjusted(0, 0, 1, 1)); // the cursor's frame ends behind the cell
}

// ---- Painting ----------------------------------------------------------------------------------

void ZenPixelMap::paintEvent(QPaintEvent* event)
{
    if (channels_.empty())
        return;
    QPainter painter(this);
    painter.setFont(figureFont_);
    for (const QRect& exposed : event->region()) {
        const int lastColumn = std::min(exposed.right() / cellWidth, columns_ - 1);
        const int lastRow = std::min(exposed.bottom() / cellHeight, rows_ - 1);
        for (int row = exposed.top() / cellHeight; row <= lastRow; ++row) {
            for (int column = exposed.left() / cellWidth; column <= lastColumn; ++column)
                PaintCell(painter, row * columns_ + column);
        }
    }
    if (hasFocus())
        PaintCursor(painter, CellRect(cursor_));
}

void ZenPixelMap::PaintCell(QPainter& painter, int cell) const
{
    const QRect square = CellRect(cell).adjusted(1, 1, 0, 0);
    const auto index = static_cast<std::size_t>(cell);
    const Look& look = CurrentLook();
    painter.fillRect(square, channels_[index] != 0 ? look.cellMapped : look.cellEmpty);
    if (figuresFit_)
        PaintFigure(painter, cell, square);
    QRect gloss = square;
    gloss.setHeight(cellHeight / 2 - 1);
    painter.fillRect(gloss, QColor::fromRgbF(1, 1, 1, GlossAlpha));
    PaintFaults(painter, square, faults_[index]);
}

void ZenPixelMap::PaintFigure(QPainter& painter, int cell, const QRect& square) const
{
    const std::int32_t channel = channels_[static_cast<std::size_t>(cell)];
    const QString figure = QString::number(channel);
    const int room = square.width() - painter.fontMetrics().horizontalAdvance(figure);
    if (room < 0)
        return;
    const int left = square.left() - 1 + cellWidth / 2 - FigureOffset(channel, digitWidth);
    const int baseline = square.top() - 1 - fontSize / 2 + cellHeight / 2 + fontSize;
    painter.setPen(CurrentLook().cellFigure);
    // In a font that is wider than Arial a figure may begin further left.
    painter.drawText(std::min(left, square.left() + room), baseline, figure);
}

// ---- Mouse -------------------------------------------------------------------------------------

bool ZenPixelMap::event(QEvent* event)
{
    // A box over the dialog takes the release of the button.
    if (event->type() == QEvent::WindowBlocked)
        activeButton = 0;
    return QWidget::event(event);
}

void ZenPixelMap::mousePressEvent(QMouseEvent* event)
{
    const int cell = CellAt(event->pos());
    if (cell < 0)
        return;
    activeButton = event->button();
    outside_ = false;
    pointed_ = cell;
    Visit(cell);
}

void ZenPixelMap::mouseMoveEvent(QMouseEvent* event)
{
    activeButton &= static_cast<std::uint32_t>(event->buttons());
    const int cell = CellAt(event->pos());
    if (cell != pointed_) {
        pointed_ = cell;
        Tell();
    }
    if (cell >= 0 && cell != lastY * columns_ + lastX)
        DragTo(cell);
    outside_ = cell < 0;
}

/// Visits this cell, and in a drag those on the way to it: a quick hand is told of in few steps.
void ZenPixelMap::DragTo(int cell)
{
    const bool drags = activeButton != 0;
    const QPoint from(lastX, lastY);
    const QPoint way = QPoint(cell % columns_, cell / columns_) - from;
    const int steps = outside_ ? 1 : std::max(std::abs(way.x()), std::abs(way.y()));
    // A box on the way ends the drag.
    for (int step = 1; step < steps && activeButton != 0; ++step) {
        const QPointF place = from + QPointF(way) * step / steps;
        Visit(qRound(place.y()) * columns_ + qRound(place.x()));
    }
    if (!drags || activeButton != 0)
        Visit(cell);
}

/// The mouse came to this cell, or was pressed on it.
void ZenPixelMap::Visit(int cell)
{
    lastX = cell % columns_;
    lastY = cell / columns_;
    if (activeButton != 0)
        MoveCursor(cell);
    // Last: a box may open behind these, and end the drag.
    if (activeButton == Qt::LeftButton)
        emit MapPixel(cell);
    else if (activeButton == Qt::RightButton)
        emit UnmapPixel(cell);
}

void ZenPixelMap::mouseReleaseEvent(QMouseEvent*)
{
    activeButton = 0;
}

void ZenPixelMap::leaveEvent(QEvent*)
{
    pointed_ = -1;
    Tell();
}

// ---- Keyboard ----------------------------------------------------------------------------------

void ZenPixelMap::keyPressEvent(QKeyEvent* event)
{
    if (channels_.empty())
        return QWidget::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Select:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        pointed_ = -1;
        if (!event->isAutoRepeat()) // it would ask whether to remap
            emit MapPixel(cursor_);
        return;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        pointed_ = -1;
        emit UnmapPixel(cursor_);
        return;
    default:
        break;
    }
    const int cell = CellBehindKey(*event);
    if (cell < 0)
        return QWidget::keyPressEvent(event);
    pointed_ = -1;
    MoveCursor(cell);
    emit cellWanted(CellRect(cell));
}

/// Where the key moves the cursor, -1 for a key that moves nothing.
int ZenPixelMap::CellBehindKey(const QKeyEvent& event) const
{
    const bool wholeMap = event.modifiers().testFlag(Qt::ControlModifier);
    const int page = std::max(visibleRegion().boundingRect().height() / cellHeight, 1);
    int column = cursor_ % columns_;
    int row = cursor_ / columns_;
    switch (event.key()) {
    case Qt::Key_Left:
        --column;
        break;
    case Qt::Key_Right:
        ++column;
        break;
    case Qt::Key_Up:
        --row;
        break;
    case Qt::Key_Down:
        ++row;
        break;
    case Qt::Key_PageUp:
        row -= page;
        break;
    case Qt::Key_PageDown:
        row += page;
        break;
    case Qt::Key_Home:
        column = 0;
        row = wholeMap ? 0 : row;
        break;
    case Qt::Key_End:
        column = columns_ - 1;
        row = wholeMap ? rows_ - 1 : row;
        break;
    default:
        return -1;
    }
    return std::clamp(row, 0, rows_ - 1) * columns_ + std::clamp(column, 0, columns_ - 1);
}

void ZenPixelMap::MoveCursor(int cell)
{
    UpdateCell(cursor_);
    cursor_ = cell;
    UpdateCell(cursor_);
    Tell();
}

void ZenPixelMap::focusInEvent(QFocusEvent* event)
{
    if (channels_.empty())
        return;
    UpdateCell(cursor_);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
        emit cellWanted(CellRect(cursor_));
}

void ZenPixelMap::focusOutEvent(QFocusEvent*)
{
    if (!channels_.empty())
        UpdateCell(cursor_);
}
