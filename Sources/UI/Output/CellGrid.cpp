// SPDX-License-Identifier: MIT
#include "UI/Output/CellGrid.h"

#include <algorithm>

CellGrid CellGrid::ForWidth(int width, QSize least)
{
    CellGrid grid;
    while (grid.columns_ > 1 && grid.columns_ * least.width() > width)
        grid.columns_ /= 2;
    grid.cell_ = {std::max(width / grid.columns_, least.width()), least.height()};
    return grid;
}

QRect CellGrid::RectOf(int channel) const
{
    const int index = channel - 1;
    return {QPoint(index % columns_ * cell_.width(), index / columns_ * cell_.height()), cell_};
}

int CellGrid::ChannelAt(QPoint place) const
{
    if (place.x() < 0 || place.y() < 0 || place.x() >= columns_ * cell_.width())
        return 0;
    const int channel = place.y() / cell_.height() * columns_ + place.x() / cell_.width() + 1;
    return channel > Channels ? 0 : channel;
}
