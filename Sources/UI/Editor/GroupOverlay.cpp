// SPDX-License-Identifier: MIT
#include "UI/Editor/GroupOverlay.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Model/DeviceManager.h"
#include "Model/MappedLedItem.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Editor/WeftMapEditorScene.h"

namespace {

constexpr int LeastElements = 2;
constexpr double FullTurn = 360;

/// The box round turned elements, and the rotation that they share.
class GroupMeasure
{
public:
    explicit GroupMeasure(const DeviceManager& manager)
        : manager_(manager)
    {}

    void Add(const VideoMapping& video)
    {
        float left = 0;
        float top = 0;
        float right = 0;
        float bottom = 0;
        DeviceManager::GetObjectBounds(video, left, top, right, bottom);
        left_ = std::min(left_, left);
        top_ = std::min(top_, top);
        right_ = std::max(right_, right);
        bottom_ = std::max(bottom_, bottom);

        const double turned = std::fmod(static_cast<double>(video.rotation), FullTurn);
        differ_ = differ_ || (!isEmpty_ && rotation_ != turned);
        rotation_ = turned;
        isEmpty_ = false;
    }

    [[nodiscard]] bool IsEmpty() const { return isEmpty_; }

    [[nodiscard]] QRectF Box() const
    {
        const auto pixelsX = [this](float x) {
            return manager_.ToPixelsX(static_cast<double>(x));
        };
        const auto pixelsY = [this](float y) {
            return manager_.ToPixelsY(static_cast<double>(y));
        };
        return {QPointF(pixelsX(left_), pixelsY(top_)), QPointF(pixelsX(right_), pixelsY(bottom_))};
    }

    [[nodiscard]] double Rotation() const
    {
        if (differ_)
            return 0;
        return rotation_ < 0 ? rotation_ + FullTurn : rotation_;
    }

private:
    const DeviceManager& manager_;
    float left_ = std::numeric_limits<float>::max();
    float top_ = std::numeric_limits<float>::max();
    float right_ = std::numeric_limits<float>::lowest();
    float bottom_ = std::numeric_limits<float>::lowest();
    double rotation_ = 0;
    bool isEmpty_ = true;
    bool differ_ = false;
};

} // namespace

GroupOverlay::GroupOverlay(WeftMapEditorScene& scene)
    : scene_(scene)
{}

GroupOverlay::~GroupOverlay() = default;

void GroupOverlay::Show()
{
    turning_ = false;
    rotation_ = 0;
    if (scene_.SelectedCount() < LeastElements) {
        Remove();
        return;
    }
    GroupMeasure measure(scene_.GetManager());
    for (const std::int64_t id : scene_.SelectedIds()) {
        const MappedLedItem* element = scene_.GetManager().GetMappedItem(scene_.IndexOf(id));
        if (element && element->GetVideoMapping())
            measure.Add(*element->GetVideoMapping());
    }
    if (measure.IsEmpty()) {
        Remove();
        return;
    }
    const QRectF box = measure.Box();
    centre_ = box.center();
    rotation_ = measure.Rotation();
    using Variant = MappingRectangle::Variant;
    if (!frame_) {
        frame_ = std::make_unique<MappingRectangle>(scene_.GetDisplay(), Variant::GroupFrame,
                                                    box.size());
        body_ =
            std::make_unique<MappingRectangle>(scene_.GetDisplay(), Variant::GroupBody, box.size());
        frame_->setZValue(0); // Over the unselected elements, under what it frames.
        body_->setZValue(-1);
        scene_.addItem(frame_.get());
        scene_.addItem(body_.get());
    }
    frame_->setRotation(0);
    for (MappingRectangle* item : {frame_.get(), body_.get()})
        item->SetPlacement({box.center(), box.size()});
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
