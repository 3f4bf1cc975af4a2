// SPDX-License-Identifier: MIT
#pragma once

class QAction;
class QMenu;

/// Actions and menus of the window that the canvas shows or switches. They outlive it; any may be
/// missing.
struct EditorActions
{
    QAction* canvasSize = nullptr;
    QAction* crop = nullptr;
    QAction* copy = nullptr;
    QAction* paste = nullptr;
    QAction* duplicate = nullptr;
    QAction* repatch = nullptr;
    QAction* remove = nullptr;
    QMenu* align = nullptr;
    QMenu* rotate = nullptr;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
};
