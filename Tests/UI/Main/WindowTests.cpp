// SPDX-License-Identifier: MIT
// What the window shows and keeps, its actions and its boxes.

#include "Support/LogCapture.h"
#include "UI/Dialogs/WEFTAboutDialog.h"
#include "UI/Main/Desk.h"
#include "UI/Main/FrameLoop.h"
#include "UI/Main/Startup.h"
#include "UI/Widgets/Version.h"

namespace {

class Window : public Desk
{
protected:
    template <typename Type>
    static Type* In(const QDialog& dialog, const char* name)
    {
        auto* child = dialog.findChild<Type*>(QLatin1String(name));
        EXPECT_TRUE(child) << name;
        return child;
    }
    static void Put(const char* key, const QVariant& value)
    {
        QSettings("Zentri"_q, "PixelWeft3"_q).setValue(QLatin1String(key), value);
    }
    [[nodiscard]] QString Zoom() const { return Find<QComboBox>("zoomCombo")->currentText(); }
    /// The names of the actions in a menu or bar and in the menus below it.
    static QStringList ActionsIn(const QWidget& bar)
    {
        QStringList names;
        for (const QAction* action : bar.actions())
            names +=
                action->menu() ? ActionsIn(*action->menu()) : QStringList(action->objectName());
        names.removeAll(QString());
        return names;
    }
};

} // namespace

TEST_F(Window, EveryActionHasItsPlaceAndItsKey)
{
    Start();
    QStringList placed = ActionsIn(*Find<QMenuBar>("menubar"));
    EXPECT_EQ(placed.size(), 30);
    EXPECT_EQ(placed.removeDuplicates(), 0) << "an action has two places";
    const QStringList inBar = ActionsIn(*Find<QToolBar>("toolBar"));
    EXPECT_EQ(inBar.size(), 7);
    placed += inBar;
    placed += ActionsIn(*Find<QToolButton>("selectionModeButton")->menu());
    QStringList keys;
    for (const QAction* action : window->findChildren<QAction*>()) {
        if (!action->objectName().isEmpty()) {
            EXPECT_TRUE(placed.contains(action->objectName())) << qPrintable(action->objectName());
        }
        if (!action->shortcut().isEmpty()) {
            EXPECT_FALSE(keys.contains(action->shortcut().toString())) << "one key for two";
            keys.append(action->shortcut().toString());
        }
    }
    EXPECT_EQ(keys.size(), 18);
    // What has no work yet can't be chosen, nor what needs a selection or a step to take back.
    for (const char* name : {"actionCopy", "actionPaste", "actionDuplicate_Element", "actionUndo",
                             "actionRedo", "actionActionDelete"})
        EXPECT_FALSE(Action(name)->isEnabled()) << name;
    EXPECT_FALSE(Find<QMenu>("menuAlign")->icon().isNull());
    EXPECT_EQ(ActionsIn(*Find<QMenu>("menuAlign")).size(), 8);
    const auto docks = window->findChildren<QDockWidget*>();
    EXPECT_EQ(docks.size(), 3);
    for (const QDockWidget* dock : docks)
        EXPECT_EQ(window->dockWidgetArea(const_cast<QDockWidget*>(dock)), Qt::LeftDockWidgetArea);
}

TEST_F(Window, WhatTheUserSetComesBack)
{
    Start();
    EXPECT_EQ(window->size(), QSize(1024, 600));
    EXPECT_EQ(window->pos(), QPoint(200, 200));
    EXPECT_EQ(Zoom(), "100%"_q);
    EXPECT_EQ(Kept("zoomFactor").toDouble(), 1.0) << "not the 0 of an empty store";
    for (const auto& [name, key] : {std::pair("actionDisplay_Pixel_Grid", "showGrid"),
                                    std::pair("actionSnapToGrid", "snapToGrid")})
    {
        EXPECT_TRUE(Action(name)->isChecked());
        Trigger(name);
        EXPECT_FALSE(Kept(key).toBool()) << "at once";
    }
    window.reset();
    Put("lastSize", QSize(1100, 700));
    Put("lastPosition", QPoint(30, 40));
    Put("zoomFactor", 2.5);
    Put("imgSelVal", 1);
    Start();
    EXPECT_EQ(window->size(), QSize(1100, 700));
    EXPECT_EQ(window->pos(), QPoint(30, 40));
    EXPECT_EQ(Zoom(), "250%"_q);
    EXPECT_FALSE(Action("actionDisplay_Pixel_Grid")->isChecked());
    EXPECT_FALSE(Action("actionSnapToGrid")->isChecked());

    window->resize(1200, 640);
    window->move(50, 60);
    Trigger("actionDisplay_Pixel_Grid");
    Trigger("actionZoom_In");
    EXPECT_TRUE(window->close());
    EXPECT_EQ(Kept("lastSize").toSize(), QSize(1200, 640));
    EXPECT_EQ(Kept("lastPosition").toPoint(), QPoint(50, 60));
    EXPECT_EQ(Kept("lastInnerSize").toInt(), Find<QWidget>("centralwidget")->width());
    EXPECT_TRUE(Kept("showGrid").toBool());
    EXPECT_FALSE(Kept("snapToGrid").toBool());
    EXPECT_EQ(Kept("imgSelVal").toInt(), 1);
    EXPECT_NEAR(Kept("zoomFactor").toDouble(), 2.875, 1e-6);
}

TEST_F(Window, TheZoomByActionAndByText)
{
    Start();
    Trigger("actionZoom_In");
    EXPECT_EQ(Zoom(), "114%"_q);
    Trigger("actionZoom_Out");
    EXPECT_EQ(Zoom(), "100%"_q);
    auto* combo = Find<QComboBox>("zoomCombo");
    for (const char* typed : {"150", "wide"}) {
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo->lineEdit(), QLatin1String(typed));
        QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
        EXPECT_NEAR(Kept("zoomFactor").toDouble(), 1.50015, 1e-5) << typed;
    }
    EXPECT_EQ(combo->count(), 25);
    EXPECT_EQ(combo->itemText(combo->currentIndex()), "200%"_q) << "the nearest";
}

TEST_F(Window, KeysReachTheirTargetWhereverTheFocusIs)
{
    Start();
    auto* field = Find<QComboBox>("zoomCombo")->lineEdit();
    for (const char* name : {"treeView", "mappedTreeView"}) {
        Type(Find<QTreeView>(name), Qt::Key_Plus);
        EXPECT_EQ(Zoom(), "114%"_q) << name;
        Type(Find<QTreeView>(name), Qt::Key_Minus, Qt::KeypadModifier);
        EXPECT_EQ(Zoom(), "100%"_q) << name;
    }
    // In a field the keys edit the text.
    field->setText("25"_q);
    field->end(false);
    Type(field, Qt::Key_Backspace);
    Type(field, Qt::Key_Minus);
    EXPECT_EQ(field->text(), "2-"_q);
    // Also without the tool bar, and in a field that has no use for them.
    Find<QToolBar>("toolBar")->hide();
    Type(Find<QTreeView>("treeView"), Qt::Key_Plus);
    EXPECT_EQ(Zoom(), "114%"_q);
    for (const bool fromList : {true, false}) {
        Start();
        field = Find<QComboBox>("zoomCombo")->lineEdit();
        person.WillPress("Cancel"_q);
        Type(fromList ? Find<QWidget>("treeView") : field, Qt::Key_Comma, Qt::ControlModifier);
        EXPECT_EQ(person.seen.back().title, "Preferences"_q);
    }
}

TEST_F(Window, ListsShowTheirColumnsAlsoOfAnotherDocument)
{
    Start();
    const auto* library = Find<QTreeView>("treeView");
    const auto* mapped = Find<QTreeView>("mappedTreeView");
    const auto expect = [&] {
        for (int column = 0; column < 10; ++column) {
            EXPECT_EQ(library->isColumnHidden(column), column > 2 && column < 9) << column;
            EXPECT_EQ(mapped->isColumnHidden(column), column > 1 && column < 9) << column;
        }
        EXPECT_EQ(library->columnWidth(1), 200);
        EXPECT_LT(library->model()->index(0, 0).data().toString(),
                  library->model()->index(1, 0).data().toString());
    };
    expect();
    Trigger("actionNew");
    expect();
    Trigger("actionSave_File");
    Import(WriteDocument(Path("other.wfm"_q), 320, 200), {"OK"});
    expect();
}

TEST_F(Window, PreferencesShowAndTakeWhatIsSet)
{
    Start();
    Trigger("actionDisplay_Pixel_Grid");
    person.Will([](QDialog& dialog) {
        EXPECT_FALSE(In<QCheckBox>(dialog, "checkShowGrid")->isChecked());
        EXPECT_TRUE(In<QCheckBox>(dialog, "checkSnapGrid")->isChecked());
        EXPECT_TRUE(In<QRadioButton>(dialog, "radioZoomCursor")->isChecked());
        EXPECT_TRUE(In<QRadioButton>(dialog, "artNetBroadcast")->isChecked());
        In<QCheckBox>(dialog, "checkShowGrid")->setChecked(true);
        In<QCheckBox>(dialog, "checkSnapGrid")->setChecked(false);
        In<QRadioButton>(dialog, "radioZoomSelection")->setChecked(true);
        dialog.accept();
    });
    Trigger("actionPreferences");
    EXPECT_TRUE(Action("actionDisplay_Pixel_Grid")->isChecked());
    EXPECT_FALSE(Action("actionSnapToGrid")->isChecked());
    EXPECT_EQ(Kept("zoomStyle").toInt(), 1);
    for (const auto& [accept, state] : {std::pair(false, "saved"), std::pair(true, "unsaved")}) {
        EXPECT_EQ(State(), "saved"_q) << "nothing of the document changed";
        person.Will([accept = accept](QDialog& dialog) {
            EXPECT_TRUE(In<QRadioButton>(dialog, "radioZoomSelection")->isChecked());
            EXPECT_TRUE(In<QRadioButton>(dialog, "artNetBroadcast")->isChecked());
            In<QRadioButton>(dialog, "artNetAutoUnicast")->setChecked(true);
            accept ? dialog.accept() : dialog.reject();
        });
        Trigger("actionPreferences");
        EXPECT_EQ(State(), QLatin1String(state));
    }
}

TEST_F(Window, TheDefaultFixturesComeBackEvenWhenThePreferencesAreCancelled)
{
    Start();
    for (const auto& [answer, width] : {std::pair("No", 101), std::pair("Yes", 100)}) {
        Edit();
        person.Will([](QDialog& dialog) {
            QTest::mouseClick(In<QPushButton>(dialog, "restoreFixturesButton"), Qt::LeftButton);
            dialog.reject();
        });
        person.WillPress(QLatin1String(answer));
        Trigger("actionPreferences");
        EXPECT_TRUE(person.seen.back().text.contains("overwrite your local fixture definitions"_q));
        // A restore begins a new document without a question about the old one.
        EXPECT_EQ(CanvasWidth(), width);
        EXPECT_EQ(State(), "unsaved"_q);
    }
}

TEST_F(Window, AboutShowsTheCreditsOrItsOwnWords)
{
    Start();
    person.Will([](QDialog& dialog) {
        EXPECT_TRUE(In<QLabel>(dialog, "labelVersion")->text().contains(ProgramVersion()));
        EXPECT_EQ(In<QLabel>(dialog, "labelCopyRight")->text(),
                  "Copyright 2026 the PixelWeft authors"_q);
        dialog.accept();
    });
    Trigger("actionAbout");
    const Support::LogCapture log;
    const WEFTAboutDialog missing(nullptr, ":/text/Docs/none.txt"_q);
    EXPECT_EQ(In<QLabel>(missing, "labelTeam")->text(), "Team"_q);
    EXPECT_TRUE(log.Has("The credits can't be opened: :/text/Docs/none.txt"));
}

TEST_F(Window, TheTestPictureIsChosenAndLeft)
{
    Start();
    QDir().mkpath(Path("pictures"_q));
    ASSERT_TRUE(QImage(8, 8, QImage::Format_RGB32).save(Path("pictures/one.png"_q)));
    person.WillChoose(Path("pictures"_q));
    Trigger("actionChoose_Test_Image_Dir");
    EXPECT_EQ(person.seen.back().title, "Choose Test Image Directory"_q);
    person.WillPress("Escape"_q);
    Trigger("actionChoose_Test_Image");
    for (const char* button : {"nextImageButton", "previousImageButton", "previousImageButton"})
        QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
    window->close();
    EXPECT_EQ(Kept("defaultImgDir"), Path("pictures"_q));
    EXPECT_EQ(Kept("imgSelVal").toInt(), 2);
}

TEST_F(Window, WithoutTheHostsLibraryTheOperatorChoosesAFolder)
{
    // A cancelled folder dialog brings the box back.
    for (const char* answer : {"Choose", "Escape", "Choose"})
        person.WillPress(QLatin1String(answer));
    QDir().mkpath(Path("shows"_q));
    person.WillChoose(Path("shows"_q));
    EXPECT_EQ(Startup::AskForDocumentPath(boxes), Path("shows/mapping.wfm"_q));
    EXPECT_TRUE(person.seen[0].text.startsWith("PixelWeft requires that "_q));
    EXPECT_TRUE(person.seen[0].title.endsWith(" Library Not Found"_q));
    EXPECT_EQ(person.seen[1].title, "working directory"_q);
}

TEST_F(Window, QuitWithoutALibraryEndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            person.WillPress("Escape"_q);
            static_cast<void>(Startup::AskForDocumentPath(boxes));
        },
        testing::ExitedWithCode(EXIT_FAILURE), "");
}

TEST(FrameLoopTest, ATickIsFollowedByWhatIsLeftOfItsTime)
{
    constexpr std::int64_t microsecond = 1'000;
    constexpr std::int64_t start = 77'000'000'000;
    for (const auto& [used, interval] :
         {std::pair(0, 25), std::pair(999, 25), std::pair(1'000, 24), std::pair(24'999, 1),
          std::pair(25'000, 25), std::pair(26'000, 26), std::pair(90'500, 90)})
        EXPECT_EQ(FrameLoop::IntervalAfter(start, start + used * microsecond), interval) << used;
}
