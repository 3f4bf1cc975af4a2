// SPDX-License-Identifier: MIT
#include "CanvasStage.h"
#include "Model/MappedDeviceModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include <QPainter>

namespace {

struct Colour
{
    char letter;
    QRgb colour;
};

/// What is painted over a white picture, blended with it where it is transparent.
constexpr std::array<Colour, 11> Palette = {{{'.', 0xff808080},   // outside of the canvas
                                             {' ', 0xffffffff},   // the picture
                                             {'k', 0xff0c0d0f},   // the dark half of each edge
                                             {'W', 0xffe8eaf0},   // scaled edge
                                             {'G', 0xff78ec78},   // natural edge
                                             {'R', 0xffff6054},   // edge without a node
                                             {'S', 0xff66bfef},   // selected and too small
                                             {'g', 0xffc3ffc3},   // natural fill
                                             {'b', 0xffe1e1ff},   // scaled fill
                                             {'H', 0xffff0000},   // handle
                                             {'o', 0xfff07f0e}}}; // handle and frame of a group

/// 0 for black, 1 for white, as the eye takes it.
double Brightness(const QColor& color)
{
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// Canvas pictures as letters, at one screen pixel for each canvas pixel and on a white picture.
class Look : public testing::Test
{
protected:
    Look()
    {
        QPixmap white(4, 4);
        white.fill(Qt::white);
        stage.scene->SetTestPatternImage(white);
        stage.display.showGrid = false;
    }

    /// A row of the scene from x = -2 on.
    QImage RowImage(int y)
    {
        stage.display.fitScaleX = stage.display.fitScaleY = stage.display.zoom = 1;
        QImage picture(52, 1, QImage::Format_RGB32);
        picture.fill(Palette[0].colour);
        QPainter painter(&picture);
        stage.scene->render(&painter, picture.rect(), QRectF(-2, y, 52, 1));
        return picture;
    }
    /// The same by the nearest colours of the palette.
    std::string Row(int y)
    {
        const QImage picture = RowImage(y);
        std::string row;
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, 0);
            const auto distance = [pixel](const Colour& known) {
                return std::abs(qRed(pixel) - qRed(known.colour)) +
                       std::abs(qGreen(pixel) - qGreen(known.colour)) +
                       std::abs(qBlue(pixel) - qBlue(known.colour));
            };
            row += std::ranges::min_element(Palette, {}, distance)->letter;
        }
        return row;
    }

    using Rows = std::vector<std::string>;
    Rows Some(std::initializer_list<int> rows)
    {
        Rows some;
        for (const int y : rows)
            some.push_back(Row(y));
        return some;
    }

    std::int64_t Place(QPointF centre, QSizeF size, const wchar_t* node)
    {
        const auto id = stage.Place(bar, centre, size);
        stage.Item(id).EditArtNetMapping()->SetNode(node, L"");
        stage.scene->RefreshAutoMarks();
        return id;
    }

    CanvasStage stage{QSize(48, 40)};
    std::int64_t bar = stage.AddFixture(L"Bar", 24, 16, 144);
};

} // namespace

TEST_F(Look, AnElementShowsItsSizeItsNodeAndItsHandles)
{
    const auto id = Place({20, 18}, {24, 16}, L"Auto");
    EXPECT_EQ(Some({9, 11, 25, 27}),
              (Rows{"..       kkkkkkkkkkkkkkkkkkkkkkkkkk               ..",
                    "..       kRggggggggggggggggggggggRk               ..",
                    "..       kRRRRRRRRRRRRRRRRRRRRRRRRk               ..",
                    "..                                                .."}));
    stage.scene->SetSelected(id, true);
    EXPECT_EQ(Some({-4, -1, 2, 5, 8, 11, 14, 20, 27, 33}),
              (Rows{"....................kkkk............................",
                    ".................kHHkkkkHHk.........................",
                    "..              kHHkW  WkHHk                      ..",
                    "..        kHHHHHk.kHHHHHHk.kHHHHHk                ..",
                    "..        kHHHHHk   kHHk   kHHHHHk                ..",
                    "..       kR         kkkk         Rk               ..",
                    "..       kkkkkkkk          kkkkkkkk               ..",
                    "..       kkkkkkkk          kkkkkkkk               ..",
                    "..        kHHHHHk kHHHHHk  kHHHHHk                ..",
                    "..                                                .."}));
    stage.scene->SetSelected(id, false);
    stage.Item(id).EditArtNetMapping()->SetNode(L"2.0.0.1", L"");
    stage.scene->RefreshAutoMarks();
    EXPECT_EQ(Row(10), "..       kGGGGGGGGGGGGGGGGGGGGGGGGk               ..");
    const QModelIndex index = stage.manager.GetMappedDeviceModel()->GetIndexOfUniqueID(id);
    stage.manager.SetObjectSize(index, 30, 16);
    EXPECT_EQ(Some({10, 11}), (Rows{"..    kWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWk            ..",
                                    "..    kGbbbbbbbbbbbbbbbbbbbbbbbbbbbbGk            .."}));
    EXPECT_TRUE(stage.manager.ChangeFixture(
        bar, {L"M", L"Bar", PixelMap(30, 16, PixelMapType::RGB), 0, 144}));
    EXPECT_EQ(Row(11), "..    kGggggggggggggggggggggggggggggGk            ..")
        << "its natural size";
}

TEST_F(Look, AThinOrTurnedElementHasItsWholeEdge)
{
    Place({20.3, 4.2}, {24, 0.2}, L"2.0.0.1");
    const auto id = Place({24, 24}, {30, 16}, L"2.0.0.1");
    stage.manager.SetObjectRotation(stage.manager.GetMappedDeviceModel()->GetIndexOfUniqueID(id),
                                    90);
    EXPECT_EQ(Some({2, 3, 4, 5, 6, 8, 9, 10}),
              (Rows{"..                                                ..",
                    "..       kkkkkkkkkkkkkkkkkkkkkkkkkk               ..",
                    "..       kGGGGGGGGGGGGGGGGGGGGGGGGk               ..",
                    "..       kkkkkkkkkkkkkkkkkkkkkkkkkk               ..",
                    "..                                                ..",
                    "..               kkkkkkkkkkkkkkkkkk               ..",
                    "..               kGGGGGGGGGGGGGGGGk               ..",
                    "..               kWbbbbbbbbbbbbbbWk               .."}));
}

TEST_F(Look, AGroupHasAFrameThatItsHandleTurns)
{
    Place({20, 18}, {30, 16}, L"2.0.0.1");
    Place({40, 34}, {8, 6}, L"2.0.0.1");
    stage.scene->SelectAll();
    stage.scene->ShowGroupOverlay();
    EXPECT_EQ(Some({-3, 4, 9, 20, 29, 33, 36}),
              (Rows{"...................kook.......kook..................",
                    "..                 WkoookkkkkoookW                ..",
                    "..    kkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkk   ..",
                    "..    kS                            Sk       ok   ..",
                    "..    k                                      ok   ..",
                    "..    k                              kS      Sk   ..",
                    "..    koooo  oooo  oooo  oooo  oooo  kSSSSSSSSk   .."}));
}

TEST_F(Look, EdgesAreSeenOnEveryPictureAndASelectionDoesNotTintIt)
{
    const auto natural = Place({12, 20}, {24, 16}, L"2.0.0.1");
    const auto scaled = Place({38, 20}, {12, 10}, L"2.0.0.1");
    const auto without = Place({12, 34}, {24, 6}, L"Auto");
    const std::array levels{0, 85, 170, 255};
    for (std::size_t i = 0; i < 2 * levels.size() * levels.size() * levels.size(); ++i) {
        const bool selected = i % 2 == 1;
        selected ? stage.controller->ActionSelectAll() : stage.controller->ActionUnSelectAll();
        const QColor picture(levels[i / 2 % 4], levels[i / 8 % 4], levels[i / 32]);
        QPixmap plain(4, 4);
        plain.fill(picture);
        stage.scene->SetTestPatternImage(plain);
        for (const auto id : {natural, scaled, without}) {
            const QRectF rect = stage.PlaceOf(id).Rect();
            const QImage row = RowImage(static_cast<int>(rect.center().y()) + 1);
            const auto contrast = [&](double x) {
                const double one = Brightness(picture) + 0.05;
                const double other = Brightness(row.pixel(static_cast<int>(x) + 2, 0)) + 0.05;
                return std::max(one, other) / std::min(one, other);
            };
            EXPECT_GT(std::max(contrast(rect.right() - 1), contrast(rect.right())), 2.5)
                << picture.name().toStdString() << ", " << id;
            if (selected) {
                EXPECT_EQ(row.pixelColor(static_cast<int>(rect.center().x()) + 4, 0), picture);
            }
        }
    }
}

TEST_F(Look, FlipsAreMarkedInTheCornerWhereThereIsRoom)
{
    const auto id = Place({24, 20}, {40, 30}, L"2.0.0.1");
    const QModelIndex index = stage.manager.GetMappedDeviceModel()->GetIndexOfUniqueID(id);
    // Rows and columns that the mark reaches over, inside of the edges.
    const auto mark = [this, id] {
        QRect painted;
        const QRect element = stage.PlaceOf(id).Rect().toRect();
        for (int y = element.top() + 1; y < element.bottom(); ++y) {
            const std::string row = Row(y);
            for (int x = 8; x < 44; ++x) {
                if (row[static_cast<std::size_t>(x)] == 'k')
                    painted |= QRect(x, y, 1, 1);
            }
        }
        return painted;
    };
    EXPECT_TRUE(mark().isEmpty());
    stage.manager.SetObjectFlipState(index, FlipHorizontal, true);
    const QRect across = mark();
    EXPECT_GT(across.width(), across.height());
    EXPECT_LT(across.right(), 28);
    EXPECT_GT(across.top(), 15);
    stage.manager.SetObjectFlipState(index, FlipVertical, true);
    EXPECT_EQ(mark().width(), mark().height());
    stage.manager.SetObjectSize(index, 40, 12);
    EXPECT_TRUE(mark().isEmpty());
}

TEST_F(Look, TheGridLiesOverThePicture)
{
    stage.display.showGrid = true;
    stage.display.gridStepX = 8;
    stage.display.gridStepY = 10;
    stage.scene->RedrawCanvas();
    EXPECT_EQ(Some({-1, 0, 1, 10, 39, 40}),
              (Rows{"....................................................",
                    "..bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb..",
                    "..b       b       b       b       b       b       ..",
                    "..bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb..",
                    "..b       b       b       b       b       b       ..",
                    "...................................................."}));
    // Lines that would cover the picture are left out.
    stage.display.gridStepX = stage.display.gridStepY = 1;
    stage.scene->RedrawCanvas();
    EXPECT_EQ(Row(10), "..                                                ..");
}
