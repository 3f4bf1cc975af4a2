// SPDX-License-Identifier: MIT
#include "CanvasStage.h"
#include "Model/MappedDeviceModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include <QPainter>

namespace {

struct Colour
{
    char letter;
    QRgb colour;
};

/// What is painted over a white picture, blended with it where it is transparent.
constexpr std::array<Colour, 10> Palette = {{{'.', 0xff808080},   // outside of the canvas
                                             {' ', 0xffffffff},   // the picture
                                             {'|', 0xff000000},   // scaled edge
                                             {'G', 0xff006600},   // natural edge
                                             {'R', 0xffff0000},   // edge without a node, handle
                                             {'g', 0xffc3ffc3},   // natural fill
                                             {'b', 0xffe1e1ff},   // scaled fill
                                             {'s', 0xffeab373},   // selected and too small
                                             {'o', 0xfff07f0e},   // handle of a group
                                             {'D', 0xff800000}}}; // frame of a group

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

    /// A row of the scene from x = -2 on; the nearest colour of the palette counts.
    std::string Row(int y)
    {
        stage.display.fitScaleX = stage.display.fitScaleY = stage.display.zoom = 1;
        QImage picture(52, 1, QImage::Format_RGB32);
        picture.fill(Palette[0].colour);
        {
            QPainter painter(&picture);
            stage.scene->render(&painter, picture.rect(), QRectF(-2, y, 52, 1));
        }
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
              (Rows{"..       RRRRRRRRRRRRRRRRRRRRRRRRR                ..",
                    "..       RgggggggggggggggggggggggR                ..",
                    "..       RRRRRRRRRRRRRRRRRRRRRRRRR                ..",
                    "..                                                .."}));
    stage.scene->SetSelected(id, true);
    EXPECT_EQ(Some({-4, -1, 2, 5, 8, 11, 14, 20, 27, 33}),
              (Rows{"....................................................",
                    "..................RR....RR..........................",
                    "..               RR      RR                       ..",
                    "..        RRRRRRR sRRRRRRs RRRRRRR                ..",
                    "..        RRRRRRR    RR    RRRRRRR                ..",
                    "..       RgggggggggggggggggggggggR                ..",
                    "..       RRRRRRRRggggggggggRRRRRRR                ..",
                    "..       RRRRRRRRggggggggggRRRRRRR                ..",
                    "..        RRRRRRR RRRRRRR  RRRRRRR                ..",
                    "..                                                .."}));
    stage.scene->SetSelected(id, false);
    stage.Item(id).EditArtNetMapping()->SetNode(L"2.0.0.1", L"");
    stage.scene->RefreshAutoMarks();
    EXPECT_EQ(Row(9), "..       GGGGGGGGGGGGGGGGGGGGGGGGG                ..");
    const QModelIndex index = stage.manager.GetMappedDeviceModel()->GetIndexOfUniqueID(id);
    stage.manager.SetObjectSize(index, 30, 16);
    EXPECT_EQ(Some({9, 11}), (Rows{"..    |||||||||||||||||||||||||||||||             ..",
                                   "..    GbbbbbbbbbbbbbbbbbbbbbbbbbbbbbG             .."}));
    EXPECT_TRUE(stage.manager.ChangeFixture(
        bar, {L"M", L"Bar", PixelMap(30, 16, PixelMapType::RGB), 0, 144}));
    EXPECT_EQ(Row(11), "..    GgggggggggggggggggggggggggggggG             ..")
        << "its natural size";
}

TEST_F(Look, AGroupHasAFrameThatItsHandleTurns)
{
    Place({20, 18}, {30, 16}, L"2.0.0.1");
    Place({40, 34}, {8, 6}, L"2.0.0.1");
    stage.scene->SelectAll();
    stage.scene->ShowGroupOverlay();
    EXPECT_EQ(Some({-3, 4, 9, 20, 29, 33, 37}),
              (Rows{"....................oo.........oo...................",
                    "..                   soos   soos                  ..",
                    "..    |||||||||||||||||||||||||||||||GDDGGDDGG    ..",
                    "..    GsssssssssssssssssssssssssssssGggggggggD    ..",
                    "..    DggggggggggggggggggggggggggggggggggggggD    ..",
                    "..    Dgggggggggggggggggggggggggggggg|sssssss|    ..",
                    "..     GGDDGGDDGGDDGGDDGGDDGGDDGGDDGGD||||||||    .."}));
}

TEST_F(Look, FlipsAreWrittenWhereThereIsRoom)
{
    const auto id = Place({24, 20}, {40, 30}, L"2.0.0.1");
    const QModelIndex index = stage.manager.GetMappedDeviceModel()->GetIndexOfUniqueID(id);
    // Painted pixels in the lower half, where the letters stand, by the widest column.
    const auto letters = [this] {
        std::size_t last = 0;
        for (int y = 20; y < 34; ++y)
            last = std::max(last, Row(y).substr(7, 36).find_last_not_of('b') + 1);
        return last;
    };
    EXPECT_EQ(letters(), 0U);
    stage.manager.SetObjectFlipState(index, FlipHorizontal, true);
    const std::size_t one = letters();
    EXPECT_GT(one, 15U);
    stage.manager.SetObjectFlipState(index, FlipVertical, true);
    EXPECT_GT(letters(), one);
    stage.manager.SetObjectSize(index, 40, 12);
    EXPECT_EQ(Row(22).find_first_not_of(". |b"), std::string::npos);
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
