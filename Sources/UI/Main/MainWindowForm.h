// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

class FormScrollArea;
class QByteArray;
class QDockWidget;
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

    enum class Side
    {
        Left,  ///< below each other
        Bottom ///< one at a time, hidden at first
    };

    struct Dock
    {
        /// With "view_" before it, that of the action that shows it.
        const char* objectName = nullptr;
        const char* title = nullptr;    ///< untranslated
        const char* viewText = nullptr; ///< of the action that shows it; untranslated
        QWidget* contents = nullptr;    ///< the dock owns it from then on
        int share = 1; ///< of the height, beside those of the other docks on its side
        Side side = Side::Left;
        const char* shortcut = nullptr; ///< that shows and hides it, portable text
    };
    /// Docks of a side, from the top.
    void AddDocks(std::span<const Dock> docks);

    /// Puts the actions and widgets that the rooms made into menus and tool bar.
    void PlaceActions();

    /// Where docks and tool bar are, and whether they show.
    [[nodiscard]] QByteArray SaveLayout() const;
    /// Puts them so again. What no run of this version has saved changes nothing.
    void RestoreLayout(const QByteArray& layout);
    /// Puts them as they are at the first start.
    void ResetLayout();

    QWidget* centralwidget = nullptr;
    WeftMapEditorView* mappingEditorView = nullptr;
    QWidget* objectInspectorPannel = nullptr;
    FormScrollArea* inspectorScrollArea = nullptr; ///< in that panel, for the inspector's form
    QToolBar* toolBar = nullptr;

private:
    /// A dock with its side and its share of the height.
    struct Placed
    {
        QDockWidget* dock;
        int share;
        Side side;
    };

    void SetUpToolBar();
    void SetUpCentre();
    void PlaceDocks();
    void PlaceLeftDocks();
    void PlaceBottomDocks();
    void Place(const char* entry, QMenu& menu);
    void PlaceInToolBar(const char* entry);

    QMainWindow& window_;
    std::vector<Placed> docks_; ///< from the top
};
