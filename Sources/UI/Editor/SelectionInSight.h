// SPDX-License-Identifier: MIT
#pragma once

#include "Model/ElementChanges.h"

class DeviceManager;
class QTreeView;
class WeftMapEditorScene;
class WeftMapEditorView;

/// Scrolls list and canvas to what was just selected. Where some of it is in sight already they
/// stay as they are, so that neither runs away from the hand that selects in it.
class SelectionInSight
{
public:
    /// All of them outlive this object. The list shows the proxy of the elements.
    struct Parts
    {
        const DeviceManager& manager;
        const WeftMapEditorScene& scene;
        WeftMapEditorView& view;
        QTreeView& list;
    };
    explicit SelectionInSight(const Parts& parts);

    /// After each change of the selection. `canvasToo` is for one that was made in the list.
    void Follow(bool canvasToo);

private:
    void ShowRows(const ElementIds& ids);
    void ShowElements(const ElementIds& ids);

    Parts parts_;
    ElementIds before_; ///< ascending, as the scene gives them
};
