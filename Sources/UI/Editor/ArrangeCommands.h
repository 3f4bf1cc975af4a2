// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Editor/ElementCommand.h"

/// Brings elements to a common edge or line.
class AlignRectangleCommand final : public ElementCommand
{
public:
    AlignRectangleCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids,
                          EditorGeometry::AlignMode mode);

    void undo() override { PutCentresBack(); }
    void redo() override;
    [[nodiscard]] int id() const override { return AlignCommandId; }

private:
    EditorGeometry::AlignMode mode_;
};

/// Spreads elements with equal gaps between the outermost ones.
class AlignDistributeRectangleCommand final : public ElementCommand
{
public:
    AlignDistributeRectangleCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids,
                                    EditorGeometry::DistributeMode mode);

    void undo() override { PutCentresBack(); }
    void redo() override;
    [[nodiscard]] int id() const override { return DistributeCommandId; }

private:
    EditorGeometry::DistributeMode mode_;
};

/// Cuts the canvas to the box round some elements; all elements keep their places in the picture of
/// the stage.
class CropCanvasToSelectionCommand final : public ElementCommand
{
public:
    CropCanvasToSelectionCommand(WeftMapEditorScene& scene,
                                 const std::vector<std::int64_t>& selected);

    void undo() override;
    void redo() override;

private:
    std::vector<std::int64_t> selected_;
    int oldWidth_ = 0;
    int oldHeight_ = 0;
};
