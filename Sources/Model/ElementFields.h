// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "Model/ElementChanges.h"

class DeviceManager;

/// A value read from several elements: what all of them have, or, when they differ, mixed. `value`
/// is that of the first element.
template <class T>
struct Shared
{
    T value{};
    bool mixed = false;

    bool operator==(const Shared&) const = default;
};

/// What the operator can edit of elements, read once from all of them.
struct ElementFields
{
    int count = 0; ///< elements that were read

    Shared<std::wstring> fixture; ///< the fixture's product
    Shared<std::wstring> description;

    // Lengths are scene pixels, before rotation. Left and top count as the same when no difference
    // shows at two decimals; width and height are whole.
    Shared<double> left;
    Shared<double> top;
    Shared<int> width;
    Shared<int> height;
    Shared<double> rotation; ///< degrees, as the document has it
    Shared<bool> flipHorizontal;
    Shared<bool> flipVertical;

    // The address. It says something only when all elements have an Art-Net address.
    bool allArtNet = false;        ///< and there is at least one element
    Shared<bool> hasArtNet;        ///< mixed: some have an Art-Net address
    Shared<std::wstring> nodeText; ///< "Auto" or the dotted address of the receiving node
    Shared<std::int32_t> subnet;
    Shared<std::int32_t> universe;
    Shared<std::int32_t> channel; ///< 1-based
    /// The greatest start channel from which each of the elements still ends at 512.
    std::int32_t lastStartChannel = 512;

    bool operator==(const ElementFields&) const = default;
};

/// Ids without element and elements without geometry are passed over.
[[nodiscard]] ElementFields FoldElements(const DeviceManager& manager, const ElementIds& ids);
