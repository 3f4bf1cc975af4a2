// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cmath>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QTransform>
#include <QTreeView>

#include "Model/DeviceManager.h"
#include "Model/MappedLedItem.h"
#include "UI/Editor/GraphCornerGrabber.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Editor/RotationHandle.h"
#include "UI/Main/LiveCanvas.h"
#include "UI/Main/WEFTMain.h"

namespace {

/// What a step of work leaves behind: the elements, apart from their numbers and order, and the
/// picture that a person sees.
struct Result
{
    std::vector<std::array<double, 8>> elements;
    QImage picture;
};

/// The share of a picture that another shows in other colours.
double Difference(const QImage& one, const QImage& other)
{
    if (one.size() != other.size())
        return 1;
    int differing = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            if (std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                    std::abs(qBlue(a) - qBlue(b)) >
                30)
                ++differing;
        }
    }
    return static_cast<double>(differing) / (one.width() * one.height());
}

/// A point of an element's own frame, on the scene.
QPointF OnScene(const ElementState& element, QPointF own)
{
    QTransform frame;
    frame.translate(element.placement.centre.x(), element.placement.centre.y());
    frame.rotate(static_cast<double>(element.rotation));
    return frame.map(own);
}

class LiveWork : public LiveCanvas
{
protected:
    /// Nothing selected, as a person sees the canvas from afar.
    Result Look()
    {
        Click({-8, -8});
        Result result;
        int width = 0;
        int height = 0;
        Scene().GetManager().GetCanvasSize(width, height);
        for (const ElementState& element : Document()) {
            const auto& [centre, size] = element.placement;
            const auto rounded = [](double value) {
                return std::round(value * 100) / 100;
            };
            result.elements.push_back({rounded(centre.x()), rounded(centre.y()),
                                       rounded(size.width()), rounded(size.height()),
                                       static_cast<double>(element.rotation),
                                       element.flipHorizontal ? 1.0 : 0.0,
                                       static_cast<double>(width), static_cast<double>(height)});
        }
        std::ranges::sort(result.elements);
        result.picture = Picture();
        return result;
    }
};

} // namespace

TEST_F(LiveCanvas, AFixtureIsDraggedFromTheLibraryOntoThePicture)
{
    StartWith(Element({0.2, 0.8}, {0.12, 0.01}, 0, 2, 100));
    const QImage before = Picture();
    EXPECT_FALSE(Action("actionActionDelete")->isEnabled());
    DragFromLibrary(Bar, {56, 30.5});
    ASSERT_EQ(PlacedFixtures(), 2);
    // Behind what is patched, its middle half a fixture up and left of the mouse.
    EXPECT_EQ(Last().GetArtNetMapping()->GetUniverse(), 2);
    EXPECT_EQ(Last().GetArtNetMapping()->GetChannel(), 136);
    const ElementState placed = Document().back();
    EXPECT_NEAR(placed.placement.centre.x(), 50, 0.5);
    EXPECT_NEAR(placed.placement.centre.y(), 30, 0.5);
    EXPECT_NEAR(placed.placement.size.width(), 12, 1e-3);
    EXPECT_EQ(Title(), QStringLiteral("Zentri PixelWeft 3.2.5 (unsaved)"));
    EXPECT_TRUE(Action("actionActionDelete")->isEnabled());
    const auto* list = Find<QTreeView>("mappedTreeView");
    ASSERT_EQ(list->selectionModel()->selectedRows().size(), 1);
    EXPECT_TRUE(list->selectionModel()->selectedRows(9).front().data().toString().contains(
        QStringLiteral("136")));
    EXPECT_EQ(Pixel(placed.placement.Rect().topLeft()), QColor(255, 0, 0)) << "its frame";
    EXPECT_EQ(window->focusWidget(), &View());

    Undo();
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(Picture(), before);
    Redo();
    EXPECT_EQ(PlacedFixtures(), 2);
}

TEST_F(LiveCanvas, ACanvasOfAnotherSizeKeepsTheFixturesOrTakesThemAlong)
{
    StartWith(Element({0.2, 0.2}, {0.18, 0.1}) + Element({0.6, 0.8}, {0.18, 0.1}));
    Type(&View(), Qt::Key_A, Qt::ControlModifier);
    const auto resize = [this](int width, int height, bool keep) {
        person.Will([=](QDialog& dialog) {
            dialog.findChild<QSpinBox*>(QStringLiteral("spinBoxWidth"))->setValue(width);
            dialog.findChild<QSpinBox*>(QStringLiteral("spinBoxHeight"))->setValue(height);
            dialog.findChild<QCheckBox*>(QStringLiteral("cbKeepPositions"))->setChecked(keep);
            dialog.accept();
        });
        Trigger("actionCanvas_Size");
    };
    const auto expect = [this](QPointF centre, QSizeF size, QPointF frame) {
        const ElementState state = Document().back();
        const ElementGeometry::Placement item = Scene().Find(state.id)->GetPlacement();
        for (const ElementGeometry::Placement& placement : {state.placement, item}) {
            EXPECT_NEAR(placement.centre.x(), centre.x(), 1e-2);
            EXPECT_NEAR(placement.centre.y(), centre.y(), 1e-2);
            EXPECT_NEAR(placement.size.width(), size.width(), 1e-2);
            EXPECT_NEAR(placement.size.height(), size.height(), 1e-2);
        }
        const QPointF shown = Scene().GetGroupOverlay().GetFrame()->pos();
        EXPECT_NEAR(shown.x(), frame.x(), 1);
        EXPECT_NEAR(shown.y(), frame.y(), 1);
    };
    const QPointF frame = Scene().GetGroupOverlay().GetFrame()->pos();
    resize(320, 50, true);
    EXPECT_EQ(CanvasWidth(), 320);
    expect({60, 80}, {18, 10}, frame);
    resize(160, 100, false);
    expect({30, 160}, {9, 20}, {frame.x() / 2, frame.y() * 2});
    EXPECT_EQ(Title(), QStringLiteral("Zentri PixelWeft 3.2.5 (unsaved)"));
}

TEST_F(LiveCanvas, ADroppedDocumentIsImportedAndAnotherDocumentLeavesNothingOfTheOldOne)
{
    StartWith(Element({0.2, 0.2}, {0.18, 0.1}) + Element({0.6, 0.8}, {0.18, 0.1}));
    const QString other = WriteDocument(Path(QStringLiteral("OTHER.WFM")), 320, 200);
    Type(&View(), Qt::Key_A, Qt::ControlModifier);
    Drag({20, 20}, {30, 30});
    person.WillPress(QStringLiteral("Cancel"));
    DropFile(other, {50, 50});
    QCoreApplication::processEvents();
    EXPECT_EQ(PlacedFixtures(), 2);
    EXPECT_TRUE(Action("actionUndo")->isEnabled());

    person.WillPress(QStringLiteral("Yes"));
    DropFile(other, {50, 50});
    QCoreApplication::processEvents();
    EXPECT_TRUE(person.IsDone());
    EXPECT_EQ(Title(), QStringLiteral("Zentri PixelWeft 3.2.5 (unsaved)"));
    EXPECT_EQ(CanvasWidth(), 320);
    EXPECT_GT(PlacedFixtures(), 10);
    EXPECT_EQ(Scene().AllIds().size(), static_cast<std::size_t>(PlacedFixtures()));
    EXPECT_EQ(Scene().SelectedCount(), 0);
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
    EXPECT_FALSE(Action("actionActionDelete")->isEnabled());

    // A document that goes away under the mouse.
    const QPointF held = Document().front().placement.centre;
    Press(held);
    MoveTo(held + QPointF(5, 5));
    person.WillPress(QStringLiteral("Yes"));
    Trigger("actionNew");
    MoveTo(held + QPointF(9, 9));
    Release(held + QPointF(9, 9));
    EXPECT_EQ(PlacedFixtures(), 0);
    EXPECT_TRUE(Scene().AllIds().empty());
    EXPECT_FALSE(Action("actionUndo")->isEnabled());

    // A new document is seen from its middle, wherever the old one was left.
    View().horizontalScrollBar()->setValue(View().horizontalScrollBar()->maximum());
    person.WillPress(QStringLiteral("Yes"));
    Trigger("actionNew");
    const QPoint apart = OnScreen({50, 50}) - View().viewport()->rect().center();
    EXPECT_LT(apart.manhattanLength(), 20);
}

TEST_F(LiveCanvas, KeysAndSwitchesReachTheCanvas)
{
    StartWith(Element({0.2, 0.2}, {0.18, 0.1}) + Element({0.6, 0.8}, {0.18, 0.1}));
    auto* list = Find<QTreeView>("mappedTreeView");
    auto* zoom = Find<QComboBox>("zoomCombo");
    Wheel({50, 50}, 120);
    EXPECT_EQ(zoom->currentText(), QStringLiteral("114%"));
    Type(&View(), Qt::Key_Minus);
    EXPECT_NEAR(View().transform().m11(), Scene().GetDisplay().fitScaleX, 1e-4);

    // Snapping: the corner goes to a whole pixel.
    ASSERT_TRUE(Action("actionSnapToGrid")->isChecked());
    Drag({20, 20}, {24.4, 23.3});
    EXPECT_NEAR(std::remainder(Document().front().placement.Rect().left(), 1), 0, 1e-3);
    Trigger("actionSnapToGrid");
    EXPECT_FALSE(Scene().GetDisplay().snapToGrid);
    const QImage withGrid = Picture();
    Trigger("actionDisplay_Pixel_Grid");
    EXPECT_GT(Difference(Picture(), withGrid), 0.05);

    // In a field the keys edit its text.
    Type(zoom->lineEdit(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Scene().SelectedCount(), 1);
    Type(zoom->lineEdit(), Qt::Key_Backspace);
    EXPECT_EQ(PlacedFixtures(), 2);
    Type(list, Qt::Key_Backspace);
    EXPECT_EQ(PlacedFixtures(), 1);
    Type(list, Qt::Key_A, Qt::ControlModifier);
    Type(list, Qt::Key_Delete);
    EXPECT_EQ(PlacedFixtures(), 0);
    Undo();
    Undo();
    EXPECT_EQ(PlacedFixtures(), 2);
}

TEST_F(LiveCanvas, TheArrangingActionsDoWhatTheySay)
{
    StartWith(Element({0.2, 0.2}, {0.18, 0.1}) + Element({0.6, 0.8}, {0.1, 0.18}));
    Type(&View(), Qt::Key_A, Qt::ControlModifier);
    for (const auto& [name, text] :
         {std::pair("actionAlign_Left", "Align Left"),
          std::pair("actionAlign_Center", "Align Center"),
          std::pair("actionAlign_Right", "Align Right"), std::pair("actionAlign_Top", "Align Top"),
          std::pair("actionAlign_Middle", "Align Middle"),
          std::pair("actionAlign_Bottom", "Align Bottom"),
          std::pair("actionDistribute_Horizontally", "Distribute Horizontally"),
          std::pair("actionDistribute_Vertically", "Distribute Vertically")})
    {
        Trigger(name);
        EXPECT_EQ(Action("actionUndo")->text(), QStringLiteral("&Undo ") + QLatin1String(text));
    }
    Trigger("actionRotate_Left_90");
    EXPECT_EQ(Document().front().rotation, -90);
    EXPECT_EQ(Action("actionUndo")->text(), QStringLiteral("&Undo Rotate Fixture"));
    Trigger("actionRotate_Right_90");
    EXPECT_EQ(Document().back().rotation, 0);
    Trigger("actionCrop_Canvas");
    EXPECT_EQ(Action("actionUndo")->text(), QStringLiteral("&Undo Crop Canvas"));
}

TEST_F(LiveWork, EachGrabberOfATurnedElementLeavesItsOppositeInPlace)
{
    StartWith(Element({0.3, 0.3}, {0.24, 0.16}, 30) + Element({0.7, 0.7}, {0.24, 0.16}, 200));
    Action("actionSnapToGrid")->trigger();
    for (std::size_t row = 0; row < 2; ++row) {
        Click(Document()[row].placement.centre);
        const ElementState before = Document()[row];
        for (int corner = 0; corner < ElementGeometry::CornerCount; ++corner) {
            const QPointF grabber = GraphCornerGrabber::Rect(corner, before.placement.size,
                                                             Scene().GetDisplay().ScreenPixel())
                                        .center();
            const QPointF outward = ElementGeometry::CornerPosition(corner, {16, 12});
            Drag(OnScene(before, grabber), OnScene(before, grabber + outward));
            const ElementState after = Document()[row];
            // To the pixel of the screen that the mouse can reach.
            EXPECT_NEAR(after.placement.size.width(),
                        before.placement.size.width() + std::abs(outward.x()), 1.01)
                << "corner " << corner << " of element " << row;
            EXPECT_NEAR(after.placement.size.height(),
                        before.placement.size.height() + std::abs(outward.y()), 1.01);
            const int opposite = (corner + 4) % ElementGeometry::CornerCount;
            const QPointF stayed =
                OnScene(after, ElementGeometry::CornerPosition(opposite, after.placement.size)) -
                OnScene(before, ElementGeometry::CornerPosition(opposite, before.placement.size));
            EXPECT_LT(stayed.manhattanLength(), 2e-2);
            Undo();
            EXPECT_EQ(Document()[row].placement, before.placement);
        }
    }
}

TEST_F(LiveWork, TenStepsGoBackAndForth)
{
    StartWith(Element({0.2, 0.2}, {0.18, 0.10}) + Element({0.6, 0.25}, {0.18, 0.10}) +
              Element({0.3, 0.6}, {0.18, 0.10}) + Element({0.8, 0.8}, {0.24, 0.16}, 30));
    Action("actionSnapToGrid")->setChecked(false);
    std::vector<Result> results{Look()};
    const std::vector<std::function<void()>> steps = {
        [&] {
            Drag({20, 20}, {24, 22});
        },
        [&] {
            // A rubber band round two, which then move by the room between them.
            Drag({5, 5}, {75, 40});
            Drag({42, 23}, {40, 30});
        },
        [&] {
            Drag({5, 5}, {75, 45});
            const MappingRectangle& frame = *Scene().GetGroupOverlay().GetFrame();
            const double pixel = Scene().GetDisplay().ScreenPixel();
            const QRectF handle =
                RotationHandle::Rect(RotationHandle::OfGroup, frame.GetSize(), pixel);
            Drag(frame.pos() + handle.center(), frame.pos() + QPointF(12, -12));
        },
        [&] {
            Click({80, 80});
            const ElementState element = Document()[3];
            const double pixel = Scene().GetDisplay().ScreenPixel();
            const QPointF grabber = GraphCornerGrabber::Rect(ElementGeometry::BottomRight,
                                                             element.placement.size, pixel)
                                        .center();
            Drag(OnScene(element, grabber), OnScene(element, grabber + QPointF(-8, -5)));
        },
        [&] {
            Click({80, 80});
            ChooseFromMenu(QStringLiteral("&Flip Horizontal"), {80, 80});
        },
        [&] {
            Type(&View(), Qt::Key_A, Qt::ControlModifier);
            Trigger("actionDistribute_Vertically");
        },
        [&] {
            Click({30, Document()[2].placement.centre.y()});
            Type(&View(), Qt::Key_R, Qt::ControlModifier);
        },
        [&] {
            DragFromLibrary(Bar, {60, 10});
        },
        [&] {
            Click({30, Document()[2].placement.centre.y()});
            Trigger("actionCrop_Canvas");
        },
        [&] {
            Type(&View(), Qt::Key_A, Qt::ControlModifier);
            Type(&View(), Qt::Key_Delete);
        },
    };
    for (const auto& step : steps) {
        step();
        results.push_back(Look());
        EXPECT_NE(results.back().elements, results[results.size() - 2].elements)
            << "step " << results.size() - 1 << " did nothing";
    }
    EXPECT_EQ(PlacedFixtures(), 0);
    const auto expectSame = [&](std::size_t step) {
        const Result now = Look();
        EXPECT_EQ(now.elements, results[step].elements) << "after step " << step;
        EXPECT_LT(Difference(now.picture, results[step].picture), 1e-3) << "after step " << step;
    };
    for (std::size_t step = steps.size(); step-- > 0;) {
        Undo();
        expectSame(step);
    }
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
    for (std::size_t step = 1; step <= steps.size(); ++step) {
        Redo();
        expectSame(step);
    }
    EXPECT_FALSE(Action("actionRedo")->isEnabled());
}
