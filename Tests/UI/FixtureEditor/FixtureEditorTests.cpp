// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/EditorDesk.h"

namespace {

using enum PixelMapType;

class FixtureGrid : public EditorDesk
{};

/// Where a widget has been painted since.
class PaintedRegion : public QObject
{
public:
    explicit PaintedRegion(QWidget& widget)
    {
        QCoreApplication::processEvents();
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

    QRegion region;
};

const QString OverrideText = "Mapping this pixel would override channels defined with other pixels "
                             "or constants. Do you want to proceed and override?"_q;
const QString LimitText = "Mapping this pixel is not allowed because the channel limit would be "
                          "reached."_q;

} // namespace

// ---- Mouse -------------------------------------------------------------------------------------

TEST_F(FixtureGrid, ADragLaysPixelsOneBehindTheOtherAndTheRightButtonClearsThem)
{
    EXPECT_EQ(Values(), "R1 G1 B1 R2 G2 B2 * * * * * 9");
    EXPECT_EQ(table->item(4, 1)->data(Qt::UserRole).toInt(), 256 + 3 + 1);
    SetNext(7);
    Press(3);
    EXPECT_EQ(Cells(), "1 4 0 7 0 0");
    const QPoint besideIt = CellRect(3).center();
    MoveTo(besideIt + QPoint(5, 5), Qt::LeftButton);
    MoveTo(QPoint(-5, besideIt.y()), Qt::LeftButton);
    MoveTo(QPoint(besideIt.x(), grid->height() + 5), Qt::LeftButton);
    EXPECT_EQ(Cells(), "1 4 0 7 0 0") << "the same cell and outside";
    EXPECT_EQ(Next(), 10);
    Release();
    MoveTo(4, Qt::NoButton);
    Press(0, Qt::RightButton);
    MoveTo(1, Qt::RightButton);
    MoveTo(2, Qt::NoButton);
    MoveTo(3, Qt::RightButton);
    EXPECT_EQ(Cells(), "0 0 0 7 0 0") << "a button whose release was missed";
    EXPECT_EQ(Values(), "* * * * * * R4 G4 B4 * * 9");
    EXPECT_EQ(Next(), 10);
    QTest::mousePress(grid, Qt::LeftButton, {}, {grid->width() - 1, 5});
    EXPECT_EQ(Cells(), "0 0 0 7 0 0") << "beside the last column: 620 is no multiple of 3";
    Press(3, Qt::RightButton);
    Release();
    SetNext(1);
    Press(0);
    MoveTo(2, Qt::LeftButton);
    EXPECT_EQ(Cells(), "1 4 7 0 0 0") << "a quick hand";
}

TEST_F(FixtureGrid, WhatWouldTakeSomethingAwayIsAskedAboutAndNoLeavesIt)
{
    const QString remap = "Do you want to remap this pixel to the channel %1?"_q;
    const std::tuple<int, int, QStringList, std::string, QStringList> cases[] = {
        {11, 2, {"OK"_q}, "1 4 0 0 0 0", {LimitText}},
        {7, 1, {"No"_q}, "1 4 0 0 0 0", {remap.arg(7)}},
        {7, 1, {"Yes"_q}, "1 7 0 0 0 0", {remap.arg(7)}},
        {5, 0, {"Yes"_q, "Escape"_q}, "1 7 0 0 0 0", {remap.arg(5), OverrideText}},
        {5, 0, {"Yes"_q, "Yes"_q}, "5 0 0 0 0 0", {remap.arg(5), OverrideText}},
        {10, 2, {"No"_q}, "5 0 0 0 0 0", {OverrideText}},
        {10, 2, {"Yes"_q}, "5 0 10 0 0 0", {OverrideText}},
    };
    for (const auto& [next, cell, answers, cells, texts] : cases) {
        person.seen.clear();
        for (const QString& answer : answers)
            person.WillPress(answer);
        SetNext(next);
        Press(cell);
        MoveTo(4, Qt::LeftButton); // a box ends the drag under it
        EXPECT_EQ(Cells(), cells) << next;
        EXPECT_EQ(Next(), answers.last() == "Yes"_q ? next + 3 : next);
        ASSERT_EQ(person.seen.size(), static_cast<std::size_t>(texts.size()));
        for (int i = 0; i < texts.size(); ++i) {
            const Support::SeenBox& box = person.seen[static_cast<std::size_t>(i)];
            EXPECT_EQ(box.text, texts[i]);
            EXPECT_EQ(box.title, "Warning"_q);
            EXPECT_EQ(box.byDefault, answers[i] == "OK"_q ? "OK"_q : "No"_q);
            EXPECT_TRUE(box.hasParent);
        }
    }
    EXPECT_EQ(Values(), "* * * * R1 G1 B1 * * R3 G3 B3");
}

TEST_F(FixtureGrid, WhatChangesIsRepainted)
{
    PaintedRegion painted(*grid);
    SetNext(3); // takes the channels of the two others
    person.WillPress("Yes"_q);
    Press(5);
    QCoreApplication::processEvents();
    for (int cell = 0; cell < 6; ++cell)
        EXPECT_EQ(painted.region.contains(CellRect(cell).center()), cell < 2 || cell == 5) << cell;
    painted.region = QRegion();
    Click("buttonResetMapping");
    QCoreApplication::processEvents();
    EXPECT_TRUE(painted.region.contains(CellRect(5).center()));
}

TEST_F(FixtureGrid, BehindTheLastPixelTheLastChannelCanBeTyped)
{
    Open(Fixture({2, 2, L, 4}, {1, 2, 3, 0}, {}));
    auto* next = Find<QSpinBox>("nextChannel");
    SetNext(4);
    Press(3);
    EXPECT_EQ(Next(), 5);
    Press(3, Qt::RightButton);
    Release();
    next->selectAll();
    QTest::keyClicks(next, "4"_q);
    Press(3);
    EXPECT_EQ(Cells(), "1 2 3 4");
}

// ---- Keyboard ----------------------------------------------------------------------------------

TEST_F(FixtureGrid, TheGridIsWorkedByKeysAndHeard)
{
    SetNext(7);
    Find<QSpinBox>("nextChannel")->setFocus();
    Keys(Find<QSpinBox>("nextChannel"), {Qt::Key_Tab});
    ASSERT_TRUE(grid->hasFocus());
    EXPECT_EQ(Spoken(), "row 1, column 1, channel 1");
    std::string places;
    for (const char* key : {"Up", "Left", "Right", "Down", "Left", "Up", "End", "PgDown", "Home",
                            "PgUp", "Ctrl+End", "Ctrl+Home", "Down"})
    {
        QTest::keySequence(grid, QKeySequence(QLatin1String(key)));
        const QStringList words = grid->accessibleName().remove(","_q).split(" "_q);
        places += (words[1] + words[3] + " "_q).toStdString(); // row and column
    }
    EXPECT_EQ(places, "11 11 12 22 21 11 13 23 21 11 23 11 21 ");
    EXPECT_EQ(Spoken(), "row 2, column 1, empty");
    EXPECT_EQ(Info(), "Row 2, column 1: empty");
    Keys(grid, {Qt::Key_Space});
    EXPECT_EQ(Spoken(), "row 2, column 1, channel 7");
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " "_q, true);
    QApplication::sendEvent(grid, &again); // no question
    Keys(grid, {Qt::Key_Delete});
    EXPECT_EQ(Spoken(), "row 2, column 1, empty");
    SetNext(7);
    Keys(grid, {Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Right});
    SetNext(7);
    Keys(grid, {Qt::Key_Enter});
    EXPECT_EQ(Cells(), "1 4 0 0 7 0");
    EXPECT_TRUE(dialog->isVisible());

    MoveTo(0, Qt::NoButton);
    EXPECT_EQ(Info(), "Row 1, column 1: channels 1 to 3 (R, G, B)");
    EXPECT_EQ(Spoken(), "row 2, column 2, channel 7");
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(grid, &leave);
    EXPECT_EQ(Info(), "Row 2, column 2: channels 7 to 9 (R, G, B)");
    Press(1, Qt::RightButton);
    EXPECT_EQ(Spoken(), "row 1, column 2, empty");
    Keys(grid, {Qt::Key_Tab});
    EXPECT_FALSE(grid->hasFocus());
}

TEST_F(FixtureGrid, ALargeMapScrollsWithItsCursor)
{
    for (const FixtureSize size : {FixtureSize{512, 1, L, 512}, {600, 300, RGB, 512}}) {
        Open(Fixture(size, {}));
        EXPECT_EQ(Find<QFrame>("pixelMap")->size(), QSize(620, 385));
        EXPECT_GE(CellRect(0).width(), 6);
        EXPECT_GE(CellRect(0).height(), 6);
        const int last = size.width * size.height - 1;
        const auto inSight = [&](int cell) {
            return grid->visibleRegion().boundingRect().contains(CellRect(cell));
        };
        MoveTo(last, Qt::LeftButton);
        Press(last);
        EXPECT_EQ(Next(), 1) << "out of sight";
        QTest::keyClick(grid, Qt::Key_End, Qt::ControlModifier);
        EXPECT_TRUE(inSight(last));
        EXPECT_FALSE(inSight(0));
        Press(last);
        EXPECT_EQ(dialog->GetLayout().GetPixelMap().GetChannels().back(), 1);
        EXPECT_TRUE(inSight(last));
        const int page = grid->visibleRegion().boundingRect().height() / CellRect(0).height();
        QTest::keyClick(grid, Qt::Key_Home, Qt::ControlModifier);
        QTest::keyClick(grid, Qt::Key_PageDown);
        const int row = std::min(1 + page, size.height);
        EXPECT_TRUE(grid->accessibleName().startsWith("row %1, "_q.arg(row))) << Spoken();
    }
}

TEST_F(FixtureGrid, FaultsOfAFileAreMarkedByShapesAndTold)
{
    Open(Fixture({6, 2, RGBAmber, 16}, {1, 4, 9, 14, 600, 0, -1, 9}));
    const std::tuple<int, std::string, bool, bool> cases[] = {
        {0, "1, column 1: channels 1 to 4 (R, G, B, Amber); overlaps another pixel", true, false},
        {2, "1, column 3: channels 9 to 12 (R, G, B, Amber); overlaps another pixel", true, false},
        {3, "1, column 4: channels 14 to 17 (R, G, B, Amber); past the last channel", false, true},
        {5, "1, column 6: empty", false, false},
        {6,
         "2, column 1: channels -1 to 2 (R, G, B, Amber); overlaps another pixel; before the first "
         "channel",
         true, true},
    };
    QImage picture(grid->size(), QImage::Format_RGB32);
    grid->render(&picture);
    for (const auto& [cell, words, overlaps, beyond] : cases) {
        MoveTo(cell, Qt::NoButton);
        EXPECT_EQ(Info(), "Row " + words);
        const QRect place = CellRect(cell).adjusted(4, 4, -4, -4);
        const auto isRed = [&](QPoint at) {
            const QColor colour = picture.pixelColor(at);
            return colour.green() < 60 && colour.blue() < 60;
        };
        if (!dialog->GetLayout().IsMapped(cell))
            continue;
        EXPECT_TRUE(isRed(place.topLeft()) && isRed(place.center()));
        EXPECT_EQ(!isRed(place.topRight()), overlaps) << words;
        EXPECT_EQ(!isRed(place.bottomLeft()), beyond) << words;
    }
    MoveTo(5, Qt::NoButton);
    Keys(grid, {Qt::Key_Down});
    EXPECT_EQ(Spoken(), "row 2, column 1, channel -1, overlaps another pixel, before the first "
                        "channel");
}

// ---- Auto-mapping and resets -------------------------------------------------------------------

TEST_F(FixtureGrid, AutoMappingFollowsTheChosenWalk)
{
    Open(Fixture({3, 2, L, 8}, {8}, {{2, 50}}));
    auto* start = Find<QSpinBox>("automapStartChannel");
    EXPECT_EQ(start->maximum(), 3);
    EXPECT_TRUE(Find<QAbstractButton>("topLeft")->isChecked());
    person.WillPress("No"_q);
    Click("buttonPatch");
    EXPECT_EQ(person.seen.back().text, OverrideText);
    EXPECT_EQ(Cells(), "8 0 0 0 0 0");
    start->setValue(3);
    Click("buttonPatch");
    EXPECT_EQ(Cells(), "3 4 5 6 7 8");
    EXPECT_EQ(Next(), 1);
    const std::tuple<const char*, int, bool, std::string> cases[] = {
        {"topRight", 0, false, "5 4 3 8 7 6"},
        {"bottomLeft", 0, true, "8 7 6 3 4 5"},
        {"bottomRight", 1, true, "8 5 4 7 6 3"},
        {"topLeft", 1, false, "3 5 7 4 6 8"},
    };
    for (const auto& [corner, orientation, snake, cells] : cases) {
        Click(corner);
        Find<QComboBox>("orientation")->setCurrentIndex(orientation);
        Find<QCheckBox>("snake")->setChecked(snake);
        Click("buttonPatch");
        EXPECT_EQ(Cells(), cells) << corner;
    }
    start->setValue(2);
    person.WillPress("Cancel"_q);
    Click("buttonModify");
    EXPECT_EQ(start->value(), 1);
    Click("buttonResetConstants");
    EXPECT_EQ(Values(), "* * L1 L4 L2 L5 L3 L6");
    delete EditValue(1, "7"_q);
    Click("buttonResetMapping");
    EXPECT_EQ(Values(), "7 * * * * * * *");

    Open(Fixture({3, 2, RGB, 17}, {}));
    EXPECT_FALSE(Find<QAbstractButton>("buttonPatch")->isEnabled());
    EXPECT_EQ(Find<QAbstractButton>("buttonPatch")->toolTip(),
              "All pixels need 18 channels, the fixture has 17"_q);
    EXPECT_EQ(Find<QSpinBox>("automapStartChannel")->maximum(), 1);
    Open(Fixture({171, 1, RGB, 512}, {}));
    person.WillPress("OK"_q);
    QMetaObject::invokeMethod(dialog.get(), "autoMap");
    EXPECT_EQ(person.seen.back().text,
              "Auto-patch not possible: the size of the fixture will overflow DMX "
              "universe.\n\nSet a smaller width and/or height."_q);
}
