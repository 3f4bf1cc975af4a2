// SPDX-License-Identifier: MIT
// DeviceManager's operations on single elements: reading, and the batches that change them.
#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

#include <QMutexLocker>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr double fullTurn = 360.0;

/// To the nearest whole pixel, halves upward, below zero too.
double RoundHalfUp(double value)
{
    return std::floor(value + 0.5);
}

/// Whole degrees, at most a full turn.
float WholeDegrees(float degrees)
{
    double turned = static_cast<double>(degrees);
    if (turned > fullTurn) {
        // The same as taking a full turn off again and again, for an angle of any size.
        turned = std::fmod(turned, fullTurn);
        if (turned == 0.0)
            turned = fullTurn;
    }
    return static_cast<float>(std::trunc(turned) + 0.0); // no -0
}

/// A pair for the model. Nothing for numbers that a file could not bring back.
std::optional<PointF> Finite(double x, double y)
{
    const PointF pair{static_cast<float>(x), static_cast<float>(y)};
    return std::isfinite(pair.x) && std::isfinite(pair.y) ? std::optional(pair) : std::nullopt;
}

} // namespace

// ---- Reading -----------------------------------------------------------------------------------

MappedLedItem* DeviceManager::GetMappedItem(const QModelIndex& index) const
{
    return index.model() == mappedDeviceModel.get() ? mappedDeviceModel->GetElement(index.row())
                                                    : nullptr;
}

MappedLedItem* DeviceManager::GetMappedItemByRow(int row) const
{
    return mappedDeviceModel->GetElement(row);
}

std::int64_t DeviceManager::GetUniqueID(const QModelIndex& index) const
{
    const MappedLedItem* element = GetMappedItem(index);
    return element ? element->uniqueID : -1;
}

std::int64_t DeviceManager::GetFixtureUniqueID(const QModelIndex& index) const
{
    const QMutexLocker lock(&mutex);
    const MappedLedItem* element = GetMappedItem(index);
    if (!element) {
        ZEN_LOG_ERROR("Item lost?!");
        return 0;
    }
    return element->GetFixture().uniqueID;
}

bool DeviceManager::GetObjectCentre(const QModelIndex& index, float& x, float& y) const
{
    const QMutexLocker lock(&mutex);
    const MappedLedItem* element = GetMappedItem(index);
    if (!element || !element->GetVideoMapping())
        return false;
    x = static_cast<float>(ToPixelsX(element->GetVideoMapping()->centerX));
    y = static_cast<float>(ToPixelsY(element->GetVideoMapping()->centerY));
    return true;
}

bool DeviceManager::GetObjectSize(const QModelIndex& index, float& width, float& height) const
{
    const QMutexLocker lock(&mutex);
    const MappedLedItem* element = GetMappedItem(index);
    if (!element || !element->GetVideoMapping())
        return false;
    width = static_cast<float>(ToPixelsX(element->GetVideoMapping()->width));
    height = static_cast<float>(ToPixelsY(element->GetVideoMapping()->height));
    return true;
}

bool DeviceManager::GetObjectFlipState(const QModelIndex& index, bool& horizontal,
                                       bool& vertical) const
{
    const QMutexLocker lock(&mutex);
    const MappedLedItem* element = GetMappedItem(index);
    if (!element || !element->GetVideoMapping())
        return false;
    horizontal = element->GetVideoMapping()->flipHorizontal;
    vertical = element->GetVideoMapping()->flipVertical;
    return true;
}

float DeviceManager::GetObjectRotation(const QModelIndex& index) const
{
    const QMutexLocker lock(&mutex);
    const MappedLedItem* element = GetMappedItem(index);
    if (!element || !element->GetVideoMapping()) {
        ZEN_LOG_ERROR("Item lost!");
        return 0;
    }
    return element->GetVideoMapping()->rotation;
}

const DMXMappingArtNet* DeviceManager::GetMappedObjectArtNetMapping(const QModelIndex& index) const
{
    const QMutexLocker lock(&mutex);
    const MappedLedItem* element = GetMappedItem(index);
    if (!element) {
        ZEN_LOG_ERROR("GetMappedObjectArtNetMapping did not find item in mappedDeviceModel!");
        return nullptr;
    }
    return element->GetItemType() == 0 ? element->GetArtNetMapping() : nullptr;
}

// ---- Changing ----------------------------------------------------------------------------------

VideoMapping* DeviceManager::EditVideo(MappedLedItem* element) const
{
    return element && element->GetVideoMapping() ? element->EditVideoMapping() : nullptr;
}

void DeviceManager::MoveObjects(const std::vector<ObjectPosition>& corners, bool final)
{
    for (const ObjectPosition& corner : corners) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = GetMappedItem(corner.index);
        VideoMapping* video = EditVideo(element);
        if (!video)
            return;
        const auto centre =
            Finite(corner.x / mappedDeviceModel->GetCanvasWidth() + video->width / 2,
                   corner.y / mappedDeviceModel->GetCanvasHeight() + video->height / 2);
        if (!centre)
            continue;
        video->SetCenter(*centre);
        const Zen::Vector4DF geometry{static_cast<float>(corner.x), static_cast<float>(corner.y),
                                      static_cast<float>(ToPixelsY(video->height)),
                                      static_cast<float>(ToPixelsX(video->width))};
        if (final)
            emit deviceChangeGeometry(element->uniqueID, geometry);
        else
            emit deviceUpdatedGeometry(element->uniqueID, geometry);
    }
    emit devicesChangedGeometry();
}

void DeviceManager::SetObjectCentre(const std::vector<ObjectPosition>& centres)
{
    for (const ObjectPosition& entry : centres) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = GetMappedItem(entry.index);
        VideoMapping* video = EditVideo(element);
        if (!video)
            return;
        const auto centre = Finite(entry.x / mappedDeviceModel->GetCanvasWidth(),
                                   entry.y / mappedDeviceModel->GetCanvasHeight());
        if (!centre || element->GetItemType() != 0)
            continue;
        video->SetCenter(*centre);
        const auto uniqueID = element->uniqueID;
        const auto x = static_cast<float>(entry.x);
        const auto y = static_cast<float>(entry.y);
        emit deviceChangeCentreX(uniqueID, x);
        emit deviceChangeCentreY(uniqueID, y);
        emit deviceChangeCentreXY(uniqueID, x, y);
    }
    emit devicesChangedGeometry();
}

void DeviceManager::SetObjectSize(const std::vector<ObjectSize>& sizes)
{
    for (const ObjectSize& entry : sizes) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = GetMappedItem(entry.index);
        VideoMapping* video = EditVideo(element);
        if (!video)
            return;
        const auto size = Finite(entry.width / mappedDeviceModel->GetCanvasWidth(),
                                 entry.height / mappedDeviceModel->GetCanvasHeight());
        if (!size || element->GetItemType() != 0)
            continue;
        video->SetSize(*size);
        emit deviceChangeMapSize(element->uniqueID, static_cast<float>(entry.width),
                                 static_cast<float>(entry.height));
    }
    emit devicesChangedGeometry();
}

void DeviceManager::SetObjectRotation(const std::vector<ObjectRotation>& rotations)
{
    for (const ObjectRotation& entry : rotations) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = GetMappedItem(entry.index);
        if (!element || element->GetItemType() != 0 || !std::isfinite(entry.degrees))
            continue;
        VideoMapping* video = EditVideo(element);
        if (!video)
            continue;
        video->SetRotation(WholeDegrees(entry.degrees));
        emit deviceChangeRotation(element->uniqueID, video->rotation);
    }
    emit devicesChangedGeometry();
}

void DeviceManager::SetObjectFlipState(const std::vector<ObjectFlip>& flips)
{
    for (const ObjectFlip& entry : flips) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = GetMappedItem(entry.index);
        if (element && element->GetItemType() != 0) {
            ZEN_LOG_ERROR("SetObjectFlipState Unexpected item type: %d", element->GetItemType());
            continue;
        }
        VideoMapping* video = EditVideo(element);
        if (!video)
            return;
        if (entry.direction == FlipHorizontal)
            video->flipHorizontal = entry.state;
        else if (entry.direction == FlipVertical)
            video->flipVertical = entry.state;
        emit deviceChangeFlip(element->uniqueID, entry.direction, entry.state);
    }
    emit devicesChangedGeometry();
}

void DeviceManager::SetObjectRects(const std::vector<ObjectRect>& rects)
{
    for (const ObjectRect& rect : rects) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = GetMappedItem(rect.index);
        VideoMapping* video = EditVideo(element);
        if (!video)
            return;
        const int canvasW = mappedDeviceModel->GetCanvasWidth();
        const int canvasH = mappedDeviceModel->GetCanvasHeight();
        const double x = RoundHalfUp(rect.x - rect.width / 2) + rect.width / 2;
        const double y = RoundHalfUp(rect.y - rect.height / 2) + rect.height / 2;
        const auto size = Finite(rect.width / canvasW, rect.height / canvasH);
        const auto centre = Finite(x / canvasW, y / canvasH);
        if (!size || !centre)
            continue;
        video->SetSize(*size);
        video->SetCenter(*centre);
        const auto uniqueID = element->uniqueID;
        emit deviceChangeCentreX(uniqueID, static_cast<float>(x));
        emit deviceChangeCentreY(uniqueID, static_cast<float>(y));
        emit deviceChangeMapSize(uniqueID, static_cast<float>(rect.width),
                                 static_cast<float>(rect.height));
    }
    emit devicesChangedGeometry();
}

void DeviceManager::MoveObject(const QModelIndex& index, double x, double y, bool final)
{
    MoveObjects({{index, x, y}}, final);
}

void DeviceManager::SetObjectCentre(const QModelIndex& index, double x, double y)
{
    SetObjectCentre({ObjectPosition{index, x, y}});
}

void DeviceManager::SetObjectSize(const QModelIndex& index, double width, double height)
{
    SetObjectSize({ObjectSize{index, width, height}});
}

void DeviceManager::SetObjectRotation(const QModelIndex& index, float degrees)
{
    SetObjectRotation({ObjectRotation{index, degrees}});
}

void DeviceManager::SetObjectFlipState(const QModelIndex& index, int direction, bool state)
{
    SetObjectFlipState({ObjectFlip{index, direction, state}});
}

void DeviceManager::ApplyObjectParams(const QModelIndex& index, const MappedObjectParams& params)
{
    ApplyObjectParams({AddedObject{index, params}});
}

void DeviceManager::ApplyObjectParams(const std::vector<AddedObject>& objects)
{
    std::vector<ObjectSize> sizes;
    std::vector<ObjectPosition> centres;
    std::vector<ObjectRotation> rotations;
    std::vector<ObjectFlip> flips;
    for (const auto& [index, params] : objects) {
        // One that has gone meanwhile must not end the batches of the others.
        const MappedLedItem* element = GetMappedItem(index);
        if (!element || !element->GetVideoMapping())
            continue;
        sizes.push_back({index, params.width, params.height});
        centres.push_back({index, params.posX, params.posY});
        rotations.push_back({index, 0});
        flips.push_back({index, FlipHorizontal, false});
        flips.push_back({index, FlipVertical, false});
    }
    SetObjectSize(sizes);
    SetObjectCentre(centres);
    SetObjectRotation(rotations);
    SetObjectFlipState(flips);
}

void DeviceManager::SetDescription(const QModelIndex& index, const std::wstring& description)
{
    const QMutexLocker lock(&mutex);
    if (GetMappedItem(index))
        mappedDeviceModel->SetDescription(index.row(), description);
}

void DeviceManager::EditObjectArtNetMappings(const QModelIndexList& indexes,
                                             const std::function<void(DMXMappingArtNet&)>& edit)
{
    std::vector<int> rows;
    for (const QModelIndex& index : indexes) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = GetMappedItem(index);
        if (!element || !element->GetArtNetMapping())
            continue;
        edit(*element->EditArtNetMapping());
        rows.push_back(index.row());
    }
    mappedDeviceModel->UpdateAddressCells(rows);
}
