// SPDX-License-Identifier: MIT
// What the window shows and keeps, its actions and its boxes.

#include "Model/MappedDeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "UI/Dialogs/WEFTAboutDialog.h"
#include "UI/Main/Desk.h"
#include "UI/Main/Startup.h"
#include "UI/Widgets/Version.h"

namespace {

class Window : public Desk
{
protected:
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
    /// In a menu or bar, and in each menu below it, no two entries have one letter, and all have
    /// one.
    static void ExpectLetters(const QWidget& bar)
    {
        QStringList letters;
        for (const QAction* action : bar.actions()) {
            if (action->isSeparator())
                continue;
            const QString letter = QKeySequence::mnemonic(action->text()).toString();
            EXPECT_FALSE(letter.isEmpty() || letters.contains(letter))
                << qPrintable(action->text());
            letters << letter;
            if (action->menu())
                ExpectLetters(*action->menu());
        }
    }
    /// Where docks and tool bar are, and how large.
    [[nodiscard]] std::string Layout() const
    {
        QString all;
        QDebug words(&all);
        for (auto* dock : window->findChildren<QDockWidget*>()) {
            words << window->dockWidgetArea(dock) << dock->isVisible() << dock->isFloating();
            if (dock->isVisible() && !dock->isFloating())
                words << dock->geometry();
        }
        words << window->toolBarArea(Find<QToolBar>("toolBar"))
              << Find<QToolBar>("toolBar")->isVisible();
        return all.toStdString();
    }
};

/// A window whose every repaint, and every step of a wheel, takes longer than a tick.
class SlowWindow : public QWidget
{
public:
    SlowWindow() { setMouseTracking(true); }

    int repaints = 0;
    int moves = 0;
    int steps = 0;
    int stepsAtPress = 0;
    QPoint at;
    QPoint atPress;

protected:
    void paintEvent(QPaintEvent*) override
    {
        ++repaints;
        QThread::msleep(40);
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        ++moves;
        at = event->pos();
    }
    void mousePressEvent(QMouseEvent*) override
    {
        atPress = at;
        stepsAtPress = steps;
    }
    void wheelEvent(QWheelEvent*) override
    {
        ++steps;
        QThread::msleep(40);
    }
};

} // namespace

TEST_F(Window, EveryActionHasItsPlaceAndItsKey)
{
    Start();
    QStringList placed = ActionsIn(*Find<QMenuBar>("menubar"));
    EXPECT_EQ(placed.removeDuplicates(), 0) << "an action has two places";
    placed += ActionsIn(*Find<QToolBar>("toolBar"));
    placed += ActionsIn(*Find<QToolButton>("selectionModeButton")->menu());
    ExpectLetters(*Find<QMenuBar>("menubar"));
    ExpectLetters(*Find<QToolButton>("selectionModeButton")->menu());
    ExpectLetters(*Find<QTreeView>("mappedTreeView"));
    QStringList keys;
    for (const QAction* action : window->findChildren<QAction*>()) {
        if (action->parent() == window.get() && !action->objectName().isEmpty()) {
            EXPECT_TRUE(placed.contains(action->objectName())) << qPrintable(action->objectName());
        }
        for (const QKeySequence& key : action->shortcuts())
            keys.append(key.toString());
    }
    EXPECT_EQ(keys.removeDuplicates(), 0) << "one key for two";
    for (const auto& [name, key] : {std::pair("actionExit", "Ctrl+Q"),
                                    {"actionSnapToGrid", "Ctrl+Shift+G"},
                                    {"actionSelectionMode_None", "Ctrl+Shift+N"},
                                    {"actionSelectionMode_Solid", "Ctrl+Shift+L"},
                                    {"actionSelectionMode_Flash", "Ctrl+Shift+F"}})
    {
        EXPECT_EQ(Action(name)->shortcut().toString(), QLatin1String(key));
        EXPECT_TRUE(Action(name)->toolTip().contains(QLatin1String(key))) << name;
    }
    EXPECT_GT(placed.indexOf("actionRedo"_q), placed.indexOf("actionUndo"_q));
    for (const QAction* action : Find<QToolBar>("toolBar")->actions())
        EXPECT_EQ(action->icon().isNull(), action->objectName().isEmpty());
    // What needs a selection or a step to take back can't be chosen yet.
    for (const char* name : {"actionUndo", "actionRedo", "actionActionDelete", "actionCrop_Canvas",
                             "actionFlipHorizontal"})
        EXPECT_FALSE(Action(name)->isEnabled()) << name;
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
    window->resize(1200, 640);
    window->move(50, 60);
    Trigger("actionZoom_In");
    EXPECT_TRUE(window->close());
    EXPECT_EQ(Kept("lastSize").toSize(), QSize(1200, 640));
    EXPECT_EQ(Kept("lastPosition").toPoint(), QPoint(50, 60));
    EXPECT_EQ(Kept("lastInnerSize").toInt(), Find<QWidget>("centralwidget")->width());
    EXPECT_NEAR(Kept("zoomFactor").toDouble(), 1.15, 1e-6);
    Start();
    EXPECT_EQ(window->size(), QSize(1200, 640));
    EXPECT_EQ(window->pos(), QPoint(50, 60));
    EXPECT_EQ(Zoom(), "114%"_q);
    EXPECT_FALSE(Action("actionDisplay_Pixel_Grid")->isChecked());
    EXPECT_FALSE(Action("actionSnapToGrid")->isChecked());
}

TEST_F(Window, MenusOpenByTheirLetterBesideTheFieldsOfTheInspector)
{
    StartWith(Element({0.5, 0.5}, {0.12, 0.01}));
    Trigger("actionSelect_All");
    for (const QAction* menu : Find<QMenuBar>("menubar")->actions()) {
        const QString letter = QKeySequence::mnemonic(menu->text()).toString().right(1);
        Type(&View(), letter[0].unicode(), Qt::AltModifier);
        ASSERT_EQ(QApplication::activePopupWidget(), menu->menu()) << qPrintable(menu->text());
        menu->menu()->close();
    }
}

TEST_F(Window, PanelsAndToolBarComeBackAsTheyWereLeft)
{
    Start();
    const std::string first = Layout();
    Trigger("view_dockWidgetMappedFixtures");
    window->addDockWidget(Qt::RightDockWidgetArea, Find<QDockWidget>("dockWidgetArtNetNodes"));
    Find<QDockWidget>("dockWidgetFixtureLibrary")->setFloating(true);
    window->addToolBar(Qt::BottomToolBarArea, Find<QToolBar>("toolBar"));
    QCoreApplication::processEvents();
    const std::string left = Layout();
    EXPECT_TRUE(window->close());
    Start();
    EXPECT_EQ(Layout(), left);
    Trigger("view_toolBar");
    Trigger("actionInspector");
    Trigger("actionReset_Layout");
    QCoreApplication::processEvents();
    EXPECT_EQ(Layout(), first);
    EXPECT_TRUE(Find<QWidget>("objectInspectorPannel")->isVisible());

    window->resize(1024, 600);
    EXPECT_TRUE(window->close());
    const QByteArray good = Kept("windowLayout").toByteArray();
    for (const QByteArray& bad : {QByteArray("\xFF\xFE"), good.left(good.size() / 2),
                                  QByteArray(good).replace(4, 4, "\0\0\1\0")})
    {
        QSettings("Zentri"_q, "PixelWeft3"_q).setValue("windowLayout"_q, bad);
        Start();
        EXPECT_EQ(Layout(), first) << bad.size();
    }
}

TEST_F(Window, TheZoomIsTypedChosenOrFitted)
{
    StartWithTwo();
    auto* combo = Find<QComboBox>("zoomCombo");
    const auto type = [combo](const char* text) {
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo->lineEdit(), QLatin1String(text));
    };
    for (const auto& [typed, zoom] : {std::pair("150", "150%"),
                                      {"wide", "150%"},
                                      {"5 %", "5%"},
                                      {"10000", "10000%"},
                                      {"200%", "200%"}})
    {
        type(typed);
        QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
        EXPECT_EQ(Zoom(), QLatin1String(zoom)) << typed;
    }
    for (const char* typed : {"70", "7e"}) {
        Type(combo->lineEdit(), Qt::Key_Home);
        type(typed);
        Type(&View(), Qt::Key_Shift);
        EXPECT_EQ(Zoom(), "70%"_q) << typed << ", and the field is left";
    }
    EXPECT_EQ(combo->itemText(combo->currentIndex()), "66%"_q) << "the nearest";
    EXPECT_LE(combo->fontMetrics().horizontalAdvance("10000%"_q), combo->lineEdit()->width());

    Type(&View(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Zoom(), "100%"_q);
    const auto choose = [combo](const char* entry) {
        combo->showPopup();
        combo->view()->setCurrentIndex(
            combo->model()->index(combo->findText(QLatin1String(entry)), 0));
        QTest::keyClick(combo->view(), Qt::Key_Return);
        QCoreApplication::processEvents();
    };
    choose("Fit");
    EXPECT_EQ(Zoom(), "100%"_q);
    choose("1:1");
    EXPECT_NEAR(View().transform().m11(), 1, 1e-6);
    const int selection = combo->findText("Fit Selection"_q);
    EXPECT_FALSE(combo->model()->index(selection, 0).flags().testFlag(Qt::ItemIsEnabled));
    Scene().SetSelected(Scene().AllIds().front(), true);
    choose("Fit Selection");
    EXPECT_GT(View().transform().m11(), 5);
    Trigger("actionZoom_Fit");
    EXPECT_EQ(Zoom(), "100%"_q);
}

TEST_F(Window, KeysActWhereTheFocusIs)
{
    StartWithTwo();
    EXPECT_EQ(window->focusWidget(), &View()) << "at first";
    Find<QToolBar>("toolBar")->hide();
    for (const auto& [name, acts] : {std::pair("treeView", false),
                                     {"artNetNodes", false},
                                     {"mappedTreeView", true},
                                     {"mappingEditorView", true}})
    {
        auto* place = Find<QWidget>(name);
        Type(place, Qt::Key_Plus);
        EXPECT_EQ(Zoom(), acts ? "114%"_q : "100%"_q) << name;
        Type(place, Qt::Key_Minus, Qt::KeypadModifier);
        EXPECT_EQ(Zoom(), "100%"_q) << name;
        Type(place, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(Scene().SelectedCount(), acts ? 2 : 0) << name;
        Type(place, Qt::Key_Backspace);
        EXPECT_EQ(PlacedFixtures(), acts ? 0 : 2) << name;
        if (acts)
            Trigger("actionUndo");
    }
    // A command's key acts everywhere, also in a field that has no use for it.
    Find<QToolBar>("toolBar")->show();
    person.WillPress("Cancel"_q);
    Type(Find<QComboBox>("zoomCombo")->lineEdit(), Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(person.seen.back().title, "Preferences"_q);
}

TEST_F(Window, ListsShowTheirColumnsAlsoOfAnotherDocument)
{
    const auto columns = [this](const char* name) {
        const QHeaderView& header = *Find<QTreeView>(name)->header();
        QStringList shown;
        for (int place = 0; place < header.count(); ++place) {
            const int column = header.logicalIndex(place);
            if (!header.isSectionHidden(column))
                shown << header.model()->headerData(column, Qt::Horizontal).toString();
        }
        return shown.join(QLatin1Char(' '));
    };
    const QString inOrder = "Description Address Node Product Name Manufacturer"_q;
    Start();
    Trigger("actionNew");
    Import(WriteDocument("other.wfm"_q, {}), {"Discard", "OK"});
    EXPECT_EQ(columns("treeView"), "Fixture Size Ch."_q);
    EXPECT_EQ(columns("mappedTreeView"), inOrder);
    const QAbstractItemModel& library = *Find<QTreeView>("treeView")->model();
    EXPECT_LT(library.index(0, 0).data().toString(), library.index(1, 0).data().toString());

    // As wide as their contents, until they are set.
    const auto width = [this](const char* list, int column) {
        return Find<QTreeView>(list)->columnWidth(column);
    };
    const int product = MappedDeviceModel::ProductColumn;
    EXPECT_GE(width("mappedTreeView", product),
              Find<QTreeView>("mappedTreeView")->fontMetrics().horizontalAdvance(Bar));
    const int fitted = width("mappedTreeView", product);
    Find<QTreeView>("mappedTreeView")->setColumnWidth(product, 77);
    Find<QTreeView>("mappedTreeView")->sortByColumn(product, Qt::DescendingOrder);
    Find<QTreeView>("artNetNodes")->setColumnWidth(0, 123);
    Trigger("actionSave_File");
    EXPECT_TRUE(window->close());
    Start();
    EXPECT_EQ(width("mappedTreeView", product), 77);
    EXPECT_EQ(width("artNetNodes", 0), 123);
    EXPECT_EQ(Find<QTreeView>("mappedTreeView")->header()->sortIndicatorSection(), product);
    Find<QTreeView>("mappedTreeView")->header()->moveSection(1, 0);
    Trigger("actionReset_Layout");
    EXPECT_EQ(columns("mappedTreeView"), inOrder);
    EXPECT_EQ(width("mappedTreeView", product), fitted);
    EXPECT_TRUE(window->close());
    QSettings("Zentri"_q, "PixelWeft3"_q)
        .setValue("columns/mappedTreeView"_q,
                  Kept("columns/mappedTreeView").toByteArray().left(40));
    Start();
    EXPECT_EQ(columns("mappedTreeView"), inOrder);
}

TEST_F(Window, AnElementIsNamedInTheListAsAStepOfTheHistory)
{
    StartWith(Element({0.2, 0.2}, {0.18, 0.1}) + Element({0.6, 0.8}, {0.1, 0.18}, 0, 37));
    auto* list = Find<QTreeView>("mappedTreeView");
    const auto name = [this] {
        return Find<QTreeView>("mappedTreeView")
            ->currentIndex()
            .siblingAtColumn(MappedDeviceModel::NameColumn)
            .data()
            .toString();
    };
    list->setCurrentIndex(list->model()->index(0, MappedDeviceModel::AddressColumn));
    const auto type = [&](const char* text) {
        Type(list, Qt::Key_F2);
        auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        EXPECT_TRUE(field && list->isAncestorOf(field));
        QTest::keyClicks(field, QLatin1String(text));
        return field;
    };
    for (const auto& [text, end, shown] :
         {std::tuple("Left 1", Qt::Key_Escape, "Bar"), std::tuple("Zed", Qt::Key_Return, "Zed")})
    {
        QTest::keyClick(type(text), end);
        QCoreApplication::processEvents();
        EXPECT_EQ(name(), QLatin1String(shown));
    }
    EXPECT_EQ(list->currentIndex().row(), 1) << "sorted at once";
    EXPECT_EQ(Action("actionUndo")->text(), "&Undo Change Description"_q);
    Trigger("actionUndo");
    EXPECT_EQ(name(), "Bar"_q);
    EXPECT_FALSE(Action("actionUndo")->isEnabled());

    // What stands typed counts for what is done with the document, by key or by mouse.
    QTest::keyClick(type("By key"), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(State(), "saved"_q);
    EXPECT_EQ(name(), "By key"_q);
    type("By mouse");
    person.WillChoose(Path("copy.wfm"_q));
    Trigger("actionExport");
    EXPECT_EQ(name(), "By mouse"_q);
    EXPECT_EQ(window->focusWidget(), list);
    std::string copy = Bytes(Path("copy.wfm"_q));
    std::erase(copy, '\0'); // half of UTF-16
    EXPECT_NE(copy.find("By mouse"), std::string::npos);
    type("At the end");
    person.WillPress("Cancel"_q);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(name(), "At the end"_q);
}

TEST_F(Window, PreferencesShowAndTakeWhatIsSet)
{
    Start();
    Trigger("actionDisplay_Pixel_Grid");
    person.Will([](QDialog& dialog) {
        EXPECT_FALSE(In<QCheckBox>(dialog, "checkShowGrid")->isChecked());
        EXPECT_TRUE(In<QCheckBox>(dialog, "checkSnapGrid")->isChecked());
        EXPECT_TRUE(In<QRadioButton>(dialog, "radioZoomCursor")->isChecked());
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
    Trigger("actionSave_File");
    person.Will([](QDialog& dialog) {
        EXPECT_FALSE(In<QCheckBox>(dialog, "artNetSync")->isChecked());
        In<QCheckBox>(dialog, "artNetSync")->setChecked(true);
        dialog.accept();
    });
    Trigger("actionPreferences");
    EXPECT_EQ(State(), "unsaved"_q);
    person.Will([](QDialog& dialog) {
        EXPECT_TRUE(In<QCheckBox>(dialog, "artNetSync")->isChecked());
        dialog.reject();
    });
    Trigger("actionPreferences");
}

TEST_F(Window, TheDefaultFixturesComeBackEvenWhenThePreferencesAreCancelled)
{
    StartWithTwo();
    const QString library = GetFixtureLibraryPath();
    home.Write(library.toStdString(), "<LEDFixtureLibrary />");
    for (const char* answer : {"Cancel", "Escape", "Yes"}) {
        Edit();
        person.Will([](QDialog& dialog) {
            QTest::mouseClick(In<QPushButton>(dialog, "restoreFixturesButton"), Qt::LeftButton);
            dialog.reject();
        });
        person.WillPress(QLatin1String(answer));
        Trigger("actionPreferences");
        EXPECT_TRUE(person.seen.back().text.contains("overwrite your local fixture definitions"_q));
        EXPECT_EQ(person.seen.back().byDefault, "Cancel"_q);
        EXPECT_EQ(Bytes(library) == BuiltInLibrary().toStdString(), answer[0] == 'Y');
        // The mapping stays in any case.
        EXPECT_EQ(CanvasWidth(), 101);
        EXPECT_EQ(PlacedFixtures(), 2);
        EXPECT_EQ(State(), "unsaved"_q);
    }
}

TEST_F(Window, AboutShowsTheVersionAndTheCredits)
{
    const WEFTAboutDialog about;
    EXPECT_TRUE(In<QLabel>(about, "labelVersion")->text().contains(ProgramVersion()));
    EXPECT_TRUE(In<QLabel>(about, "labelCopyRight")->text().endsWith(" authors"_q));
}

TEST_F(Window, TheTestPictureIsChosenAndKept)
{
    Start();
    QDir().mkpath(Path("pictures"_q));
    ASSERT_TRUE(QImage(8, 8, QImage::Format_RGB32).save(Path("pictures/one.png"_q)));
    person.WillChoose(Path("pictures"_q));
    Trigger("actionChoose_Test_Image_Dir");
    person.WillChoose(Path("pictures/one.png"_q));
    person.WillPress("Escape"_q);
    for (int again = 0; again < 2; ++again)
        Trigger("actionChoose_Test_Image");
    for (const char* button : {"nextImageButton", "previousImageButton", "previousImageButton"})
        QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
    window->close();
    EXPECT_EQ(Kept("defaultImgDir"), Path("pictures"_q));
    EXPECT_EQ(Kept("usrImgFile"), Path("pictures/one.png"_q));
    EXPECT_EQ(Kept("imgSelVal").toInt(), 1);
}

TEST_F(Window, WithoutTheHostsLibraryTheOperatorChoosesAFolderOrQuits)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            person.WillPress("Escape"_q);
            static_cast<void>(Startup::AskForDocumentPath(boxes));
        },
        testing::ExitedWithCode(EXIT_FAILURE), "");
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

TEST_F(Window, WorkThatTakesLongWaitsForTheTickAndAllOfItIsDone)
{
    Start();
    SlowWindow slow;
    slow.resize(100, 50);
    slow.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&slow));
    window->StartTimers();
    slow.repaints = 0;
    EXPECT_TRUE(QTest::qWaitFor([&slow] {
        slow.update();
        return slow.repaints > 4;
    }));
    slow.moves = 0;
    constexpr int moves = 50;
    for (int x = 0; x < moves; ++x)
        QTest::mouseMove(slow.windowHandle(), {x, 10});
    QTest::mousePress(slow.windowHandle(), Qt::LeftButton, {}, {moves - 1, 10});
    EXPECT_EQ(slow.atPress, QPoint(moves - 1, 10)) << "the last one counts";
    EXPECT_LT(slow.moves, moves / 2);
    QTest::mouseRelease(slow.windowHandle(), Qt::LeftButton, {}, {moves - 1, 10});

    // Work that takes so long waits for a tick, and what comes behind it with it.
    constexpr int steps = 3;
    const auto turnWheel = [&slow] {
        QWheelEvent step(QPoint(50, 10), slow.mapToGlobal(QPoint(50, 10)), QPoint(), QPoint(0, 120),
                         Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(slow.windowHandle(), &step);
    };
    for (int i = 0; i < steps; ++i)
        turnWheel();
    EXPECT_EQ(slow.steps, 1);
    QTest::mousePress(slow.windowHandle(), Qt::LeftButton, {}, {50, 10});
    EXPECT_TRUE(QTest::qWaitFor([&slow] { return slow.stepsAtPress > 0; }));
    EXPECT_EQ(slow.stepsAtPress, steps);
    QTest::mouseRelease(slow.windowHandle(), Qt::LeftButton, {}, {50, 10});
}
