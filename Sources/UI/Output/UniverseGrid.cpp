// SPDX-License-Identifier: MIT
#include "UI/Output/UniverseGrid.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include "UI/Widgets/DeskLook.h"

UniverseGrid::UniverseGrid(QWidget* parent)
    : QAbstractScrollArea(parent)
{
    values_.fill(CellPainter::NoValue);
    setObjectName(QStringLiteral("universeGrid"));
    setStyleSheet(QStringLiteral("font-size: 12px;")); // as the lists
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // columns must not change with it
    viewport()->setMouseTracking(true);
    // The cells cover what is repainted: the window must not paint its own ground below them.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumHeight(2 * CellPainter::LeastCell(font()).height());
}

// ---- What is shown
// -------------------------------------------------------------------------------

void UniverseGrid::ShowCells(const UniverseCells& cells)
{
    cells_ = cells;
    viewport()->update();
}

void UniverseGrid::ShowValues(std::span<const std::uint8_t> values)
{
    // A repaint of the window is for a region, and one of a few long rectangles costs less than one
    // of many small ones: for each row of the grid from the first to the last cell that changed.
    const int columns = grid_.Columns();
    for (int row = 0; row < grid_.Rows(); ++row) {
        int first = 0;
        int last = 0;
        for (int channel = row * columns + 1; channel <= (row + 1) * columns; ++channel) {
            const auto index = static_cast<std::size_t>(channel - 1);
            const auto value = static_cast<std::int16_t>(
                index < values.size() ? values[index] : CellPainter::NoValue);
            if (std::exchange(values_[index], value) == value)
                continue;
            first = first == 0 ? channel : first;
            last = channel;
        }
        if (first > 0)
            viewport()->update(RectOf(first) | RectOf(last));
    }
}

void UniverseGrid::ShowSelected(const ElementIds& ids)
{
    selected_ = {ids.begin(), ids.end()};
    viewport()->update();
}

void UniverseGrid::ShowMove(const PatchMove* move)
{
    const PatchMove shown = move ? *move : PatchMove();
    if (shown == move_)
        return;
    move_ = shown;
    viewport()->update();
}

void UniverseGrid::SetPercent(bool percent)
{
    painter_.SetPercent(percent);
    viewport()->update();
}

void UniverseGrid::SetCurrent(int channel)
{
    UpdateCell(std::exchange(current_, channel));
    UpdateCell(current_);
    ScrollTo(channel);
    emit currentMoved(channel);
}

void UniverseGrid::ScrollTo(int channel)
{
    const QRect cell = grid_.RectOf(channel);
    QScrollBar& bar = *verticalScrollBar();
    const int height = viewport()->height();
    if (cell.top() < bar.value())
        bar.setValue(cell.top());
    else if (cell.bottom() >= bar.value() + height)
        bar.setValue(cell.bottom() + 1 - height);
}

int UniverseGrid::Value(int channel) const
{
    return values_.at(static_cast<std::size_t>(channel - 1));
}

const UniverseCell& UniverseGrid::Cell(int channel) const
{
    return cells_.cells.at(static_cast<std::size_t>(channel - 1));
}

// ---- Places
// --------------------------------------------------------------------------------------

void UniverseGrid::Measure()
{
    grid_ = CellGrid::ForWidth(viewport()->width(), CellPainter::LeastCell(font()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(grid_.CellSize().height());
    verticalScrollBar()->setRange(0, std::max(grid_.Height() - viewport()->height(), 0));
}

void UniverseGrid::resizeEvent(QResizeEvent*)
{
    Measure();
}

void UniverseGrid::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        Measure();
        viewport()->update();
    }
}

QRect UniverseGrid::RectOf(int channel) const
{
    return grid_.RectOf(channel).translated(0, -verticalScrollBar()->value());
}

int UniverseGrid::ChannelAt(QPoint place) const
{
    return viewport()->rect().contains(place)
               ? grid_.ChannelAt(place + QPoint(0, verticalScrollBar()->value()))
               : 0;
}

void UniverseGrid::UpdateCell(int channel)
{
    viewport()->update(RectOf(channel));
}

// ---- Painting
// ------------------------------------------------------------------------------------

CellPainter::Marks UniverseGrid::MarksOf(int channel) const
{
    const auto bit = static_cast<std::size_t>(channel - 1);
    const std::int64_t element = Cell(channel).element;
    const bool isTarget = move_.channels.test(bit);
    return {.selected = element > 0 && selected_.contains(element),
            .current = channel == current_,
            .focused = hasFocus(),
            .target = isTarget,
            .refused = isTarget && (!move_.fits || move_.taken.test(bit))};
}

void UniverseGrid::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter_.SetUp(grid_.CellSize(), font(), devicePixelRatioF());
    const int scrolled = verticalScrollBar()->value();
    const QSize cell = grid_.CellSize();
    const QColor beside = CurrentLook().list;
    for (const QRect& exposed : event->region()) {
        const int right = grid_.Columns() * cell.width();
        if (exposed.right() >= right)
            painter.fillRect(exposed.intersected(viewport()->rect().adjusted(right, 0, 0, 0)),
                             beside);
        const int bottom = grid_.Height() - scrolled;
        if (exposed.bottom() >= bottom)
            painter.fillRect(exposed.intersected(viewport()->rect().adjusted(0, bottom, 0, 0)),
                             beside);
        const int firstColumn = exposed.left() / cell.width();
        const int lastColumn = std::min(exposed.right() / cell.width(), grid_.Columns() - 1);
        const int lastRow =
            std::min((exposed.bottom() + scrolled) / cell.height(), grid_.Rows() - 1);
        for (int row = (exposed.top() + scrolled) / cell.height(); row <= lastRow; ++row) {
            for (int column = firstColumn; column <= lastColumn; ++column) {
                const int channel = row * grid_.Columns() + column + 1;
                painter_.Paint(painter, RectOf(channel).topLeft(), channel, Cell(channel),
                               Value(channel), MarksOf(channel));
            }
        }
    }
}

// ---- Mouse
// ---------------------------------------------------------------------------------------

bool UniverseGrid::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        Look(0);
    // A box over the window takes the release of the button.
    else if (event->type() == QEvent::WindowBlocked)
        CancelDrag();
    return QAbstractScrollArea::viewportEvent(event);
}

void UniverseGrid::Look(int channel)
{
    if (std::exchange(hovered_, channel) != channel)
        emit lookedChanged();
}

void UniverseGrid::mousePressEvent(QMouseEvent* event)
{
    const int channel = ChannelAt(event->pos());
    if (event->button() != Qt::LeftButton || channel == 0)
        return;
    pressed_ = channel;
    pressedAt_ = event->pos();
    adds_ = event->modifiers().testFlag(Qt::ControlModifier);
    SetCurrent(channel);
    emit pressed(channel, adds_);
}

/// Other cells come under the mouse, which stays.
void UniverseGrid::scrollContentsBy(int dx, int dy)
{
    QAbstractScrollArea::scrollContentsBy(dx, dy);
    if (hovered_ == 0)
        return;
    Look(ChannelAt(hoveredAt_));
    if (drags_)
        emit dragged(pressed_, hovered_, viewport()->mapToGlobal(hoveredAt_));
}

void UniverseGrid::mouseMoveEvent(QMouseEvent* event)
{
    hoveredAt_ = event->pos();
    if (drags_)
        ScrollBeyond(event->pos());
    const int channel = ChannelAt(event->pos());
    Look(channel);
    if (pressed_ == 0 || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const int way = (event->pos() - pressedAt_).manhattanLength();
    if (!drags_ && (Cell(pressed_).element == 0 || way < QApplication::startDragDistance()))
        return;
    drags_ = true;
    viewport()->setCursor(Qt::ClosedHandCursor);
    emit dragged(pressed_, channel, viewport()->mapToGlobal(event->pos()));
}

/// A block can be dragged to channels that are out of sight.
void UniverseGrid::ScrollBeyond(QPoint place)
{
    const QRect seen = viewport()->rect();
    QScrollBar& bar = *verticalScrollBar();
    const bool isBeside = place.x() < 0 || place.x() > seen.right();
    if (!isBeside && place.y() < 0)
        bar.setValue(bar.value() - bar.singleStep());
    else if (!isBeside && place.y() > seen.bottom())
        bar.setValue(bar.value() + bar.singleStep());
}

void UniverseGrid::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int from = std::exchange(pressed_, 0);
    viewport()->unsetCursor();
    if (std::exchange(drags_, false))
        emit dropped();
    else if (from > 0)
        emit clicked(from, adds_);
}

void UniverseGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const int channel = ChannelAt(event->pos());
    if (event->button() == Qt::LeftButton && channel > 0)
        emit doubleClicked(channel);
}

void UniverseGrid::CancelDrag()
{
    pressed_ = 0;
    viewport()->unsetCursor();
    if (std::exchange(drags_, false))
        emit dragCancelled();
}

void UniverseGrid::hideEvent(QHideEvent* event)
{
    CancelDrag();
    QAbstractScrollArea::hideEvent(event);
}

// ---- Keyboard
// ------------------------------------------------------------------------------------

void UniverseGrid::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key == Qt::Key_Escape && drags_)
        return CancelDrag();
    if (key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
        emit stepWanted(key == Qt::Key_PageUp ? -1 : 1);
        return;
    }
    if (key == Qt::Key_Space) {
        const bool add = event->modifiers().testFlag(Qt::ControlModifier);
        emit pressed(current_, add);
        emit clicked(current_, add);
        return;
    }
    const QString text = event->text();
    if (!text.isEmpty() && (text.at(0).isDigit())) {
        emit typed(text);
        return;
    }
    const int channel = ChannelBehindKey(key);
    if (channel == 0)
        return QAbstractScrollArea::keyPressEvent(event);
    hovered_ = 0;
    SetCurrent(channel);
}

/// Where the key moves the current cell, 0 for a key that moves nothing.
int UniverseGrid::ChannelBehindKey(int key) const
{
    const auto within = [this](int channel) {
        return channel < 1 || channel > CellGrid::Channels ? current_ : channel;
    };
    switch (key) {
    case Qt::Key_Left:
        return within(current_ - 1);
    case Qt::Key_Right:
        return within(current_ + 1);
    case Qt::Key_Up:
        return within(current_ - grid_.Columns());
    case Qt::Key_Down:
        return within(current_ + grid_.Columns());
    case Qt::Key_Home:
        return 1;
    case Qt::Key_End:
        return CellGrid::Channels;
    default:
        return 0;
    }
}

void UniverseGrid::focusInEvent(QFocusEvent*)
{
    UpdateCell(current_);
}

void UniverseGrid::focusOutEvent(QFocusEvent*)
{
    UpdateCell(current_);
}
