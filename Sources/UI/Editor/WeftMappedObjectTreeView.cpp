// SPDX-License-Identifier: MIT
#include "UI/Editor/WeftMappedObjectTreeView.h"

#include <QKeyEvent>

void WeftMappedObjectTreeView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete) {
        emit EnvokeRemoveSelection();
        return;
    }
    if (event->modifiers() == Qt::ControlModifier) {
        switch (event->key()) {
        case Qt::Key_D:
            emit EnvokeDuplicateElement();
            break;
        case Qt::Key_C:
            // Qt's own copy, of the text of one cell, would take the place of the elements.
            emit EnvokeCopySelection();
            return;
        case Qt::Key_V:
            emit EnvokePasteSelection();
            break;
        default:
            break;
        }
    }
    QTreeView::keyPressEvent(event);
}
