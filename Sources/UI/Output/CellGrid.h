// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// Where the cells of channels 1 to 512 are: row by row from the top left, equally large, in a
/// power of two of columns, so that a channel keeps its place in its row at any width.
class CellGrid
{
public:
    static constexpr int Channels = 512;
    static constexpr int MostColumns = 32;

    /// As many columns as a width has room for when no cell is smaller than `least`.
    [[nodiscard]] static CellGrid ForWidth(int width, QSize least);

    [[nodiscard]] int Columns() const { return columns_; }
    [[nodiscard]] int Rows() const { return Channels / columns_; }
    [[nodiscard]] QSize CellSize() const { return cell_; }
    [[nodiscard]] int Height() const { return Rows() * cell_.height(); }

    [[nodiscard]] QRect RectOf(int channel) const;
    /// 0 for a place beside the cells.
    [[nodiscard]] int ChannelAt(QPoint place) const;

    bool operator==(const CellGrid&) const = default;

private:
    int columns_ = MostColumns;
    QSize cell_{1, 1};
};
