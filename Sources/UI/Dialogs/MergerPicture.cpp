// SPDX-License-Identifier: MIT
#include "UI/Dialogs/MergerPicture.h"

#include <algorithm>
#include <vector>

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include "Model/PatchText.h"
#include "UI/Widgets/DeskLook.h"

namespace {

// Lengths are those of a font of 17 pixels in height; a larger one enlarges the whole.
constexpr QSize PictureSize(420, 96);
constexpr int UsualFontHeight = 17;
constexpr int TextPixels = 11;
constexpr QSizeF Tile(36, 24);
constexpr double TileStep = 40;
constexpr int MostTiles = 3;
constexpr double FromLeft = 81;
constexpr double ToLeft = 285;
constexpr double InputTop = 26;
constexpr double OwnTop = 60;
constexpr double ToTop = 43;

/// The texts of the tiles of a run: of a long one the ends.
std::vector<QString> TilesOf(int first, int count)
{
    std::vector<QString> tiles;
    tiles.reserve(MostTiles);
    for (int i = 0; i < std::min(count, MostTiles); ++i)
        tiles.push_back(UniverseText(first + i));
    if (count > MostTiles) {
        tiles[1] = QStringLiteral("…");
        tiles.back() = UniverseText(first + count - 1);
    }
    return tiles;
}

class Artist
{
public:
    explicit Artist(QPainter& painter)
        : painter_(painter)
    {}

    [[nodiscard]] const QColor& Input() const { return input_; }
    [[nodiscard]] const QColor& Own() const { return own_; }

    void Ground(const QRectF& place)
    {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(palette_.base());
        painter_.drawRoundedRect(place, 4, 4);
    }
    void Words(const QRectF& place, int alignment, const QString& words, const QColor& colour)
    {
        painter_.setPen(colour);
        painter_.drawText(place, alignment | Qt::AlignVCenter | Qt::TextDontClip, words);
    }
    /// A row of tiles, each with a line in the colours of what is in it.
    void Run(QPointF at, const std::vector<QString>& texts, const std::vector<QColor>& contents,
             bool isWrong)
    {
        for (const QString& text : texts) {
            const QRectF tile(at, Tile);
            painter_.setPen(isWrong ? QPen(TroubleColour(), 1.5) : QPen(Qt::NoPen));
            painter_.setBrush(palette_.button());
            painter_.drawRoundedRect(tile, 3, 3);
            Words(tile.adjusted(0, 0, 0, -6), Qt::AlignHCenter, text, input_);
            const double width = 28.0 / static_cast<double>(contents.size());
            for (std::size_t i = 0; i < contents.size(); ++i)
                painter_.fillRect(QRectF(tile.left() + 4 + static_cast<double>(i) * width,
                                         tile.top() + 18, width, 3),
                                  contents[i]);
            at.rx() += TileStep;
        }
    }
    void Line(std::initializer_list<QPointF> points, const QColor& colour)
    {
        QPen pen(colour, 1.75, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter_.setPen(pen);
        painter_.setBrush(Qt::NoBrush);
        painter_.drawPolyline(QPolygonF(QVector<QPointF>(points)));
    }

private:
    QPainter& painter_;
    QPalette palette_ = QGuiApplication::palette();
    QColor input_ = palette_.color(QPalette::Text);
    QColor own_ = palette_.color(QPalette::Highlight);
};

} // namespace

MergerPicture::MergerPicture(QWidget* parent)
    : QWidget(parent)
{
    setAccessibleName(tr("How the merger works"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

double MergerPicture::Scale() const
{
    return std::max(1.0, static_cast<double>(fontMetrics().height()) / UsualFontHeight);
}

QSize MergerPicture::sizeHint() const
{
    return (QSizeF(PictureSize) * Scale()).toSize();
}

void MergerPicture::Show(const UniverseMerging& merging)
{
    merging_ = merging;
    const int count = merging.GetConsecutiveUniverses();
    setAccessibleDescription(tr("DMX input and PixelWeft on %1, merged and sent on %2")
                                 .arg(UniverseRunText(merging.GetFromStartAddress(), count),
                                      UniverseRunText(merging.GetToStartAddress(), count)));
    setToolTip(accessibleDescription());
    update();
}

void MergerPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(Scale(), Scale());
    QFont small = font();
    small.setPixelSize(TextPixels);
    painter.setFont(small);

    const int count = merging_.GetConsecutiveUniverses();
    const bool overlap = merging_.RangesOverlap();
    const std::vector<QString> from = TilesOf(merging_.GetFromStartAddress(), count);
    const std::vector<QString> to = TilesOf(merging_.GetToStartAddress(), count);
    const double width = static_cast<double>(from.size()) * TileStep - (TileStep - Tile.width());
    const double fromLeft = FromLeft + (MostTiles * TileStep - TileStep - width + Tile.width()) / 2;
    const double toLeft = ToLeft + fromLeft - FromLeft;
    const double end = FromLeft + MostTiles * TileStep - 4;

    Artist artist(painter);
    artist.Ground(QRectF(QPointF(), PictureSize));
    artist.Words({fromLeft, 4, width, 18}, Qt::AlignHCenter, tr("Merge From"), artist.Input());
    artist.Words({toLeft, 21, width, 18}, Qt::AlignHCenter, tr("Merge To"), artist.Input());
    artist.Words({12, InputTop, 66, Tile.height()}, Qt::AlignLeft, tr("DMX Input"), artist.Input());
    artist.Words({12, OwnTop, 66, Tile.height()}, Qt::AlignLeft, tr("PixelWeft"), artist.Own());
    artist.Run({fromLeft, InputTop}, from, {artist.Input()}, overlap);
    artist.Run({fromLeft, OwnTop}, from, {artist.Own()}, overlap);
    artist.Run({toLeft, ToTop}, to, {artist.Input(), artist.Own()}, overlap);

    const double middle = ToTop + Tile.height() / 2;
    const double input = InputTop + Tile.height() / 2;
    const double own = OwnTop + Tile.height() / 2;
    artist.Line({{end + 7, input}, {end + 19, input}, {end + 37, middle}}, artist.Input());
    artist.Line({{end + 7, own}, {end + 19, own}, {end + 37, middle}}, artist.Own());
    artist.Line({{end + 37, middle}, {end + 78, middle}}, artist.Input());
    artist.Line({{end + 72, middle - 6}, {end + 78, middle}, {end + 72, middle + 6}},
                artist.Input());
}
