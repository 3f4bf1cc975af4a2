// SPDX-License-Identifier: MIT
#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

#include "UI/Main/Desk.h"
#include "UI/Main/WEFTMain.h"

namespace {

class Actions : public Desk
{
protected:
    /// The entries of a menu or bar as a person reads them, a dash for a separator.
    [[nodiscard]] static QStringList Entries(const QWidget& menu)
    {
        QStringList entries;
        for (const QAction* action : menu.actions())
            entries.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        return entries;
    }
    [[nodiscard]] QStringList Menu(const char* name) const { return Entries(*Find<QMenu>(name)); }
    [[nodiscard]] static QStringList List(const char* text)
    {
        return QString::fromUtf8(text).split(QStringLiteral(" | "));
    }
    [[nodiscard]] QString Zoom() const { return Find<QComboBox>("zoomCombo")->currentText(); }
};

} // namespace

TEST_F(Actions, MenusInTheirOrder)
{
    Start();
    EXPECT_EQ(Entries(*Find<QMenuBar>("menubar")), List("File | Edit | Canvas | Help"));
    EXPECT_EQ(Menu("menuFile"), List("New... | Save | - | Import... | Export... | - | Import "
                                     "Fixtures... | - | Choose Test Image... | Choose Test Image "
                                     "Directory... | - | Preferences... | - | Exit"));
    EXPECT_EQ(Menu("menuEdit"),
              List("- | &Redo | &Undo | - | Select All | Delete | - | Copy | Paste element(s) | - "
                   "| Duplicate Element... | - | Align | Rotate | -"));
    EXPECT_EQ(Menu("menuAlign"),
              List("Align Left | Align Center | Align Right | - | Align Top | Align Middle | Align "
                   "Bottom | - | Distribute Horizontally | Distribute Vertically"));
    EXPECT_EQ(Menu("menuRotate_2"), List("Rotate Right 90° | Rotate Left 90°"));
    EXPECT_EQ(Menu("menuImage"),
              List("Crop to selection | Canvas Size... | Display Pixel Grid | -"));
    EXPECT_EQ(Menu("menuAbout"), List("About"));
    EXPECT_FALSE(Find<QMenu>("menuAlign")->icon().isNull());
    EXPECT_FALSE(Find<QMenu>("menuRotate_2")->icon().isNull());
}

TEST_F(Actions, ToolBarInItsOrder)
{
    Start();
    const auto* bar = Find<QToolBar>("toolBar");
    EXPECT_EQ(bar->windowTitle(), QStringLiteral("Toolbar"));
    QStringList names;
    for (QAction* action : bar->actions()) {
        const QWidget* widget = bar->widgetForAction(action);
        names.append(action->isSeparator()             ? QStringLiteral("-")
                     : !action->objectName().isEmpty() ? action->objectName()
                     : widget                          ? widget->objectName()
                                                       : QString());
    }
    EXPECT_EQ(names.mid(0, 9),
              List("actionSnapToGrid | selectionModeButton | actionDisplay_Pixel_Grid | - | "
                   "actionCrop_Canvas | actionZoom_Out | zoomCombo | actionZoom_In | -"));
}

TEST_F(Actions, ShortcutsAndToolTips)
{
    Start();
    const std::vector<std::array<const char*, 3>> rows = {
        {"actionCanvas_Size", "Ctrl+Shift+R", "Adjust the canvas dimensions"},
        {"actionImport", "Ctrl+O", "Open an existing mapping file "},
        {"actionExport", "Ctrl+Shift+S", "Save mapping to a mapping file "},
        {"actionSave_File", "Ctrl+S", "Save mapping to current file"},
        {"actionZoom_In", "+", "Zoom In"},
        {"actionZoom_Out", "-", "Zoom Out"},
        {"actionDisplay_Pixel_Grid", "Ctrl+G", "Display pixel grid"},
        {"actionSelect_All", "Ctrl+A", "Select All"},
        {"actionCrop_Canvas", "Ctrl+Shift+C", "Crop canvas to selected devices"},
        {"actionRotate_Right_90", "Ctrl+R", "Rotate Right 90°"},
        {"actionActionDelete", "Backspace", "Delete device from the mapping canvas"},
        {"actionNew", "Ctrl+N", "Creates an empty canvas"},
        {"actionPreferences", "Ctrl+,", "Preferences"},
        {"actionDuplicate_Element", "Ctrl+D", "Duplicate element to create a wall."},
        {"actionCopy", "Ctrl+C", "Copy selected element(s)"},
        {"actionPaste", "Ctrl+V", "Paste element(s)"},
        {"actionSelectionMode_Solid", "",
         "Solid color selection notification on the device output itself. "},
        {"actionUndo", "Ctrl+Z", "Undo"},
    };
    for (const auto& [name, shortcut, toolTip] : rows) {
        EXPECT_EQ(Action(name)->shortcut().toString(QKeySequence::PortableText),
                  QLatin1String(shortcut))
            << name;
        EXPECT_EQ(Action(name)->toolTip(), QString::fromUtf8(toolTip)) << name;
    }
    EXPECT_EQ(Action("actionRedo")->shortcut(), QKeySequence(QKeySequence::Redo));
    // No two actions wait for the same key.
    QStringList keys;
    for (const QAction* action : window->findChildren<QAction*>()) {
        const QString key = action->shortcut().toString();
        if (!key.isEmpty()) {
            EXPECT_FALSE(keys.contains(key)) << key.toStdString();
            keys.append(key);
        }
    }
}

TEST_F(Actions, TheGridTheSnappingAndTheOutputSelectionAreSwitched)
{
    Start();
    const QSettings store(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"));
    for (const auto& [name, key] : {std::pair("actionDisplay_Pixel_Grid", "showGrid"),
                                    std::pair("actionSnapToGrid", "snapToGrid")})
    {
        ASSERT_TRUE(Action(name)->isChecked());
        Trigger(name);
        EXPECT_FALSE(store.value(QLatin1String(key)).toBool()) << key;
        Trigger(name);
        EXPECT_TRUE(store.value(QLatin1String(key)).toBool()) << key;
    }
    const auto* button = Find<QToolButton>("selectionModeButton");
    EXPECT_EQ(button->popupMode(), QToolButton::InstantPopup);
    EXPECT_EQ(Entries(*button->menu()), List("No Output Selection | Solid Color Output Selection | "
                                             "Flashing Output Selection"));
    EXPECT_EQ(button->defaultAction()->objectName(), QStringLiteral("actionSelectionMode_None"));
    for (const char* name :
         {"actionSelectionMode_Flash", "actionSelectionMode_Solid", "actionSelectionMode_None"})
    {
        Trigger(name);
        EXPECT_EQ(button->defaultAction()->objectName(), QLatin1String(name));
        EXPECT_FALSE(button->icon().isNull());
    }
}

TEST_F(Actions, TheZoomByActionAndByText)
{
    Start();
    EXPECT_EQ(Find<QComboBox>("zoomCombo")->count(), 25);
    Trigger("actionZoom_In");
    EXPECT_EQ(Zoom(), QStringLiteral("114%"));
    Trigger("actionZoom_Out");
    EXPECT_EQ(Zoom(), QStringLiteral("100%"));
    auto* combo = Find<QComboBox>("zoomCombo");
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo->lineEdit(), QStringLiteral("150"));
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(Zoom(), QStringLiteral("150%"));
    const QSettings store(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"));
    EXPECT_NEAR(store.value(QStringLiteral("zoomFactor")).toDouble(), 1.50015, 1e-5);
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo->lineEdit(), QStringLiteral("wide"));
    QTest::keyClick(combo->lineEdit(), Qt::Key_Return);
    EXPECT_NEAR(store.value(QStringLiteral("zoomFactor")).toDouble(), 1.50015, 1e-5);
    EXPECT_EQ(combo->count(), 25);
}

TEST_F(Actions, KeysReachTheirTargetWhoeverHasTheFocus)
{
    Start();
    auto* list = Find<QTreeView>("treeView");
    auto* field = Find<QComboBox>("zoomCombo")->lineEdit();
    Type(list, Qt::Key_Plus);
    EXPECT_EQ(Zoom(), QStringLiteral("114%"));
    Type(list, Qt::Key_Minus);
    EXPECT_EQ(Zoom(), QStringLiteral("100%"));
    Type(Find<QTreeView>("mappedTreeView"), Qt::Key_Plus);
    EXPECT_EQ(Zoom(), QStringLiteral("114%"));
    Type(Find<QTreeView>("mappedTreeView"), Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(Zoom(), QStringLiteral("100%"));

    // In a field the keys edit the text.
    field->setText(QStringLiteral("25"));
    field->end(false);
    Type(field, Qt::Key_Backspace);
    EXPECT_EQ(field->text(), QStringLiteral("2"));
    Type(field, Qt::Key_Minus);
    EXPECT_EQ(field->text(), QStringLiteral("2-"));
    field->home(false);
    Type(field, Qt::Key_Delete);
    EXPECT_EQ(field->text(), QStringLiteral("-"));

    for (const bool fromList : {true, false}) {
        Start();
        person.seen.clear();
        person.WillPress(QStringLiteral("Cancel"));
        QWidget* target = Find<QTreeView>("treeView");
        if (!fromList)
            target = Find<QComboBox>("zoomCombo")->lineEdit();
        Type(target, Qt::Key_Comma, Qt::ControlModifier);
        ASSERT_EQ(person.seen.size(), 1U) << fromList;
        EXPECT_EQ(person.seen[0].title, QStringLiteral("Preferences"));
    }
}

TEST_F(Actions, KeysReachTheirTargetWithoutTheToolBar)
{
    Start();
    Find<QToolBar>("toolBar")->hide();
    Find<QWidget>("treeView")->setFocus();
    const auto* combo = Find<QComboBox>("zoomCombo");
    const QString before = combo->currentText();
    QTest::keyClick(window.get(), Qt::Key_Plus);
    EXPECT_NE(combo->currentText(), before);
}

TEST_F(Actions, DocksFloatCloseAndComeBack)
{
    Start();
    for (const auto& [name, title] : {std::pair("dockWidgetFixtureLibrary", "Fixture Library"),
                                      std::pair("dockWidgetMappedFixtures", "Mapped Fixtures"),
                                      std::pair("dockWidgetArtNetNodes", "Fixture Nodes")})
    {
        auto* dock = Find<QDockWidget>(name);
        EXPECT_EQ(dock->windowTitle(), QLatin1String(title));
        EXPECT_EQ(window->dockWidgetArea(dock), Qt::LeftDockWidgetArea);
        EXPECT_EQ(dock->allowedAreas(), Qt::AllDockWidgetAreas);
        dock->setFloating(true);
        EXPECT_TRUE(dock->isFloating() && dock->isVisible());
        dock->setFloating(false);
        window->addDockWidget(Qt::RightDockWidgetArea, dock);
        EXPECT_TRUE(dock->isVisible());
        dock->close();
        EXPECT_FALSE(dock->isVisible());
        // The menu of the right mouse button brings it back.
        const std::unique_ptr<QMenu> popup(window->createPopupMenu());
        for (QAction* action : popup->actions()) {
            if (action->text() == QLatin1String(title))
                action->trigger();
        }
        EXPECT_TRUE(dock->isVisible());
    }
}

TEST_F(Actions, ListsShowTheirColumns)
{
    Start();
    const auto* library = Find<QTreeView>("treeView");
    const auto* mapped = Find<QTreeView>("mappedTreeView");
    const auto shown = [](const QTreeView& view, int columns) {
        QList<int> list;
        for (int column = 0; column < columns; ++column) {
            if (!view.isColumnHidden(column))
                list.append(column);
        }
        return list;
    };
    const auto expect = [&] {
        EXPECT_EQ(shown(*library, 9), QList<int>({0, 1, 2}));
        EXPECT_EQ(shown(*mapped, 10), QList<int>({0, 1, 9}));
        EXPECT_EQ(library->columnWidth(0), 120);
        EXPECT_EQ(library->columnWidth(1), 200);
        EXPECT_EQ(library->columnWidth(2), 50);
    };
    expect();
    EXPECT_GT(library->model()->rowCount(), 10);
    Trigger("actionNew");
    expect();
    const QString other = WriteDocument(Path(QStringLiteral("other.wfm")), 320, 200, QString());
    Trigger("actionSave_File");
    person.WillChoose(other);
    person.WillPress(QStringLiteral("OK"));
    Trigger("actionImport");
    QCoreApplication::processEvents(); // the notice
    expect();
    for (const QTreeView* view : {library, mapped}) {
        EXPECT_EQ(view->selectionMode(), QAbstractItemView::ExtendedSelection);
        EXPECT_EQ(view->selectionBehavior(), QAbstractItemView::SelectRows);
        EXPECT_TRUE(view->isSortingEnabled() && view->allColumnsShowFocus());
        EXPECT_EQ(view->editTriggers(), QAbstractItemView::NoEditTriggers);
    }
}
