// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include <QFont>
#include <QWidget>

#include "FixtureModel/FixtureLayout.h"

/// The grid of a fixture's pixels, for mouse and keyboard. It asks for changes by signals, and
/// shows what it is given. Cells are indexes row by row from the top left.
///
/// Its minimum size is that of the smallest usable cells: a large map needs a place that scrolls.
class ZenPixelMap : public QWidget
{
    Q_OBJECT

public:
    explicit ZenPixelMap(QWidget* parent = nullptr);

    /// Brings the grid to this map, with a fault for each cell, and repaints the cells that differ
    /// from what was shown. Figures are shown while those up to `lastChannel` have room in a cell.
    /// The map stays the caller's and outlives its being shown; null shows nothing.
    void Show(const PixelMap* map, std::vector<FixtureLayout::CellFault> faults, int lastChannel);

signals:
    void MapPixel(int pixel);
    void UnmapPixel(int pixel);
    /// What the mouse, or else the cursor, is on, in words.
    void cellInfoChanged(const QString& words);
    /// The cell in this rectangle is to be in sight.
    void cellWanted(const QRect& place);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void Measure();
    [[nodiscard]] int CellAt(QPoint place) const;
    [[nodiscard]] QRect CellRect(int cell) const;
    void UpdateCell(int cell);
    void ShowOtherSize();
    void ShowChanges(const std::vector<FixtureLayout::CellFault>& faults);
    void DragTo(int cell);
    void Visit(int cell);
    [[nodiscard]] int CellBehindKey(const QKeyEvent& event) const;
    void MoveCursor(int cell);
    void Tell();
    void PaintCell(QPainter& painter, int cell) const;
    void PaintFigure(QPainter& painter, int cell, const QRect& square) const;

    const PixelMap* pixelMapData = nullptr;
    std::int32_t cellWidth = 0;
    std::int32_t cellHeight = 0;
    std::int32_t digitWidth = 8;
    std::int32_t fontSize = 12;
    std::uint32_t activeButton = 0; ///< 1 left, 2 right, 0 for none
    std::int32_t lastX = -1;
    std::int32_t lastY = -1;
    bool outside_ = false; ///< the mouse, at its last move

    // What is on the screen, to find what differs. The map behind the pointer may have changed.
    int columns_ = 0;
    int rows_ = 0;
    std::vector<std::int32_t> channels_;
    std::vector<FixtureLayout::CellFault> faults_;

    QFont figureFont_;
    bool figuresFit_ = true;
    int lastChannel_ = 0;
    int cursor_ = 0;
    int pointed_ = -1; ///< the cell under the mouse, -1 when the keyboard was used since
};
