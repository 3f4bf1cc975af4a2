// SPDX-License-Identifier: MIT
#include "CanvasStage.h"
#include "UI/Editor/RotationHandle.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

void ExpectNear(QPointF actual, QPointF expected, double tolerance = 1e-2)
{
    EXPECT_NEAR(actual.x(), expected.x(), tolerance);
    EXPECT_NEAR(actual.y(), expected.y(), tolerance);
}

class Gestures : public testing::Test
{
protected:
    void TearDown() override { EXPECT_EQ(stage.Disagreement(), ""); }

    CanvasStage stage;
    std::int64_t bar = stage.AddFixture(L"Bar", 12, 4, 144);
};

} // namespace

TEST_F(Gestures, ADraggedElementIsOneUndoStep)
{
    const auto id = stage.Place(bar, {20, 20}, {12, 4});
    stage.display.snapToGrid = true;
    stage.Drag({20, 20}, {33, 28});
    ExpectNear(stage.Model(id).placement.centre, {33, 28});
    EXPECT_EQ(stage.undo.count(), 1);
    EXPECT_EQ(stage.undo.undoText(), QStringLiteral("Move Fixture"));
    EXPECT_TRUE(stage.manager.documentDirty);
    stage.undo.undo();
    ExpectNear(stage.Model(id).placement.centre, {20, 20});
    stage.undo.redo();
    ExpectNear(stage.Model(id).placement.centre, {33, 28});
}

TEST_F(Gestures, ADragThatEndsWhereItBeganIsNoStep)
{
    const auto id = stage.Place(bar, {20, 20}, {12, 4});
    const QPointF taken(20, 20);
    stage.Press(taken);
    stage.MoveTo({40, 40});
    EXPECT_NE(stage.Model(id).placement.centre, QPointF(20, 20));
    stage.MoveTo(taken);
    stage.Release(taken);
    ExpectNear(stage.Model(id).placement.centre, {20, 20});
    stage.Click(taken);
    EXPECT_EQ(stage.undo.count(), 0);
    // Nor are places that single precision rounds, on the grid or off it.
    for (const bool snap : {false, true}) {
        stage.display.snapToGrid = snap;
        for (int i = 0; i < 50; ++i) {
            const QPointF place =
                snap ? QPointF(30 + i, 20 + i) : QPointF(30 + i * 0.731, 40 + i * 0.417);
            const auto other = stage.Place(bar, place, {12, 4});
            stage.Press(place);
            stage.MoveTo(place + QPointF(9, 7));
            stage.MoveTo(place);
            stage.Release(place);
            EXPECT_EQ(stage.undo.count(), 0) << i;
            stage.manager.RemoveMappedObjects({other});
        }
    }
}

TEST_F(Gestures, ADragOffTheGridLandsOnItAndTheGroupGoesAlong)
{
    const auto one = stage.Place(bar, {20.3, 20.4}, {12, 4});
    const auto two = stage.Place(bar, {60.3, 20.4}, {12, 4});
    stage.display.snapToGrid = true;
    stage.controller->ActionSelectAll();
    stage.Drag({20, 20}, {25, 20});
    const QPointF first = stage.Model(one).placement.Rect().topLeft();
    EXPECT_NEAR(first.x(), std::round(first.x()), 1e-3);
    EXPECT_NEAR(first.y(), std::round(first.y()), 1e-3);
    // The others keep their distance to the one that the mouse has.
    ExpectNear(stage.Model(two).placement.Rect().topLeft() - first, {40, 0});
    EXPECT_EQ(stage.undo.count(), 1);
}

TEST_F(Gestures, ARubberBandFramesAGroupThatMovesByItsBody)
{
    const auto one = stage.Place(bar, {20, 20}, {12, 4});
    const auto two = stage.Place(bar, {60, 50}, {12, 4});
    const auto other = stage.Place(bar, {90, 90}, {12, 4});
    stage.Drag({5, 5}, {70, 60});
    EXPECT_EQ(stage.scene->SelectedIds(), (std::vector{one, two}));
    ASSERT_TRUE(stage.scene->GetGroupOverlay().GetFrame());
    ExpectNear(stage.scene->GetGroupOverlay().GetCentre(), {40, 35});
    // In the middle of the frame there is no element.
    stage.Drag({40, 35}, {45, 45});
    ExpectNear(stage.Model(one).placement.centre, {25, 30}, 0.2);
    ExpectNear(stage.Model(two).placement.centre, {65, 60}, 0.2);
    ExpectNear(stage.Model(other).placement.centre, {90, 90});
    ExpectNear(stage.scene->GetGroupOverlay().GetFrame()->pos(), {45, 45}, 0.2);
    EXPECT_EQ(stage.undo.count(), 1);
    stage.undo.undo();
    ExpectNear(stage.scene->GetGroupOverlay().GetFrame()->pos(), {40, 35});

    stage.scene->SetSelected(two, false);
    EXPECT_FALSE(stage.scene->GetGroupOverlay().GetFrame());
    // A band over nothing selects nothing.
    stage.Drag({70, 2}, {95, 10});
    EXPECT_EQ(stage.scene->SelectedCount(), 0);
}

TEST_F(Gestures, ASmallSelectedElementCanStillBeMoved)
{
    const auto id = stage.Place(bar, {20, 20}, {3, 1});
    stage.Click({20, 20});
    stage.Drag({20, 20}, {30, 20});
    EXPECT_NEAR(stage.Model(id).placement.size.width(), 3, 1e-3);
    ExpectNear(stage.Model(id).placement.centre, {30, 20}, 0.2);
}

TEST_F(Gestures, TheRotationHandleTurnsAnElementInWholeDegrees)
{
    const auto id = stage.Place(bar, {50, 50}, {24, 16});
    stage.Click({50, 50});
    const QPointF handle =
        QPointF(50, 50) +
        RotationHandle::Rect(RotationHandle::OfElement, {24, 16}, stage.display.ScreenPixel())
            .center();
    stage.Drag(handle, {80, 50.2});
    EXPECT_NEAR(stage.Model(id).rotation, 90, 1);
    EXPECT_EQ(stage.Model(id).placement.centre, QPointF(50, 50));
    EXPECT_EQ(stage.undo.undoText(), QStringLiteral("Rotate Fixture"));
    stage.undo.undo();
    EXPECT_EQ(stage.Model(id).rotation, 0);
    // There and back again is no step.
    stage.Press(handle);
    stage.MoveTo({80, 50});
    stage.MoveTo(handle);
    stage.Release(handle);
    EXPECT_EQ(stage.undo.index(), 0);
    EXPECT_EQ(stage.Model(id).rotation, 0);
}

TEST_F(Gestures, AGroupTurnsAboutItsMiddle)
{
    const auto left = stage.Place(bar, {30, 50}, {12, 4});
    const auto right = stage.Place(bar, {70, 50}, {12, 4}, 0);
    stage.Drag({10, 30}, {90, 70});
    stage.manager.SetDocumentDirty(false);
    const MappingRectangle& frame = *stage.scene->GetGroupOverlay().GetFrame();
    const QPointF handle =
        frame.pos() +
        RotationHandle::Rect(RotationHandle::OfGroup, frame.GetSize(), stage.display.ScreenPixel())
            .center();
    stage.Drag(handle, {95, 50});
    EXPECT_NEAR(stage.Model(left).rotation, 90, 1);
    ExpectNear(stage.Model(left).placement.centre, {50, 30}, 0.5);
    ExpectNear(stage.Model(right).placement.centre, {50, 70}, 0.5);
    EXPECT_TRUE(stage.manager.documentDirty);
    EXPECT_EQ(stage.undo.count(), 1);
    EXPECT_NEAR(stage.scene->GetGroupOverlay().GetRotation(), 90, 1);
    stage.undo.undo();
    ExpectNear(stage.Model(left).placement.centre, {30, 50});
    EXPECT_EQ(stage.Model(right).rotation, 0);
    stage.undo.redo();
    ExpectNear(stage.Model(left).placement.centre, {50, 30}, 0.5);
}

TEST_F(Gestures, AHandleIsTakenBySecondQuickPressesToo)
{
    const auto one = stage.Place(bar, {30, 30}, {24, 16});
    const auto two = stage.Place(bar, {70, 30}, {24, 16});
    const double pixel = stage.display.ScreenPixel();
    stage.Click({30, 30});
    const QPointF grabber(41, 37);
    stage.Click(grabber);
    stage.QuickDrag(grabber, grabber + QPointF(4, 4));
    EXPECT_NEAR(stage.Model(one).placement.size.width(), 28, 1.01);
    EXPECT_NEAR(stage.Model(one).placement.Rect().left(), 18, 1e-2);

    stage.controller->ActionSelectAll();
    const MappingRectangle& frame = *stage.scene->GetGroupOverlay().GetFrame();
    const QPointF handle =
        frame.pos() +
        RotationHandle::Rect(RotationHandle::OfGroup, frame.GetSize(), pixel).center();
    stage.Click(handle);
    stage.QuickDrag(handle, frame.pos() + QPointF(40, 0));
    EXPECT_NEAR(stage.Model(two).rotation, 90, 1);
    EXPECT_EQ(stage.scene->SelectedCount(), 2);
}

TEST_F(Gestures, ALostReleaseEndsTheDragAtTheNextSignOfTheMouse)
{
    const auto id = stage.Place(bar, {20, 20}, {12, 4});
    stage.Press({20, 20});
    stage.MoveTo({30, 30});
    stage.Hover({50, 50});
    EXPECT_FALSE(stage.scene->GetGestures().IsDragging());
    ExpectNear(stage.Model(id).placement.centre, {30, 30}, 0.2);
    EXPECT_EQ(stage.undo.count(), 1);
    // A drag whose release went to another window doesn't lend its start to the next one.
    const QPointF at = stage.Model(id).placement.centre;
    stage.Press(at);
    stage.MoveTo(at + QPointF(10, 0));
    stage.Press(at + QPointF(10, 0));
    stage.MoveTo(at + QPointF(15, 0));
    stage.Release(at + QPointF(15, 0));
    ExpectNear(stage.Model(id).placement.centre, at + QPointF(15, 0), 0.2);
}

TEST_F(Gestures, ADragWithMoreKeysThanControlGoesThroughTheModel)
{
    const Qt::KeyboardModifiers keys = Qt::ControlModifier | Qt::ShiftModifier;
    const auto one = stage.Place(bar, {20, 20}, {12, 4});
    const auto two = stage.Place(bar, {60, 20}, {12, 4});
    stage.Click({60, 20});
    // A click selects and deselects, a drag takes along.
    for (const int count : {2, 1}) {
        stage.Press({20, 20}, keys);
        stage.Release({20, 20}, keys);
        EXPECT_EQ(stage.scene->SelectedCount(), count);
    }
    stage.Press({20, 20}, keys);
    stage.MoveTo({25, 30}, keys);
    stage.MoveTo({30, 40}, keys);
    stage.Release({30, 40}, keys);
    ExpectNear(stage.Model(one).placement.centre, {30, 40}, 0.2);
    ExpectNear(stage.Model(two).placement.centre, {70, 40}, 0.2);
    EXPECT_EQ(stage.undo.count(), 1);
}

TEST_F(Gestures, AnActionInTheMiddleOfADragComesAfterIt)
{
    const auto one = stage.Place(bar, {20, 20}, {12, 4});
    const auto two = stage.Place(bar, {60, 50}, {12, 4});
    stage.controller->ActionSelectAll();
    stage.Press({20, 20});
    stage.MoveTo({30, 30});
    stage.controller->ActionAlign(ElementGeometry::AlignTop);
    stage.MoveTo({40, 40});
    stage.Release({40, 40});
    ExpectNear(stage.Model(two).placement.centre, {70, 30}, 0.2);
    EXPECT_EQ(stage.undo.count(), 2);
    stage.undo.undo();
    ExpectNear(stage.Model(two).placement.centre, {70, 60}, 0.2);
    stage.undo.undo();
    ExpectNear(stage.Model(one).placement.centre, {20, 20});
}

TEST_F(Gestures, UndoWaitsForTheMouse)
{
    QAction undoAction;
    EditorActions actions;
    actions.undo = &undoAction;
    stage.scene->SetActions(actions);
    stage.Place(bar, {20, 20}, {12, 4});
    stage.Drag({20, 20}, {30, 30});
    EXPECT_TRUE(undoAction.isEnabled());
    stage.Press({30, 30});
    stage.MoveTo({40, 40});
    EXPECT_FALSE(undoAction.isEnabled());
    stage.Release({40, 40});
    EXPECT_TRUE(undoAction.isEnabled());
}

TEST_F(Gestures, ElementsMayGoAwayUnderTheMouse)
{
    const auto one = stage.Place(bar, {20, 20}, {12, 4});
    const auto two = stage.Place(bar, {60, 50}, {12, 4});
    stage.controller->ActionSelectAll();
    stage.Press({20, 20});
    stage.MoveTo({25, 25});
    stage.manager.RemoveMappedObjects({one});
    stage.MoveTo({30, 30});
    ExpectNear(stage.Model(two).placement.centre, {70, 60}, 0.2);
    stage.Release({30, 30});
    EXPECT_EQ(stage.Disagreement(), "");

    stage.Press(stage.Model(two).placement.centre);
    stage.MoveTo({50, 50});
    stage.scene->ClearAll();
    stage.manager.RemoveMappedObjects({two});
    stage.MoveTo({55, 55});
    stage.Release({55, 55});
}

TEST_F(Gestures, KeysRemoveAndDontScroll)
{
    const auto id = stage.Place(bar, {20, 20}, {12, 4});
    stage.Click({20, 20});
    stage.Wheel({50, 50}, 120);
    stage.Wheel({50, 50}, 120);
    const QPoint before = stage.OnScreen({0, 0});
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Right, Qt::Key_Down})
        stage.Key(key);
    EXPECT_EQ(stage.OnScreen({0, 0}), before);
    ExpectNear(stage.Model(id).placement.centre, {20, 20});
    EXPECT_EQ(stage.undo.count(), 0);
    stage.Key(Qt::Key_Delete);
    EXPECT_TRUE(stage.Ids().empty());
    EXPECT_EQ(stage.undo.undoText(), QStringLiteral("Remove Rectangle Fixture"));
    // With nothing selected there is nothing to undo.
    stage.Key(Qt::Key_Backspace);
    EXPECT_EQ(stage.undo.count(), 1);
}
