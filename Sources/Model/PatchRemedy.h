// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Model/ElementChanges.h"
#include "Model/ElementFixture.h"
#include "Model/PatchProblem.h"

class DeviceModel;
class MappedDeviceModel;

// What the elements of a problem become by its remedy. Elements that stay as they are, and those
// that are gone, are in no result.

/// Of FreeAddress and SendToAll. A free address is in the element's own universe where there is
/// room, else behind all others; `taken` are Port-Addresses that are not ours to use. Of elements
/// that share channels the first keeps its address. An element for which no address is free stays.
[[nodiscard]] std::vector<ElementAddress> RemedyAddresses(const PatchProblem& problem,
                                                          const MappedDeviceModel& document,
                                                          std::span<const std::int32_t> taken);

/// Of OntoCanvas and FitPixels.
[[nodiscard]] std::vector<ElementMapping> RemedyPlaces(const PatchProblem& problem,
                                                       const MappedDeviceModel& document);

/// Of LibraryDefinition.
[[nodiscard]] std::vector<ElementFixture> RemedyFixtures(const PatchProblem& problem,
                                                         const MappedDeviceModel& document,
                                                         const DeviceModel& library);
