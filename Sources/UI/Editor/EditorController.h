// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <QItemSelection>
#include <QObject>
#include <QPersistentModelIndex>

#include "UI/Editor/EditorGeometry.h"

class DeviceManager;
class QTreeView;
class QUndoStack;
class WeftMapEditorScene;
class WeftMapEditorView;
class WeftMappedObjectTreeView;

/// What the window's actions do to the canvas, and what keeps canvas and list one: the same
/// elements are selected in both, whoever began. The window forwards to these slots.
class EditorController : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        WeftMapEditorScene& scene;
        WeftMapEditorView& view;
        /// Shows the proxy of the placed elements already.
        WeftMappedObjectTreeView& list;
    };

    /// All parts outlive the controller.
    explicit EditorController(const Parts& parts, QObject* parent = nullptr);

    /// 1 lets the zoom follow the selection, 0 the mouse.
    void SetZoomStyle(int style);

public slots:
    void ActionSelectAll();
    void ActionUnSelectAll();
    void ActionAlign(EditorGeometry::AlignMode mode);
    void ActionAlignDistribute(EditorGeometry::DistributeMode mode);
    void ActionRotateRight90() { ActionRotateLeftRight(90); }
    void ActionRotateLeft90() { ActionRotateLeftRight(-90); }
    void ActionRotateLeftRight(float degrees);
    void ActionCropCanvasToSelectedDevices();
    void ActionFlip(int direction, bool state);

    void UpdateSceneNewRectangle(float posX, float posY, float width, float height, int devWidth,
                                 int devHeight, float rotation, int flipHorizontal,
                                 int flipVertical, const QPersistentModelIndex& index,
                                 int64_t uniqueID);
    void MappingSceneSelectionEnded();
    void MappingSceneSizeChanged();
    /// A double click: checks the element and says in the log what it lacks. -1 is the first
    /// selected.
    void ActionMappingSetupForUniqueID(int64_t uniqueID);

signals:
    /// The selection is another one, in canvas and list alike.
    void selectionHasChanged(int count);

private:
    void UpdateModelSelectionFromMappingScene();
    void UpdateModelSelectionFromMappedObjectList(const QItemSelection& selected,
                                                  const QItemSelection& deselected);
    void FollowSelection();
    void UpdateZoomCentre();

    DeviceManager& manager_;
    WeftMapEditorScene& scene_;
    WeftMapEditorView& view_;
    WeftMappedObjectTreeView& list_;
    int zoomStyle_ = 0;
    bool fromScene_ = false; ///< the list is following the canvas
    bool fromList_ = false;  ///< the canvas is following the list
};
