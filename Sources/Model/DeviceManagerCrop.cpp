// SPDX-License-Identifier: MIT
// DeviceManager's crop of the canvas to the bounds of elements.
#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

#include <QMutexLocker>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr float radiansPerDegree = 0.017453292F;

/// A box in fractions of the canvas.
struct Box
{
    float left = std::numeric_limits<float>::max();
    float top = std::numeric_limits<float>::max();
    float right = std::numeric_limits<float>::lowest();
    float bottom = std::numeric_limits<float>::lowest();

    [[nodiscard]] bool IsEmpty() const { return right < left; }

    void Widen(const Box& other)
    {
        left = std::min(left, other.left);
        top = std::min(top, other.top);
        right = std::max(right, other.right);
        bottom = std::max(bottom, other.bottom);
    }
};

/// A side of the new canvas: a document must be readable again.
int CanvasSide(double pixels)
{
    const double limit = MappedDeviceModel::MaxCanvasSize;
    return static_cast<int>(std::clamp(std::floor(pixels + 0.5), 1.0, limit));
}

} // namespace

void DeviceManager::GetObjectBounds(const VideoMapping& mapping, float& left, float& top,
                                    float& right, float& bottom)
{
    const float angle = mapping.rotation * radiansPerDegree;
    const float cosine = std::abs(std::cos(angle));
    const float sine = std::abs(std::sin(angle));
    const float halfWidth = std::abs(mapping.width) / 2;
    const float halfHeight = std::abs(mapping.height) / 2;
    // The farthest of the four corners to either side.
    const float reachX = halfWidth * cosine + halfHeight * sine;
    const float reachY = halfWidth * sine + halfHeight * cosine;
    left = mapping.centerX - reachX;
    top = mapping.centerY - reachY;
    right = mapping.centerX + reachX;
    bottom = mapping.centerY + reachY;
}

void DeviceManager::CropToSelection(const QModelIndexList& indexes)
{
    const QMutexLocker lock(&mutex);
    Box box;
    for (const QModelIndex& index : indexes) {
        const MappedLedItem* element = GetMappedItem(index);
        if (!element || element->GetItemType() != 0)
            continue;
        if (!element->GetVideoMapping()) {
            ZEN_LOG_ERROR("MappedLedItem's VideoMapping is null on row %d -- ignoring",
                          index.row());
            continue;
        }
        Box bounds;
        GetObjectBounds(*element->GetVideoMapping(), bounds.left, bounds.top, bounds.right,
                        bounds.bottom);
        box.Widen(bounds);
    }
    if (box.IsEmpty())
        return;

    const double left = ToPixelsX(box.left);
    const double top = ToPixelsY(box.top);
    std::vector<ObjectRect> rects;
    for (int row = 0; row < mappedDeviceModel->rowCount(); ++row) {
        const MappedLedItem* element = mappedDeviceModel->GetElement(row);
        if (!element || !element->GetVideoMapping()) {
            ZEN_LOG_ERROR("MappedLedItem was null for row %d -- ignoring", row);
            continue;
        }
        const VideoMapping& video = *element->GetVideoMapping();
        rects.push_back({mappedDeviceModel->index(row, MappedDeviceModel::ItemColumn),
                         ToPixelsX(video.centerX) - left, ToPixelsY(video.centerY) - top,
                         ToPixelsX(video.width), ToPixelsY(video.height)});
    }
    SetCanvasSize(CanvasSide(ToPixelsX(static_cast<double>(box.right) - box.left)),
                  CanvasSide(ToPixelsY(static_cast<double>(box.bottom) - box.top)));
    SetObjectRects(rects);
    SetDocumentDirty(true);
}
