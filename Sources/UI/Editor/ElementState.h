// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include <QModelIndex>

#include "UI/Editor/EditorGeometry.h"

class DeviceManager;

/// What an undo command must know of an element to put it back.
struct ElementState
{
    std::int64_t id = 0;
    EditorGeometry::Placement placement; ///< scene pixels
    float rotation = 0;
    bool flipHorizontal = false;
    bool flipVertical = false;
};

/// The present state of an element, by its index in the document. Nothing without a place on the
/// canvas.
[[nodiscard]] std::optional<ElementState> ReadElement(const DeviceManager& manager,
                                                      const QModelIndex& index);

/// Which number an element has now. Undoing a removal, and doing a drop again, make an element anew
/// under a new number; the older steps of the undo history know it under the number it had then.
class ElementNumbers
{
public:
    void Renumber(std::int64_t before, std::int64_t now);
    [[nodiscard]] std::int64_t Present(std::int64_t id) const;
    void Clear() { next_.clear(); }

private:
    std::unordered_map<std::int64_t, std::int64_t> next_;
};
