// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <set>
#include <span>

#include <QAbstractScrollArea>
#include <QPoint>

#include "Model/ElementChanges.h"
#include "Model/PatchMove.h"
#include "UI/Output/CellGrid.h"
#include "UI/Output/CellPainter.h"
#include "UI/Output/UniverseCells.h"

/// The 512 channels of one universe with their values, for mouse and keyboard. It shows what it is
/// given and tells by signals what the operator does; channels count from 1, 0 is none.
class UniverseGrid final : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit UniverseGrid(QWidget* parent = nullptr);

    /// Shows another universe, or the same with other elements.
    void ShowCells(const UniverseCells& cells);
    /// Repaints the cells whose value differs from what is shown. Those behind the last value are
    /// not sent.
    void ShowValues(std::span<const std::uint8_t> values);
    /// Marks the cells of these elements.
    void ShowSelected(const ElementIds& ids);
    /// Where a dragged block would be; null shows none.
    void ShowMove(const PatchMove* move);
    void SetPercent(bool percent);
    [[nodiscard]] bool IsPercent() const { return painter_.IsPercent(); }

    [[nodiscard]] int Current() const { return current_; }
    /// Moves the current cell, and scrolls to it.
    void SetCurrent(int channel);
    void ScrollTo(int channel);
    /// The channel under the mouse, or else the current one.
    [[nodiscard]] int Looked() const { return hovered_ > 0 ? hovered_ : current_; }
    [[nodiscard]] int Value(int channel) const;
    [[nodiscard]] const UniverseCell& Cell(int channel) const;
    /// In the viewport.
    [[nodiscard]] QRect RectOf(int channel) const;
    [[nodiscard]] int ChannelAt(QPoint place) const;
    /// Ends a drag without moving anything.
    void CancelDrag();
    [[nodiscard]] bool IsDragging() const { return drags_; }

signals:
    /// Another cell is looked at, by mouse or keyboard.
    void lookedChanged();
    /// The keyboard or a click made this cell the current one.
    void currentMoved(int channel);
    /// A click, or Space. `add`: the element is to be added to the selection, or taken out of it.
    void pressed(int channel, bool add);
    /// The button was let go where it was pressed.
    void clicked(int channel, bool add);
    void doubleClicked(int channel);
    /// Page Up and Page Down: the universe before or behind is wanted.
    void stepWanted(int by);
    /// The first character of a channel that is typed.
    void typed(const QString& text);
    /// A block is dragged, from one channel over another; 0 where the mouse is beside the cells.
    void dragged(int from, int over, const QPoint& global);
    /// The end of a drag: here, or nowhere.
    void dropped();
    void dragCancelled();

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void Measure();
    void UpdateCell(int channel);
    void Look(int channel);
    void ScrollBeyond(QPoint place);
    [[nodiscard]] int ChannelBehindKey(int key) const;
    [[nodiscard]] CellPainter::Marks MarksOf(int channel) const;

    CellPainter painter_;
    CellGrid grid_;
    UniverseCells cells_;
    std::array<std::int16_t, 512> values_{}; ///< CellPainter::NoValue where nothing is sent
    std::set<std::int64_t> selected_;
    PatchMove move_;
    int current_ = 1;
    int hovered_ = 0;
    QPoint hoveredAt_; ///< in the viewport
    int pressed_ = 0;  ///< where the button was pressed
    bool adds_ = false;
    QPoint pressedAt_;
    bool drags_ = false;
};
