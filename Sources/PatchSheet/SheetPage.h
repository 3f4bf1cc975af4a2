// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPolygonF>
#include <QRectF>
#include <QString>
#include <QStringList>

class QPainter;

/// The fonts of a sheet: large, since it is read in the dark.
struct SheetFont
{
    double points = 10;
    bool bold = false;

    bool operator==(const SheetFont&) const = default;
};

struct SheetText
{
    QRectF box;
    QString text; ///< one line
    SheetFont font;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
};

struct SheetShape
{
    enum class Fill : std::uint8_t
    {
        None,
        White,
        Black
    };

    QPolygonF outline;
    double pen = 0; ///< width of its line, 0 for none
    Fill fill = Fill::None;
    bool dashed = false;
    QRectF clip = {}; ///< empty for none
};

/// What stands on a page. All lengths are millimetres from the left top of the paper. Shapes and
/// texts are drawn in their order, texts on top.
struct SheetPage
{
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    QString section = {};
    std::vector<SheetShape> shapes = {};
    std::vector<SheetText> texts = {};

    void AddLine(double x1, double x2, double y, double width);
};

/// Measures and draws on paper of this many device pixels a millimetre.
class SheetInk
{
public:
    /// `device` is only measured on here.
    explicit SheetInk(QPaintDevice& device);

    [[nodiscard]] double WidthOf(const QString& text, const SheetFont& font);
    [[nodiscard]] double LineHeight(const SheetFont& font);
    /// The text in lines of this width, at most so many: what is beyond ends in an ellipsis, so
    /// that nobody takes a part for the whole. A word that is too long is broken.
    [[nodiscard]] QStringList Wrapped(const QString& text, double width, const SheetFont& font,
                                      int mostLines);
    void Draw(QPainter& painter, const SheetPage& page);

private:
    struct Face
    {
        QFont font;
        QFontMetricsF metrics;
    };
    const Face& FaceOf(const SheetFont& font);
    void Draw(QPainter& painter, const SheetShape& shape) const;
    [[nodiscard]] QString FirstLine(QString& rest, double width, const SheetFont& font);

    QPaintDevice& device_;
    double pixels_; ///< of the device, a millimetre
    std::unordered_map<int, Face> faces_;
};
