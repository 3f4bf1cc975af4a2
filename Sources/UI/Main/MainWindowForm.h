// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "UI/Main/ActionTable.h"

class LEDDeviceListView;
class QAction;
class QDockWidget;
class QFrame;
class QMainWindow;
class QMenu;
class QPushButton;
class QStatusBar;
class QToolBar;
class QTreeView;
class QVBoxLayout;
class QWidget;
class WeftMapEditorView;
class WeftMappedObjectTreeView;

/// The widgets and actions of the main window and where they stand, without any behaviour. Qt
/// parents own all of them.
class MainWindowForm
{
public:
    void SetUp(QMainWindow& window);
    /// Gives every widget and action its text.
    void Retranslate(QMainWindow& window);

    [[nodiscard]] QAction* Action(ActionId id) const
    {
        return actions_[static_cast<std::size_t>(id)];
    }

    QWidget* centralwidget = nullptr;
    WeftMapEditorView* mappingEditorView = nullptr;
    QWidget* objectInspectorPannel = nullptr; ///< empty and hidden until the inspector fills it
    QDockWidget* dockWidgetFixtureLibrary = nullptr;
    LEDDeviceListView* treeView = nullptr;
    QPushButton* buttonCustomFixture = nullptr;
    QPushButton* buttonEditFixture = nullptr;
    QPushButton* buttonDeleteFixture = nullptr;
    QDockWidget* dockWidgetMappedFixtures = nullptr;
    WeftMappedObjectTreeView* mappedTreeView = nullptr;
    QDockWidget* dockWidgetArtNetNodes = nullptr;
    QTreeView* artNetNodes = nullptr;
    QMenu* menuEdit = nullptr;
    QMenu* menuAlign = nullptr;
    QMenu* menuRotate_2 = nullptr;
    QToolBar* toolBar = nullptr;
    QStatusBar* statusbar = nullptr;

private:
    void SetUpActions(QMainWindow& window);
    void SetUpMenus(QMainWindow& window);
    void SetUpToolBar(QMainWindow& window);
    void SetUpCentre(QMainWindow& window);
    void SetUpDocks(QMainWindow& window);
    QMenu* AddMenu(const MenuRow& row, QWidget& bar);

    std::array<QAction*, static_cast<std::size_t>(ActionId::Count)> actions_{};
    std::array<std::pair<QMenu*, const MenuRow*>, 6> menus_{};
    std::size_t menuCount_ = 0;
};
