// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "UI/Editor/EditorActions.h"
#include "UI/Widgets/ActionSet.h"

class EditorController;
class QMenu;
class QUndoStack;
class WeftMapEditorScene;

/// The actions that work on the elements of the canvas, with undo and redo, and the two submenus
/// that the canvas shows as well.
class EditorActionSet
{
public:
    struct Parts
    {
        EditorController& editor;
        WeftMapEditorScene& scene;
        QWidget& list; ///< of the elements; gets a context menu
        QUndoStack& undoStack;
        QWidget& window;            ///< owns the actions and the menus
        QAction* repatch = nullptr; ///< of another room, for the menus of canvas and list
    };
    /// All parts outlive the set. Gives the scene what it shows and switches.
    explicit EditorActionSet(const Parts& parts);

private:
    /// An action that goes one step along the undo stack.
    struct History
    {
        const char* objectName;
        QKeySequence::StandardKey keys;
        const char* icon;
        const char* bare;  ///< the text without a step, untranslated
        const char* named; ///< with a step for %1, untranslated
        QString (QUndoStack::*step)() const;
        void (QUndoStack::*go)();
        void (QUndoStack::*canGo)(bool);
        void (QUndoStack::*stepChanged)(const QString&);
    };

    void AddCanvas();
    void AddSelection();
    void AddFlips();
    void AddAligning();
    void AddRotating();
    void AddCopies();
    void AddUndo();
    QAction* AddHistory(const History& history);
    void AddListMenu();
    QMenu* AddMenu(const char* objectName, const char* title, const std::vector<QAction*>& entries);

    Parts parts_;
    ActionSet actions_;
    EditorActions shown_;
};
