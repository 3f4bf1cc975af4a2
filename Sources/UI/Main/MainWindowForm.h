// SPDX-License-Identifier: MIT
#pragma once

#include <span>

class FormScrollArea;
class QMainWindow;
class QMenu;
class QToolBar;
class QWidget;
class WeftMapEditorView;

/// The frame of the main window: its centre, its docks, menus and tool bar, and where the
/// parts of the rooms go in them, without any behaviour. Qt parents own the widgets.
class MainWindowForm
{
public:
    /// `window` outlives the form.
    explicit MainWindowForm(QMainWindow& window);
    /// Takes the centre with it: the canvas reads the document until it goes.
    ~MainWindowForm();
    MainWindowForm(const MainWindowForm&) = delete;
    MainWindowForm& operator=(const MainWindowForm&) = delete;

    struct Dock
    {
        const char* objectName;
        const char* title; ///< untranslated
        QWidget* contents; ///< the dock owns it from then on
        int share;         ///< of the height, beside those of the other docks
    };
    /// Docks on the left side, from the top.
    void AddDocks(std::span<const Dock> docks);

    /// Puts the actions and widgets that the rooms made into menus and tool bar.
    void PlaceActions();

    QWidget* centralwidget = nullptr;
    WeftMapEditorView* mappingEditorView = nullptr;
    QWidget* objectInspectorPannel = nullptr;
    FormScrollArea* inspectorScrollArea = nullptr; ///< in that panel, for the inspector's form
    QToolBar* toolBar = nullptr;

private:
    void SetUpCentre();
    void Place(const char* entry, QMenu& menu);
    void PlaceInToolBar(const char* entry);

    QMainWindow& window_;
};
