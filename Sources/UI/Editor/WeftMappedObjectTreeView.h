// SPDX-License-Identifier: MIT
#pragma once

#include <QTreeView>

/// The list of placed elements. It selects; what is done with the selection is the same as on the
/// canvas.
class WeftMappedObjectTreeView : public QTreeView
{
    Q_OBJECT

public:
    using QTreeView::QTreeView;

signals:
    void EnvokeDuplicateElement();
    void EnvokeCopySelection();
    void EnvokePasteSelection();
    /// The Delete key: the selected elements are to go.
    void EnvokeRemoveSelection();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
