// SPDX-License-Identifier: MIT
#include "CanvasStage.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Editor/EditorActionSet.h"
#include "UI/Editor/RotationHandle.h"

#include <gtest/gtest.h>

#include <functional>

#include <QApplication>
#include <QMouseEvent>

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

struct Shape
{
    QPointF centre;
    QSizeF size;
    double rotation;
};

struct Gesture
{
    const char* step;
    bool group; ///< both elements are selected, or the first one alone
    QPointF from, to;
    Shape one, other;
};

TEST_F(Gestures, EachDragIsAStepThatTheModelFollowsAndNoneWhenItEndsWhereItBegan)
{
    const QSizeF size(24, 16);
    const QPointF start(30, 40), middle(50, 40), end(70, 40);
    const QPointF corner(41, 47);
    const double pixel = stage.display.ScreenPixel();
    const QPointF handle =
        start + RotationHandle::Rect(RotationHandle::OfElement, size, pixel).center();
    const QPointF groupHandle =
        middle + RotationHandle::Rect(RotationHandle::OfGroup, {64, 16}, pixel).center();
    const Shape stays{end, size, 0};
    const Shape moved{{40, 30}, size, 0}, alongWithIt{{80, 30}, size, 0};
    const std::vector<Gesture> gestures = {
        {"Move Fixture", false, start, {40, 30}, moved, stays},
        {"Move Fixture", true, start, {40, 30}, moved, alongWithIt},
        {"Move Fixture", true, middle, {60, 30}, moved, alongWithIt}, // between the elements
        {"Resize Fixture", false, corner, {45, 51}, {{32, 42}, {28, 20}, 0}, stays},
        {"Rotate Fixture", false, handle, {60, 40.2}, {start, size, 90}, stays},
        {"", true, groupHandle, {95, 40}, {{50, 20}, size, 90}, {{50, 60}, size, 90}}};
    stage.display.snapToGrid = true;
    const EditorActionSet actions(
        {*stage.controller, *stage.scene, *stage.list, stage.undo, stage.window});
    const auto* undo = stage.window.findChild<QAction*>(QStringLiteral("actionUndo"));
    for (std::size_t i = 0; i < 2 * gestures.size(); ++i) {
        SCOPED_TRACE(i);
        const auto& [step, group, from, to, one, other] = gestures[i / 2];
        const std::array ids{stage.Place(bar, start, size), stage.Place(bar, end, size)};
        const VideoMapping before = stage.Video(ids[0]);
        const auto select = [&, all = group] {
            stage.Click(start);
            if (all)
                stage.controller->ActionSelectAll();
        };
        select();
        stage.undo.push(new QUndoCommand(QStringLiteral("before")));
        stage.manager.SetDocumentDirty(false);
        stage.Press(from);
        stage.MoveTo((from + to) / 2);
        EXPECT_NE(stage.Video(ids[0]), before) << "before the release";
        EXPECT_FALSE(undo->isEnabled());
        stage.MoveTo(from);
        stage.Release(from);
        EXPECT_EQ(stage.Video(ids[0]), before);
        EXPECT_TRUE(undo->isEnabled());
        EXPECT_EQ(stage.undo.count(), 1);
        EXPECT_FALSE(stage.manager.documentDirty);

        select();
        if (i % 2 == 0)
            stage.Drag(from, to);
        else
            stage.QuickDrag(from, to);
        for (const auto& [id, shape] : {std::pair(ids[0], one), std::pair(ids[1], other)}) {
            const auto [centre, extent] = stage.PlaceOf(id);
            const bool isTurned = shape.rotation != 0; // by a mouse on whole pixels of the screen
            ExpectNear(centre, shape.centre, isTurned ? 0.5 : 1e-3);
            ExpectNear({extent.width(), extent.height()},
                       {shape.size.width(), shape.size.height()});
            EXPECT_NEAR(stage.Video(id).rotation, shape.rotation, isTurned ? 1 : 0);
        }
        const GroupOverlay& overlay = stage.scene->GetGroupOverlay();
        ASSERT_EQ(overlay.GetFrame() != nullptr, group);
        if (group) {
            ExpectNear(overlay.GetFrame()->pos(), (one.centre + other.centre) / 2, 0.1);
            EXPECT_NEAR(overlay.GetRotation(), one.rotation, 1);
        }
        EXPECT_EQ(stage.undo.undoText(), QLatin1String(step));
        EXPECT_EQ(stage.undo.count(), 2);
        EXPECT_TRUE(stage.manager.documentDirty);
        stage.undo.clear();
        stage.manager.RemoveMappedObjects({ids[0], ids[1]});
    }
}

TEST_F(Gestures, ARubberBandFramesAGroup)
{
    const auto one = stage.Place(bar, {20.3, 20.4}, {12, 4});
    const auto two = stage.Place(bar, {60.3, 50.4}, {12, 4});
    stage.Place(bar, {90, 90}, {12, 4});
    stage.Drag({5, 5}, {70, 60});
    EXPECT_EQ(stage.scene->SelectedIds(), (std::vector{one, two}));
    ExpectNear(stage.scene->GetGroupOverlay().GetCentre(), {40.3, 35.4});
    // Off the grid, it lands on it.
    stage.display.snapToGrid = true;
    stage.Drag({20, 20}, {25, 20});
    ExpectNear(stage.PlaceOf(one).centre, {25, 20});
    ExpectNear(stage.PlaceOf(two).centre, {65, 50});
    stage.scene->SetSelected(two, false);
    EXPECT_FALSE(stage.scene->GetGroupOverlay().GetFrame());
    // A band over nothing selects nothing.
    stage.Drag({70, 2}, {95, 10});
    EXPECT_EQ(stage.scene->SelectedCount(), 0);
    // A small selected element can still be moved.
    const auto small = stage.Place(bar, {80, 20.5}, {4, 1});
    stage.Click({80, 20.5});
    stage.Drag({80, 20.5}, {85, 20.5});
    ExpectNear(stage.PlaceOf(small).Rect().topLeft(), {83, 20});
    ExpectNear(stage.PlaceOf(small).Rect().bottomRight(), {87, 21});
}

TEST_F(Gestures, ALostReleaseEndsTheDragAtTheNextSignOfTheMouse)
{
    const auto id = stage.Place(bar, {20, 20}, {12, 4});
    stage.Press({20, 20});
    stage.MoveTo({30, 30});
    stage.Hover({50, 50});
    ExpectNear(stage.PlaceOf(id).centre, {30, 30}, 0.2);
    EXPECT_EQ(stage.undo.count(), 1);
    // A drag whose release went to another window doesn't lend its start to the next one.
    const QPointF at = stage.PlaceOf(id).centre;
    stage.Press(at);
    stage.MoveTo(at + QPointF(10, 0));
    stage.Press(at + QPointF(10, 0));
    stage.MoveTo(at + QPointF(15, 0));
    stage.Release(at + QPointF(15, 0));
    ExpectNear(stage.PlaceOf(id).centre, at + QPointF(15, 0), 0.2);
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
    ExpectNear(stage.PlaceOf(one).centre, {30, 40}, 0.2);
    ExpectNear(stage.PlaceOf(two).centre, {70, 40}, 0.2);
}

TEST_F(Gestures, AnActionInTheMiddleOfADragComesAfterIt)
{
    stage.Place(bar, {20, 20}, {12, 4});
    const auto two = stage.Place(bar, {60, 50}, {12, 4});
    stage.controller->ActionSelectAll();
    stage.Press({20, 20});
    stage.MoveTo({30, 30});
    stage.controller->ActionAlign(ElementGeometry::AlignTop);
    stage.MoveTo({40, 40});
    stage.Release({40, 40});
    ExpectNear(stage.PlaceOf(two).centre, {70, 30}, 0.2);
    EXPECT_EQ(stage.undo.count(), 2);
    stage.undo.undo();
    ExpectNear(stage.PlaceOf(two).centre, {70, 60}, 0.2);
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
    ExpectNear(stage.PlaceOf(two).centre, {70, 60}, 0.2);
    stage.Release({30, 30});

    stage.Press(stage.PlaceOf(two).centre);
    stage.MoveTo({50, 50});
    stage.scene->ClearAll();
    stage.manager.RemoveMappedObjects({two});
    stage.MoveTo({55, 55});
    stage.Release({55, 55});
}

TEST_F(Gestures, CtrlAndAClickTogglesShiftAndABandAdds)
{
    const auto one = stage.Place(bar, {20, 20}, {12, 4});
    const auto two = stage.Place(bar, {60, 20}, {12, 4});
    const auto three = stage.Place(bar, {40, 50}, {12, 4});
    using Ids = std::vector<std::int64_t>;
    const auto click = [this](QPointF at, Qt::KeyboardModifiers keys) {
        stage.Click(at, keys);
    };
    const auto quickClick = [this](QPointF at, Qt::KeyboardModifiers) {
        // The press that the system takes for the second of a double click.
        const QPoint place = stage.OnScreen(at);
        QWidget* viewport = stage.view->viewport();
        QMouseEvent press(QEvent::MouseButtonDblClick, place, viewport->mapToGlobal(place),
                          Qt::LeftButton, Qt::LeftButton, Qt::ControlModifier);
        QApplication::sendEvent(viewport, &press);
        stage.Release(at, Qt::ControlModifier);
    };
    // It begins inside of the frame round one and two, where a drag alone moves the group.
    const auto band = [this](QPointF to, Qt::KeyboardModifiers keys) {
        stage.Drag(QPointF(31, 21), to, keys);
    };
    struct Step
    {
        std::function<void(QPointF, Qt::KeyboardModifiers)> act;
        QPointF at;
        Qt::KeyboardModifiers keys;
        Ids selected;
    };
    const std::vector<Step> steps = {{click, {20, 20}, Qt::ControlModifier, {one}},
                                     {click, {60, 20}, Qt::ControlModifier, {one, two}},
                                     {click, {5, 90}, Qt::ControlModifier, {one, two}},
                                     {click, {14.5, 18.5}, Qt::ControlModifier, {two}}, // a grabber
                                     {click, {20, 20}, Qt::ShiftModifier, {one, two}},
                                     {band, {49, 59}, Qt::ShiftModifier, {one, two, three}},
                                     {click, {5, 90}, Qt::NoModifier, {}},
                                     {band, {49, 59}, Qt::NoModifier, {three}},
                                     {quickClick, {20, 20}, {}, {one, three}}};
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const auto& [act, at, keys, selected] = steps[i];
        act(at, keys);
        EXPECT_EQ(stage.scene->SelectedIds(), selected) << i;
        EXPECT_EQ(stage.scene->GetGroupOverlay().GetFrame() != nullptr, selected.size() > 1) << i;
    }
    EXPECT_EQ(stage.undo.count(), 0);
}

TEST_F(Gestures, ArrowsNudgeByOneStepForAHeldKeyAndOtherKeysRemove)
{
    const auto id = stage.Place(bar, {20, 20}, {12, 4});
    stage.Click({20, 20});
    stage.Wheel({50, 50}, 120);
    const QPoint before = stage.OnScreen({0, 0});
    struct Nudge
    {
        Qt::Key key;
        Qt::KeyboardModifiers keys;
        QPointF centre;
    };
    const std::vector<Nudge> nudges = {{Qt::Key_Left, Qt::NoModifier, {19, 20}},
                                       {Qt::Key_Up, Qt::KeypadModifier, {19, 19}},
                                       {Qt::Key_Right, Qt::ShiftModifier, {29, 19}},
                                       {Qt::Key_Down, Qt::ShiftModifier, {29, 29}},
                                       {Qt::Key_Down, Qt::ControlModifier, {29, 29}}};
    for (const auto& [key, keys, centre] : nudges) {
        stage.Key(key, keys);
        ExpectNear(stage.PlaceOf(id).centre, centre);
    }
    EXPECT_EQ(stage.undo.count(), 4);
    for (int i = 0; i < 2; ++i)
        stage.HoldKey(Qt::Key_Right, 5);
    ExpectNear(stage.PlaceOf(id).centre, {39, 29});
    EXPECT_EQ(stage.undo.count(), 6);
    EXPECT_EQ(stage.OnScreen({0, 0}), before) << "the view doesn't scroll";
    stage.undo.undo();
    ExpectNear(stage.PlaceOf(id).centre, {34, 29});
    // Off the grid, it lands on it along the arrow: also on its side, where its corners are others.
    const QModelIndex index = stage.manager.GetMappedDeviceModel()->GetIndexOfUniqueID(id);
    stage.manager.SetObjectSize(index, 7, 4);
    stage.manager.SetObjectCentre(index, 34.2, 29.3);
    stage.manager.SetObjectRotation(index, 90);
    stage.display.snapToGrid = true;
    stage.Key(Qt::Key_Right);
    ExpectNear(stage.PlaceOf(id).centre, {35, 29.3});
    stage.manager.SetObjectCentre(index, 35.2, 29.3);
    stage.Key(Qt::Key_Down);
    ExpectNear(stage.PlaceOf(id).centre, {35.2, 30.5});

    stage.Key(Qt::Key_Delete);
    EXPECT_EQ(stage.undo.undoText(), QStringLiteral("Remove Rectangle Fixture"));
    // With nothing selected there is nothing to undo.
    const int steps = stage.undo.count();
    stage.Key(Qt::Key_Backspace);
    stage.Key(Qt::Key_Left);
    EXPECT_EQ(stage.undo.count(), steps);
}
