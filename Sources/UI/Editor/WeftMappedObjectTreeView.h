// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Widgets/DockList.h"

/// The list of placed elements. It selects; what is done with the selection is the same as on the
/// canvas. F2 edits the description of the current one.
class WeftMappedObjectTreeView : public DockList
{
    Q_OBJECT

public:
    using DockList::DockList;

signals:
    void EnvokeDuplicateElement();
    void EnvokeCopySelection();
    void EnvokePasteSelection();
    /// The Delete key: the selected elements are to go.
    void EnvokeRemoveSelection();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Whether F2 names a row here, and not in the inspector.
    [[nodiscard]] bool IsRename(const QKeyEvent& event) const;
    [[nodiscard]] QModelIndex NameToEdit() const;
};
