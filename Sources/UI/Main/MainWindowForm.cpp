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

#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Main/ActionPlaces.h"
#include "UI/Widgets/ActionSet.h"
#include "UI/Widgets/DeskLook.h"
#include "UI/Widgets/FormScrollArea.h"

MainWindowForm::MainWindowForm(QMainWindow& window)
    : window_(window)
{
    window.setObjectName(QStringLiteral("WEFTMain"));
    window.resize(1210, 720);
    window.setWindowIcon(QIcon(QStringLiteral(":/bitmaps/PixelWeft.png")));
    window.setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowTabbedDocks);
    window.setStyleSheet(DeskStyleSheet());
    window.menuBar()->setObjectName(QStringLiteral("menubar"));
    toolBar = new QToolBar(WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Toolbar")), &window);
    toolBar->setObjectName(QStringLiteral("toolBar"));
    toolBar->setIconSize(QSize(20, 20));
    window.addToolBar(Qt::TopToolBarArea, toolBar);
    SetUpCentre();
    window.statusBar()->setObjectName(QStringLiteral("statusbar"));
}

MainWindowForm::~MainWindowForm()
{
    delete window_.takeCentralWidget();
}

void MainWindowForm::SetUpCentre()
{
    centralwidget = new QWidget(&window_);
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
    inspectorScrollArea = new FormScrollArea(objectInspectorPannel);
    inspectorScrollArea->setObjectName(QStringLiteral("inspectorScrollArea"));
    column->addWidget(inspectorScrollArea);
    row->addWidget(objectInspectorPannel);
    window_.setCentralWidget(centralwidget);
}

void MainWindowForm::AddDocks(std::span<const Dock> docks)
{
    constexpr int margin = 4;
    constexpr int width = 300;
    QList<QDockWidget*> widgets;
    QList<int> shares;
    for (const Dock& each : docks) {
        auto* dock = new QDockWidget(WindowText(each.title), &window_);
        dock->setObjectName(QLatin1String(each.objectName));
        dock->setAllowedAreas(Qt::AllDockWidgetAreas);
        auto* frame = new QWidget(dock);
        auto* column = new QVBoxLayout(frame);
        column->setContentsMargins(margin, margin, margin, margin);
        column->addWidget(each.contents);
        dock->setWidget(frame);
        window_.addDockWidget(Qt::LeftDockWidgetArea, dock);
        widgets.append(dock);
        shares.append(each.share);
    }
    window_.resizeDocks(widgets, shares, Qt::Vertical);
    window_.resizeDocks({widgets.front()}, {width}, Qt::Horizontal);
}

void MainWindowForm::PlaceActions()
{
    for (const ActionPlaces::Menu& each : ActionPlaces::MenuBar()) {
        QMenu* menu = window_.menuBar()->addMenu(WindowText(each.title));
        menu->setObjectName(QLatin1String(each.objectName));
        for (const char* entry : each.entries)
            Place(entry, *menu);
    }
    for (const char* entry : ActionPlaces::ToolBar())
        PlaceInToolBar(entry);
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
