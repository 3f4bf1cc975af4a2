// SPDX-License-Identifier: MIT
#include "UI/Main/FrameLoop.h"

#include <algorithm>

#include "LEDEngine/LEDEngine.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/Clock.h"

namespace {

constexpr std::int64_t NanosecondsPerMillisecond = 1'000'000;
constexpr std::int64_t FlashInterval = 700 * NanosecondsPerMillisecond;

enum SelectionMode
{
    NoMark = 0,
    Solid = 1,
    Flashing = 2
};

/// A picture of one pixel: every sample on the canvas takes its colour.
std::unique_ptr<ZenBitmap> OnePixel(std::uint8_t blue, std::uint8_t green, std::uint8_t red)
{
    constexpr std::uint32_t threeBytes = 3;
    auto bitmap = ZenBitmap::Create(1, 1, threeBytes);
    if (bitmap) {
        bitmap->data[0] = blue;
        bitmap->data[1] = green;
        bitmap->data[2] = red;
    }
    return bitmap;
}

} // namespace

FrameLoop::FrameLoop(DeviceManager& manager, LEDEngine& engine, const Selection& selection)
    : manager_(manager)
    , engine_(engine)
    , selection_(selection)
{}

std::int64_t FrameLoop::TimeToTick() const
{
    return grid_.TimeToTick(Platform::MonotonicNanoseconds());
}

int FrameLoop::Tick()
{
    const std::int64_t due = grid_.Begin(Platform::MonotonicNanoseconds());
    engine_.GetTrigger().Poll();
    engine_.GetOutput().CheckInput();

    if (manager_.GetMappedDeviceModel()->GetMerging().IsEnabled()) {
        SendOutput();
    } else if (due - lastOutputTime >= TickGrid::FrameInterval(false)) {
        // By the moment at which the tick was due: measured from the present one, a frame would be
        // put off by a whole tick whenever the one before came a little late.
        SendOutput();
        lastOutputTime = due;
    }
    return grid_.End(Platform::MonotonicNanoseconds());
}

void FrameLoop::SendOutput()
{
    const std::int64_t now = Platform::MonotonicNanoseconds();
    if (now - flashTime >= FlashInterval) {
        flashOn = !flashOn;
        flashTime = now;
    }
    const ZenBitmap* picture = manager_.GetMappedDeviceModel()->GetTestBitmap();
    if (!picture)
        return;
    engine_.UpdateElementBitmaps(*picture);
    if (const auto mark = SelectionMark())
        MarkSelection(*mark);
    engine_.SendFrame();
}

std::unique_ptr<ZenBitmap> FrameLoop::SelectionMark() const
{
    switch (manager_.selectionMode) {
    case Solid:
        return OnePixel(0, 255, 0);
    case Flashing: {
        const std::uint8_t level = flashOn ? 255 : 0;
        return OnePixel(level, level, level);
    }
    default:
        return nullptr;
    }
}

void FrameLoop::MarkSelection(const ZenBitmap& mark)
{
    for (const QPersistentModelIndex& index : selection_) {
        if (index.isValid())
            engine_.UpdateElementBitmap(index.row(), mark);
    }
}
