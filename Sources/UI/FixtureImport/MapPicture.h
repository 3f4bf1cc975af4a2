// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include <QRectF>
#include <QString>
#include <QWidget>

#include "FixtureModel/PixelMap.h"

class QPainter;

/// Paints where the pixels of a map are and in which order they lie on the channels: a dot at the
/// first one, and a line through the others. In the middle of the room, in the current look.
void PaintMap(QPainter& painter, const QRectF& room, const PixelMap& map);
/// The same with the first channel of each pixel, where cells are large enough.
void PaintMapWithChannels(QPainter& painter, const QRectF& room, const PixelMap& map);

/// The same for a screen reader: "12x1, first pixel top left".
[[nodiscard]] QString MapInWords(const PixelMap& map);

/// Shows a map with its channels, as large as the widget is.
class MapPicture : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Nothing shows an empty ground.
    void Show(std::optional<PixelMap> map);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<PixelMap> map_;
};
