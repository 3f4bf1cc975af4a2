// SPDX-License-Identifier: MIT
// That the canvas is wired to the window's lists, keys and documents. What its gestures do is
// judged beside the canvas itself.
#include <cmath>

#include "UI/Editor/MappingRectangle.h"
#include "UI/Main/LiveCanvas.h"

namespace {

class CanvasInWindow : public LiveCanvas
{
protected:
    void StartWithTwo()
    {
        StartWith(Element({0.2, 0.2}, {0.18, 0.1}) + Element({0.6, 0.8}, {0.1, 0.18}));
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
    // Its middle half a fixture up and left of the mouse.
    EXPECT_NEAR(Item(1).pos().x(), 50, 0.5);
    EXPECT_NEAR(Item(1).pos().y(), 30, 0.5);
    EXPECT_EQ(State(), QStringLiteral("unsaved"));
    EXPECT_TRUE(Action("actionActionDelete")->isEnabled());
    const auto* list = Find<QTreeView>("mappedTreeView");
    ASSERT_EQ(list->selectionModel()->selectedRows().size(), 1);
    // Behind what is patched.
    EXPECT_TRUE(list->selectionModel()->selectedRows(9).front().data().toString().contains(
        QStringLiteral("136")));
    EXPECT_EQ(Picture().pixelColor(OnScreen(Item(1).GetPlacement().Rect().topLeft())),
              QColor(255, 0, 0))
        << "its frame";
    EXPECT_EQ(window->focusWidget(), &View());
    Undo();
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(Picture(), before);
    Redo();
    EXPECT_EQ(PlacedFixtures(), 2);
}

TEST_F(CanvasInWindow, ACanvasOfAnotherSizeKeepsTheElementsOrTakesThemAlong)
{
    StartWithTwo();
    for (const auto& [keep, width] : {std::pair(true, 20.0), std::pair(false, 10.0)}) {
        person.Will([keep = keep](QDialog& dialog) {
            dialog.findChild<QSpinBox*>(QStringLiteral("spinBoxWidth"))->setValue(keep ? 200 : 100);
            dialog.findChild<QCheckBox*>(QStringLiteral("cbKeepPositions"))->setChecked(keep);
            dialog.accept();
        });
        Trigger("actionCanvas_Size");
        EXPECT_NEAR(Item(0).pos().x(), width, 1e-3) << keep;
        EXPECT_NEAR(Item(0).pos().y(), 20, 1e-3) << keep;
        EXPECT_EQ(State(), QStringLiteral("unsaved"));
        Trigger("actionSave_File");
    }
}

TEST_F(CanvasInWindow, ADroppedDocumentIsImportedAndAnotherDocumentLeavesNothingOfTheOldOne)
{
    StartWithTwo();
    const QString other = WriteDocument(Path(QStringLiteral("OTHER.WFM")), 320, 200);
    Type(&View(), Qt::Key_A, Qt::ControlModifier);
    Drag({20, 20}, {30, 30});
    for (const auto& [answer, elements] : {std::pair("Cancel", 2), std::pair("Yes", 1)}) {
        EXPECT_TRUE(Action("actionUndo")->isEnabled());
        person.WillPress(QLatin1String(answer));
        DropFile(other, {50, 50});
        QCoreApplication::processEvents();
        EXPECT_EQ(PlacedFixtures(), elements);
    }
    EXPECT_EQ(State(), QStringLiteral("unsaved"));
    EXPECT_EQ(CanvasWidth(), 320);
    EXPECT_EQ(Scene().AllIds().size(), 1U);
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
    EXPECT_FALSE(Action("actionActionDelete")->isEnabled());

    // A document that goes away under the mouse.
    const QPointF held = Item(0).pos();
    Press(held);
    MoveTo(held + QPointF(5, 5));
    person.WillPress(QStringLiteral("Yes"));
    Trigger("actionNew");
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

TEST_F(CanvasInWindow, KeysAndSwitchesReachTheCanvas)
{
    StartWithTwo();
    auto* list = Find<QTreeView>("mappedTreeView");
    auto* zoom = Find<QComboBox>("zoomCombo");
    const double fitted = View().transform().m11();
    Wheel({50, 50}, 120);
    EXPECT_EQ(zoom->currentText(), QStringLiteral("114%"));
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
    Trigger("actionDisplay_Pixel_Grid");
    EXPECT_NE(Picture(), withGrid);

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

TEST_F(CanvasInWindow, TheArrangingActionsDoWhatTheySay)
{
    StartWithTwo();
    Trigger("actionSelect_All");
    EXPECT_EQ(Scene().SelectedCount(), 2);
    for (const auto& [name, step] :
         {std::pair("actionAlign_Left", "Align Left"),
          std::pair("actionAlign_Center", "Align Center"),
          std::pair("actionAlign_Right", "Align Right"), std::pair("actionAlign_Top", "Align Top"),
          std::pair("actionAlign_Middle", "Align Middle"),
          std::pair("actionAlign_Bottom", "Align Bottom"),
          std::pair("actionDistribute_Horizontally", "Distribute Horizontally"),
          std::pair("actionDistribute_Vertically", "Distribute Vertically"),
          std::pair("actionRotate_Left_90", "Rotate Fixture")})
    {
        Trigger(name);
        EXPECT_EQ(Action("actionUndo")->text(), QStringLiteral("&Undo ") + QLatin1String(step));
    }
    EXPECT_EQ(Item(0).rotation(), -90);
    Trigger("actionRotate_Right_90");
    EXPECT_EQ(Item(0).rotation(), 0);
    Trigger("actionCrop_Canvas");
    EXPECT_EQ(Action("actionUndo")->text(), QStringLiteral("&Undo Crop Canvas"));
    EXPECT_LT(CanvasWidth(), 100);
    Undo();
    EXPECT_EQ(CanvasWidth(), 100);
}
