// SPDX-License-Identifier: MIT
#include "CanvasStage.h"
#include "Model/DeviceListProxy.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/MappedObjectListProxy.h"
#include "UI/Editor/EditorActionSet.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

namespace {

class Canvas : public testing::Test
{
protected:
    void TearDown() override { EXPECT_EQ(stage.Disagreement(), ""); }

    /// The texts of the context menu, in brackets when they can't be chosen.
    std::string ContextMenu(QPointF at)
    {
        QString texts;
        QTimer::singleShot(0, [&texts] {
            if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                for (const QAction* action : menu->actions())
                    texts += action->isSeparator() ? QStringLiteral("|")
                             : action->isEnabled() ? action->text() + QLatin1Char(' ')
                                                   : QStringLiteral("(%1) ").arg(action->text());
                menu->close();
            }
        });
        const QPoint place = stage.OnScreen(at);
        stage.Press(at, Qt::NoModifier, Qt::RightButton); // its release goes to the menu
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                stage.view->viewport()->mapToGlobal(place));
        QApplication::sendEvent(stage.view->viewport(), &event);
        return texts.toStdString();
    }

    CanvasStage stage;
    std::int64_t bar = stage.AddFixture(L"Bar", 12, 4, 144);
};

} // namespace

// ---- The view ----------------------------------------------------------------------------------

TEST_F(Canvas, ControlAndWheelZoomAndThreeWaysPan)
{
    stage.Wheel({50, 50}, 20);
    EXPECT_EQ(stage.display.zoom, 1.0);
    stage.Wheel({50, 50}, 20);
    EXPECT_EQ(stage.display.zoom, EditorDisplayState::ZoomStep);
    stage.Wheel({50, 50}, -31);
    EXPECT_DOUBLE_EQ(stage.display.zoom, 1.0);
    stage.Wheel({50, 50}, 120, Qt::NoModifier);
    EXPECT_DOUBLE_EQ(stage.display.zoom, 1.0);

    for (int i = 0; i < 6; ++i)
        stage.Wheel({50, 50}, 120);
    // Neither selects, nor moves what is under the mouse.
    const auto id = stage.Place(bar, {50, 50}, {30, 80});
    const auto at = [this](int x) {
        return stage.view->mapToScene(x, 300);
    };
    struct Way
    {
        Qt::MouseButton button;
        Qt::KeyboardModifiers keys;
        bool space;
    };
    for (const auto& [button, keys, space] :
         {Way{Qt::LeftButton, Qt::ControlModifier, false},
          Way{Qt::MiddleButton, Qt::NoModifier, false}, Way{Qt::LeftButton, Qt::NoModifier, true}})
    {
        const int across = stage.view->horizontalScrollBar()->value();
        if (space)
            QTest::keyPress(stage.view, Qt::Key_Space);
        stage.Press(at(400), keys, button);
        EXPECT_EQ(stage.view->viewport()->cursor().shape(), Qt::ClosedHandCursor);
        stage.MoveTo(at(380), keys, button);
        stage.Release(at(400), keys, button);
        EXPECT_EQ(stage.view->horizontalScrollBar()->value(), across + 20);
        EXPECT_EQ(stage.scene->SelectedCount(), 0);
        if (space)
            QTest::keyRelease(stage.view, Qt::Key_Space);
        EXPECT_EQ(stage.view->viewport()->cursor().shape(), Qt::ArrowCursor);
    }
    stage.Drag(at(400), at(440));
    EXPECT_GT(stage.PlaceOf(id).centre.x(), 51) << "without them a drag moves it";
}

TEST_F(Canvas, TheZoomFitsTheCanvasTheSelectionOrTheScreen)
{
    stage.Place(bar, {20, 20}, {12, 4});
    const auto wide = stage.Place(bar, {150, 30}, {60, 4}); // beyond the canvas
    stage.controller->ActionFitSelection();
    EXPECT_EQ(stage.display.zoom, 1.0) << "nothing is selected";
    stage.scene->SetSelected(wide, true);
    stage.controller->ActionFitSelection();
    const QRect view = stage.view->viewport()->rect();
    const auto apartFromMiddle = [&](QPointF place) {
        return (stage.OnScreen(place) - view.center()).manhattanLength();
    };
    EXPECT_LE(apartFromMiddle({150, 30}), 3);
    EXPECT_NEAR(stage.OnScreen({180, 30}).x() - stage.OnScreen({120, 30}).x(), view.width() - 48,
                2);
    stage.controller->ActionActualPixels();
    EXPECT_NEAR(stage.view->transform().m11(), 1, 1e-6);
    stage.controller->ActionFit();
    EXPECT_EQ(stage.display.zoom, 1.0);
    EXPECT_LE(apartFromMiddle({50, 50}), 3);
}

TEST_F(Canvas, TheZoomMayFollowTheSelection)
{
    stage.Place(bar, {80, 30}, {12, 4});
    const auto second = stage.Place(bar, {60, 50}, {12, 4});
    stage.controller->SetZoomStyle(1);
    for (int i = 0; i < 8; ++i)
        stage.Wheel({50, 50}, 120);
    const auto expectInTheMiddle = [this](QPointF at, int delta) {
        stage.Wheel({50, 50}, delta);
        const QPoint apart = stage.OnScreen(at) - stage.view->viewport()->rect().center();
        EXPECT_LT(apart.manhattanLength(), 20) << at.x() << ", " << at.y();
    };
    stage.Click({80, 30});
    expectInTheMiddle({80, 30}, 120);
    stage.Drag({80, 30}, {75, 40});
    expectInTheMiddle({75, 40}, -120);
    // The middle of a group, from the second element on.
    stage.scene->SetSelected(second, true);
    expectInTheMiddle({67.5, 45}, 120);
    stage.controller->ActionUnSelectAll();
    EXPECT_EQ(stage.view->GetZoomCentre(), QPoint(-1, -1));
    stage.controller->ActionSelectAll();
    stage.controller->SetZoomStyle(0);
    EXPECT_EQ(stage.view->GetZoomCentre(), QPoint(-1, -1));
}

TEST_F(Canvas, HandlesKeepTheirSizeOnTheScreen)
{
    const auto id = stage.Place(bar, {50, 50}, {40, 30});
    stage.Click({50, 50});
    const auto shapeAt = [this, id](int pixels) { // so many right and down of the top left corner
        const QPoint corner = stage.OnScreen(stage.PlaceOf(id).Rect().topLeft());
        stage.Hover(stage.view->mapToScene(corner + QPoint(pixels, pixels)));
        return stage.view->viewport()->cursor().shape();
    };
    for (const int zoom : {-120, -120, 120, 120, 120}) {
        stage.Wheel({50, 50}, zoom);
        EXPECT_EQ(shapeAt(6), Qt::SizeFDiagCursor);
        EXPECT_EQ(shapeAt(9), Qt::ArrowCursor);
    }
    stage.Click({5, 5});
    EXPECT_EQ(shapeAt(6), Qt::ArrowCursor);
}

// ---- Selection ---------------------------------------------------------------------------------

TEST_F(Canvas, OneSelectionShowsInCanvasAndList)
{
    const auto one = stage.Place(bar, {20, 20}, {12, 4});
    const auto two = stage.Place(bar, {60, 20}, {12, 4});
    std::vector<int> told;
    QObject::connect(stage.controller.get(), &EditorController::selectionHasChanged,
                     [&](int count) { told.push_back(count); });
    stage.Click({60, 20});
    EXPECT_EQ(stage.SelectedInList(), std::vector{two});
    stage.list->selectAll();
    EXPECT_EQ(stage.scene->SelectedIds(), (std::vector{one, two}));
    EXPECT_TRUE(stage.scene->GetGroupOverlay().GetFrame());
    stage.list->clearSelection();
    EXPECT_EQ(stage.scene->SelectedCount(), 0);
    EXPECT_FALSE(stage.scene->GetGroupOverlay().GetFrame());
    stage.controller->ActionSelectAll();
    stage.controller->ActionUnSelectAll();
    EXPECT_TRUE(stage.SelectedInList().empty());
    stage.QuickDrag({20, 20}, {20, 20});
    EXPECT_EQ(stage.SelectedInList(), std::vector{one});
    EXPECT_FALSE(stage.scene->GetGestures().IsDragging());
    // One event each, however many elements it took.
    EXPECT_EQ(told, (std::vector{1, 2, 0, 2, 0, 1}));
    EXPECT_EQ(stage.undo.count(), 0);
}

TEST_F(Canvas, ListAndCanvasScrollToWhatIsSelectedInTheOther)
{
    std::vector<std::int64_t> ids;
    for (int i = 0; i < 100; ++i)
        ids.push_back(stage.Place(bar, {5 + 0.9 * i, 5 + 0.9 * i}, {1, 1}));
    QApplication::processEvents();
    QScrollBar& rows = *stage.list->verticalScrollBar();
    ASSERT_GT(rows.maximum(), 0);
    const auto rowOf = [this](std::int64_t id) {
        return stage.manager.GetMappedObjectListProxy()->RowsOf({id}).front().topLeft();
    };
    const auto isInList = [&](std::int64_t id) {
        return stage.list->viewport()->rect().contains(stage.list->visualRect(rowOf(id)).center());
    };
    for (const std::int64_t id : {ids.front(), ids.back(), ids[50]}) {
        stage.scene->UnSelectAll();
        stage.Click(stage.PlaceOf(id).centre);
        EXPECT_TRUE(isInList(id)) << id;
    }
    // Part of it is in sight.
    rows.setValue(rows.maximum());
    stage.controller->ActionSelectAll();
    EXPECT_EQ(rows.value(), rows.maximum());

    for (int i = 0; i < 20; ++i)
        stage.Wheel({50, 50}, 120);
    const auto isOnCanvas = [&](std::int64_t id) {
        return stage.view->PartInSight().contains(stage.PlaceOf(id).centre);
    };
    ASSERT_TRUE(isOnCanvas(ids[50]));
    for (const std::int64_t id : {ids.front(), ids.back()}) {
        EXPECT_FALSE(isOnCanvas(id));
        stage.list->selectionModel()->select(rowOf(id), QItemSelectionModel::ClearAndSelect |
                                                            QItemSelectionModel::Rows);
        EXPECT_TRUE(isOnCanvas(id));
    }
    const QRectF seen = stage.view->PartInSight();
    stage.list->selectAll();
    EXPECT_EQ(stage.view->PartInSight(), seen);
}

TEST_F(Canvas, TheContextMenuFitsTheSelection)
{
    const EditorActionSet actions(
        {*stage.controller, *stage.scene, *stage.list, stage.undo, stage.window});
    EXPECT_EQ(ContextMenu({50, 50}), "Canvas &Size... |(&Paste element(s)) ");
    const auto first = stage.Place(bar, {20, 20}, {12, 4});
    const auto other = stage.Place(bar, {60, 20}, {12, 4});
    const std::string others =
        "|&Copy (&Paste element(s)) |Duplicate Ele&ment... |A&lign Ro&tate |&Delete ";
    stage.Click({20, 20});
    EXPECT_EQ(ContextMenu({60, 20}), "Flip &Horizontal Flip &Vertical " + others);
    EXPECT_EQ(stage.scene->SelectedIds(), std::vector{other}) << "what the mouse was on";
    stage.Click({20, 20});
    EXPECT_EQ(stage.scene->SelectedIds(), std::vector{first}) << "not the one of the menu";
    stage.Click({60, 20});
    QAction& flip = *stage.scene->FlipActions()[FlipHorizontal];
    stage.controller->ActionFlip(FlipHorizontal, true);
    EXPECT_TRUE(flip.isChecked());
    stage.undo.undo();
    EXPECT_FALSE(flip.isChecked());
    stage.controller->ActionSelectAll();
    EXPECT_EQ(ContextMenu({20, 20}), "(Flip &Horizontal) (Flip &Vertical) " + others);
    stage.controller->ActionCopySelection();
    stage.controller->ActionUnSelectAll();
    EXPECT_EQ(ContextMenu({50, 50}), "Canvas &Size... |&Paste element(s) ");
}

// ---- Drops -------------------------------------------------------------------------------------

TEST_F(Canvas, ADroppedFixtureGoesUnderTheMouseAndToTheNextFreeUniverse)
{
    const auto odd = stage.AddFixture(L"Odd", 5, 3, 3);
    stage.DropFixture(odd, {50.2, 40.2});
    const QRectF dropped = stage.PlaceOf(stage.Ids().back()).Rect();
    EXPECT_NEAR(dropped.left(), 48, 1e-3) << "its corner on a whole pixel";
    EXPECT_NEAR(dropped.top(), 39, 1e-3);
    stage.undo.undo();
    stage.scene->usedUniversesChanged({0, 1});
    for (const int channel : {1, 145}) {
        stage.DropFixture(bar, {50, 40});
        const auto id = stage.Ids().back();
        EXPECT_EQ(stage.Item(id).GetArtNetMapping()->GetUniverse(), 2);
        EXPECT_EQ(stage.Item(id).GetArtNetMapping()->GetChannel(), channel);
        EXPECT_LT((stage.PlaceOf(id).centre - QPointF(50, 40)).manhattanLength(), 1e-3);
        EXPECT_EQ(stage.scene->SelectedIds(), std::vector{id});
        EXPECT_TRUE(stage.scene->Find(id)->HasAutoMark());
    }
    EXPECT_EQ(stage.undo.undoText(), QStringLiteral("Map Device(s)"));
}

TEST_F(Canvas, WhatIsNoFixtureIsNotPlaced)
{
    QString imported;
    QObject::connect(stage.scene.get(), &WeftMapEditorScene::importRequested,
                     [&](const QString& path) { imported = path; });
    stage.DropFixture(bar + 1000, {50, 40});
    stage.DropFixture(-1, {50, 40});
    stage.DropData(QStringLiteral("application/zentriledfixture"), "wide", {50, 40});
    stage.DropData(QStringLiteral("text/plain"), "1", {50, 40});
    stage.DropFile(QStringLiteral("/shows/picture.png"), {50, 40});
    EXPECT_EQ(imported, QString());
    stage.DropFile(QStringLiteral("/shows/Bühne 2.WFM"), {50, 40});
    EXPECT_EQ(imported, QStringLiteral("/shows/Bühne 2.WFM"));
    EXPECT_TRUE(stage.Ids().empty());
    EXPECT_EQ(stage.undo.count(), 0);
}

TEST_F(Canvas, AFixtureMayLeaveTheLibraryWhileItsElementIsOnTheCanvas)
{
    const auto id = stage.Place(bar, {20, 20}, {12, 4});
    const auto leave = [this] {
        const DeviceListProxy& list = *stage.manager.GetDeviceListProxy();
        return stage.manager.RemoveFixture(list.index(0, 0, list.index(0, 0)));
    };
    stage.Press({20, 20});
    stage.MoveTo({25, 25});
    ASSERT_TRUE(leave());
    stage.MoveTo({30, 30});
    stage.Release({30, 30});
    EXPECT_NEAR(stage.PlaceOf(id).centre.x(), 30, 0.2);
    EXPECT_EQ(stage.undo.count(), 1);
    stage.DropFixture(bar, {50, 50});
    EXPECT_EQ(stage.Ids(), std::vector{id});
    // An element has a copy of its fixture: it comes back without the library too.
    stage.Key(Qt::Key_Delete);
    stage.undo.undo();
    EXPECT_EQ(stage.Item(id).GetFixture().product, L"Bar");
    EXPECT_EQ(stage.Item(id).GetFixture().uniqueID, 0);
}

// ---- Commands ----------------------------------------------------------------------------------

TEST_F(Canvas, ACanvasOfAnotherSizeIsAStepThatTheViewFollows)
{
    const auto one = stage.Place(bar, {15, 20}, {10, 4});
    const auto two = stage.Place(bar, {33, 30}, {20, 4});
    stage.controller->ActionAlign(ElementGeometry::AlignLeft);
    EXPECT_EQ(stage.undo.count(), 0); // nothing is selected
    stage.scene->SetSelected(one, true);
    stage.controller->ActionCropCanvasToSelectedDevices();
    EXPECT_EQ(stage.manager.CanvasPixels(), QSize(10, 4));
    EXPECT_EQ(stage.scene->sceneRect(), QRectF(-5, -2, 20, 8));
    EXPECT_EQ(stage.scene->SelectedCount(), 0);
    stage.undo.undo();
    const QRectF before = stage.PlaceOf(two).Rect();
    for (const bool wide : {true, false}) {
        const QSize canvas = wide ? QSize(300, 100) : QSize(100, 300);
        stage.controller->ResizeCanvas(canvas.width(), canvas.height(), wide); // keeps its pixels
        const QRectF rect = stage.PlaceOf(two).Rect();
        EXPECT_NEAR(rect.left(), before.left(), 1e-3);
        EXPECT_NEAR(rect.top(), before.top() * (wide ? 1 : 3), 1e-3);
        EXPECT_NEAR(stage.display.fitScaleX, 200 / 110.0, 1e-4);
        const QPoint middle = stage.OnScreen({canvas.width() / 2.0, canvas.height() / 2.0});
        EXPECT_LT((middle - stage.view->viewport()->rect().center()).manhattanLength(), 30);
        stage.undo.undo();
    }
    stage.controller->ResizeCanvas(100, 100, true);
    EXPECT_EQ(stage.undo.index(), 0);
}
