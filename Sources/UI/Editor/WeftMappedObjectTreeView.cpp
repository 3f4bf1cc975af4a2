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
            emit EnvokeCopySelection();
            break;
        case Qt::Key_V:
            emit EnvokePasteSelection();
            break;
        default:
            break;
        }
    }
    QTreeView::keyPressEvent(event);
}
