// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include <QStandardItem>

class MappedLedItem;

/// An element that is out of the document, owned by whoever holds this: the whole row of the table
/// and its place. It comes back by MappedDeviceModel::PutBackElements.
struct TakenElement
{
    int row = 0; ///< where it stood before it was taken, with all that were taken at the same time
    /// One a column, the element among them; null where the column was empty.
    std::vector<std::unique_ptr<QStandardItem>> cells;

    [[nodiscard]] MappedLedItem& Element() const;
};

/// Those that were taken at the same time, in ascending rows.
using TakenElements = std::vector<TakenElement>;
