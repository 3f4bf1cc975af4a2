// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include <QPixmap>
#include <QPolygonF>
#include <QWidget>

/// The elements as they lie on the canvas, with the path in which they are patched: a number at its
/// first and its last element, and a thin line where it jumps from one row to the next.
class OrderPicture final : public QWidget
{
    Q_OBJECT

public:
    explicit OrderPicture(QWidget* parent = nullptr);

    /// Places on the path, from its beginning.
    struct Stop
    {
        std::size_t outline = 0; ///< index of the element's outline
        bool afterJump = false;  ///< the path comes from another row
    };

    /// The elements, in scene pixels. An outline may be empty: such an element is not drawn.
    void SetOutlines(std::vector<QPolygonF> outlines);
    void ShowPath(std::vector<Stop> path);
    /// Marks the element at this place of the path, counted from 0; -1 marks none.
    void Mark(int place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] QTransform Fitted() const;
    void DrawElements(const QTransform& toWidget);
    void DrawPath(QPainter& painter, const QTransform& toWidget) const;
    void DrawMark(QPainter& painter, const QTransform& toWidget) const;
    void DrawNumber(QPainter& painter, QPointF at, int number) const;

    std::vector<QPolygonF> outlines_;
    QRectF box_;
    std::vector<Stop> path_;  ///< of elements that are drawn
    std::vector<int> places_; ///< the place on the whole path of each of them
    int marked_ = -1;
    QPixmap elements_; ///< null until it is painted
};
