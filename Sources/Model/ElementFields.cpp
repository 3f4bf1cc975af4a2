// SPDX-License-Identifier: MIT
#include "Model/ElementFields.h"

#include <algorithm>
#include <cmath>

#include "FixtureModel/FreePatch.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

namespace {

template <class T>
void Fold(Shared<T>& shared, const T& value, bool first)
{
    if (first)
        shared.value = value;
    else if (!(shared.value == value))
        shared.mixed = true;
}

/// What is left of a length when it is shown with two decimals.
double Hundredths(double length)
{
    constexpr double inOne = 100;
    return std::round(length * inOne);
}

void FoldLength(Shared<double>& shared, double value, bool first)
{
    if (first)
        shared.value = value;
    else if (Hundredths(shared.value) != Hundredths(value))
        shared.mixed = true;
}

void FoldGeometry(ElementFields& fields, const VideoMapping& video, QSizeF canvas, bool first)
{
    const QRectF rect = ElementGeometry::PlacementOf(video, canvas).Rect();
    FoldLength(fields.left, rect.left(), first);
    FoldLength(fields.top, rect.top(), first);
    Fold(fields.width, qRound(rect.width()), first);
    Fold(fields.height, qRound(rect.height()), first);
    // A full turn is none.
    Fold(fields.rotation, std::fmod(static_cast<double>(video.rotation), 360.0), first);
    Fold(fields.flipHorizontal, video.flipHorizontal, first);
    Fold(fields.flipVertical, video.flipVertical, first);
}

void FoldAddress(ElementFields& fields, const MappedLedItem& element, bool first)
{
    const DMXMappingArtNet* address = element.GetArtNetMapping();
    Fold(fields.hasArtNet, address != nullptr, first);
    if (!address || fields.hasArtNet.mixed)
        return;
    Fold(fields.nodeText, address->GetIpconf(), first);
    Fold(fields.subnet, address->GetSubnet(), first);
    Fold(fields.universe, address->GetUniverse(), first);
    Fold(fields.channel, address->GetChannel(), first);
    fields.lastStartChannel = std::min(
        fields.lastStartChannel, PatchAddress::LastStart(element.GetFixture().GetChannelCount()));
}

} // namespace

ElementFields FoldElements(const DeviceManager& manager, const ElementIds& ids)
{
    ElementFields fields;
    const MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    const QSizeF canvas = manager.CanvasPixels();
    for (const std::int64_t id : ids) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        if (!element || !element->GetVideoMapping())
            continue;
        const bool first = fields.count++ == 0;
        Fold(fields.fixture, element->GetFixture().product, first);
        Fold(fields.description, element->description, first);
        FoldGeometry(fields, *element->GetVideoMapping(), canvas, first);
        FoldAddress(fields, *element, first);
    }
    fields.allArtNet = fields.hasArtNet.value && !fields.hasArtNet.mixed;
    return fields;
}
