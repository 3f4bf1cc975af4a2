// SPDX-License-Identifier: MIT
// DeviceManager's operations on single elements: reading, and the batches that change them.
#include "FixtureModel/Rounding.h"
#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

#include <QMutexLocker>

#include <cmath>

namespace {

/// A file can't hold other numbers.
bool IsFinite(const VideoMapping& video)
{
    return std::isfinite(video.centerX) && std::isfinite(video.centerY) &&
           std::isfinite(video.width) && std::isfinite(video.height) &&
           std::isfinite(video.rotation);
}

PointF Fraction(double x, double y, QSizeF canvas)
{
    return {static_cast<float>(x / canvas.width()), static_cast<float>(y / canvas.height())};
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

/// One entry for each element that `read` has one for.
template <class Entry, class Read>
std::vector<Entry> DeviceManager::ReadEach(const ElementIds& ids, const Read& read) const
{
    const QMutexLocker lock(&mutex);
    std::vector<Entry> entries;
    entries.reserve(ids.size());
    for (const std::int64_t id : ids) {
        if (const MappedLedItem* element = mappedDeviceModel->GetItemByUniqueID(id))
            read(*element, entries);
    }
    return entries;
}

std::vector<ElementMapping> DeviceManager::GetVideoMappings(const ElementIds& ids) const
{
    return ReadEach<ElementMapping>(ids, [](const MappedLedItem& element, auto& entries) {
        if (element.GetVideoMapping())
            entries.push_back({element.uniqueID, *element.GetVideoMapping()});
    });
}

std::vector<ElementAddress> DeviceManager::GetAddresses(const ElementIds& ids) const
{
    return ReadEach<ElementAddress>(ids, [](const MappedLedItem& element, auto& entries) {
        const DMXMappingArtNet* address = element.GetArtNetMapping();
        entries.push_back({element.uniqueID, address ? std::optional(*address) : std::nullopt});
    });
}

std::vector<ElementDescription> DeviceManager::GetDescriptions(const ElementIds& ids) const
{
    return ReadEach<ElementDescription>(ids, [](const MappedLedItem& element, auto& entries) {
        entries.push_back({element.uniqueID, element.description});
    });
}

std::vector<ElementFixture> DeviceManager::GetFixtures(const ElementIds& ids) const
{
    return ReadEach<ElementFixture>(ids, [](const MappedLedItem& element, auto& entries) {
        entries.push_back({element.uniqueID, element.GetFixture()});
    });
}

const DMXMappingArtNet* DeviceManager::GetMappedObjectArtNetMapping(const QModelIndex& index) const
{
    const QMutexLocker lock(&mutex);
    const MappedLedItem* element = GetMappedItem(index);
    if (!element) {
        ZEN_LOG_ERROR("GetMappedObjectArtNetMapping did not find item in mappedDeviceModel!");
        return nullptr;
    }
    return element->GetArtNetMapping();
}

// ---- Changing ----------------------------------------------------------------------------------

/// Applies `change` to the geometry of each entry's element, and `tell` emits the signals of the
/// operation. Results that are not finite are passed over.
template <class Entry, class Change, class Tell>
void DeviceManager::ChangeEach(const std::vector<Entry>& entries, MissingElement missing,
                               const Change& change, const Tell& tell)
{
    ElementIds changed;
    changed.reserve(entries.size());
    for (const Entry& entry : entries) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = GetMappedItem(entry.index);
        if (!element || !element->GetVideoMapping()) {
            if (missing == MissingElement::IsPassedOver)
                continue;
            emit elementsChanged(changed);
            return;
        }
        VideoMapping video = *element->GetVideoMapping();
        change(entry, video);
        if (!IsFinite(video))
            continue;
        *element->EditVideoMapping() = video;
        changed.push_back(element->uniqueID);
        tell(entry, element->uniqueID, video);
    }
    emit elementsChanged(changed);
    emit devicesChangedGeometry();
}

void DeviceManager::SetVideoMappings(const std::vector<ElementMapping>& mappings)
{
    WriteMappings(mappings, false);
}

/// With `canvasChanged`, places and sizes in pixels have changed for elements that keep their
/// fractions too.
void DeviceManager::WriteMappings(const std::vector<ElementMapping>& mappings, bool canvasChanged)
{
    ElementIds changed;
    for (const auto& [uniqueID, video] : mappings) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = mappedDeviceModel->GetItemByUniqueID(uniqueID);
        const VideoMapping* present = element ? element->GetVideoMapping() : nullptr;
        if (!present || !IsFinite(video) || (*present == video && !canvasChanged))
            continue;
        const VideoMapping before = *present;
        *element->EditVideoMapping() = video;
        changed.push_back(uniqueID);
        const auto [centre, size] = ElementGeometry::PlacementOf(video, CanvasPixels());
        if (canvasChanged || before.GetCenter() != video.GetCenter())
            TellCentre(uniqueID, centre.x(), centre.y());
        if (canvasChanged || before.GetSize() != video.GetSize())
            emit deviceChangeMapSize(uniqueID, static_cast<float>(size.width()),
                                     static_cast<float>(size.height()));
        if (before.rotation != video.rotation)
            emit deviceChangeRotation(uniqueID, video.rotation);
        if (before.flipHorizontal != video.flipHorizontal)
            emit deviceChangeFlip(uniqueID, FlipHorizontal, video.flipHorizontal);
        if (before.flipVertical != video.flipVertical)
            emit deviceChangeFlip(uniqueID, FlipVertical, video.flipVertical);
    }
    if (changed.empty())
        return;
    emit elementsChanged(changed);
    emit devicesChangedGeometry();
}

void DeviceManager::TellCentre(std::int64_t uniqueID, double x, double y)
{
    emit deviceChangeCentreX(uniqueID, static_cast<float>(x));
    emit deviceChangeCentreY(uniqueID, static_cast<float>(y));
    emit deviceChangeCentreXY(uniqueID, static_cast<float>(x), static_cast<float>(y));
}

void DeviceManager::MoveObjects(const std::vector<ElementPosition>& corners, bool final)
{
    const QSizeF canvas = CanvasPixels();
    ChangeEach(
        corners, MissingElement::EndsTheBatch,
        [canvas](const ElementPosition& corner, VideoMapping& video) {
            const PointF topLeft = Fraction(corner.x, corner.y, canvas);
            video.SetCenter({topLeft.x + video.width / 2, topLeft.y + video.height / 2});
        },
        [this, canvas, final](const ElementPosition& corner, std::int64_t uniqueID,
                              const VideoMapping& video) {
            const QSizeF size = ElementGeometry::PlacementOf(video, canvas).size;
            const Zen::Vector4DF geometry{
                static_cast<float>(corner.x), static_cast<float>(corner.y),
                static_cast<float>(size.height()), static_cast<float>(size.width())};
            if (final)
                emit deviceChangeGeometry(uniqueID, geometry);
            else
                emit deviceUpdatedGeometry(uniqueID, geometry);
        });
}

void DeviceManager::SetObjectCentre(const std::vector<ElementPosition>& centres)
{
    ChangeEach(
        centres, MissingElement::EndsTheBatch,
        [canvas = CanvasPixels()](const ElementPosition& centre, VideoMapping& video) {
            video.SetCenter(Fraction(centre.x, centre.y, canvas));
        },
        [this](const ElementPosition& centre, std::int64_t uniqueID, const VideoMapping&) {
            TellCentre(uniqueID, centre.x, centre.y);
        });
}

void DeviceManager::SetObjectSize(const std::vector<ElementSize>& sizes)
{
    ChangeEach(
        sizes, MissingElement::EndsTheBatch,
        [canvas = CanvasPixels()](const ElementSize& size, VideoMapping& video) {
            video.SetSize(Fraction(size.width, size.height, canvas));
        },
        [this](const ElementSize& size, std::int64_t uniqueID, const VideoMapping&) {
            emit deviceChangeMapSize(uniqueID, static_cast<float>(size.width),
                                     static_cast<float>(size.height));
        });
}

void DeviceManager::SetObjectRotation(const std::vector<ElementRotation>& rotations)
{
    ChangeEach(
        rotations, MissingElement::IsPassedOver,
        [](const ElementRotation& rotation, VideoMapping& video) {
            // A typed fraction is cut; adding 0 makes a zero of -0.
            const double turned = Rounding::WithinFullTurn(double{rotation.degrees});
            video.rotation = static_cast<float>(std::trunc(turned) + 0.0);
        },
        [this](const ElementRotation&, std::int64_t uniqueID, const VideoMapping& video) {
            emit deviceChangeRotation(uniqueID, video.rotation);
        });
}

void DeviceManager::SetObjectFlipState(const std::vector<ElementFlip>& flips)
{
    ChangeEach(
        flips, MissingElement::EndsTheBatch,
        [](const ElementFlip& flip, VideoMapping& video) {
            (flip.direction == FlipHorizontal ? video.flipHorizontal : video.flipVertical) =
                flip.state;
        },
        [this](const ElementFlip& flip, std::int64_t uniqueID, const VideoMapping&) {
            emit deviceChangeFlip(uniqueID, flip.direction, flip.state);
        });
}

void DeviceManager::SetObjectRects(const std::vector<ElementRect>& rects)
{
    const auto placement = [](const ElementRect& rect) {
        const QSizeF size(rect.width, rect.height);
        return ElementGeometry::Placement{ElementGeometry::SnappedCentre({rect.x, rect.y}, size),
                                          size};
    };
    ChangeEach(
        rects, MissingElement::EndsTheBatch,
        [&, canvas = CanvasPixels()](const ElementRect& rect, VideoMapping& video) {
            video = ElementGeometry::Placed(video, placement(rect), canvas);
        },
        [&](const ElementRect& rect, std::int64_t uniqueID, const VideoMapping&) {
            const QPointF centre = placement(rect).centre;
            emit deviceChangeCentreX(uniqueID, static_cast<float>(centre.x()));
            emit deviceChangeCentreY(uniqueID, static_cast<float>(centre.y()));
            emit deviceChangeMapSize(uniqueID, static_cast<float>(rect.width),
                                     static_cast<float>(rect.height));
        });
}

void DeviceManager::MoveObject(const QModelIndex& index, double x, double y, bool final)
{
    MoveObjects({{index, x, y}}, final);
}

void DeviceManager::SetObjectCentre(const QModelIndex& index, double x, double y)
{
    SetObjectCentre({ElementPosition{index, x, y}});
}

void DeviceManager::SetObjectSize(const QModelIndex& index, double width, double height)
{
    SetObjectSize({ElementSize{index, width, height}});
}

void DeviceManager::SetObjectRotation(const QModelIndex& index, float degrees)
{
    SetObjectRotation({ElementRotation{index, degrees}});
}

void DeviceManager::SetObjectFlipState(const QModelIndex& index, int direction, bool state)
{
    SetObjectFlipState({ElementFlip{index, direction, state}});
}

void DeviceManager::ApplyObjectParams(const QModelIndex& index, const MappedObjectParams& params)
{
    ApplyObjectParams({AddedElement{index, params}});
}

void DeviceManager::ApplyObjectParams(const std::vector<AddedElement>& elements)
{
    std::vector<ElementMapping> mappings;
    for (const auto& [index, params] : elements) {
        const MappedLedItem* element = GetMappedItem(index);
        if (!element || !element->GetVideoMapping())
            continue;
        const ElementGeometry::Placement place{
            {static_cast<double>(params.posX), static_cast<double>(params.posY)},
            {static_cast<double>(params.width), static_cast<double>(params.height)}};
        VideoMapping video =
            ElementGeometry::Placed(*element->GetVideoMapping(), place, CanvasPixels());
        video.rotation = 0;
        video.flipHorizontal = false;
        video.flipVertical = false;
        mappings.push_back({element->uniqueID, video});
    }
    SetVideoMappings(mappings);
}

void DeviceManager::SetDescription(const QModelIndex& index, const std::wstring& description)
{
    if (const MappedLedItem* element = GetMappedItem(index))
        SetDescriptions({{element->uniqueID, description}});
}

void DeviceManager::SetDescriptions(const std::vector<ElementDescription>& descriptions)
{
    ElementIds changed;
    for (const auto& [uniqueID, description] : descriptions) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = mappedDeviceModel->GetItemByUniqueID(uniqueID);
        if (!element || element->description == description)
            continue;
        element->description = description;
        changed.push_back(uniqueID);
    }
    if (changed.empty())
        return;
    mappedDeviceModel->UpdateNameCells(changed);
    emit elementsRenamed(changed);
}

void DeviceManager::SetAddresses(const std::vector<ElementAddress>& addresses)
{
    ElementIds changed;
    for (const auto& [uniqueID, address] : addresses) {
        const QMutexLocker lock(&mutex);
        MappedLedItem* element = mappedDeviceModel->GetItemByUniqueID(uniqueID);
        const DMXMappingArtNet* present = element ? element->GetArtNetMapping() : nullptr;
        if (!element || (present ? address == *present : !address))
            continue;
        element->SetArtNetMapping(address);
        changed.push_back(uniqueID);
    }
    if (changed.empty())
        return;
    mappedDeviceModel->UpdateAddressCells(changed);
    emit elementsPatched(changed);
}

void DeviceManager::SetFixtures(const std::vector<ElementFixture>& fixtures)
{
    ElementIds changed;
    {
        const QMutexLocker lock(&mutex);
        changed = mappedDeviceModel->GiveFixtures(fixtures);
    }
    (void)TellRefitted(changed);
}
