// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class DeviceManager;
class ListColumns;
class QUndoStack;
class WeftMappedObjectTreeView;

/// The list in the dock "Mapped Fixtures": the elements of the document. A description that is
/// edited there is a step of the history.
class ElementList : public QObject
{
    Q_OBJECT

public:
    /// Both outlive the list.
    ElementList(DeviceManager& manager, QUndoStack& undoStack);
    /// The view, which its dock owns, shows nothing from then on.
    ~ElementList() override;

    [[nodiscard]] WeftMappedObjectTreeView* View() const { return view_; }
    [[nodiscard]] ListColumns& Columns() const { return *columns_; }

private:
    WeftMappedObjectTreeView* view_;
    ListColumns* columns_; ///< the view owns it
};
