// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <set>

#include <QPersistentModelIndex>

#include "LEDEngine/TickGrid.h"
#include "LibTools/ZenBitmap.h"

class DeviceManager;
class LEDEngine;

/// What happens in one tick of the engine's timer: the channel to the host and the output's state
/// machine first, then, when one is due, a frame. Frames are due on every tick while received DMX
/// is merged, and on every fourth one otherwise.
class FrameLoop
{
public:
    using Selection = std::set<QPersistentModelIndex>;

    /// All three outlive the loop. `selection` holds the elements that the selection mode marks.
    FrameLoop(DeviceManager& manager, LEDEngine& engine, const Selection& selection);

    /// Nanoseconds until the next tick is due, 0 or below when one is.
    [[nodiscard]] std::int64_t TimeToTick() const;
    /// One tick. The result is the time to the next one in milliseconds.
    int Tick();

    /// One frame, from the test picture to the wire. Without a picture nothing is sent.
    void SendOutput();

    static constexpr int TickMilliseconds = 25;

private:
    [[nodiscard]] std::unique_ptr<ZenBitmap> SelectionMark() const;
    void MarkSelection(const ZenBitmap& mark);

    DeviceManager& manager_;
    LEDEngine& engine_;
    const Selection& selection_;
    TickGrid grid_;
    std::int64_t lastOutputTime = 0; ///< when the tick of the last frame was due
    std::int64_t flashTime = 0;
    bool flashOn = false;
};
