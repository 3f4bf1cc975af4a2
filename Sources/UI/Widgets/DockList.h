// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QTreeView>

/// A list of the docks: whole rows, several of them at once, sorted by a click on the header, in
/// small type. What is cut off is read in a tool tip.
class DockList : public QTreeView
{
    Q_OBJECT

public:
    explicit DockList(QWidget* parent = nullptr);

    /// What tests and styles call it, and what screen readers do, in the language of the time.
    void SetNames(const char* objectName, const std::function<QString()>& accessibleName);

    /// Never to the side: a click on a cell that is cut off must not move the rows away from under
    /// the mouse.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

protected:
    bool viewportEvent(QEvent* event) override;
};
