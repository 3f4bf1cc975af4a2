// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include <QFont>
#include <QPixmap>
#include <QSize>

#include "UI/Output/UniverseCells.h"

class QPainter;
class QPoint;
class QRect;
struct Look;

/// Paints the cells of channels. Grounds and figures are drawn once and kept: all cells of a
/// universe change ten times a second, and the time for it is that of the output.
class CellPainter
{
public:
    /// What the operator does with a cell at the moment.
    struct Marks
    {
        bool selected = false; ///< its element is
        bool current = false;
        bool focused = false; ///< and has the keyboard
        bool target = false;  ///< a dragged element would be here
        bool refused = false; ///< and must not, or another one is
    };
    static constexpr int NoValue = -1;

    /// How small a cell may be in this font.
    [[nodiscard]] static QSize LeastCell(const QFont& font);

    /// Cells of this size from now on, in the current look; `ratio` is the screen's. Costs nothing
    /// when all is as before.
    void SetUp(QSize cell, const QFont& font, qreal ratio);
    /// Figures in percent, or from 0 to 255.
    void SetPercent(bool percent);
    [[nodiscard]] bool IsPercent() const { return percent_; }

    /// `channel` is its number, `value` 0 to 255 or NoValue.
    void Paint(QPainter& painter, QPoint at, int channel, const UniverseCell& cell, int value,
               const Marks& marks);

private:
    [[nodiscard]] const QPixmap& GroundOf(const UniverseCell& cell);
    [[nodiscard]] QPixmap MakeGround(const UniverseCell& cell) const;
    [[nodiscard]] const QPixmap& NumberOf(int channel, bool strong);
    [[nodiscard]] const QPixmap& FigureOf(int value);
    [[nodiscard]] QPixmap MakeText(const QString& text, const QFont& font,
                                   const QColor& colour) const;
    static void PaintMarks(QPainter& painter, const QRect& inside, const UniverseCell& cell,
                           const Marks& marks);
    void Forget();

    QSize cell_;
    QFont figureFont_;
    QFont numberFont_;
    qreal ratio_ = 1;
    const Look* look_ = nullptr;
    bool percent_ = false;
    // Each is null until it is needed.
    std::array<QPixmap, std::size_t{2} * (UniverseCells::Tints + 2)> grounds_;
    std::array<QPixmap, std::size_t{2} * 512> numbers_; ///< faded ones first
    std::array<QPixmap, 256> figures_;
};
