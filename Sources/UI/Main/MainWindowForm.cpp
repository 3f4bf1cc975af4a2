// SPDX-License-Identifier: MIT
#include "UI/Main/MainWindowForm.h"

#include <QAction>
#include <QDockWidget>
#include <QFrame>
#include <QHBoxLayout>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include "Language/Language.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Main/ActionPlaces.h"
#include "UI/Widgets/ActionSet.h"
#include "UI/Widgets/FormScrollArea.h"

namespace {

/// Grows when docks or tool bars come, go or get other names.
constexpr int LayoutVersion = 2;

} // namespace

MainWindowForm::MainWindowForm(QMainWindow& window)
    : window_(window)
{
    window.setObjectName(QStringLiteral("WEFTMain"));
    window.resize(1210, 720);
    window.setWindowIcon(QIcon(QStringLiteral(":/bitmaps/PixelWeft.png")));
    window.setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowTabbedDocks);
    // The lists on the left keep their height when a panel opens at the bottom.
    window.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    window.menuBar()->setObjectName(QStringLiteral("menubar"));
    SetUpToolBar();
    SetUpCentre();
    window.statusBar()->setObjectName(QStringLiteral("statusbar"));
}

MainWindowForm::~MainWindowForm()
{
    delete window_.takeCentralWidget();
}

void MainWindowForm::SetUpToolBar()
{
    toolBar = new QToolBar(&window_);
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->setIconSize(QSize(20, 20));
    toolBar->setFloatable(false);
    toolBar->toggleViewAction()->setObjectName(QStringLiteral("view_toolBar"));
    InEachLanguage(toolBar, [this] {
        toolBar->setWindowTitle(WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Toolbar")));
        toolBar->toggleViewAction()->setText(WindowText(QT_TRANSLATE_NOOP("WEFTMain", "&Toolbar")));
    });
    window_.addToolBar(Qt::TopToolBarArea, toolBar);
}

void MainWindowForm::SetUpCentre()
{
    centralwidget = new QWidget(&window_);
    centralwidget->setObjectName(QStringLiteral("centralwidget"));
    auto* row = new QHBoxLayout(centralwidget);
    row->setContentsMargins(0, 0, 0, 0);
    mappingEditorView = new WeftMapEditorView(centralwidget);
    mappingEditorView->setObjectName(QStringLiteral("mappingEditorView"));
    mappingEditorView->setFocus(); // where the keys go at first
    row->addWidget(mappingEditorView, 1);
    objectInspectorPannel = new QFrame(centralwidget);
    objectInspectorPannel->setObjectName(QStringLiteral("objectInspectorPannel"));
    auto* column = new QVBoxLayout(objectInspectorPannel);
    column->setContentsMargins(0, 0, 0, 0);
    inspectorScrollArea = new FormScrollArea(objectInspectorPannel);
    inspectorScrollArea->setObjectName(QStringLiteral("inspectorScrollArea"));
    column->addWidget(inspectorScrollArea);
    row->addWidget(objectInspectorPannel);
    window_.setCentralWidget(centralwidget);
}

void MainWindowForm::AddDocks(std::span<const Dock> docks)
{
    constexpr int margin = 4;
    for (const Dock& each : docks) {
        auto* dock = new QDockWidget(&window_);
        dock->setObjectName(QLatin1String(each.objectName));
        dock->setAllowedAreas(Qt::AllDockWidgetAreas);
        dock->toggleViewAction()->setObjectName(QStringLiteral("view_") + dock->objectName());
        InEachLanguage(dock, [dock, title = each.title, viewText = each.viewText] {
            dock->setWindowTitle(WindowText(title));
            dock->toggleViewAction()->setText(WindowText(viewText));
        });
        if (each.shortcut)
            dock->toggleViewAction()->setShortcut(QKeySequence(QLatin1String(each.shortcut)));
        auto* frame = new QWidget(dock);
        auto* column = new QVBoxLayout(frame);
        column->setContentsMargins(margin, margin, margin, margin);
        column->addWidget(each.contents);
        dock->setWidget(frame);
        docks_.push_back({dock, each.share, each.side});
    }
    PlaceDocks();
}

void MainWindowForm::PlaceDocks()
{
    PlaceLeftDocks();
    PlaceBottomDocks();
}

void MainWindowForm::PlaceLeftDocks()
{
    constexpr int width = 300;
    QList<QDockWidget*> widgets;
    QList<int> shares;
    for (const Placed& each : docks_) {
        if (each.side != Side::Left)
            continue;
        each.dock->setFloating(false);
        window_.addDockWidget(Qt::LeftDockWidgetArea, each.dock);
        each.dock->show();
        widgets.append(each.dock);
        shares.append(each.share);
    }
    window_.resizeDocks(widgets, shares, Qt::Vertical);
    window_.resizeDocks({widgets.front()}, {width}, Qt::Horizontal);
}

void MainWindowForm::PlaceBottomDocks()
{
    QDockWidget* first = nullptr;
    for (const Placed& each : docks_) {
        if (each.side != Side::Bottom)
            continue;
        each.dock->setFloating(false);
        window_.addDockWidget(Qt::BottomDockWidgetArea, each.dock);
        if (first)
            window_.tabifyDockWidget(first, each.dock);
        else
            first = each.dock;
        each.dock->hide();
    }
}

QByteArray MainWindowForm::SaveLayout() const
{
    return window_.saveState(LayoutVersion);
}

void MainWindowForm::RestoreLayout(const QByteArray& layout)
{
    window_.restoreState(layout, LayoutVersion);
}

void MainWindowForm::ResetLayout()
{
    window_.addToolBar(Qt::TopToolBarArea, toolBar);
    toolBar->show();
    PlaceDocks();
}

void MainWindowForm::PlaceActions()
{
    for (const ActionPlaces::Menu& each : ActionPlaces::MenuBar()) {
        QMenu* menu = window_.menuBar()->addMenu(QString());
        InEachLanguage(menu, [menu, title = each.title] { menu->setTitle(WindowText(title)); });
        menu->setObjectName(QLatin1String(each.objectName));
        for (const char* entry : each.entries)
            Place(entry, *menu);
    }
    for (const char* entry : ActionPlaces::ToolBar())
        PlaceInToolBar(entry);
    auto* elements = window_.findChild<QWidget*>(QStringLiteral("mappedTreeView"));
    for (const char* name : ActionPlaces::KeysOfElements())
        KeepKeysTo(*window_.findChild<QAction*>(QLatin1String(name)),
                   {mappingEditorView, elements});
}

void MainWindowForm::Place(const char* entry, QMenu& menu)
{
    const QString name = QLatin1String(entry);
    if (!entry)
        menu.addSeparator();
    else if (auto* action = window_.findChild<QAction*>(name))
        menu.addAction(action);
    else if (auto* submenu = window_.findChild<QMenu*>(name))
        menu.addMenu(submenu);
}

void MainWindowForm::PlaceInToolBar(const char* entry)
{
    const QString name = QLatin1String(entry);
    if (!entry)
        toolBar->addSeparator();
    else if (auto* action = window_.findChild<QAction*>(name))
        toolBar->addAction(action);
    else if (auto* widget = window_.findChild<QWidget*>(name))
        toolBar->addWidget(widget);
}
