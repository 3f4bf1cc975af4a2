// SPDX-License-Identifier: MIT
#include "UI/Commands/CanvasCommands.h"

#include <utility>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

CanvasCommand::CanvasCommand(DeviceManager& manager, const QString& text)
    : QUndoCommand(text)
    , manager_(manager)
    , before_(manager.GetLayout())
{}

void CanvasCommand::undo()
{
    manager_.SetLayout(before_);
}

CropCanvasToSelectionCommand::CropCanvasToSelectionCommand(DeviceManager& manager,
                                                           ElementIds selected)
    : CanvasCommand(manager, QObject::tr("Crop Canvas"))
    , selected_(std::move(selected))
{}

void CropCanvasToSelectionCommand::redo()
{
    QModelIndexList indexes;
    for (const std::int64_t id : selected_) {
        const QModelIndex index = Manager().GetMappedDeviceModel()->GetIndexOfUniqueID(id);
        if (index.isValid())
            indexes.append(index);
    }
    Manager().CropToSelection(indexes);
}

ResizeCanvasCommand::ResizeCanvasCommand(DeviceManager& manager, QSize size, bool keepPixels)
    : CanvasCommand(manager, QObject::tr("Canvas Size"))
    , size_(size)
    , keepPixels_(keepPixels)
{}

void ResizeCanvasCommand::redo()
{
    Manager().ResizeCanvas(size_.width(), size_.height(), keepPixels_);
}
