// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

#include <QItemSelection>
#include <QObject>
#include <QPersistentModelIndex>

#include "Model/ElementCopies.h"
#include "Model/ElementGeometry.h"
#include "UI/Editor/ElementClipboard.h"
#include "UI/Editor/SelectionInSight.h"

class DeviceManager;
class QUndoCommand;
class QUndoStack;
class WeftMapEditorScene;
class WeftMapEditorView;
class WeftMappedObjectTreeView;

/// What the actions of the canvas do, and what keeps the selection of canvas and list the same,
/// whichever of them changed it.
class EditorController : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        QUndoStack& undoStack;
        WeftMapEditorScene& scene;
        WeftMapEditorView& view;
        /// Shows the proxy of the elements already.
        WeftMappedObjectTreeView& list;
    };

    /// All parts outlive the controller.
    explicit EditorController(const Parts& parts, QObject* parent = nullptr);

    /// 1 lets the zoom follow the selection, 0 the mouse.
    void SetZoomStyle(int style);

public slots:
    /// Selects these elements and no other; ids without element are passed over.
    void Select(const ElementIds& ids);
    /// And scrolls the canvas to them.
    void SelectAndShow(const ElementIds& ids);
    void ActionSelectAll();
    void ActionUnSelectAll();
    void ActionAlign(ElementGeometry::AlignMode mode);
    void ActionAlignDistribute(ElementGeometry::DistributeMode mode);
    void ActionRotateRight90() { ActionRotateLeftRight(90); }
    void ActionRotateLeft90() { ActionRotateLeftRight(-90); }
    void ActionRotateLeftRight(float degrees);
    void ActionCropCanvasToSelectedDevices();
    /// Asks for the size of the canvas.
    void ActionCanvasSize();
    void ActionFlip(int direction, bool state);
    void ActionFit();
    /// Does nothing without a selection.
    void ActionFitSelection();
    void ActionActualPixels();
    /// Asks for the wall that the one selected element becomes. Does nothing for more or none.
    void ActionDuplicateElement();
    void ActionCopySelection();
    /// Once for each copy.
    void ActionPasteSelection();

    /// Makes a wall of the element of this index of the document; none for an index without one.
    void DuplicateElement(const QModelIndex& index, const DuplicateGrid& grid);
    /// Gives the canvas another size. With `keepPixels` elements stay where they are in pixels,
    /// otherwise they follow the canvas.
    void ResizeCanvas(int width, int height, bool keepPixels);

    void MappingSceneSelectionEnded();
    void MappingSceneSizeChanged();
    /// A double click: checks the element and says in the log what it lacks. -1 is the first
    /// selected.
    void ActionMappingSetupForUniqueID(int64_t uniqueID);

signals:
    /// The selection has changed, in canvas and list alike.
    void selectionHasChanged(int count);
    /// A paste has brought fixtures that the library lacked.
    void fixturesAdded();

private:
    void ConnectSelection();
    void ConnectCopies();
    void UpdateModelSelectionFromMappingScene();
    void UpdateModelSelectionFromMappedObjectList(const QItemSelection& selected,
                                                  const QItemSelection& deselected);
    void FollowSelection();
    void UpdateZoomCentre();
    void Push(std::unique_ptr<QUndoCommand> command);
    void ShowCopies(int undoIndex);
    /// The box round these elements, in scene pixels.
    [[nodiscard]] QRectF BoxOf(const ElementIds& ids) const;

    DeviceManager& manager_;
    QUndoStack& undoStack_;
    WeftMapEditorScene& scene_;
    WeftMapEditorView& view_;
    WeftMappedObjectTreeView& list_;
    SelectionInSight sight_;
    ElementClipboard clipboard_;
    int undoIndex_ = 0; ///< of the step that the next redo does
    int zoomStyle_ = 0;
    bool fromScene_ = false; ///< the list is following the canvas
    bool fromList_ = false;  ///< the canvas is following the list
};
