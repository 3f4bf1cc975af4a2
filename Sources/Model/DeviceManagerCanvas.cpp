// SPDX-License-Identifier: MIT
// DeviceManager's changes of the canvas, which reach every element.
#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/ElementGeometry.h"
#include "Model/MappedDeviceModel.h"

#include <QMutexLocker>

void DeviceManager::SetCanvasSize(int width, int height)
{
    {
        const QMutexLocker lock(&mutex);
        mappedDeviceModel->SetCanvasSize(width, height);
        canvasWidth = mappedDeviceModel->GetCanvasWidth();
        canvasHeight = mappedDeviceModel->GetCanvasHeight();
    }
    emit changeCanvasSize(canvasWidth, canvasHeight);
}

void DeviceManager::GetCanvasSize(int& width, int& height) const
{
    width = canvasWidth;
    height = canvasHeight;
}

QSize DeviceManager::CanvasPixels() const
{
    return {mappedDeviceModel->GetCanvasWidth(), mappedDeviceModel->GetCanvasHeight()};
}

double DeviceManager::ToPixelsX(double fraction) const
{
    return fraction * mappedDeviceModel->GetCanvasWidth();
}

double DeviceManager::ToPixelsY(double fraction) const
{
    return fraction * mappedDeviceModel->GetCanvasHeight();
}

void DeviceManager::GetObjectBounds(const VideoMapping& mapping, float& left, float& top,
                                    float& right, float& bottom)
{
    const QRectF bounds = ElementGeometry::Bounds(mapping);
    left = static_cast<float>(bounds.left());
    top = static_cast<float>(bounds.top());
    right = static_cast<float>(bounds.right());
    bottom = static_cast<float>(bounds.bottom());
}

// Canvas and elements change in one go, so that no element is seen on the canvas of another time.
void DeviceManager::SetLayout(const ElementGeometry::Layout& layout)
{
    const QMutexLocker lock(&mutex);
    SetCanvasSize(layout.canvas.width(), layout.canvas.height());
    WriteMappings(layout.elements, true);
}

void DeviceManager::CropToSelection(const QModelIndexList& indexes)
{
    ElementIds ids;
    for (const QModelIndex& index : indexes) {
        const MappedLedItem* element = GetMappedItem(index);
        if (element && element->GetVideoMapping())
            ids.push_back(element->uniqueID);
        else
            ZEN_LOG_ERROR("MappedLedItem's VideoMapping is null on row %d -- ignoring",
                          index.row());
    }
    if (ids.empty())
        return;
    SetLayout(ElementGeometry::Cropped(GetLayout(), GetVideoMappings(ids),
                                       MappedDeviceModel::MaxCanvasSize));
}

void DeviceManager::ResizeCanvas(int width, int height, bool keepPixels)
{
    SetLayout(ElementGeometry::Rescaled(GetLayout(), {width, height}, keepPixels));
}

ElementGeometry::Layout DeviceManager::GetLayout() const
{
    const QMutexLocker lock(&mutex);
    ElementGeometry::Layout layout{CanvasPixels(), {}};
    layout.elements.reserve(static_cast<std::size_t>(mappedDeviceModel->rowCount()));
    for (int row = 0; row < mappedDeviceModel->rowCount(); ++row) {
        const MappedLedItem& element = *mappedDeviceModel->GetElement(row);
        if (element.GetVideoMapping())
            layout.elements.push_back({element.uniqueID, *element.GetVideoMapping()});
        else
            ZEN_LOG_ERROR("MappedLedItem was null for row %d -- ignoring", row);
    }
    return layout;
}
