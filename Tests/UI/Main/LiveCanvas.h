// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

#include "UI/Editor/CanvasHands.h"
#include "UI/Editor/ElementState.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Main/Desk.h"

class MappedLedItem;

/// The canvas of the real window, with hands to work on it.
class LiveCanvas : public Desk, protected CanvasHands
{
protected:
    /// A fixture of the library with twelve pixels in a row on its channels 1 to 36.
    static inline const QString Bar = QStringLiteral("COLORband PiX - 36 channels");

    /// Starts with a document that holds these elements, on the stage's network.
    void StartWith(const QString& elements, int width = 100, int height = 100);
    /// A bar of the document. Lengths are fractions of the canvas.
    [[nodiscard]] static QString Element(QPointF centre, QSizeF size, int rotation = 0,
                                         int universe = 0, int channel = 1);

    [[nodiscard]] WeftMapEditorView& View() const override;
    [[nodiscard]] WeftMapEditorScene& Scene() const;
    [[nodiscard]] QImage Picture() const;
    [[nodiscard]] QColor Pixel(QPointF at) const;
    /// What the document says of its elements, in row order.
    [[nodiscard]] std::vector<ElementState> Document() const;
    [[nodiscard]] const MappedLedItem& Last() const;

    /// Drags a fixture from the library with the mouse; its row is looked up by product.
    void DragFromLibrary(const QString& product, QPointF to);
    std::int64_t dropped = 0; ///< when the fixture fell, in nanoseconds of the wall clock

    /// Opens the canvas' menu and clicks this entry.
    void ChooseFromMenu(const QString& text, QPointF at);
    void Undo();
    void Redo();
};
