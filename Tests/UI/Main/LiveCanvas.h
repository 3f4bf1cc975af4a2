// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Editor/CanvasHands.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Main/Desk.h"

/// The canvas of the real window, with hands to work on it.
class LiveCanvas : public Desk, protected CanvasHands
{
protected:
    [[nodiscard]] WeftMapEditorView& View() const override;
    [[nodiscard]] WeftMapEditorScene& Scene() const;
    [[nodiscard]] QImage Picture() const { return View().viewport()->grab().toImage(); }
    /// The item of the element in this row of the document.
    [[nodiscard]] const MappingRectangle& Item(std::size_t row) const;

    /// Drags a fixture from the library with the mouse; its row is looked up by product.
    void DragFromLibrary(const QString& product, QPointF to);
    std::int64_t dropped = 0; ///< when the fixture fell, in nanoseconds of the wall clock

    void Undo();
    void Redo();
};
