// SPDX-License-Identifier: MIT
#include "UI/Editor/WeftMappedObjectTreeView.h"

#include <QKeyEvent>

#include "Model/MappedDeviceModel.h"

bool WeftMappedObjectTreeView::IsRename(const QKeyEvent& event) const
{
    return event.key() == Qt::Key_F2 && event.modifiers() == Qt::NoModifier &&
           selectionModel()->hasSelection();
}

QModelIndex WeftMappedObjectTreeView::NameToEdit() const
{
    // The selection may have come from the canvas, and the current row have stayed.
    const QModelIndex row = selectionModel()->isSelected(currentIndex())
                                ? currentIndex()
                                : selectionModel()->selectedIndexes().first();
    return row.siblingAtColumn(MappedDeviceModel::NameColumn);
}

bool WeftMappedObjectTreeView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && IsRename(static_cast<QKeyEvent&>(*event))) {
        event->accept();
        return true;
    }
    return DockList::event(event);
}

void WeftMappedObjectTreeView::keyPressEvent(QKeyEvent* event)
{
    if (IsRename(*event)) {
        const QModelIndex name = NameToEdit();
        QTreeView::scrollTo(name); // to the side, too. NOLINT(bugprone-parent-virtual-call)
        edit(name);
        return;
    }
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
    DockList::keyPressEvent(event);
}
