// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/MapPicture.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QPainter>
#include <QPolygonF>

#include "UI/Widgets/DeskLook.h"

namespace {

/// With more or smaller cells the map is one area: no screen shows them, and a file may have a
/// million.
constexpr int MostCells = 16'384;
constexpr double SmallestCell = 1;
constexpr double LargestCell = 34;
constexpr double SideForGaps = 4;
constexpr double SideForOrder = 3;
constexpr double SideForFigures = 24;
constexpr int FigurePixels = 10;
constexpr float PathAlpha = 0.75F;
constexpr double Margin = 4;

/// The cells in the order of their channels.
std::vector<int> OrderOf(const PixelMap& map)
{
    const std::vector<std::int32_t>& channels = map.GetChannels();
    std::vector<int> cells;
    for (std::size_t cell = 0; cell < channels.size(); ++cell) {
        if (channels[cell] != 0)
            cells.push_back(static_cast<int>(cell));
    }
    std::ranges::stable_sort(
        cells, {}, [&channels](int cell) { return channels[static_cast<std::size_t>(cell)]; });
    return cells;
}

/// Where the cells of a map are on the screen.
class Grid
{
public:
    Grid(const QRectF& room, const PixelMap& map)
        : columns_(std::max(map.GetWidth(), 1))
        , rows_(std::max(map.GetHeight(), 1))
        , side_(std::min({room.width() / columns_, room.height() / rows_, LargestCell}))
        , corner_(room.center() - QPointF(columns_, rows_) * side_ / 2)
    {}

    [[nodiscard]] double Side() const { return side_; }
    [[nodiscard]] QRectF Area() const { return {corner_, QSizeF(columns_ * side_, rows_ * side_)}; }
    [[nodiscard]] QRectF Cell(int cell) const
    {
        const QRectF whole(corner_ + QPointF(QPoint(cell % columns_, cell / columns_)) * side_,
                           QSizeF(side_, side_));
        return side_ < SideForGaps ? whole : whole.adjusted(0.5, 0.5, -0.5, -0.5);
    }

private:
    int columns_;
    int rows_;
    double side_;
    QPointF corner_;
};

void PaintOrder(QPainter& painter, const Grid& grid, const std::vector<int>& order)
{
    if (order.empty())
        return;
    const Look& look = CurrentLook();
    QPolygonF path;
    path.reserve(static_cast<int>(order.size()));
    for (const int cell : order)
        path << grid.Cell(cell).center();
    QColor line = look.accent;
    line.setAlphaF(PathAlpha);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(line, std::clamp(grid.Side() / 10, 1.0, 2.0)));
    if (grid.Side() >= SideForOrder)
        painter.drawPolyline(path);
    const double radius = std::clamp(grid.Side() / 4, 2.0, 5.0);
    painter.setPen(QPen(look.accentText, 1));
    painter.setBrush(look.accent);
    painter.drawEllipse(path.front(), radius, radius);
}

void PaintFigures(QPainter& painter, const Grid& grid, const PixelMap& map,
                  const std::vector<int>& order)
{
    QFont font = painter.font();
    font.setPixelSize(FigurePixels);
    painter.setFont(font);
    painter.setPen(CurrentLook().cellFigure);
    for (const int cell : order)
        painter.drawText(grid.Cell(cell).adjusted(0, 1, -3, 0), Qt::AlignRight | Qt::AlignTop,
                         QString::number(map.GetChannels()[static_cast<std::size_t>(cell)]));
}

bool HasCells(const PixelMap& map)
{
    return !map.GetChannels().empty() && map.GetChannels().size() <= MostCells;
}

void PaintCells(QPainter& painter, const Grid& grid, const PixelMap& map)
{
    const Look& look = CurrentLook();
    painter.setRenderHint(QPainter::Antialiasing);
    int cell = 0;
    for (const std::int32_t channel : map.GetChannels())
        painter.fillRect(grid.Cell(cell++), channel != 0 ? look.cellMapped : look.cellEmpty);
}

Grid GridIn(const QRectF& room, const PixelMap& map)
{
    return {room.adjusted(Margin, Margin, -Margin, -Margin), map};
}

} // namespace

void PaintMap(QPainter& painter, const QRectF& room, const PixelMap& map)
{
    const Grid grid = GridIn(room, map);
    if (!HasCells(map) || grid.Side() < SmallestCell) {
        painter.fillRect(grid.Area(), CurrentLook().cellMapped);
        return;
    }
    painter.save();
    PaintCells(painter, grid, map);
    PaintOrder(painter, grid, OrderOf(map));
    painter.restore();
}

void PaintMapWithChannels(QPainter& painter, const QRectF& room, const PixelMap& map)
{
    PaintMap(painter, room, map);
    const Grid grid = GridIn(room, map);
    painter.save();
    if (HasCells(map) && grid.Side() >= SideForFigures)
        PaintFigures(painter, grid, map, OrderOf(map));
    painter.restore();
}

QString MapInWords(const PixelMap& map)
{
    const int columns = map.GetWidth();
    const int rows = map.GetHeight();
    const std::vector<int> order = HasCells(map) ? OrderOf(map) : std::vector<int>();
    if (order.size() < 2)
        return MapPicture::tr("%1x%2").arg(columns).arg(rows);
    const int column = order.front() % columns;
    const int row = order.front() / columns;
    QString words = MapPicture::tr("%1x%2, first pixel in column %3, row %4");
    if (rows == 1 && column == 0)
        words = MapPicture::tr("%1x%2, first pixel on the left");
    else if (rows == 1 && column == columns - 1)
        words = MapPicture::tr("%1x%2, first pixel on the right");
    else if (row == 0 && column == 0)
        words = MapPicture::tr("%1x%2, first pixel at the top left");
    else if (row == 0 && column == columns - 1)
        words = MapPicture::tr("%1x%2, first pixel at the top right");
    else if (row == rows - 1 && column == 0)
        words = MapPicture::tr("%1x%2, first pixel at the bottom left");
    else if (row == rows - 1 && column == columns - 1)
        words = MapPicture::tr("%1x%2, first pixel at the bottom right");
    else
        return words.arg(columns).arg(rows).arg(column + 1).arg(row + 1);
    return words.arg(columns).arg(rows);
}

void MapPicture::Show(std::optional<PixelMap> map)
{
    map_ = std::move(map);
    setAccessibleDescription(map_ ? MapInWords(*map_) : QString());
    update();
}

void MapPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), CurrentLook().list);
    if (map_)
        PaintMapWithChannels(painter, rect(), *map_);
}
