// SPDX-License-Identifier: MIT
#include "UI/Main/MainWindowForm.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>

#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Widgets/DeskLook.h"

namespace {

QString Translated(const char* text)
{
    return QCoreApplication::translate("WEFTMain", text);
}

/// An empty dock on the left with a column for its widgets.
QDockWidget* AddDock(QMainWindow& window, const QString& name, QVBoxLayout*& column)
{
    auto* dock = new QDockWidget(&window);
    dock->setObjectName(name);
    dock->setAllowedAreas(Qt::AllDockWidgetAreas);
    auto* contents = new QWidget(dock);
    column = new QVBoxLayout(contents);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    dock->setWidget(contents);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    return dock;
}

QPushButton* AddButton(const QString& name, QLayout& row)
{
    auto* button = new QPushButton;
    button->setObjectName(name);
    row.addWidget(button);
    return button;
}

void SetUpList(QTreeView& view, const QString& name)
{
    view.setObjectName(name);
    view.setStyleSheet(QStringLiteral("font-size: 12px;"));
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setSortingEnabled(true);
    view.setUniformRowHeights(true);
}

} // namespace

void MainWindowForm::SetUp(QMainWindow& window)
{
    window.setObjectName(QStringLiteral("WEFTMain"));
    window.resize(1210, 720);
    window.setWindowIcon(QIcon(QStringLiteral(":/bitmaps/PixelWeft.png")));
    window.setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowTabbedDocks);
    window.setStyleSheet(DeskStyleSheet());
    SetUpActions(window);
    SetUpMenus(window);
    SetUpToolBar(window);
    SetUpCentre(window);
    SetUpDocks(window);
    statusbar = window.statusBar();
    statusbar->setObjectName(QStringLiteral("statusbar"));
    Retranslate(window);
}

void MainWindowForm::SetUpActions(QMainWindow& window)
{
    for (const ActionRow& row : ActionTable()) {
        auto* action = new QAction(&window);
        action->setObjectName(QLatin1String(row.objectName));
        action->setCheckable(row.checkable);
        if (row.icon)
            action->setIcon(ActionIcon(row.icon));
        action->setEnabled(row.slot != nullptr);
        if (row.shortcut)
            action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        // Shortcuts reach it when the tool bar that shows it is hidden.
        window.addAction(action);
        actions_[static_cast<std::size_t>(row.id)] = action;
    }
}

QMenu* MainWindowForm::AddMenu(const MenuRow& row, QWidget& bar)
{
    auto* menu = new QMenu(&bar);
    menu->setObjectName(QLatin1String(row.objectName));
    for (const ActionId id : row.entries) {
        if (id == ActionId::Separator)
            menu->addSeparator();
        else
            menu->addAction(Action(id));
    }
    bar.addAction(menu->menuAction());
    menus_[menuCount_++] = {menu, &row};
    return menu;
}

void MainWindowForm::SetUpMenus(QMainWindow& window)
{
    QMenuBar& bar = *window.menuBar();
    bar.setObjectName(QStringLiteral("menubar"));
    AddMenu(FileMenu(), bar);
    menuEdit = AddMenu(EditMenu(), bar);
    menuAlign = AddMenu(AlignMenu(), *menuEdit);
    menuAlign->setIcon(Action(ActionId::AlignLeft)->icon());
    menuRotate_2 = AddMenu(RotateMenu(), *menuEdit);
    menuRotate_2->setIcon(Action(ActionId::RotateRight90)->icon());
    menuEdit->addSeparator();
    AddMenu(CanvasMenu(), bar);
    AddMenu(HelpMenu(), bar);
}

void MainWindowForm::SetUpToolBar(QMainWindow& window)
{
    toolBar = new QToolBar(&window);
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->setIconSize(QSize(20, 20));
    window.addToolBar(Qt::TopToolBarArea, toolBar);
    for (const ActionId id : ToolBarActions()) {
        if (id == ActionId::Separator)
            toolBar->addSeparator();
        else
            toolBar->addAction(Action(id));
    }
}

void MainWindowForm::SetUpCentre(QMainWindow& window)
{
    centralwidget = new QWidget(&window);
    centralwidget->setObjectName(QStringLiteral("centralwidget"));
    auto* row = new QHBoxLayout(centralwidget);
    row->setContentsMargins(0, 0, 0, 0);
    mappingEditorView = new WeftMapEditorView(centralwidget);
    mappingEditorView->setObjectName(QStringLiteral("mappingEditorView"));
    row->addWidget(mappingEditorView, 1);
    objectInspectorPannel = new QFrame(centralwidget);
    objectInspectorPannel->setObjectName(QStringLiteral("objectInspectorPannel"));
    auto* column = new QVBoxLayout(objectInspectorPannel);
    column->setContentsMargins(0, 0, 0, 0);
    auto* scrollArea = new QScrollArea(objectInspectorPannel);
    scrollArea->setObjectName(QStringLiteral("inspectorScrollArea"));
    scrollArea->setWidgetResizable(true);
    column->addWidget(scrollArea);
    row->addWidget(objectInspectorPannel);
    objectInspectorPannel->hide();
    window.setCentralWidget(centralwidget);
}

void MainWindowForm::SetUpDocks(QMainWindow& window)
{
    QVBoxLayout* column = nullptr;
    dockWidgetFixtureLibrary = AddDock(window, QStringLiteral("dockWidgetFixtureLibrary"), column);
    treeView = new LEDDeviceListView;
    SetUpList(*treeView, QStringLiteral("treeView"));
    column->addWidget(treeView);
    auto* buttons = new QHBoxLayout;
    buttonCustomFixture = AddButton(QStringLiteral("buttonCustomFixture"), *buttons);
    buttonEditFixture = AddButton(QStringLiteral("buttonEditFixture"), *buttons);
    buttonDeleteFixture = AddButton(QStringLiteral("buttonDeleteFixture"), *buttons);
    column->addLayout(buttons);
    for (QPushButton* button : {buttonCustomFixture, buttonEditFixture, buttonDeleteFixture})
        button->setEnabled(false);

    dockWidgetMappedFixtures = AddDock(window, QStringLiteral("dockWidgetMappedFixtures"), column);
    mappedTreeView = new WeftMappedObjectTreeView;
    SetUpList(*mappedTreeView, QStringLiteral("mappedTreeView"));
    mappedTreeView->setRootIsDecorated(false);
    mappedTreeView->setAllColumnsShowFocus(true);
    mappedTreeView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    column->addWidget(mappedTreeView);

    dockWidgetArtNetNodes = AddDock(window, QStringLiteral("dockWidgetArtNetNodes"), column);
    artNetNodes = new QTreeView;
    SetUpList(*artNetNodes, QStringLiteral("artNetNodes"));
    column->addWidget(artNetNodes);

    const QList<QDockWidget*> docks = {dockWidgetFixtureLibrary, dockWidgetMappedFixtures,
                                       dockWidgetArtNetNodes};
    window.resizeDocks(docks, {3, 2, 1}, Qt::Vertical);
    window.resizeDocks({dockWidgetFixtureLibrary}, {300}, Qt::Horizontal);
}

void MainWindowForm::Retranslate(QMainWindow& window)
{
    for (const ActionRow& row : ActionTable()) {
        QAction* action = Action(row.id);
        action->setText(Translated(row.text));
        if (row.toolTip)
            action->setToolTip(Translated(row.toolTip));
    }
    for (std::size_t i = 0; i < menuCount_; ++i)
        menus_[i].first->setTitle(Translated(menus_[i].second->title));
    window.setWindowTitle(QStringLiteral("Zentri PixelWeft 3.2.5"));
    toolBar->setWindowTitle(Translated(QT_TRANSLATE_NOOP("WEFTMain", "Toolbar")));
    dockWidgetFixtureLibrary->setWindowTitle(
        Translated(QT_TRANSLATE_NOOP("WEFTMain", "Fixture Library")));
    dockWidgetMappedFixtures->setWindowTitle(
        Translated(QT_TRANSLATE_NOOP("WEFTMain", "Mapped Fixtures")));
    dockWidgetArtNetNodes->setWindowTitle(
        Translated(QT_TRANSLATE_NOOP("WEFTMain", "Fixture Nodes")));
    treeView->setAccessibleName(dockWidgetFixtureLibrary->windowTitle());
    mappedTreeView->setAccessibleName(dockWidgetMappedFixtures->windowTitle());
    artNetNodes->setAccessibleName(dockWidgetArtNetNodes->windowTitle());
    buttonCustomFixture->setText(Translated(QT_TRANSLATE_NOOP("WEFTMain", "New...")));
    buttonEditFixture->setText(Translated(QT_TRANSLATE_NOOP("WEFTMain", "Edit...")));
    buttonDeleteFixture->setText(Translated(QT_TRANSLATE_NOOP("WEFTMain", "Delete")));
}
