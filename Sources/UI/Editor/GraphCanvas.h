// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>

#include "UI/Editor/LEDGraphicsItem.h"

struct EditorDisplayState;

/// The canvas: the test picture stretched over it, and the pixel grid. Its top left is the scene's
/// origin.
class GraphCanvas final : public LEDGraphicsItem
{
public:
    /// `display` outlives the item.
    explicit GraphCanvas(const EditorDisplayState& display);

    void SetSize(QSizeF size);
    [[nodiscard]] QSizeF GetSize() const { return rect_.size(); }
    /// Nothing is drawn without a picture.
    void SetTestPattern(const QPixmap& picture);
    /// Draws picture and grid again at the next paint.
    void Redraw();

    [[nodiscard]] QRectF boundingRect() const override { return rect_; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    void PaintCached(QPainter& painter);
    void PaintPicture(QPainter& painter, const QRectF& part) const;
    void PaintGrid(QPainter& painter, const QRectF& part) const;

    const EditorDisplayState& display_;
    QRectF rect_;
    QPixmap testPattern_;
    /// Picture and grid at the scale of the screen, as long as they fit in a few screens' worth.
    QPixmap cache_;
    QSizeF cachedScale_;
    QSizeF shownScale_; ///< of the paint before
};
