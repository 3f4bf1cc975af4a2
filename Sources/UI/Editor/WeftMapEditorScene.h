// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include <QGraphicsScene>
#include <QModelIndex>
#include <QPersistentModelIndex>
#include <QPixmap>

#include "FixtureModel/FreePatch.h"
#include "Model/ElementChanges.h"
#include "UI/Editor/EditorActions.h"
#include "UI/Editor/ElementSelection.h"
#include "UI/Editor/GroupOverlay.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Editor/SceneGestures.h"

class DeviceManager;
class GraphCanvas;
class GraphForeground;
class QUndoStack;
struct EditorDisplayState;

/// The canvas on which fixtures are laid out: an item for each placed element, and what lies under
/// and over them. Scene pixel (0, 0) is the canvas' top left; there is room of half a canvas on
/// each side.
///
/// The model is the truth. The scene follows the signals of DeviceManager, and a gesture goes to
/// the model by an undo command; so a change that comes from the model can't become a second
/// command.
class WeftMapEditorScene : public QGraphicsScene, public SelectionListener
{
    Q_OBJECT

public:
    /// All of them outlive the scene.
    WeftMapEditorScene(DeviceManager& manager, EditorDisplayState& display, QUndoStack& undoStack,
                       QObject* parent = nullptr);
    ~WeftMapEditorScene() override;

    /// What the context menu shows, and the actions that a gesture holds back.
    void SetActions(const EditorActions& actions);

    // ---- The canvas ----------------------------------------------------------------------------

    void SetCanvasSize(int width, int height);
    [[nodiscard]] GraphCanvas& GetCanvas() const { return *canvas_; }
    /// Draws picture and grid again.
    void RedrawCanvas();
    /// Removes all items and overlays, before the document is replaced.
    void ClearAll();

    // ---- Elements ------------------------------------------------------------------------------

    [[nodiscard]] MappingRectangle* Find(std::int64_t id) const;
    /// The element on top at this place of the scene, null for none.
    [[nodiscard]] const MappingRectangle* ElementAt(QPointF place) const;
    /// In the order of their identifiers, as are all lists here.
    [[nodiscard]] ElementIds AllIds() const;
    /// Marks the elements that no node is chosen for.
    void RefreshAutoMarks();

    /// The next free address for a fixture of the library.
    [[nodiscard]] PatchAddress NextFreePatch(std::int64_t fixtureID) const;

    // ---- Selection -----------------------------------------------------------------------------

    /// While one lives, selection events are gathered; one comes at its end.
    class SelectionBatch : public ElementSelection::Batch
    {
    public:
        explicit SelectionBatch(WeftMapEditorScene& scene)
            : Batch(scene.selection_)
        {}
    };

    [[nodiscard]] int SelectedCount() const { return selection_.Count(); }
    [[nodiscard]] ElementIds SelectedIds() const { return selection_.Ids(); }
    [[nodiscard]] std::vector<QPersistentModelIndex> SelectedIndexes() const;
    void SetSelected(std::int64_t id, bool selected);
    void SelectAll();
    void UnSelectAll();

    // ---- Gestures and overlays -----------------------------------------------------------------

    [[nodiscard]] SceneGestures& GetGestures() { return gestures_; }
    [[nodiscard]] GroupOverlay& GetGroupOverlay() { return overlay_; }
    /// What shows where a fixture from the library would land; null while none is dragged.
    [[nodiscard]] const MappingRectangle* GetDragPreview() const { return dragPreview_.get(); }
    /// Frame and body round a selection of two or more; none for less.
    void ShowGroupOverlay();
    void RemoveOverlays();

    [[nodiscard]] const EditorActions& GetActions() const { return actions_; }
    /// Flip what is selected; checked and enabled as that is.
    [[nodiscard]] std::array<QAction*, 2> FlipActions() const
    {
        return {flipHorizontal_, flipVertical_};
    }

public slots:
    void RemoveSelectedRectangle();
    void SetTestPatternImage(const QPixmap& picture);
    /// The universes that the host has taken, as sub-net x 16 + universe.
    void usedUniversesChanged(const std::vector<int>& usedUniverses);

signals:
    /// The selection has changed; once for a click, a rubber band or a Select All.
    void RectangleSelectionEvent();
    void testPatternImageChange(const QPixmap& picture);
    void sceneClick();
    void sceneSizeChanged();
    /// A rubber band was let go.
    void selectionEnded(int numSelected);
    void RectangleDoubleClicked(int64_t uniqueID);
    void FlipHSelectedRectangle(bool checked);
    void FlipVSelectedRectangle(bool checked);
    /// A mapping document was dropped on the canvas.
    void importRequested(const QString& path);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragMoveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;

private:
    void ConnectModel();
    void MarkAuto(const ElementIds& ids);
    void AddRectangle(std::int64_t id);
    void DeleteObjectItem(std::int64_t id);
    void TakeNaturalSize(MappingRectangle& item) const;
    /// Shows the element as the document has it.
    void Place(MappingRectangle& item) const;
    void PlaceAll();
    void FollowSelection();
    void ShowFlips();
    void SelectAt(QPointF scenePoint);
    void NoteSelection(std::int64_t id, bool selected) override;
    /// Undo and redo must not change the elements under a running gesture.
    void HoldUndo(bool hold);
    /// The item whose handles are under the mouse; null when none is.
    [[nodiscard]] MappingRectangle* ItemWithHandleAt(QPointF scenePoint) const;
    [[nodiscard]] Qt::CursorShape CursorAt(QPointF scenePoint) const;
    /// Begins a gesture when a handle is under the press.
    bool TakeHandle(QGraphicsSceneMouseEvent& event);
    void TakeItem(MappingRectangle& item, QPointF pressed);
    void Nudge(const QKeyEvent& key);
    /// The element or group body that holds the mouse; null when none does.
    [[nodiscard]] MappingRectangle* PressedRectangle() const;
    /// A fixture is shown on its way where it would be dropped: about the mouse, its corners on
    /// whole pixels.
    void ShowDragPreview(std::int64_t fixtureID, QPointF at);
    void DropFixture(std::int64_t fixtureID, QPointF place);

    DeviceManager& manager_;
    EditorDisplayState& display_;
    QUndoStack& undoStack_;
    EditorActions actions_;
    QAction* flipHorizontal_ = nullptr;
    QAction* flipVertical_ = nullptr;

    GraphCanvas* canvas_ = nullptr;
    GraphForeground* foreground_ = nullptr;
    std::unique_ptr<MappingRectangle> dragPreview_;
    std::map<std::int64_t, MappingRectangle*> itemsById_;
    std::vector<std::int32_t> usedUniverses_;

    ElementSelection selection_;
    std::int64_t onlySelected_ = 0;
    bool rubberBand_ = false;
    bool waitsForDrag_ = false; ///< an element was pressed that only a drag selects

    GroupOverlay overlay_;
    SceneGestures gestures_;
};
