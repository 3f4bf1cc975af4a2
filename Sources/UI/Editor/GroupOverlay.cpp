// SPDX-License-Identifier: MIT
#include "UI/Editor/GroupOverlay.h"

#include <algorithm>
#include <cmath>

#include <QGraphicsScene>
#include <QTransform>

#include "Model/DeviceManager.h"
#include "Model/ElementGeometry.h"
#include "UI/Editor/ElementSelection.h"
#include "UI/Editor/MappingRectangle.h"

namespace {

constexpr std::size_t LeastElements = 2;
constexpr double FullTurn = 360;

/// The rotation that all of them have, 0 to 360; 0 when they differ.
double SharedRotation(const std::vector<ElementMapping>& elements)
{
    const auto turned = [](const ElementMapping& element) {
        const double rotation = std::fmod(static_cast<double>(element.video.rotation), FullTurn);
        return rotation < 0 ? rotation + FullTurn : rotation;
    };
    const double first = turned(elements.front());
    return std::ranges::all_of(elements,
                               [&](const auto& element) { return turned(element) == first; })
               ? first
               : 0;
}

} // namespace

GroupOverlay::GroupOverlay(const Parts& parts)
    : parts_(parts)
{}

GroupOverlay::~GroupOverlay() = default;

void GroupOverlay::Show()
{
    turning_ = false;
    const auto elements = parts_.manager.GetVideoMappings(parts_.selection.Ids());
    if (elements.size() < LeastElements) {
        Remove();
        return;
    }
    const QSizeF canvas = parts_.manager.CanvasPixels();
    const QRectF box = QTransform::fromScale(canvas.width(), canvas.height())
                           .mapRect(ElementGeometry::Bounds(elements));
    centre_ = box.center();
    rotation_ = SharedRotation(elements);
    using Variant = MappingRectangle::Variant;
    if (!frame_) {
        frame_ =
            std::make_unique<MappingRectangle>(parts_.display, Variant::GroupFrame, box.size());
        body_ = std::make_unique<MappingRectangle>(parts_.display, Variant::GroupBody, box.size());
        frame_->setZValue(0); // Over the unselected elements, under what it frames.
        body_->setZValue(-1);
        parts_.scene.addItem(frame_.get());
        parts_.scene.addItem(body_.get());
    }
    frame_->setRotation(0);
    for (MappingRectangle* item : {frame_.get(), body_.get()}) {
        item->SetPlacement({box.center(), box.size()});
        item->SetNaturalSize(box.size());
    }
}

void GroupOverlay::Follow()
{
    if (frame_ && !turning_)
        Show();
}

void GroupOverlay::Remove()
{
    frame_.reset();
    body_.reset();
    turning_ = false;
}

void GroupOverlay::TurnFrame(double degrees)
{
    turning_ = true;
    if (frame_)
        frame_->setRotation(degrees);
}
