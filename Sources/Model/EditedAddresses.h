// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "FixtureModel/DMXMapping.h"
#include "Model/ElementChanges.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

/// The new addresses of these elements. `edit` is called with each element that has an address, and
/// with that; it returns the new one, or nothing for an element that is left out.
template <class Edit>
std::vector<ElementAddress> EditedAddresses(const ElementIds& ids,
                                            const MappedDeviceModel& document, Edit edit)
{
    std::vector<ElementAddress> edited;
    for (const std::int64_t id : ids) {
        const MappedLedItem* element = document.GetItemByUniqueID(id);
        const DMXMappingArtNet* present = element ? element->GetArtNetMapping() : nullptr;
        if (!present)
            continue;
        if (std::optional<DMXMappingArtNet> address = edit(*element, *present))
            edited.push_back({id, std::move(address)});
    }
    return edited;
}
