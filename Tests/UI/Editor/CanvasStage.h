// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <QAction>
#include <QUndoStack>
#include <QWidget>

#include "CanvasHands.h"
#include "Model/DeviceManager.h"
#include "UI/Commands/SavedState.h"
#include "UI/Editor/EditorController.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"

/// A canvas with its view, its list and its undo history, as the window puts them together.
class CanvasStage : public CanvasHands
{
public:
    explicit CanvasStage(QSize canvas = {100, 100}, QSize view = {800, 600});
    ~CanvasStage() override;

    /// A fixture in the library; its number.
    std::int64_t AddFixture(const wchar_t* product, int width, int height, int channels);
    /// An element of the document, with no step in the history; its number.
    std::int64_t Place(std::int64_t fixture, QPointF centre, QSizeF size, float rotation = 0);

    // ---- What the model, the list and the canvas say -------------------------------------------

    [[nodiscard]] const VideoMapping& Video(std::int64_t id) const;
    [[nodiscard]] ElementGeometry::Placement PlaceOf(std::int64_t id) const; ///< scene pixels
    [[nodiscard]] MappedLedItem& Item(std::int64_t id) const;
    [[nodiscard]] std::vector<std::int64_t> Ids() const;
    [[nodiscard]] std::vector<std::int64_t> SelectedInList() const;
    /// The ways in which model, scene and list differ, in words; empty when they are one.
    [[nodiscard]] std::string Disagreement() const;

    QWidget window;
    DeviceManager manager;
    EditorDisplayState display;
    QUndoStack undo;
    SavedState savedState{manager, undo};
    std::unique_ptr<WeftMapEditorScene> scene;
    WeftMapEditorView* view = nullptr;
    WeftMappedObjectTreeView* list = nullptr;
    std::unique_ptr<EditorController> controller;

protected:
    [[nodiscard]] QGraphicsView& View() const override { return *view; }

private:
    /// What is wrong with numbers, colours or order of the document's rows.
    [[nodiscard]] std::string TableFault() const;
};
