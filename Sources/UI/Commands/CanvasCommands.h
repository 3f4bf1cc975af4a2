// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QUndoCommand>

#include "Model/ElementGeometry.h"

class DeviceManager;

/// A change of the canvas with all elements on it. Undone, both are as they were to the last bit.
class CanvasCommand : public QUndoCommand
{
public:
    void undo() override;

protected:
    /// `manager` outlives the command.
    CanvasCommand(DeviceManager& manager, const QString& text);

    [[nodiscard]] DeviceManager& Manager() const { return manager_; }

private:
    DeviceManager& manager_;
    ElementGeometry::Layout before_;
};

/// Cuts the canvas to the box round some elements; all elements keep their size and their places
/// to each other.
class CropCanvasToSelectionCommand final : public CanvasCommand
{
public:
    CropCanvasToSelectionCommand(DeviceManager& manager, ElementIds selected);

    void redo() override;

private:
    ElementIds selected_;
};

/// Gives the canvas another size. Elements stay where they are in pixels, or follow the canvas.
class ResizeCanvasCommand final : public CanvasCommand
{
public:
    ResizeCanvasCommand(DeviceManager& manager, QSize size, bool keepPixels);

    void redo() override;

private:
    QSize size_;
    bool keepPixels_;
};
