// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include <QGraphicsScene>
#include <QModelIndex>
#include <QPersistentModelIndex>
#include <QPixmap>

#include "Model/Vector4DF.h"
#include "UI/Editor/EditorActions.h"
#include "UI/Editor/ElementState.h"
#include "UI/Editor/FreePatch.h"
#include "UI/Editor/GroupOverlay.h"
#include "UI/Editor/SceneGestures.h"

class DeviceManager;
class GraphCanvas;
class GraphForeground;
class MappingRectangle;
class QUndoCommand;
class QUndoStack;
struct EditorDisplayState;

/// The canvas on which fixtures are laid out: an item for each placed element, and what lies under
/// and over them. Scene pixel (0, 0) is the canvas' top left; there is room of half a canvas on
/// each side.
///
/// The model is the truth. The scene follows the signals of DeviceManager, and a gesture goes to
/// the model by an undo command; so a change that comes from the model can't become a second
/// command.
class WeftMapEditorScene : public QGraphicsScene
{
    Q_OBJECT

public:
    /// All of them outlive the scene.
    WeftMapEditorScene(DeviceManager& manager, EditorDisplayState& display, QUndoStack& undoStack,
                       QObject* parent = nullptr);
    ~WeftMapEditorScene() override;

    /// What the context menu shows, and the actions that a gesture holds back.
    void SetActions(const EditorActions& actions);

    // ---- The canvas
    // --------------------------------------------------------------------------------

    void SetCanvasSize(int width, int height);
    [[nodiscard]] GraphCanvas& GetCanvas() const { return *canvas_; }
    /// After a change of the canvas' size by these factors: elements stay where they are in pixels.
    /// With 0, 0 they follow the canvas.
    void RescaleItems(float fx, float fy);
    /// Draws picture and grid anew.
    void RedrawCanvas();
    /// Removes all elements and overlays.
    void ClearAll();

    // ---- Elements
    // ----------------------------------------------------------------------------------

    /// Shows an element of the document; null when `index` has none.
    MappingRectangle* AddRectangle(const EditorGeometry::Placement& placement, QSizeF naturalSize,
                                   const QModelIndex& index, double rotation);
    [[nodiscard]] MappingRectangle* Find(std::int64_t id) const;
    [[nodiscard]] std::vector<std::int64_t> AllIds() const;
    /// In the order of their identifiers, as are all lists here.
    [[nodiscard]] std::vector<QPersistentModelIndex> AllIndexes() const;
    /// The index of an element that once had this number, invalid when it is gone.
    [[nodiscard]] QModelIndex IndexOf(std::int64_t id) const;
    [[nodiscard]] ElementNumbers& GetNumbers() { return numbers_; }
    /// Marks the elements that no node is chosen for.
    void RefreshAutoMarks();

    /// The next free place on the wire for a fixture of the library.
    [[nodiscard]] PatchAddress NextFreePatch(std::int64_t fixtureID) const;

    // ---- Selection
    // ---------------------------------------------------------------------------------

    /// While one lives, selection events are gathered; they are told once, at its end.
    class SelectionBatch
    {
    public:
        explicit SelectionBatch(WeftMapEditorScene& scene);
        ~SelectionBatch();
        SelectionBatch(const SelectionBatch&) = delete;
        SelectionBatch& operator=(const SelectionBatch&) = delete;

    private:
        WeftMapEditorScene& scene_;
    };

    [[nodiscard]] int SelectedCount() const { return static_cast<int>(selected_.size()); }
    [[nodiscard]] std::vector<std::int64_t> SelectedIds() const;
    [[nodiscard]] std::vector<QPersistentModelIndex> SelectedIndexes() const;
    void SetSelected(std::int64_t id, bool selected);
    void SelectById(const std::vector<std::int64_t>& ids);
    void SelectAll();
    void UnSelectAll();
    /// From the items: one was selected or deselected.
    void NoteSelection(MappingRectangle& item, bool selected);

    // ---- Gestures and overlays
    // ---------------------------------------------------------------------

    [[nodiscard]] SceneGestures& GetGestures() { return gestures_; }
    [[nodiscard]] GroupOverlay& GetGroupOverlay() { return overlay_; }
    /// Frame and body round a selection of two or more; none for less.
    void ShowGroupOverlay();
    void RemoveOverlays();

    [[nodiscard]] DeviceManager& GetManager() const { return manager_; }
    [[nodiscard]] EditorDisplayState& GetDisplay() const { return display_; }
    [[nodiscard]] const EditorActions& GetActions() const { return actions_; }
    /// Hands a command to the undo stack, which runs it.
    void Push(std::unique_ptr<QUndoCommand> command);
    /// Undo and redo must not pull the model away from under a running gesture.
    void HoldUndo(bool hold);

public slots:
    void SetGeometryItem(int64_t uniqueID, Zen::Vector4DF geometry);
    void SetCentreXItem(int64_t uniqueID, float centreX);
    void SetCentreYItem(int64_t uniqueID, float centreY);
    void SetCentreXYItem(int64_t uniqueID, float centreX, float centreY);
    void SetSizeItem(int64_t uniqueID, float width, float height);
    void SetRotationItem(int64_t uniqueID, float rotation);
    /// `flipDirection` 0 is horizontal, any other vertical.
    void SetFlipStateItem(int64_t uniqueID, int flipDirection, bool state);
    void DeleteObjectItem(int64_t uniqueID);
    void RemoveSelectedRectangle();
    void SetTestPatternImage(const QPixmap& picture);
    /// The universes that the sister program has taken, as sub-net x 16 + universe.
    void usedUniversesChanged(const std::vector<int>& usedUniverses);

signals:
    /// The selection is another one; once for a click, a rubber band or a Select All.
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
    void SettleSelection();
    /// The item whose handles are under the mouse; null when none is.
    [[nodiscard]] MappingRectangle* ItemWithHandleAt(QPointF scenePoint) const;
    [[nodiscard]] Qt::CursorShape CursorAt(QPointF scenePoint) const;
    /// Begins a gesture when a handle is under the press.
    bool TakeHandle(QGraphicsSceneMouseEvent& event);
    void TakeItem(MappingRectangle& item, QPointF pressed);
    /// The element or group body that holds the mouse; null when none does.
    [[nodiscard]] MappingRectangle* PressedRectangle() const;
    void ShowDragPreview(std::int64_t fixtureID);
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
    ElementNumbers numbers_;
    std::vector<std::int32_t> usedUniverses_;

    std::set<std::int64_t> selected_;
    std::int64_t onlySelected_ = 0;
    int selectionBatches_ = 0;
    bool selectionChanged_ = false;
    bool rubberBand_ = false;
    bool waitsForDrag_ = false; ///< an element was pressed that only a drag selects

    GroupOverlay overlay_;
    SceneGestures gestures_;
};
