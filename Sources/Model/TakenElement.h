// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "Model/MappedLedItem.h"

/// An element that is out of the document, owned by whoever holds this. It comes back by
/// MappedDeviceModel::PutBackElements.
struct TakenElement
{
    int row = 0; ///< where it stood before it was taken, with all that were taken at the same time
    bool showsSize = false; ///< whether its row had a text in the column of sizes
    std::unique_ptr<MappedLedItem> element;
};

/// Those that were taken at the same time, in ascending rows.
using TakenElements = std::vector<TakenElement>;
