// SPDX-License-Identifier: MIT
// That the canvas is wired to the window's lists, keys and documents. What its gestures do is
// judged beside the canvas itself.
#include <cmath>

#include "UI/Editor/MappingRectangle.h"
#include "UI/Main/Desk.h"

using CanvasInWindow = Desk;

TEST_F(CanvasInWindow, AFixtureIsDraggedFromTheLibraryOntoThePicture)
{
    StartWith(Element({0.2, 0.8}, {0.12, 0.01}));
    const QImage before = Picture();
    DragFromLibrary({56, 30.5});
    ASSERT_EQ(PlacedFixtures(), 2);
    EXPECT_LT((Item(1).pos() - QPointF(56, 30.5)).manhattanLength(), 1) << "under the mouse";
    EXPECT_EQ(State(), "unsaved"_q);
    EXPECT_TRUE(Action("actionActionDelete")->isEnabled());
    EXPECT_EQ(Find<QTreeView>("mappedTreeView")->selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(window->focusWidget(), &View());
    Type(&View(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(Picture(), before);
    Trigger("actionRedo");
    EXPECT_EQ(PlacedFixtures(), 2);
}

TEST_F(CanvasInWindow, AnotherDocumentLeavesNothingOfTheOldOne)
{
    StartWithTwo();
    const QString other = WriteDocument("OTHER.WFM"_q, {.width = 320, .height = 200});
    Type(&View(), Qt::Key_A, Qt::ControlModifier);
    Drag({20, 20}, {30, 30});
    EXPECT_TRUE(Action("actionUndo")->isEnabled());
    person.WillPress("Discard"_q);
    DropFile(other, {50, 50});
    QCoreApplication::processEvents();
    EXPECT_EQ(State(), "unsaved"_q);
    EXPECT_EQ(CanvasWidth(), 320);
    EXPECT_EQ(Scene().AllIds().size(), 1U);
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
    EXPECT_FALSE(Action("actionActionDelete")->isEnabled());

    // A document that goes away under the mouse.
    const QPointF held = Item(0).pos();
    Press(held);
    MoveTo(held + QPointF(5, 5));
    person.WillPress("Discard"_q);
    Trigger("actionNew");
    Release(held + QPointF(9, 9));
    EXPECT_TRUE(Scene().AllIds().empty());
    EXPECT_FALSE(Action("actionUndo")->isEnabled());

    // A new document of the same size is seen from its middle, wherever the old one was left.
    View().horizontalScrollBar()->setValue(View().horizontalScrollBar()->maximum());
    person.WillPress("Discard"_q);
    Trigger("actionNew");
    const QPoint apart = OnScreen({50, 50}) - View().viewport()->rect().center();
    EXPECT_LT(apart.manhattanLength(), 20);
}

TEST_F(CanvasInWindow, KeysAndSwitchesReachTheCanvas)
{
    StartWithTwo();
    auto* list = Find<QTreeView>("mappedTreeView");
    auto* zoom = Find<QComboBox>("zoomCombo");
    const double fitted = View().transform().m11();
    Wheel({50, 50}, 120);
    EXPECT_EQ(zoom->currentText(), "114%"_q);
    EXPECT_GT(View().transform().m11(), 1.1 * fitted);
    Type(&View(), Qt::Key_Minus);
    EXPECT_NEAR(View().transform().m11(), fitted, 1e-4);

    // Snapping: the corner goes to a whole pixel.
    const auto left = [this] {
        return std::abs(std::remainder(Item(0).GetPlacement().Rect().left(), 1));
    };
    Drag({20, 20}, {24.4, 23.3});
    EXPECT_NEAR(left(), 0, 1e-3);
    Trigger("actionSnapToGrid");
    Drag({24, 23}, {28.4, 26.3});
    EXPECT_GT(left(), 0.05);
    const QImage withGrid = Picture();
    QCoreApplication::processEvents();
    const QSignalSpy redrawn(&Scene(), &QGraphicsScene::changed);
    Trigger("actionDisplay_Pixel_Grid");
    QCoreApplication::processEvents();
    EXPECT_GT(redrawn.count(), 0);
    EXPECT_NE(Picture(), withGrid);

    // In a field the keys edit its text.
    Type(zoom->lineEdit(), Qt::Key_A, Qt::ControlModifier);
    Type(zoom->lineEdit(), Qt::Key_Backspace);
    Type(zoom->lineEdit(), Qt::Key_Minus);
    EXPECT_EQ(zoom->lineEdit()->text(), "-"_q);
    EXPECT_EQ(PlacedFixtures(), 2);
    Type(list, Qt::Key_A, Qt::ControlModifier);
    Type(list, Qt::Key_Delete);
    EXPECT_EQ(PlacedFixtures(), 0);
}

TEST_F(CanvasInWindow, AWindowOfAnotherSizeKeepsTheMiddleInTheMiddleWhereverTheMouseIs)
{
    StartWithTwo();
    const auto middle = [this] {
        return View().mapToScene(View().viewport()->rect().center());
    };
    for (const int steps : {0, 8}) { // of the zoom, at a place beside the middle
        View().setAttribute(Qt::WA_UnderMouse, false);
        for (int i = 0; i < steps; ++i)
            Wheel({60, 45}, 120);
        const QPointF before = middle();
        View().setAttribute(Qt::WA_UnderMouse); // as the system says when the mouse comes
        Hover(before - QPointF(20, 20));
        // Dragged larger in small steps, then maximised.
        for (int i = 1; i <= 30; ++i) {
            window->resize(1024 + 3 * i, 600 + 2 * i);
            QCoreApplication::processEvents();
        }
        window->showMaximized();
        QCoreApplication::processEvents();
        const QPoint apart = OnScreen(before) - View().viewport()->rect().center();
        EXPECT_LE(apart.manhattanLength(), 4) << steps;
        window->showNormal();
        window->resize(1024, 600);
        QCoreApplication::processEvents();
        EXPECT_LT((middle() - before).manhattanLength(), 1) << "and back, without a drift";
    }
}

TEST_F(CanvasInWindow, TheArrangingActionsDoWhatTheySay)
{
    StartWithTwo();
    Trigger("actionSelect_All");
    for (const QString& step :
         "Align Left,Align Center,Align Right,Align Top,Align Middle,Align Bottom,"
         "Distribute Horizontally,Distribute Vertically"_q.split(QLatin1Char(',')))
    {
        Trigger(
            ("action"_q + QString(step).replace(QLatin1Char(' '), QLatin1Char('_'))).toLatin1());
        EXPECT_EQ(Action("actionUndo")->text(), "&Undo "_q + step);
    }
    Trigger("actionRotate_Left_90");
    EXPECT_EQ(Item(0).rotation(), -90);
    Trigger("actionRotate_Right_90");
    EXPECT_EQ(Item(0).rotation(), 0);
    Trigger("actionCrop_Canvas");
    EXPECT_LT(CanvasWidth(), 100);
    Trigger("actionUndo");
    EXPECT_EQ(CanvasWidth(), 100);

    // A canvas of another size keeps the elements or takes them along.
    const QPointF place = Item(0).pos();
    SetCanvasWidth(200, true);
    EXPECT_LT((Item(0).pos() - place).manhattanLength(), 1e-3);
    SetCanvasWidth(100, false);
    EXPECT_NEAR(Item(0).x(), place.x() / 2, 1e-3);
}
