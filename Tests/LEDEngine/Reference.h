// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Show.h"

/// A frame worked out slowly and plainly, one element, one pixel and one channel at a time, with
/// nothing of the engine's own: what the engine must give byte for byte.
namespace Reference {

/// The colours of an element's pixels, row by row.
[[nodiscard]] std::vector<Rgb> Sample(const VideoMapping& mapping, int canvasWidth,
                                      int canvasHeight, int columns, int rows,
                                      const ZenBitmap& source);

/// The frame of a document while nothing was received: merged input is all zeros.
[[nodiscard]] Universes FrameOf(const MappedDeviceModel& document, const ZenBitmap& source);

} // namespace Reference
