// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class DeviceManager;
class WeftMappedObjectTreeView;

/// The list in the dock "Mapped Fixtures": the elements of the document.
class ElementList : public QObject
{
    Q_OBJECT

public:
    /// `manager` outlives the list.
    explicit ElementList(DeviceManager& manager);
    /// The view, which its dock owns, shows nothing from then on.
    ~ElementList() override;

    [[nodiscard]] WeftMappedObjectTreeView* View() const { return view_; }

    /// The model forgets its columns when it is loaded again.
    void SetUpColumns();

private:
    WeftMappedObjectTreeView* view_;
};
