// SPDX-License-Identifier: MIT
#include "PatchSheet/SheetDrawing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include <QCoreApplication>
#include <QTransform>

#include "Model/ElementGeometry.h"
#include "PatchSheet/LayoutNumbers.h"
#include "PatchSheet/PatchSheet.h"
#include "PatchSheet/SheetFlow.h"

namespace {

/// So many parts a side at most: sixteen pages are as many as one spreads out.
constexpr int MostParts = 4;
constexpr double CanvasLine = 0.4; // all in millimetres
constexpr double ElementLine = 0.15;
constexpr double PartLine = 0.2;
constexpr double SmallestDot = 0.25; // radius
constexpr double LargestDot = 0.6;
constexpr double DotOfSide = 0.15;    ///< of the shorter side of its element
constexpr double SmallestWithDot = 4; ///< the longer side of an element
constexpr double DrawingGap = 3;
constexpr double RoomBelow = 8;
constexpr double LeastHeight = 80; ///< of a drawing
/// A part is a little less enlarged than planned: its edges overlap, and it has a title.
constexpr double Squeeze = 1.25;
constexpr double PartOverlap = 0.03;
constexpr SheetFont PartNameFont = {12, true};
/// Any: widths grow with the size.
constexpr SheetFont MeasuredFont = {10, true};
/// Of one that lies that far off, no part is drawn.
constexpr double Far = 100;

struct LayoutWords
{
    Q_DECLARE_TR_FUNCTIONS(PatchSheet)
};

struct Drawn
{
    NumberedPlace place; ///< in canvas pixels; the centre is on the canvas
    QPolygonF outline;
    double shorterSide = 0;
    QPointF dot; ///< on the first pixel
    bool hasDot = false;
};

/// From the element's own axes, about its centre, to the canvas.
QTransform ToCanvas(const VideoMapping& place, const ElementGeometry::Placement& placed)
{
    QTransform turned;
    turned.translate(placed.centre.x(), placed.centre.y());
    turned.rotate(double{place.rotation});
    return turned;
}

/// The centre of the pixel's cell, about the element's centre; a flipped element is laid out from
/// its other side.
QPointF CellCentre(const PatchSheet::Element& element, QSizeF size)
{
    const auto along = [](int cell, int cells, double length, bool flipped) {
        const double at = ((cell + 0.5) / cells - 0.5) * length;
        return flipped ? -at : at;
    };
    return {along(element.firstPixel.x(), element.pixels.width(), size.width(),
                  element.place->flipHorizontal),
            along(element.firstPixel.y(), element.pixels.height(), size.height(),
                  element.place->flipVertical)};
}

/// What of an upright box that touches the canvas lies on it. Boxes may be without extent.
QRectF BoxOnCanvas(const QRectF& box, const QRectF& canvas)
{
    return {
        QPointF(std::max(box.left(), canvas.left()), std::max(box.top(), canvas.top())),
        QPointF(std::min(box.right(), canvas.right()), std::min(box.bottom(), canvas.bottom()))};
}

/// The elements that lie on the canvas, at least in part, and the numbers of the others.
std::vector<Drawn> DrawnOf(const PatchSheet& sheet, std::vector<int>& others)
{
    const QRectF canvas({}, QSizeF(sheet.canvas));
    const double most = Far * std::max(canvas.width(), canvas.height());
    std::vector<Drawn> drawn;
    for (const PatchSheet::Element& element : sheet.elements) {
        if (!element.place) {
            others.push_back(element.number);
            continue;
        }
        const auto placed = ElementGeometry::PlacementOf(*element.place, canvas.size());
        const QTransform toCanvas = ToCanvas(*element.place, placed);
        Drawn each;
        each.outline =
            toCanvas.map(QPolygonF(QRectF(-placed.size.width() / 2, -placed.size.height() / 2,
                                          placed.size.width(), placed.size.height())));
        const QRectF box = each.outline.boundingRect();
        // An element without an extent is still a place.
        const bool isOn = box.right() >= canvas.left() && box.left() <= canvas.right() &&
                          box.bottom() >= canvas.top() && box.top() <= canvas.bottom();
        if (!isOn || box.width() > most || box.height() > most) {
            others.push_back(element.number);
            continue;
        }
        const bool isCentreOn = canvas.contains(placed.centre);
        each.place = {element.number,
                      isCentreOn ? placed.centre : BoxOnCanvas(box, canvas).center(), box.size()};
        each.shorterSide = std::min(placed.size.width(), placed.size.height());
        const int cells = element.pixels.width() * element.pixels.height();
        if (cells > 1 && element.firstPixel.x() >= 0) {
            each.dot = toCanvas.map(CellCentre(element, placed.size));
            each.hasDot = true;
        }
        drawn.push_back(std::move(each));
    }
    return drawn;
}

/// A part of the canvas, as it lies on a page.
class View
{
public:
    View(const QRectF& part, const QRectF& room)
        : scale_(std::min(room.width() / part.width(), room.height() / part.height()))
        , box_(room.topLeft(), part.size() * scale_)
        , origin_(box_.topLeft() - part.topLeft() * scale_)
    {
        const double spare = (room.width() - box_.width()) / 2;
        box_.translate(spare, 0);
        origin_ += QPointF(spare, 0);
    }

    [[nodiscard]] double Scale() const { return scale_; }
    [[nodiscard]] const QRectF& Box() const { return box_; }
    [[nodiscard]] QPointF ToPage(const QPointF& pixel) const { return origin_ + pixel * scale_; }
    [[nodiscard]] QPolygonF ToPage(const QPolygonF& outline) const
    {
        QPolygonF result;
        for (const QPointF& pixel : outline)
            result << ToPage(pixel);
        return result;
    }

private:
    double scale_;
    QRectF box_;
    QPointF origin_;
};

QPolygonF Dot(const QPointF& centre, double radius)
{
    constexpr int corners = 12;
    QPolygonF dot;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2 * M_PI * i / corners;
        dot << centre + radius * QPointF(std::cos(angle), std::sin(angle));
    }
    return dot;
}

class LayoutDrawing
{
public:
    LayoutDrawing(SheetFlow& flow, SheetInk& ink, QSize canvas, std::vector<Drawn> elements)
        : flow_(flow)
        , ink_(ink)
        , canvas_(QPointF(), QSizeF(canvas))
        , elements_(std::move(elements))
    {
        extent_.width = [this](const QString& text) {
            return ink_.WidthOf(text, MeasuredFont) / MeasuredFont.points;
        };
        extent_.height = ink_.LineHeight(MeasuredFont) / MeasuredFont.points;
    }

    /// The height that it takes.
    double DrawWhole(const QRectF& room)
    {
        const View view(canvas_, room);
        DrawElements(view);
        const std::vector<LayoutNumber> numbers = NumbersAt(view.Scale(), MostParts);
        double smallest = SmallestNumber;
        for (const LayoutNumber& number : numbers) {
            smallest = std::min(smallest, number.points);
            if (number.points >= SmallestNumber)
                DrawNumber(number, view);
        }
        parts_ = smallest * MostParts > SmallestNumber
                     ? static_cast<int>(std::ceil(SmallestNumber / smallest))
                     : MostParts;
        for (const LayoutNumber& number : numbers) {
            if (number.points < SmallestNumber)
                crowded_.insert(PartAt(number.centre));
        }
        for (const Part& part : crowded_)
            DrawFrame(part, view);
        return view.Box().height();
    }
    /// Whether there are numbers that DrawWhole had no room for.
    [[nodiscard]] bool HasParts() const { return !crowded_.empty(); }

    void DrawParts()
    {
        for (const Part& part : crowded_) {
            if (flow_.IsEnded())
                return;
            flow_.BeginPage();
            flow_.AddText(LayoutWords::tr("Part %1 of the layout").arg(PartName(part)));
            const QRectF box = PartBox(part);
            const double overlap = PartOverlap * std::max(box.width(), box.height());
            const View view(box.adjusted(-overlap, -overlap, overlap, overlap).intersected(canvas_),
                            flow_.Rest());
            DrawElements(view);
            for (LayoutNumber number : NumbersAt(view.Scale(), Squeeze)) {
                if (PartAt(number.centre) != part)
                    continue;
                number.points = std::max(number.points, SmallestNumber / 2);
                DrawNumber(number, view);
            }
        }
    }

private:
    using Part = std::pair<int, int>; ///< row and column

    [[nodiscard]] QRectF PartBox(const Part& part) const
    {
        const QSizeF size = canvas_.size() / parts_;
        return {QPointF(part.second * size.width(), part.first * size.height()), size};
    }
    [[nodiscard]] Part PartAt(const QPointF& pixel) const
    {
        const auto at = [this](double place, double length) {
            return std::clamp(static_cast<int>(place / length * parts_), 0, parts_ - 1);
        };
        return {at(pixel.y(), canvas_.height()), at(pixel.x(), canvas_.width())};
    }
    /// "B2" is in the second row and the second column.
    [[nodiscard]] static QString PartName(const Part& part)
    {
        return QChar(u'A' + part.first) + QString::number(part.second + 1);
    }

    /// What fits at this scale; their centres are pixels of the canvas.
    [[nodiscard]] std::vector<LayoutNumber> NumbersAt(double scale, double mostZoom) const
    {
        std::vector<NumberedPlace> places;
        for (const Drawn& element : elements_)
            places.push_back(
                {element.place.number, element.place.centre * scale, element.place.size * scale});
        std::vector<LayoutNumber> numbers = NumbersIn(places, extent_, mostZoom);
        for (LayoutNumber& number : numbers)
            number.centre /= scale;
        return numbers;
    }

    void DrawElements(const View& view)
    {
        std::vector<SheetShape>& shapes = flow_.Page().shapes;
        const QRectF clip = view.Box().adjusted(-CanvasLine, -CanvasLine, CanvasLine, CanvasLine);
        for (const Drawn& element : elements_) {
            const QPolygonF outline = view.ToPage(element.outline);
            if (outline.boundingRect().adjusted(-1, -1, 1, 1).intersects(clip))
                shapes.push_back({.outline = outline, .pen = ElementLine, .clip = clip});
        }
        for (const Drawn& element : elements_) {
            const QPointF dot = view.ToPage(element.dot);
            const QSizeF size = element.place.size * view.Scale();
            if (element.hasDot && clip.contains(dot) &&
                std::max(size.width(), size.height()) >= SmallestWithDot)
                shapes.push_back(
                    {.outline = Dot(dot, std::clamp(element.shorterSide * view.Scale() * DotOfSide,
                                                    SmallestDot, LargestDot)),
                     .fill = SheetShape::Fill::Black});
        }
        shapes.push_back({.outline = QPolygonF(view.Box()), .pen = CanvasLine});
    }

    void DrawFrame(const Part& part, const View& view)
    {
        const QRectF box(view.ToPage(PartBox(part).topLeft()), PartBox(part).size() * view.Scale());
        flow_.Page().shapes.push_back({.outline = QPolygonF(box), .pen = PartLine, .dashed = true});
        const QSizeF size(ink_.WidthOf(PartName(part), PartNameFont) + 1,
                          ink_.LineHeight(PartNameFont));
        const QRectF plate(box.topLeft(), size);
        flow_.Page().shapes.push_back(
            {.outline = QPolygonF(plate), .pen = PartLine, .fill = SheetShape::Fill::White});
        flow_.Page().texts.push_back({plate, PartName(part), PartNameFont, Qt::AlignCenter});
    }

    void DrawNumber(const LayoutNumber& number, const View& view)
    {
        const SheetFont font = {number.points, true};
        QRectF plate({}, QSizeF(extent_.width(number.text) * number.points,
                                extent_.height * number.points * 0.8));
        plate.moveCenter(view.ToPage(number.centre));
        flow_.Page().shapes.push_back(
            {.outline = QPolygonF(plate), .fill = SheetShape::Fill::White});
        flow_.Page().texts.push_back({plate, number.text, font, Qt::AlignCenter});
    }

    SheetFlow& flow_;
    SheetInk& ink_;
    QRectF canvas_;
    std::vector<Drawn> elements_;
    NumberExtent extent_;
    int parts_ = 1;          ///< a side
    std::set<Part> crowded_; ///< the parts in which numbers are too small
};

} // namespace

void AddLayout(SheetFlow& flow, SheetInk& ink, const PatchSheet& sheet)
{
    if (flow.IsEnded())
        return;
    std::vector<int> others;
    LayoutDrawing drawing(flow, ink, sheet.canvas, DrawnOf(sheet, others));
    flow.BeginSection(LayoutWords::tr("Layout"), sheet.canvas.width() >= sheet.canvas.height()
                                                     ? QPageLayout::Landscape
                                                     : QPageLayout::Portrait);
    flow.AddText(LayoutWords::tr("The numbers are those of the tables. A dot is on an element's "
                                 "first pixel, the one on its lowest channel."));
    if (!others.empty())
        flow.AddText(LayoutWords::tr("Not on the canvas: %1")
                         .arg(NumberRuns(others, std::numeric_limits<int>::max())));
    if (flow.Rest().height() < LeastHeight)
        flow.BeginPage();
    flow.AddSpace(DrawingGap);
    QRectF room = flow.Rest();
    room.setHeight(room.height() - RoomBelow);
    const double height = drawing.DrawWhole(room);
    if (!drawing.HasParts())
        return;
    flow.AddSpace(height + DrawingGap / 2);
    flow.AddText(LayoutWords::tr("The dashed parts follow in a larger scale."));
    drawing.DrawParts();
}
